// The frame around every job: input checks, names, timing, the dispatcher's traps.
#include <gtest/gtest.h>

#include "commands/command_table.h"
#include "core/dispatcher.h"
#include "core/error.h"
#include "core/job_host.h"
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
  job.outDir = "/out";
  ASSERT_TRUE(CheckInputFile(job, dir.file("a.b.log"), m));
  EXPECT_EQ(job.gsProFile, "/out/a.b.PRO");
}

TEST(CheckInputFileRefusals, GiveTheSystemsWarningsAndLeaveTheJobAlone) {
  test::TempDir dir;
  std::filesystem::create_directory(dir.file("X.PROJ"));
  test::WriteFile(dir.file("X.PROJ/in.log"), "x");
  test::WriteFile(dir.file("lower.pro"), "x");
  JobState job;
  Message m;
  EXPECT_FALSE(CheckInputFile(job, dir.file("none.log"), m));
  EXPECT_EQ(m.title, "File Open Error");
  EXPECT_EQ(m.text, "File not found.");
  EXPECT_FALSE(CheckInputFile(job, dir.path().string(), m));  // a directory is no file
  EXPECT_EQ(m.text, "File not found.");
  EXPECT_FALSE(CheckInputFile(job, dir.file("X.PROJ/in.log"), m));  // the search takes the whole path
  EXPECT_EQ(m.title, "Open File Error");
  EXPECT_EQ(m.text, "Input file must not have .PRO extension.");
  EXPECT_TRUE(job.gsInFile.empty());
  EXPECT_TRUE(CheckInputFile(job, dir.file("lower.pro"), m));  // case-sensitive: passes
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

// A host that never chooses a file, and tools that fail in each way.
class NoFileHost : public JobHost {
 public:
  void GetInputFile(JobState& job, std::string_view) override { job.giCancelOpen = 1; }
};

JobOutcome countsRecords(JobState& job, JobHost&) {
  job.glRecNum = 7;
  return JobOutcome::Done;
}
JobOutcome failsWithDiskFull(JobState& job, JobHost&) {
  job.glRecNum = 3;
  throw ZvError(err::kDiskFull, "Disk full", "x.PRO");
}
JobOutcome cancelsTheDialog(JobState&, JobHost&) { throw ZvError(err::kCancel, "Cancel"); }
JobOutcome throwsSomethingElse(JobState&, JobHost&) { throw std::logic_error("bug"); }

constexpr Command kTable[] = {
    {1, "counts", "", "", "", &countsRecords},       {2, "disk", "", "", "", &failsWithDiskFull},
    {3, "cancel", "", "", "", &cancelsTheDialog},    {4, "bug", "", "", "", &throwsSomethingElse},
    {5, "desktop only", "", "", "", nullptr},
};

TEST(RunCommandDispatch, ZeroesTheRecordCountAroundEveryCommand) {
  JobState job;
  NoFileHost host;
  job.glRecNum = 99;
  const auto r = RunCommand(1, job, host, kTable);
  EXPECT_EQ(r.outcome, JobOutcome::Done);
  EXPECT_FALSE(r.error);
  EXPECT_EQ(job.glRecNum, 0);
  job.glRecNum = 5;
  EXPECT_EQ(RunCommand(42, job, host, kTable).outcome, JobOutcome::NoCommand);
  EXPECT_EQ(RunCommand(5, job, host, kTable).outcome, JobOutcome::NoCommand);
  EXPECT_EQ(job.glRecNum, 0);
}

TEST(RunCommandDispatch, CatchesEveryErrorButNeverReportsTheDialogsCancel) {
  JobState job;
  NoFileHost host;
  auto r = RunCommand(2, job, host, kTable);
  ASSERT_TRUE(r.error);
  EXPECT_EQ(r.error->number(), 61);
  EXPECT_EQ(job.gsErrNumber, " 61");
  EXPECT_EQ(job.gsErrText, "Disk full");
  EXPECT_EQ(job.glRecNum, 0);
  r = RunCommand(3, job, host, kTable);
  EXPECT_FALSE(r.error);
  EXPECT_EQ(r.outcome, JobOutcome::Cancelled);
  r = RunCommand(4, job, host, kTable);
  ASSERT_TRUE(r.error);
  EXPECT_EQ(r.error->detail(), "bug");
}

TEST(RunCommandDispatch, AFilterWithoutAChosenFileOpensNothing) {
  JobState job;
  NoFileHost host;
  const auto r = RunCommand(100, job, host, CommandTable());
  EXPECT_EQ(r.outcome, JobOutcome::Cancelled);
  EXPECT_EQ(job.giCancelOpen, 0);  // the filter resets it
}

}  // namespace
}  // namespace zv
