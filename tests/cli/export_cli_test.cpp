// zorvanta-cli export and dedup: what they print, their exit codes, Ctrl-C and a full disk.
#include <gtest/gtest.h>

#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

const std::string kA = CrLf({"Record - 1", "", "TI  - Peat dams in fens", "AU  - Varga T", "SO  - Fen Studies 2020;3:1-9", "",
                             "Record - 2", "", "TI  - Methane from fens", "AU  - Holm E", "SO  - Fen Studies 2021;4:1-9"});
const std::string kB = CrLf({"Record - 5", "", "TI  - PEAT DAMS IN FENS.", "AU  - Varga, Tamas", "SO  - Fen Studies. 3:1-9, 2020."});

TEST(CliExport, WritesTheChosenFormatAndSaysHowManyRecords) {
  TempDir dir;
  WriteFile(dir.file("a.PRO"), kA);
  for (const std::string format : {"ris", "csl-json", "csv"}) {
    const auto r = RunCli({"export", "a.PRO", "--format", format, "--to", "a.out"}, {.cwd = dir.path().string()});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "Records Exported: 2\nWritten: a.out\n");
  }
  EXPECT_TRUE(Has(ReadFile(dir.file("a.out")), "Peat dams in fens"));
}

TEST(CliExport, UsageErrorsAndRefusalsExitWithTwo) {
  TempDir dir;
  WriteFile(dir.file("a.PRO"), kA);
  WriteFile(dir.file("notes.txt"), CrLf({"no label"}));
  struct Case {
    std::vector<std::string> args;
    std::string message;
  } cases[] = {
      {{"export", "a.PRO", "--to", "x.ris"}, "--format is required"},
      {{"export", "a.PRO", "--format", "bibtex", "--to", "x.ris"}, "bibtex not in {ris,csl-json,csv}"},
      {{"export", "gone.PRO", "--format", "ris", "--to", "x.ris"}, "File Open Error: File not found."},
      {{"export", "notes.txt", "--format", "ris", "--to", "x.ris"},
       "File Format Error: This does not appear to be a filtered record file."},
      {{"export", "a.PRO", "--format", "ris", "--to", "no/such/x.ris"}, "Output folder not found: no/such"},
      {{"export", "a.PRO", "--format", "ris", "--to", "a.PRO"}, "Input file would be overwritten by an output file."},
      {{"dedup", "--to", "x.PRO"}, "FILE is required"},
      {{"dedup", "a.PRO", "gone.PRO", "--to", "x.PRO"}, "File Open Error: File not found."},
      {{"dedup", "a.PRO", "--to", "x.PRO", "--report", "no/such/r.txt"}, "Output folder not found: no/such"},
      {{"dedup", "a.PRO", "--to", "x.PRO", "--report", "x.PRO"}, "Input file would be overwritten by an output file."},
  };
  for (const Case& c : cases) {
    const auto r = RunCli(c.args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2) << c.args[1] << ": " << r.err;
    EXPECT_TRUE(Has(r.err, c.message)) << r.err;
  }
  EXPECT_FALSE(FileExists(dir.file("x.ris")));
  EXPECT_FALSE(FileExists(dir.file("x.PRO")));
  EXPECT_EQ(ReadFile(dir.file("a.PRO")), kA);
}

TEST(CliDedup, KeepsOneRecordOfEachWorkAndWritesTheReport) {
  TempDir dir;
  WriteFile(dir.file("a.PRO"), kA);
  WriteFile(dir.file("b.PRO"), kB);
  const auto r = RunCli({"dedup", "a.PRO", "b.PRO", "--to", "all.PRO", "--report", "all.txt"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out,
            "Records Read: 3\nGroups Of One Work: 1\nRecords Left Out: 1\nRecords Kept: 2\nWritten: all.PRO\nWritten: all.txt\n");
  EXPECT_EQ(ReadFile(dir.file("all.PRO")), kA + "\r\n");
  EXPECT_TRUE(Has(ReadFile(dir.file("all.txt")),
                  "  why: Record - 5 of file 2 and Record - 1 of file 1: same title, year and first author\r\n"));
}

TEST(CliExport, HelpExplainsTheFormsAndTheRules) {
  EXPECT_TRUE(Has(RunCli({"export", "--help"}).out, "a record whose fields are not found goes out whole in a note"));
  EXPECT_TRUE(Has(RunCli({"dedup", "--help"}).out, "Renumber closes the gaps"));
}

TEST(CliExport, CtrlCAndAFullDiskLeaveNoOutput) {
  TempDir dir;
  std::string block;
  for (int k = 1; k <= 1000; ++k)
    block += CrLf({"Record - " + std::to_string(k), "", "TI  - Title number " + std::to_string(k), "AU  - Varga T", ""});
  const int code = test::InterruptCliOnceItWrites(
      {"export", "big.PRO", "--format", "csl-json", "--to", "big.json"}, dir.path().string(), dir.file("big.json"),
      [&](int copies) {
        std::string pro;
        for (int i = 0; i < copies; ++i) pro += block;
        WriteFile(dir.file("big.PRO"), pro);
      },
      100);
  ASSERT_NE(code, 0) << "the export always finished before the interrupt";
  EXPECT_EQ(code, 130) << ReadFile(dir.file("cli.stderr"));
  EXPECT_FALSE(FileExists(dir.file("big.json")));

  const auto full = RunCli({"dedup", "big.PRO", "--to", "out.PRO", "--report", "out.txt"},
                           {.cwd = dir.path().string(), .fileSizeLimit = 4096});
  EXPECT_EQ(full.exitCode, 4) << full.err;
  EXPECT_TRUE(Has(full.err, "Error: Error number 61\nDisk full")) << full.err;
  EXPECT_FALSE(FileExists(dir.file("out.PRO")));
  EXPECT_FALSE(FileExists(dir.file("out.txt")));
}

}  // namespace
}  // namespace zv
