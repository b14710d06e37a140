// The frame around every job: input checks, names, timing, the dispatcher's traps.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include "commands/command_table.h"
#include "core/dispatcher.h"
#include "core/error.h"
#include "core/input_file.h"
#include "core/job.h"
#include "core/time_text.h"
#include "support/test_support.h"

namespace zv {
namespace {

TEST(CheckInputFileNames, AnExtensionGivesAStemWithoutFolderAndNoneKeepsThePath) {
  test::TempDir dir;
  test::WriteFile(dir.file("a.b.log"), "x");
  test::WriteFile(dir.file("noext"), "x");
  JobState job;
  Message m;
  ASSERT_TRUE(CheckInputFile(job, dir.file("a.b.log"), m));
  EXPECT_EQ(job.gsInFile, dir.file("a.b.log"));
  EXPECT_EQ(job.gsBaseName, "a.b");
  EXPECT_EQ(job.gsProFile, "a.b.PRO");
  EXPECT_EQ(job.gsIndexFile, "a.b.NDX");
  ASSERT_TRUE(CheckInputFile(job, dir.file("noext"), m));
  EXPECT_EQ(job.gsBaseName, dir.file("noext"));
  EXPECT_EQ(job.gsProFile, dir.file("noext") + ".PRO");
}

TEST(CheckInputFileRefusals, GiveTheSystemsWarningsAndLeaveTheJobAlone) {
  test::TempDir dir;
  std::filesystem::create_directory(dir.file("X.PROJ"));
  test::WriteFile(dir.file("X.PROJ/in.log"), "x");
  test::WriteFile(dir.file("lower.pro"), "x");
  JobState job;
  Message m;
  EXPECT_FALSE(CheckInputFile(job, dir.file("X.PROJ/in.log"), m));  // the search takes the whole path
  EXPECT_EQ(m.title, "Open File Error");
  EXPECT_EQ(m.text, "Input file must not have .PRO extension.");
  EXPECT_TRUE(job.gsInFile.empty());
  EXPECT_TRUE(CheckInputFile(job, dir.file("lower.pro"), m));  // case-sensitive: passes
}

// What the open dialog never offers but a command line can name: each refusal says
// its real cause under the dialog's title.
TEST(CheckInputFileRefusals, NameTheRealCauseOfAnInputThatIsNoReadableFile) {
  test::TempDir dir;
  ASSERT_EQ(::mkfifo(dir.file("pipe.log").c_str(), 0600), 0);
  // Reading a process's memory file from its start fails, even for the superuser.
  std::filesystem::create_symlink("/proc/self/mem", dir.file("unreadable.log"));
  struct Case {
    std::string path, text;
  } cases[] = {
      {dir.file("none.log"), "File not found."},
      {dir.path().string(), "Input file is a directory, not a file."},
      {dir.file("pipe.log"), "Input file is not a regular file (a pipe, a device or a socket); a filter must read it twice."},
      {dir.file("unreadable.log"), "Input file cannot be read (Input/output error)."},
  };
  for (const Case& c : cases) {
    JobState job;
    Message m;
    EXPECT_FALSE(CheckInputFile(job, c.path, m)) << c.path;
    EXPECT_EQ(m.title, "File Open Error");
    EXPECT_EQ(m.text, c.text);
    EXPECT_TRUE(job.gsInFile.empty());
  }
}

TEST(CheckInputFileRefusals, AnOutputNameTooLongForTheFileSystemIsRefusedBeforeAnythingIsWritten) {
  test::TempDir dir;
  const std::string name(253, 'n');  // fits; name + ".PRO" does not
  test::WriteFile(dir.file(name), "x");
  JobState job;
  Message m;
  EXPECT_FALSE(CheckInputFile(job, dir.file(name), m));
  EXPECT_EQ(m.title, "Open File Error");
  EXPECT_EQ(m.text, "Output file name too long for the file system: " + name + ".PRO");
  // With an extension the stem is four shorter, and the outputs fit.
  test::WriteFile(dir.file(name.substr(0, 249) + ".log"), "x");
  EXPECT_TRUE(CheckInputFile(job, dir.file(name.substr(0, 249) + ".log"), m));
}

// Without an output folder the outputs lie where the stem leads: the current directory
// for a name with an extension, beside the input for one without. With one they lie in
// it under the output name's last component, whatever the form of the capture's name.
TEST(CheckInputFileNames, AnOutputFolderTakesTheLastComponentOfEveryFormOfName) {
  test::TempDir dir;
  std::filesystem::create_directories(dir.file("in/my.dir"));
  for (const char* f : {"in/capture", "in/capture.log", "in/my.dir/capture"}) test::WriteFile(dir.file(f), "x");
  struct InDir {
    std::filesystem::path was = std::filesystem::current_path();
    explicit InDir(const std::filesystem::path& p) { std::filesystem::current_path(p); }
    ~InDir() { std::filesystem::current_path(was); }
  } inDir(dir.path());
  struct Case {
    std::string input, withoutFolder, withFolder;
  } cases[] = {
      {dir.file("in/capture"), dir.file("in/capture.PRO"), "/want/capture.PRO"},        // absolute, no dot
      {"in/capture", "in/capture.PRO", "/want/capture.PRO"},                            // relative with folders
      {dir.file("in/capture.log"), "capture.PRO", "/want/capture.PRO"},                 // an extension
      {"in/my.dir/capture", ".PRO", "/want/.PRO"},                                      // a dot only in a folder
  };
  for (const Case& c : cases) {
    JobState job;
    Message m;
    ASSERT_TRUE(CheckInputFile(job, c.input, m)) << c.input << ": " << m.text;
    EXPECT_EQ(job.gsProFile, c.withoutFolder) << c.input;
    job.outDir = "/want";
    ASSERT_TRUE(CheckInputFile(job, c.input, m)) << c.input;
    EXPECT_EQ(job.gsProFile, c.withFolder) << c.input;
    EXPECT_EQ(job.gsIndexFile, c.withFolder.substr(0, c.withFolder.size() - 4) + ".NDX") << c.input;
  }
}

TEST(CheckInputFileRefusals, AnInputAnOutputWouldReplaceIsRefused) {
  test::TempDir dir;
  test::WriteFile(dir.file("s.NDX"), "x");
  test::WriteFile(dir.file("s.FSC"), "x");
  JobState job;
  job.outDir = dir.path().string();
  Message m;
  EXPECT_FALSE(CheckInputFile(job, dir.file("s.NDX"), m));
  EXPECT_EQ(m.text, "Input file would be overwritten by an output file.");
  EXPECT_FALSE(CheckInputFile(job, dir.file("s.FSC"), m));
  job.outDir = dir.file("elsewhere");
  EXPECT_TRUE(CheckInputFile(job, dir.file("s.NDX"), m));
}

TEST(ShowElapsedTimes, IsTheDifferenceAndGoesNegativeAcrossMidnight) {
  EXPECT_EQ(ShowElapsed("10:00:00", "11:02:03"), "01:02:03");
  EXPECT_EQ(ShowElapsed("23:59:59", "00:00:01"), "-23:59:58");
  EXPECT_EQ(TimeOfDayText().size(), 8u);
}

TEST(ErrorTexts, KeepTheirBlanksInBothForms) {
  EXPECT_EQ(ErrNumberText(61), " 61");
  EXPECT_EQ(MessageBoxErrorText(" 61", "Disk full"), "Error number  61\rDisk full");
  EXPECT_EQ(ErrorFormText(" 61", "Disk full"), "Error number 61\r\nDisk full");
}

// Tools that end in each way, for the dispatcher.
JobResult countsRecords(CommandContext& c) {
  c.job.glRecNum = 7;
  return {};
}
JobResult failsWithDiskFull(CommandContext& c) {
  c.job.glRecNum = 3;
  throw ZvError(err::kDiskFull, "Disk full", "x.PRO");
}
JobResult cancelsTheDialog(CommandContext&) { throw ZvError(err::kCancel, "Cancel"); }
JobResult throwsSomethingElse(CommandContext&) { throw std::logic_error("bug"); }

constexpr Command kTable[] = {
    {1, "counts", "", "", "", &countsRecords},       {2, "disk", "", "", "", &failsWithDiskFull},
    {3, "cancel", "", "", "", &cancelsTheDialog},    {4, "bug", "", "", "", &throwsSomethingElse},
    {5, "desktop only", "", "", "", nullptr},
};

TEST(RunCommandDispatch, ZeroesTheRecordCountAroundEveryCommand) {
  JobState job;
  CommandContext c{job, NoProgress(), {}};
  job.glRecNum = 99;
  const auto r = RunCommand(1, c, kTable);
  EXPECT_EQ(r.outcome, JobOutcome::Done);
  EXPECT_FALSE(r.error);
  EXPECT_EQ(job.glRecNum, 0);
  job.glRecNum = 5;
  EXPECT_EQ(RunCommand(42, c, kTable).outcome, JobOutcome::NoCommand);
  EXPECT_EQ(RunCommand(5, c, kTable).outcome, JobOutcome::NoCommand);
  EXPECT_EQ(job.glRecNum, 0);
}

TEST(RunCommandDispatch, CatchesEveryErrorButNeverReportsTheDialogsCancel) {
  JobState job;
  CommandContext c{job, NoProgress(), {}};
  auto r = RunCommand(2, c, kTable);
  ASSERT_TRUE(r.error);
  EXPECT_EQ(r.outcome, JobOutcome::Failed);
  EXPECT_EQ(r.error->number(), 61);
  EXPECT_EQ(job.gsErrNumber, " 61");
  EXPECT_EQ(job.gsErrText, "Disk full");
  EXPECT_EQ(job.glRecNum, 0);
  r = RunCommand(3, c, kTable);
  EXPECT_FALSE(r.error);
  EXPECT_EQ(r.outcome, JobOutcome::Cancelled);
  r = RunCommand(4, c, kTable);
  ASSERT_TRUE(r.error);
  EXPECT_EQ(r.error->number(), 51);
  EXPECT_EQ(r.error->detail(), "bug");
}

TEST(RunCommandDispatch, AFilterWithoutItsInputIsNoCommandAndOpensNothing) {
  JobState job;
  CommandContext c{job, NoProgress(), {}};
  EXPECT_EQ(RunCommand(100, c, CommandTable()).outcome, JobOutcome::NoCommand);
}

TEST(RunJobTranslation, EveryFailureBecomesOneSystemNumber) {
  EXPECT_EQ(AsZvError(std::out_of_range("at")).number(), 9);
  EXPECT_EQ(AsZvError(std::out_of_range("at")).text(), "Subscript out of range");
  EXPECT_EQ(AsZvError(std::bad_alloc()).number(), 7);
  EXPECT_EQ(AsZvError(std::runtime_error("x")).number(), 51);
  EXPECT_EQ(AsZvError(ZvError(61, "Disk full")).number(), 61);
}

// A tool that writes an output, then ends as told.
struct WaysOutCase {
  JobOutcome outcome;  // what the body returns; Failed means it throws
  KeepOn keepOn;
  bool outputStays;
  bool bookmarkStays;
};

TEST(RunJobWaysOut, TheFrameKeepsOrRemovesEachOutputAsTheJobMarkedIt) {
  const WaysOutCase cases[] = {
      {JobOutcome::Done, {}, true, true},
      {JobOutcome::ZeroRecords, {}, false, true},
      {JobOutcome::Interrupted, {}, false, false},
      {JobOutcome::Failed, {}, false, false},
      {JobOutcome::Refused, {}, false, false},
      {JobOutcome::Interrupted, KeepOn(WayOut::Interrupted), true, false},
      {JobOutcome::Failed, KeepOn(WayOut::Interrupted) | WayOut::Failed, true, false},
      {JobOutcome::ZeroRecords, KeepOn(WayOut::Interrupted), false, true},
  };
  for (const WaysOutCase& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.outcome));
    test::TempDir dir;
    const std::string out = dir.file("a.OUT"), wrk = dir.file("a.WRK"), keep = dir.file("keep.txt");
    test::WriteFile(wrk, "3\r\n");
    test::WriteFile(keep, "old");
    JobState state;
    state.giInterrupt = 1;  // a Cancel pressed for an earlier job
    bool sawInterrupt = true;
    const JobResult r = RunJob(state, NoProgress(), [&](Job& job, JobResult&) {
      sawInterrupt = job.interrupted();
      job.outputs.add(out, c.keepOn);
      job.outputs.alsoOnFailure(wrk);
      job.outputs.appendTo(keep);
      test::WriteFile(out, "new");
      test::WriteFile(keep, "old and more");
      if (c.outcome == JobOutcome::Failed) throw ZvError(err::kDiskFull, "Disk full");
      return c.outcome;
    });
    EXPECT_FALSE(sawInterrupt);
    EXPECT_EQ(r.outcome, c.outcome);
    EXPECT_EQ(r.error.has_value(), c.outcome == JobOutcome::Failed);
    EXPECT_EQ(test::FileExists(out), c.outputStays);
    EXPECT_EQ(test::FileExists(wrk), c.bookmarkStays);
    EXPECT_EQ(test::ReadFile(keep), c.outcome == JobOutcome::Done ? "old and more" : "old");
    EXPECT_EQ(state.giInterrupt, 0);
    if (c.outcome == JobOutcome::Done) {
      EXPECT_EQ(r.files, (std::vector<std::string>{out, keep}));
    }
  }
}

TEST(RunJobWaysOut, AFileTheJobMadeByAppendingGoesWhenTheJobFails) {
  test::TempDir dir;
  const std::string keep = dir.file("new-keep.txt");
  JobState state;
  const JobResult r = RunJob(state, NoProgress(), [&](Job& job, JobResult&) -> JobOutcome {
    job.outputs.appendTo(keep);
    test::WriteFile(keep, "part");
    throw std::bad_alloc();
  });
  EXPECT_EQ(r.error->number(), 7);
  EXPECT_EQ(state.gsErrNumber, " 7");
  EXPECT_FALSE(test::FileExists(keep));
}

}  // namespace
}  // namespace zv
