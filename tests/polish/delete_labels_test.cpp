// Delete: labels dropped with the line behind them, whatever that line holds.
#include <gtest/gtest.h>

#include "polish/delete_labels.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunTool;
using test::TempDir;

JobResult Delete(JobState& s, JobProgress& p, const std::string& in, const std::string& out) {
  return DeleteLabels(s, p, {in, out});
}

TEST(DeleteLabels, DropsEachLabelWithTheLineBehindItAndCopiesTheRestCleaned) {
  TempDir dir;
  const auto run = RunTool(dir, CrLf(test::kTaggedLines), &Delete);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  const std::vector<std::string> c = test::CleanedTaggedLines();
  // "Record -x" takes the body line behind it along: it was not the empty line.
  EXPECT_EQ(run.out, CrLf({c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[11], c[12], c[13], c[16]}));
  EXPECT_EQ(run.result.records, 3);
  EXPECT_EQ(run.result.lines, 17);
  EXPECT_EQ(run.progress->title, "Delete Record Labels");
}

TEST(DeleteLabels, ALabelOnTheLastLineEndsTheFileAndNothingIsAdded) {
  TempDir dir;
  auto run = RunTool(dir, CrLf({"text", "Record - 1"}), &Delete);
  EXPECT_EQ(run.out, CrLf({"text"}));
  EXPECT_EQ(run.result.lines, 2);
}

TEST(DeleteLabels, AFileWithoutLabelsOfAnyLengthIsACleanedCopy) {
  TempDir dir;
  const std::vector<std::string> body = test::BodyLines(60);
  const auto run = RunTool(dir, CrLf(body), &Delete);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, CrLf(body));
}

}  // namespace
}  // namespace zv
