// Renumber: labels from 1 in the order they stand, everything else a cleaned copy.
#include <gtest/gtest.h>

#include "polish/renumber.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunTool;
using test::TempDir;

JobResult Renumber(JobState& s, JobProgress& p, const std::string& in, const std::string& out) {
  return RenumberLabels(s, p, {in, out});
}

TEST(RenumberLabels, LabelsRunFromOneInOrderAndOtherLinesAreCopiedCleaned) {
  TempDir dir;
  const auto run = RunTool(dir, CrLf(test::kTaggedLines), &Renumber);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  std::vector<std::string> expected = test::CleanedTaggedLines();
  expected[0] = "Record - 1";   // was 5
  expected[9] = "Record - 2";
  expected[14] = "Record - 3";  // "Record -x" counts, and what stood behind it goes
  EXPECT_EQ(run.out, CrLf(expected));
  EXPECT_EQ(run.result.records, 3);
  EXPECT_EQ(run.result.lines, 17);
  EXPECT_EQ(run.progress->title, "Renumber Record File");
  EXPECT_EQ(run.progress->recordOdometer, (std::vector<int32_t>{1, 2, 3}));
  EXPECT_EQ(run.progress->lastLine, 17);
}

TEST(RenumberLabels, OnlyTheExactStartCountsAndALabelAloneBecomesWhole) {
  TempDir dir;
  const auto run = RunTool(dir, CrLf({"Record -", "", "record - 4", " Record - 4", "Record -- 9", "Record-3"}), &Renumber);
  EXPECT_EQ(run.out, CrLf({"Record - 1", "", "record - 4", " Record - 4", "Record - 2", "Record-3"}));
}

TEST(RenumberLabels, AFileWithoutLabelsUnderFortyLinesComesOutAsACleanedCopy) {
  TempDir dir;
  // A lone CR and a lone LF end lines too; every line goes out with CR LF.
  const auto run = RunTool(dir, "one\rtwo\nthree\x81", &Renumber);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, std::string("one\r\ntwo\r\nthree\0\r\n", 18));
  EXPECT_EQ(run.result.records, 0);
}

}  // namespace
}  // namespace zv
