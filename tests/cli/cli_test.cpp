// zorvanta-cli as scripts use it: outputs, messages on stderr, exit codes, bad input.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

const std::string kCapture = CrLf({"?b 155", "File 155:MEDLINE", "?t 1/5/1-2", " 1/5/1", "FIRST RECORD", " 1/5/2",
                                   "SECOND RECORD", "?logoff", " Logoff: level 1"});

bool noOutputs(const TempDir& dir, const std::string& stem) {
  return !FileExists(dir.file(stem + ".PRO")) && !FileExists(dir.file(stem + ".NDX")) &&
         !FileExists(dir.file(stem + ".FSC"));
}

TEST(CliUsage, HelpDescribesEveryCommandAndTheExitCodes) {
  const auto r = RunCli({"--help"});
  EXPECT_EQ(r.exitCode, 0);
  for (const char* word : {"filter", "dialog-all", "--out-dir", "ndx", "recNum startByte byteLen", "130",
                           "index FILE.PRO", "keep FILE.PRO|FILE.NDX --records LIST --to KEEPFILE",
                           "order FILE.PRO|FILE.NDX --order LIST",
                           "filter dialog-types CAPTURE --type T [--type T ...] [--out-dir DIR]",
                           "filter dialog-separate CAPTURE --type T=NAME [--type T=NAME ...] [--out-dir DIR]",
                           "filter adhoc CAPTURE --begin MARKER [--end MARKER] [--out-dir DIR]",
                           "filter dialmail CAPTURE [--out-dir DIR]",
                           "zorvanta-cli split FILE --at LINE --first OUT1 --second OUT2"})
    EXPECT_NE(r.out.find(word), std::string::npos) << word;
}

TEST(CliUsage, BadCommandLinesExitWithTwo) {
  EXPECT_EQ(RunCli({}).exitCode, 2);
  EXPECT_EQ(RunCli({"bogus"}).exitCode, 2);
  EXPECT_EQ(RunCli({"filter"}).exitCode, 2);
  EXPECT_EQ(RunCli({"filter", "dialog-all"}).exitCode, 2);
  EXPECT_EQ(RunCli({"filter", "dialog-all", "a.log", "--no-such-flag"}).exitCode, 2);
  TempDir dir;
  WriteFile(dir.file("a.log"), kCapture);
  const auto r = RunCli({"filter", "dialog-all", dir.file("a.log"), "--out-dir", dir.file("missing")});
  EXPECT_EQ(r.exitCode, 2);
  EXPECT_NE(r.err.find("Output directory not found"), std::string::npos);
}

