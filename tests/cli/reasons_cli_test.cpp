// What zorvanta-cli says under the system's message when a job fails for a reason the
// number alone does not tell: a limit passed, labels standing together, an index that
// does not match its record file. And record files with labels under each other.
#include <gtest/gtest.h>

#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

TEST(CliReasons, ALimitPassedIsNamedWithTheInputLineUnderOverflow) {
  TempDir dir;
  std::string capture = CrLf({"?b 1"});
  for (int i = 0; i < 32767; ++i) capture += "x\r\n";
  capture += CrLf({"?t 1/5/1", " 1/5/1", "A", "?"});
  WriteFile(dir.file("fsc.log"), capture);
  const auto r = RunCli({"filter", "dialog-all", "fsc.log"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error: Error number 6\nOverflow\nLimit reached: the lines written to the .FSC (iFscLines) "
                         "can be at most 32767; passed at input line 32768.\n"))
      << r.err;
  EXPECT_FALSE(FileExists(dir.file("fsc.PRO")) || FileExists(dir.file("fsc.NDX")) || FileExists(dir.file("fsc.FSC")));
}

// A REFERENCE record followed at once by another: the STN filter writes their labels on
// adjacent lines. From label 2 on that indexes, keeps and orders; labels 1 and 2 so
// placed are the one file the index cannot be built from, and the message says where.
TEST(CliReasons, LabelsUnderEachOtherIndexKeepAndOrderButLabelsOneAndTwoSayWhereTheyStand) {
  TempDir dir;
  WriteFile(dir.file("s.log"), CrLf({"=> d l1 1-3", "L1  ANSWER 1 OF 3", "A", "REFERENCE  2", "REFERENCE  3", "CCC",
                                     "=> logoff"}));
  ASSERT_EQ(RunCli({"filter", "stn", "s.log"}, {.cwd = dir.path().string()}).exitCode, 0);
  ASSERT_EQ(ReadFile(dir.file("s.PRO")), CrLf({"Record - 1", "", "A", "Record - 2", "Record - 3", "CCC"}));
  auto r = RunCli({"index", "s.PRO"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(RunCli({"ndx", dir.file("s.NDX")}).out, "1 1 15 1 2 0\n2 17 12 4 4 0\n3 29 17 4 6 0\n");
  r = RunCli({"keep", "s.NDX", "--records", "2,3", "--to", "k.kep"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file("k.kep")), CrLf({"Record - 2", "Record - 3", "CCC", ""}));
  r = RunCli({"order", "s.PRO", "--order", "3,2"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file("s.ORD")),
            CrLf({"Record - 3", "CCC", "", "Record - 2", "Record - 1", "", "", ""}));

  WriteFile(dir.file("t.log"), CrLf({"=> d l1 1-3", "REFERENCE  1", "REFERENCE  2", "L1  ANSWER 3 OF 3", "C",
                                     "=> logoff"}));
  ASSERT_EQ(RunCli({"filter", "stn", "t.log"}, {.cwd = dir.path().string()}).exitCode, 0);
  r = RunCli({"index", "t.PRO"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 62\nInput past end of file (t.PRO)\nLabels 1 and 2 stand on adjacent lines "
                         "(lines 1 and 2): the index cannot be built from this file.\n"))
      << r.err;
  EXPECT_FALSE(FileExists(dir.file("t.NDX")));
}

// An index whose last record ends at line 2147483647 would have keep append about 4 GB
// of empty lines. It stops at the end of the .PRO and says why; the keep file is left
// as it was, and so is the .ORD of order.
TEST(CliReasons, ACorruptIndexStopsAtTheEndOfTheRecordFileAndSaysItDoesNotMatch) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC"}));
  ASSERT_EQ(RunCli({"index", "r.PRO"}, {.cwd = dir.path().string()}).exitCode, 0);
  std::string ndx = ReadFile(dir.file("r.NDX"));
  const std::size_t endLine = 2 * 277 + 16;  // record 3's endLine, little-endian
  ndx.replace(endLine, 4, std::string("\xff\xff\xff\x7f", 4));
  WriteFile(dir.file("r.NDX"), ndx);
  WriteFile(dir.file("k.kep"), "OLD\r\n");
  const std::string reason = "The index does not match its record file: record 3 runs past the end of r.PRO.\n";
  auto r = RunCli({"keep", "r.NDX", "--records", "1-3", "--to", "k.kep"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 62\nInput past end of file (r.PRO)\n" + reason)) << r.err;
  EXPECT_EQ(ReadFile(dir.file("k.kep")), "OLD\r\n");
  r = RunCli({"order", "r.NDX", "--order", "3"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, reason)) << r.err;
  EXPECT_FALSE(FileExists(dir.file("r.ORD")));
  // The content tools read the same extents, also where --large lifts the 16-bit count.
  const std::vector<std::string> tools[] = {
      {"query", "r.NDX", "--to", "q.QRY", "--or", "CCC"},
      {"rank", "r.NDX", "--term", "CCC=1", "--large"},
      {"sort", "r.NDX", "--tag", "CCC", "--large"},
  };
  for (const auto& args : tools) {
    r = RunCli(args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 4) << args[0] << ": " << r.err;
    EXPECT_TRUE(Has(r.err, reason)) << r.err;
  }
  EXPECT_FALSE(FileExists(dir.file("q.QRY")) || FileExists(dir.file("r.RNK")) || FileExists(dir.file("r.SRT")));
}

}  // namespace
}  // namespace zv
