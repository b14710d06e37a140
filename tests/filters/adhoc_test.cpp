// FilterAdHoc: whole-line markers, the lines they drop, and the empty lines gsPrevLine decides.
#include "filters/adhoc.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

struct Markers {
  std::string begin, end;
  bool bothMarkers = false;
  std::string prevLine;  // what an earlier tool left in gsPrevLine
};

test::FilterRun AdHoc(const TempDir& dir, const std::vector<std::string>& lines, const Markers& m,
                      test::RecordingProgress* host = nullptr) {
  return test::RunFilterWith(
      [&](JobState& job, JobProgress& progress, const FilterInput& input) {
        job.gsPrevLine = m.prevLine;
        return FilterAdHoc(job, progress, AdHocParams{input, m.begin, m.end, m.bothMarkers});
      },
      dir, CrLf(lines), "session.log", host);
}

const std::vector<std::string> kMarked = {"svc", "-begin-", "Title", "", "", "Body", "-end-", "svc2",
                                          "-begin-", "T2", "-end-"};

TEST(AdHocMarkers, BothMarkersKeepWhatLiesBetweenThem) {
  TempDir dir;
  test::RecordingProgress host;
  const auto run = AdHoc(dir, kMarked, {"-begin-", "-end-", true}, &host);
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "Title", "Body", "", "Record - 2", "", "T2"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  EXPECT_EQ(host.title, "Ad Hoc Filtering");
  EXPECT_EQ(host.recordOdometer, (std::vector<int32_t>{1, 2}));
  EXPECT_FALSE(run.fscExists);
}

TEST(AdHocMarkers, TheBeginningMarkerAloneRunsARecordToTheNextOne) {
  TempDir dir;
  // The ending marker is ordinary text then, and the capture ends inside a record.
  const auto run = AdHoc(dir, kMarked, {"-begin-", "-end-", false});
  EXPECT_EQ(run.pro,
            CrLf({"Record - 1", "", "Title", "Body", "-end-", "svc2", "", "Record - 2", "", "T2", "-end-", "-end-"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(AdHocMarkers, EmptyLinesAreKeptOnlyWhenAnEarlierToolLeftALine) {
  TempDir dir;
  const auto run = AdHoc(dir, {"-begin-", "A", "", "", "B", "-end-"}, {"-begin-", "-end-", true, "left over"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "", "", "B"}));
  EXPECT_TRUE(run.job->gsPrevLine.empty());  // CleanUp
}

struct MarkerCase {
  const char* name;
  std::vector<std::string> lines;
  Markers markers;
  std::vector<std::string> pro;  // empty: zero records
};

class AdHocMarkerTest : public testing::TestWithParam<MarkerCase> {};

TEST_P(AdHocMarkerTest, MatchesWholeLinesExactly) {
  TempDir dir;
  const auto run = AdHoc(dir, GetParam().lines, GetParam().markers);
  if (GetParam().pro.empty()) {
    EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords);
    EXPECT_EQ(run.result.message->text, kZeroRecordsText);
    EXPECT_FALSE(run.proExists || run.ndxExists);
  } else {
    ASSERT_EQ(run.outcome, JobOutcome::Done);
    EXPECT_EQ(run.pro, CrLf(GetParam().pro));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, AdHocMarkerTest,
    testing::Values(
        MarkerCase{"NeverMatches", {"text", "-begin-x"}, {"-begin-", ""}, {}},
        MarkerCase{"TrailingBlankStartsNothing", {"-begin- ", "A"}, {"-begin-", ""}, {}},
        MarkerCase{"OtherCase", {"-BEGIN-", "A"}, {"-begin-", ""}, {}},
        // Inside a record a line holding the marker is dropped, trailing blank or not.
        MarkerCase{"HoldingTheMarkerIsDropped", {"-begin-", "A", "-begin- ", "x -begin- y", "B"}, {"-begin-", ""},
                   {"Record - 1", "", "A", "B", "B"}},
        // Every line holds the empty text: every empty line starts a record and no
        // other line is written, but the last one, written again at the end.
        MarkerCase{"EmptyBeginning", {"x", "", "y", "", "z"}, {"", ""}, {"Record - 1", "", "", "Record - 2", "", "z"}},
        // The same line for both: each record opens and shuts on it.
        MarkerCase{"BothTheSame", {"##", "A", "##", "B"}, {"##", "##", true}, {"Record - 1", "", "", "Record - 2", ""}},
        MarkerCase{"EndOutsideARecord", {"-end-", "-begin-", "A", "-end-", "-end-", "B"}, {"-begin-", "-end-", true},
                   {"Record - 1", "", "A"}}),
    [](const testing::TestParamInfo<MarkerCase>& param) { return param.param.name; });

TEST(AdHocSample, TheMarkedSessionGivesThreeRecords) {
  TempDir dir;
  const std::string capture = test::ReadFile(ZV_SAMPLES_DIR "/adhoc_session.log");
  const auto run = test::RunFilterWith(
      [](JobState& job, JobProgress& progress, const FilterInput& input) {
        return FilterAdHoc(job, progress, AdHocParams{input, "-begin-", "-end-", true});
      },
      dir, capture);
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(run.ndx.size(), 3u);
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  for (const char* dropped : {"NORDLINK>", "-end-", "Document 2a", "editor's", "\r\n\r\n\r\n"})
    EXPECT_EQ(run.pro.find(dropped), std::string::npos) << dropped;
  EXPECT_EQ(test::ReadFile(dir.file("session.log")), capture);
}

}  // namespace
}  // namespace zv