TEST(CliFilter, WritesTheOutputsInTheCurrentDirectoryAndListsTheIndex) {
  TempDir dir;
  WriteFile(dir.file("session.log"), kCapture);
  const auto r = RunCli({"filter", "dialog-all", "session.log"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Records: 2"), std::string::npos);
  EXPECT_EQ(r.err.find('['), std::string::npos);  // no progress bar when stderr is no terminal
  EXPECT_EQ(ReadFile(dir.file("session.PRO")),
            CrLf({"", "", "Record - 1", "", "FIRST RECORD", "", "", "Record - 2", "", "SECOND RECORD", ""}));
  EXPECT_TRUE(FileExists(dir.file("session.FSC")));
  const auto ndx = RunCli({"ndx", dir.file("session.NDX")});
  EXPECT_EQ(ndx.exitCode, 0);
  EXPECT_EQ(ndx.out, "1 4 30 3 7 0\n2 36 31 8 11 0\n");
}

TEST(CliBadInput, RefusedFilesExitWithTwoAndTheSystemsMessage) {
  TempDir dir;
  WriteFile(dir.file("X.PRO.log"), kCapture);
  WriteFile(dir.file("old.NDX"), kCapture);
  std::filesystem::create_directory(dir.file("folder.log"));
  struct Case {
    std::string file, message;
  } cases[] = {
      {"missing.log", "File Open Error: File not found."},
      {"folder.log", "File Open Error: Input file is a directory, not a file."},
      {"X.PRO.log", "Open File Error: Input file must not have .PRO extension."},
      {"old.NDX", "Open File Error: Input file would be overwritten by an output file."},
  };
  for (const auto& c : cases) {
    const auto r = RunCli({"filter", "dialog-all", c.file}, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2) << c.file;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << c.file << ": " << r.err;
  }
  EXPECT_EQ(ReadFile(dir.file("old.NDX")), kCapture);
  EXPECT_FALSE(FileExists(dir.file("X.PRO")));
}

TEST(CliBadInput, AnEmptyFileTakesTheZeroRecordPath) {
  TempDir dir;
  WriteFile(dir.file("empty.log"), "");
  const auto r = RunCli({"filter", "dialog-all", "empty.log"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 3);
  EXPECT_NE(r.err.find("Zero Records: The filter has recognized no\nrecords.  This can be caused\n"
                       "by mis-matching filters and\nsystems."),
            std::string::npos)
      << r.err;
  EXPECT_TRUE(noOutputs(dir, "empty"));
}

TEST(CliBadInput, BinaryBytesAndHugeLinesAreFilteredWithoutHarm) {
  TempDir dir;
  std::string binary;
  for (int i = 0; i < 4096; ++i) binary += static_cast<char>((i * 37) & 0xff);
  WriteFile(dir.file("binary.log"), binary);
  auto r = RunCli({"filter", "dialog-all", "binary.log"}, {.cwd = dir.path().string()});
  EXPECT_TRUE(r.exitCode == 0 || r.exitCode == 3) << r.err;
  EXPECT_EQ(ReadFile(dir.file("binary.log")), binary);

  const std::string huge(100000, 'x');
  const std::string capture = CrLf({"?t 1/5/1", " 1/5/1", huge, huge, "?"});
  WriteFile(dir.file("huge.log"), capture);
  r = RunCli({"filter", "dialog-all", "huge.log"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file("huge.PRO")), CrLf({"", "Record - 1", "", huge, huge, ""}));
  EXPECT_EQ(ReadFile(dir.file("huge.log")), capture);
}

TEST(CliFailure, AnUnwritableOutputFolderFailsTheJobWithNothingLeft) {
  TempDir dir;
  WriteFile(dir.file("s.log"), kCapture);
  std::string target = "/sys";  // refuses new files even to the superuser
  if (geteuid() != 0) {
    target = dir.file("readonly");
    std::filesystem::create_directory(target);
    std::filesystem::permissions(target, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  }
  const auto r = RunCli({"filter", "dialog-all", dir.file("s.log"), "--out-dir", target});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_NE(r.err.find("Error number 70\nPermission denied"), std::string::npos) << r.err;
  EXPECT_EQ(ReadFile(dir.file("s.log")), kCapture);
}

// What the open dialog would never offer is refused with exit 2 and its real cause,
// before anything is written: a directory, a pipe, a file that cannot be read, a name
// whose outputs the file system cannot hold, an output folder that is a file.
TEST(CliBadInput, InputsThatAreNoReadableFileAreRefusedWithTheirCause) {
  TempDir dir;
  WriteFile(dir.file("s.log"), kCapture);
  ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0600), 0);
  // Reading a process's memory file from its start fails with an I/O error, even for
  // the superuser, whom no file mode stops.
  std::filesystem::create_symlink("/proc/self/mem", dir.file("unreadable.log"));
  const std::string longName(253, 'n');
  WriteFile(dir.file(longName), kCapture);
  struct Case {
    std::vector<std::string> args;
    std::string message;
  } cases[] = {
      {{"filter", "dialog-all", "pipe"}, "File Open Error: Input file is not a regular file (a pipe, a device or a socket)"},
      {{"filter", "dialog-all", "unreadable.log"}, "File Open Error: Input file cannot be read (Input/output error)."},
      {{"filter", "dialog-all", longName}, "Open File Error: Output file name too long for the file system: " + longName + ".PRO"},
      {{"filter", "dialog-all", "s.log", "--out-dir", "s.log"}, "Output directory is a file, not a directory: s.log"},
  };
  for (const Case& c : cases) {
    const auto r = RunCli(c.args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2) << c.args[2];
    EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
  }
  // Nothing was written: the folder holds the four inputs alone.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), std::filesystem::directory_iterator()), 4);
  EXPECT_EQ(ReadFile(dir.file("s.log")), kCapture);
  if (geteuid() != 0) {
    WriteFile(dir.file("locked.log"), kCapture);
    std::filesystem::permissions(dir.file("locked.log"), std::filesystem::perms::none);
    const auto r = RunCli({"filter", "dialog-all", "locked.log"}, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_NE(r.err.find("Input file cannot be read (Permission denied)."), std::string::npos) << r.err;
    EXPECT_TRUE(noOutputs(dir, "locked"));
  }
}

// With --out-dir the outputs lie in that folder under the output name's last
// component, whatever the form of the capture's name; without it where they always
// have (beside an input without a dot). An older capture.PRO beside the input stays.
TEST(CliFilter, OutDirHoldsTheOutputsOfEveryFormOfCaptureName) {
  TempDir dir;
  std::filesystem::create_directories(dir.file("in/my.dir"));
  for (const char* f : {"in/capture", "in/my.dir/capture", "in/my.capture.log"}) WriteFile(dir.file(f), kCapture);
  WriteFile(dir.file("in/capture.PRO"), "an older record file");
  struct Case {
    std::string capture, stem;
  } cases[] = {
      {dir.file("in/capture"), "capture"},  // absolute, no dot
      {"in/capture", "capture"},            // relative with a folder
      {"in/my.dir/capture", ""},            // a dot only in a folder: the stem is empty
      {"in/my.capture.log", "my.capture"},  // only the last extension goes
  };
  for (const Case& c : cases) {
    TempDir out;
    const auto r = RunCli({"filter", "dialog-all", c.capture, "--out-dir", out.path().string()},
                          {.cwd = dir.path().string()});
    ASSERT_EQ(r.exitCode, 0) << c.capture << ": " << r.err;
    for (const char* ext : {".PRO", ".NDX", ".FSC"}) EXPECT_TRUE(FileExists(out.file(c.stem + ext))) << c.capture << ext;
    EXPECT_NE(r.out.find("Records Saved To: " + out.file(c.stem + ".PRO")), std::string::npos) << r.out;
  }
  EXPECT_EQ(ReadFile(dir.file("in/capture.PRO")), "an older record file");
  EXPECT_FALSE(FileExists(dir.file("in/capture.NDX")));
  EXPECT_TRUE(noOutputs(dir, "in/my.capture"));
  EXPECT_FALSE(FileExists(dir.file(".PRO")));

  // Without --out-dir: beside the input for a name without a dot, which replaces the
  // older file as it always has.
  const auto r = RunCli({"filter", "dialog-all", "in/capture"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(ReadFile(dir.file("in/capture.PRO")).find("Record - 2"), std::string::npos);
}

TEST(CliNdx, RefusesAMissingFileAndOneThatIsNoWholeNumberOfIndexRecords) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB"}));
  auto r = RunCli({"ndx", dir.file("r.PRO")});
  EXPECT_EQ(r.exitCode, 2);
  EXPECT_NE(r.err.find("File Format Error: This does not appear to be an index file (40 bytes, not a multiple of 277)."),
            std::string::npos)
      << r.err;
  EXPECT_EQ(r.out, "");
  r = RunCli({"ndx", dir.file("gone.NDX")});
  EXPECT_EQ(r.exitCode, 2);
  EXPECT_NE(r.err.find("File not found."), std::string::npos) << r.err;
  ASSERT_EQ(RunCli({"index", dir.file("r.PRO")}).exitCode, 0);
  r = RunCli({"ndx", dir.file("r.NDX")});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "1 1 19 2 4 0\n2 21 19 4 7 0\n");
}

TEST(CliFailure, AFullDiskFailsTheJobAndRemovesItsOutputs) {
  TempDir dir;
  std::string capture = CrLf({"?b 1", "?t 1/5/1-200"});
  for (int i = 1; i <= 200; ++i) capture += CrLf({" 1/5/" + std::to_string(i), "A record line of some length."});
  capture += CrLf({"?logoff", " Logoff: x"});
  WriteFile(dir.file("full.log"), capture);
  WriteFile(dir.file("full.WRK"), "bookmarks of an earlier run");
  const auto r = RunCli({"filter", "dialog-all", "full.log"}, {.cwd = dir.path().string(), .fileSizeLimit = 4000});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_NE(r.err.find("Error number 61\nDisk full"), std::string::npos) << r.err;
  EXPECT_TRUE(noOutputs(dir, "full"));
  EXPECT_FALSE(FileExists(dir.file("full.WRK")));
  EXPECT_EQ(ReadFile(dir.file("full.log")), capture);
}

TEST(CliInterrupt, CtrlCExitsWith130AndRemovesTheOutputs) {
  TempDir dir;
  std::string block;
  for (int i = 1; i <= 1000; ++i) block += CrLf({" 1/5/" + std::to_string(i), "TITLE OF A RECORD", "", "Body."});
  const int code = test::InterruptCliOnceItWrites(
      {"filter", "dialog-all", "big.log"}, dir.path().string(), dir.file("big.PRO"), [&](int copies) {
        std::string capture;
        for (int i = 0; i < copies; ++i) capture += block;
        WriteFile(dir.file("big.log"), capture);
      }, 200);
  ASSERT_NE(code, 0) << "the job always finished before the interrupt";
  EXPECT_EQ(code, 130) << ReadFile(dir.file("cli.stderr"));
  EXPECT_TRUE(noOutputs(dir, "big"));
  EXPECT_TRUE(FileExists(dir.file("big.log")));
}

TEST(CliProgress, ABarIsDrawnOnATerminalAndClearedAtTheEnd) {
  TempDir dir;
  WriteFile(dir.file("session.log"), kCapture);
  const auto r = test::RunCliOnTerminal({"filter", "dialog-all", "session.log"}, dir.path().string());
  EXPECT_EQ(r.exitCode, 0) << r.out;
  EXPECT_NE(r.out.find("] "), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("line 1 of 9"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Records: 2"), std::string::npos) << r.out;
}

}  // namespace
}  // namespace zv
