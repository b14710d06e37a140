// zorvanta-cli index, keep and order: outputs byte for byte, refusals, failures, Ctrl-C.
#include <gtest/gtest.h>

#include <filesystem>

#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

const std::string kPro = CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC", "",
                               "Record - 4", "", "DDD"});

TEST(CliRecords, IndexWritesTheIndexBesideTheRecordFile) {
  TempDir dir, elsewhere;
  WriteFile(dir.file("r.PRO"), kPro);
  const auto r = RunCli({"index", dir.file("r.PRO")}, {.cwd = elsewhere.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_TRUE(Has(r.out, "Records: 4"));
  EXPECT_EQ(RunCli({"ndx", dir.file("r.NDX")}).out, "1 1 19 1 3 0\n2 21 21 4 7 0\n3 42 21 9 12 0\n4 63 19 12 15 0\n");
  EXPECT_TRUE(std::filesystem::is_empty(elsewhere.path()));
  EXPECT_EQ(ReadFile(dir.file("r.PRO")), kPro);
}

TEST(CliRecords, RefusedFilesExitWithTwoAndTheSystemsMessage) {
  TempDir dir;
  WriteFile(dir.file("one.PRO"), CrLf({"Record - 1", "", "ONLY"}));
  WriteFile(dir.file("one.NDX"), std::string(277, '\0'));
  WriteFile(dir.file("notes.txt"), kPro);
  WriteFile(dir.file("r.PRO"), kPro);
  std::filesystem::create_directory(dir.file("folder.NDX"));
  struct Case {
    std::vector<std::string> args;
    std::string message;
  } cases[] = {
      {{"index", "one.NDX"}, "index takes a .PRO file"},
      {{"index", "one.PRO"}, "File Format Error: This does not appear to be a filtered record file."},
      {{"index", "notes.txt"}, "Not a .PRO or .NDX File: The file you specified is\nnotes.txt\n"},
      {{"index", "gone.PRO"}, "File Open Error: File not found."},
      {{"keep", "folder.NDX", "--records", "1", "--to", "k.kep"}, "File Open Error: .NDX file not found."},
      {{"keep", "r.PRO", "--records", "5", "--to", "k.kep"}, "There aren't that many records: 5"},
      {{"keep", "r.PRO", "--records", "2-x", "--to", "k.kep"}, "Not a record number or range"},
      {{"order", "r.PRO", "--order", "2,1,2"}, "Record 2 is listed twice."},
  };
  for (const Case& c : cases) {
    const auto r = RunCli(c.args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2) << c.args[1];
    EXPECT_TRUE(Has(r.err, c.message)) << r.err;
  }
  EXPECT_FALSE(FileExists(dir.file("one.NDX")));  // the refused build removed the filter's index
  EXPECT_FALSE(FileExists(dir.file("k.kep")));
  EXPECT_FALSE(FileExists(dir.file("r.ORD")));
}

TEST(CliRecords, KeepAppendsTheListedRecordsInAscendingOrderAndLeavesNoMarks) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  WriteFile(dir.file("k.kep"), "OLD\r\n");
  auto r = RunCli({"keep", "r.PRO", "--records", "4,1", "--to", "k.kep"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file("k.kep")), "OLD\r\n" + CrLf({"Record - 1", "", "AAA", "", "Record - 4", "", "DDD", ""}));
  r = RunCli({"keep", "r.NDX", "--records", "2-3", "--to", "k.kep"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_TRUE(ReadFile(dir.file("k.kep")).ends_with(CrLf({"DDD", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC", ""})));
  EXPECT_EQ(RunCli({"ndx", dir.file("r.NDX")}).out, "1 1 19 1 3 0\n2 21 21 4 7 0\n3 42 21 9 12 0\n4 63 19 12 15 0\n");
}

TEST(CliRecords, AKeepFileThatCannotBeWrittenFailsWithFourAndNothingLeft) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  WriteFile(dir.file("a.kep"), "OLD\r\n");
  std::filesystem::create_directory(dir.file("folder.kep"));
  const auto r = RunCli({"keep", "r.PRO", "--records", "1", "--to", "folder.kep"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 75\nPath/File access error")) << r.err;
  EXPECT_TRUE(Has(RunCli({"ndx", dir.file("r.NDX")}).out, "1 1 19 1 3 0\n"));  // the mark is gone
}

TEST(CliRecords, OrderPutsTheListedRecordsFirstAndTheRestAfter) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  WriteFile(dir.file("r.ORD"), std::string(500, 'o'));
  const auto r = RunCli({"order", dir.file("r.PRO"), "--order", "3,1"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file("r.ORD")), CrLf({"Record - 3", "", "CCC", "", "Record - 1", "", "AAA", "", "Record - 2",
                                               "", "BBB", "", "Record - 4", "", "DDD", "", ""}));
}

TEST(CliRecords, CtrlCDuringIndexingExitsWith130AndLeavesNoIndex) {
  TempDir dir;
  std::string block;
  for (int k = 1; k <= 1000; ++k) block += CrLf({"Record - " + std::to_string(k), "", std::string(60, 'x'), ""});
  const int code = test::InterruptCliOnceItWrites(
      {"index", "big.PRO"}, dir.path().string(), dir.file("big.NDX"), [&](int copies) {
        std::string pro;
        for (int i = 0; i < copies; ++i) pro += block;
        WriteFile(dir.file("big.PRO"), pro);
      }, 100);
  ASSERT_NE(code, 0) << "the index was always built before the interrupt";
  EXPECT_EQ(code, 130) << ReadFile(dir.file("cli.stderr"));
  EXPECT_FALSE(FileExists(dir.file("big.NDX")));
}

}  // namespace
}  // namespace zv
