// zorvanta-cli split: the two files, the refusals before the job, a full disk.
#include <gtest/gtest.h>

#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

TEST(CliSplit, WritesBothFilesAndLeavesTheInput) {
  TempDir dir;
  WriteFile(dir.file("cap.log"), "one\ntwo\r\nthree");
  const auto r = RunCli({"split", "cap.log", "--at", "2", "--first", "a.txt", "--second", "b.txt"},
                        {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "Written: a.txt\nWritten: b.txt\n");
  EXPECT_EQ(ReadFile(dir.file("a.txt")), "one\r\n");
  EXPECT_EQ(ReadFile(dir.file("b.txt")), "two\r\nthree\r\n");
  EXPECT_EQ(ReadFile(dir.file("cap.log")), "one\ntwo\r\nthree");
}

TEST(CliSplit, RefusalsExitWithTwoAndWriteNothing) {
  TempDir dir;
  WriteFile(dir.file("cap.log"), "one\r\ntwo\r\n");
  struct Case {
    std::vector<std::string> args;
    std::string message;
  } cases[] = {
      {{"split", "gone.log", "--at", "2", "--first", "a", "--second", "b"}, "File Open Error: File not found."},
      {{"split", "cap.log", "--at", "0", "--first", "a", "--second", "b"}, "--at"},
      {{"split", "cap.log", "--at", "2", "--first", "cap.log", "--second", "b"}, "Split File"},
      {{"split", "cap.log", "--at", "2", "--first", "a"}, "--second"},
  };
  for (const Case& c : cases) {
    const auto r = RunCli(c.args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2) << c.message;
    EXPECT_TRUE(Has(r.err, c.message)) << r.err;
    EXPECT_FALSE(FileExists(dir.file("a")));
    EXPECT_FALSE(FileExists(dir.file("b")));
  }
  EXPECT_EQ(ReadFile(dir.file("cap.log")), "one\r\ntwo\r\n");
}

TEST(CliSplit, AFullDiskFailsWithFourAndRemovesTheOutputs) {
  TempDir dir;
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "a line of the capture\r\n";
  WriteFile(dir.file("cap.log"), text);
  const auto r = RunCli({"split", "cap.log", "--at", "100", "--first", "a.txt", "--second", "b.txt"},
                        {.cwd = dir.path().string(), .fileSizeLimit = 100000});
  EXPECT_EQ(r.exitCode, 4) << r.err;
  EXPECT_TRUE(Has(r.err, "Error number")) << r.err;
  EXPECT_FALSE(FileExists(dir.file("a.txt")));
  EXPECT_FALSE(FileExists(dir.file("b.txt")));
}

}  // namespace
}  // namespace zv
