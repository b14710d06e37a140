// Divide: a file per record, the two lines behind each label read unseen, the limit
// of 999 files, and the files that outlive an abandoned job.
#include <gtest/gtest.h>

#include <filesystem>

#include "polish/divide.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::RunTool;
using test::TempDir;

JobResult Divide(JobState& s, JobProgress& p, const std::string& in, const std::string&) {
  return DivideRecords(s, p, {in});
}

test::ToolRun RunDivide(const TempDir& dir, const std::vector<std::string>& lines, int32_t interruptAt = 0) {
  return RunTool(dir, CrLf(lines), &Divide, {.inName = "recs.PRO", .interruptAtLine = interruptAt});
}

TEST(DivideRecords, EachRecordGoesToItsOwnFileWithoutItsLabelAndTheLineBehindIt) {
  TempDir dir;
  const auto run = RunDivide(dir, {"Record - 1", "", "first", "a", "", "Record - 2", "", "second", "",
                                   "Record - 3", "", "third"});
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(ReadFile(dir.file("recs.001")), CrLf({"first", "a", ""}));  // the separator goes along
  EXPECT_EQ(ReadFile(dir.file("recs.002")), CrLf({"second", ""}));
  EXPECT_EQ(ReadFile(dir.file("recs.003")), CrLf({"third"}));
  EXPECT_EQ(run.result.files,
            (std::vector<std::string>{dir.file("recs.001"), dir.file("recs.002"), dir.file("recs.003")}));
  EXPECT_EQ(run.progress->captions, run.result.files);  // each file named as it is made
  EXPECT_EQ(run.progress->title, "Divide Records To Files");
  EXPECT_EQ(run.result.records, 3);
}

TEST(DivideRecords, TheTwoLinesBehindALabelAreNeitherTestedNorCleaned) {
  TempDir dir;
  // The dropped line holds text; the first body line is itself a label and keeps its
  // high-bit byte and its tab; "Record -" alone is a label.
  const auto run = RunDivide(dir, {"Record - 1", "lost text", "Record - 9\xE9\t", "body\xE9", "Record -", "",
                                   "x"});
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(ReadFile(dir.file("recs.001")), CrLf({"Record - 9\xE9\t", std::string("bodyi")}));
  EXPECT_EQ(ReadFile(dir.file("recs.002")), CrLf({"x"}));
  EXPECT_FALSE(FileExists(dir.file("recs.003")));
}

TEST(DivideRecords, ALabelOnTheLastLineMakesNoFileAndOnTheSecondLastReadsPastTheEnd) {
  TempDir dir;
  auto run = RunDivide(dir, {"Record - 1", "", "a", "Record - 2"});
  EXPECT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.result.files, std::vector<std::string>{dir.file("recs.001")});

  // With a file made, the abandoning fails on its own: error 13, and the file stays.
  TempDir dir2;
  run = RunDivide(dir2, {"Record - 1", "", "a", "Record - 2", ""});
  EXPECT_EQ(run.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(run.result.error->number(), 13);
  EXPECT_EQ(run.result.error->text(), "Type mismatch");
  EXPECT_EQ(ReadFile(dir2.file("recs.001")), CrLf({"a"}));
  // Before the first file the error is told as it is.
  TempDir dir3;
  run = RunDivide(dir3, {"Record - 1", ""});
  EXPECT_EQ(run.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(run.result.error->number(), 62);
  EXPECT_EQ(run.result.error->text(), "Input past end of file");
}

TEST(DivideRecords, AFileWhoseFirstLineIsNoLabelIsRefusedAtOnce) {
  TempDir dir;
  const auto run = RunDivide(dir, {"preamble", "Record - 1", "", "a"});
  EXPECT_EQ(run.result.outcome, JobOutcome::Refused);
  EXPECT_EQ(run.result.message->title, "File Format Error");
  EXPECT_EQ(run.result.message->text, "This does not appear to be a filtered record file.");
  EXPECT_EQ(run.progress->lastLine, 0);
  EXPECT_FALSE(FileExists(dir.file("recs.001")));
}

TEST(DivideRecords, TheThousandthRecordIsRefusedWithTheLimitAndTheJobEndsWith999Files) {
  TempDir dir;
  std::vector<std::string> lines;
  for (int i = 1; i <= 1001; ++i) lines.insert(lines.end(), {"Record - " + std::to_string(i), "", "r" + std::to_string(i)});
  const auto run = RunDivide(dir, lines);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  ASSERT_TRUE(run.result.message);
  EXPECT_EQ(run.result.message->title, "Files Limit");
  EXPECT_EQ(run.result.message->text,
            "There have been 999 files created, which is the limit.  To divide more records into separate files, "
            "first split the input file.");
  EXPECT_EQ(run.result.files.size(), 999u);
  EXPECT_EQ(ReadFile(dir.file("recs.999")), CrLf({"r999"}));
  EXPECT_FALSE(FileExists(dir.file("recs.1000")));
  EXPECT_EQ(run.result.records, 1000);
  EXPECT_EQ(run.result.lines, 3000);  // the 1000th record's two lines were read
}

TEST(DivideRecords, AnInterruptAfterTheFirstFileKeepsEveryFileAndEndsInError13) {
  TempDir dir;
  const auto run = RunDivide(dir, {"Record - 1", "", "a", "b", "Record - 2", "", "c", "d"}, 7);
  EXPECT_EQ(run.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(run.result.error->number(), 13);
  EXPECT_EQ(run.state->gsErrNumber, " 13");
  EXPECT_EQ(ReadFile(dir.file("recs.001")), CrLf({"a", "b"}));
  EXPECT_EQ(ReadFile(dir.file("recs.002")), CrLf({"c"}));  // cut off, but kept
  EXPECT_EQ(run.result.files, (std::vector<std::string>{dir.file("recs.001"), dir.file("recs.002")}));
}

TEST(DivideRecords, NamesComeFromTheBaseNameWithThreeDigits) {
  EXPECT_EQ(DividedFileName("a.b", 1), "a.b.001");
  EXPECT_EQ(DividedFileName("x", 42), "x.042");
  // An input without "." keeps its whole path as the stem; one that a file would
  // replace is refused.
  TempDir dir;
  test::WriteFile(dir.file("plain"), CrLf({"Record - 1", "", "a"}));
  JobState state;
  const JobResult r = DivideRecords(state, NoProgress(), {dir.file("plain")});
  EXPECT_EQ(r.files, std::vector<std::string>{dir.file("plain") + ".001"});
  const auto refused = RunTool(dir, CrLf({"Record - 1", "", "a"}), &Divide, {.inName = "recs.002"});
  EXPECT_EQ(refused.result.outcome, JobOutcome::Refused);
  EXPECT_EQ(refused.result.message->text, "Input file would be overwritten by an output file.");
}

}  // namespace
}  // namespace zv
