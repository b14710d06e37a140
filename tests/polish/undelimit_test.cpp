// Undelimit: at most two "|" cut from the very end of each line.
#include <gtest/gtest.h>

#include "polish/undelimit.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunTool;
using test::TempDir;

JobResult Undelimit(JobState& s, JobProgress& p, const std::string& in, const std::string& out) {
  return UndelimitRecords(s, p, {in, out});
}

TEST(UndelimitRecords, CutsUpToTwoDelimitersFromTheVeryEndOfEachLine) {
  TempDir dir;
  const auto run = RunTool(dir, CrLf({"abc|", "abc||", "abc|||", "a|b", "|", "abc| ", "||||"}), &Undelimit);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, CrLf({"abc", "abc", "abc|", "a|b", "", "abc| ", "||"}));
}

TEST(UndelimitRecords, TaggedRecordsLoseTheirTrailingDelimitersAndKeepTheRest) {
  TempDir dir;
  const auto run = RunTool(dir, CrLf(test::kTaggedLines), &Undelimit);
  std::vector<std::string> expected = test::CleanedTaggedLines();
  expected[2] = "TI- Rust|in  wheat";
  expected[3] = "AU- Smith, J.^Jones, K.";
  expected[4] = "DE- Wheat|Rust||Fungi_Plant^_Disease";
  expected[5] = "    Crops";
  expected[7] = "      goes on here";
  expected[11] = "TI- Second                    title";
  EXPECT_EQ(run.out, CrLf(expected));
  EXPECT_EQ(run.result.records, 3);
  EXPECT_EQ(run.progress->title, "Undelimit Dialog Records");
}

TEST(UndelimitRecords, ItsFormatTestNeverFires) {
  TempDir dir;
  std::vector<std::string> body = test::BodyLines(80);
  body[50] += "|";
  const auto run = RunTool(dir, CrLf(body), &Undelimit);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  body[50].pop_back();
  EXPECT_EQ(run.out, CrLf(body));
}

}  // namespace
}  // namespace zv
