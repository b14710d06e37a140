// FilterDialogPik: which labels are kept, how they are numbered, and the quirks of the one file.
#include "filters/dialog_pick.h"

#include <gtest/gtest.h>

#include "filters/dialog_all.h"
#include "filters/types_test_support.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

struct PikRun {
  test::FilterRun run;
  test::RecordingProgress host;
  std::vector<std::pair<int, int32_t>> typeOdometers;
};

PikRun Pik(const TempDir& dir, const std::string& capture, std::array<std::string, kMaxTypes> types) {
  PikRun r;
  std::vector<std::pair<int, int32_t>>* odometers = &r.typeOdometers;
  r.run = test::RunFilterWith(
      [&](JobState& job, JobProgress& progress, const FilterInput& input) {
        test::TypeRecorder recorder(progress);
        JobResult result = FilterDialogPik(job, recorder, PikTypesParams{input, types});
        *odometers = recorder.types;
        return result;
      },
      dir, capture, "session.log", &r.host);
  return r;
}

PikRun Pik(const TempDir& dir, const std::vector<std::string>& lines, std::array<std::string, kMaxTypes> types) {
  return Pik(dir, CrLf(lines), std::move(types));
}

std::string Sample() { return test::ReadFile(ZV_SAMPLES_DIR "/dialog_types_session.log"); }

struct TypeCase {
  const char* name;
  const char* label;
  bool kept;
};

class DialogPikTypeTest : public testing::TestWithParam<TypeCase> {};

TEST_P(DialogPikTypeTest, ATypeIsMatchedExactlyAndCaseSensitively) {
  TempDir dir;
  const auto r = Pik(dir, {"?t 1/3,ab/4", GetParam().label, "BODY", "?"}, {"3,AB"});
  if (GetParam().kept) {
    ASSERT_EQ(r.run.outcome, JobOutcome::Done);
    EXPECT_EQ(r.run.pro, CrLf({"", "Record - 1", "", "BODY", "", ""}));
  } else {
    EXPECT_EQ(r.run.outcome, JobOutcome::ZeroRecords);
  }
}

INSTANTIATE_TEST_SUITE_P(Labels, DialogPikTypeTest,
                         testing::Values(TypeCase{"Wanted", " 1/3,AB/4", true},
                                         TypeCase{"WantedWithTail", " 1/3,AB/4     (Item 4 from file: 88)", true},
                                         TypeCase{"LowerCase", " 1/3,ab/4", false},
                                         TypeCase{"ShorterFormat", " 1/3/4", false},
                                         TypeCase{"LongerFormat", " 1/3,AB,K/4", false},
                                         TypeCase{"BadGap", " 1/3,AB/4  (x)", false}),
                         [](const testing::TestParamInfo<TypeCase>& param) { return param.param.name; });

TEST(DialogPikNumbers, APrintAfterAnUnwantedOneTakesTheNextFreeNumber) {
  TempDir dir;
  const auto r = Pik(dir, {"?t s1/5/1", " 1/5/1", "A1", "?t s1/3/2", " 1/3/2", "B2", "?t s1/5/3", " 1/5/3", "C3", "?"},
                     {"5"});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  EXPECT_EQ(r.run.pro, CrLf({"", "Record - 1", "", "A1", "", "", "", "Record - 2", "", "C3", "", ""}));
  EXPECT_TRUE(test::IndexAgreesWithPro(r.run.pro, r.run.ndx));
  // Every label moves the record odometer; only the kept ones move their type's.
  EXPECT_EQ(r.host.recordOdometer, (std::vector<int32_t>{1, 2, 3}));
  EXPECT_EQ(r.typeOdometers, (std::vector<std::pair<int, int32_t>>{{1, 1}, {1, 2}}));
  EXPECT_EQ(r.run.result.records, 2);
  EXPECT_EQ(r.host.title, "Specified Dialog Types to One File");
  EXPECT_EQ(r.run.result.files,
            (std::vector<std::string>{dir.file("session.PRO"), dir.file("session.NDX")}));  // no strategy lines
}

struct InsideCase {
  const char* name;
  const char* line;
  std::vector<int32_t> recordOdometer;
};

class DialogPikInsideTest : public testing::TestWithParam<InsideCase> {};

// A label not wanted, or a line that fails only the gap or the format test, while a
// kept record is open: the label is written again with the same number, counted at
// the length of the line, and the line itself goes on into the record.
TEST_P(DialogPikInsideTest, WritesTheCurrentLabelAgainAndGoesOnInTheRecord) {
  TempDir dir;
  const std::string line = GetParam().line;
  const auto r = Pik(dir, {"?t 1/5/1", " 1/5/1", "A", line, "B", "?"}, {"5"});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  EXPECT_EQ(r.run.pro, CrLf({"", "Record - 1", "", "A", "", "", "Record - 1", "", line, "B", ""}));
  ASSERT_EQ(r.run.ndx.size(), 1u);
  const IndexRec& rec = r.run.ndx[0];
  const auto counted = static_cast<int32_t>(r.run.pro.size() - std::string("Record - 1").size() + line.size());
  EXPECT_EQ(rec.startByte, 2);
  EXPECT_EQ(rec.startLine, 2);
  EXPECT_EQ(rec.endLine, 11);
  EXPECT_EQ(rec.byteLen, counted - 2);
  EXPECT_EQ(r.host.recordOdometer, GetParam().recordOdometer);
  EXPECT_EQ(r.typeOdometers, (std::vector<std::pair<int, int32_t>>{{1, 1}, {1, 2}}));
}

INSTANTIATE_TEST_SUITE_P(Lines, DialogPikInsideTest,
                         testing::Values(InsideCase{"UnwantedLabel", " 1/3/2", {1, 2}},
                                         InsideCase{"BadGap", " 1/5/2  (x)", {1}},
                                         InsideCase{"BadFormat", " 1/ABC/2", {1}}),
                         [](const testing::TestParamInfo<InsideCase>& param) { return param.param.name; });

TEST(DialogPikEndOfInput, ALastLineInsideARecordIsWrittenTwiceThenTheClosingBlank) {
  TempDir dir;
  const auto r = Pik(dir, {"?t 1/5/1", " 1/5/1", "A", "LAST"}, {"5"});
  EXPECT_EQ(r.run.pro, CrLf({"", "Record - 1", "", "A", "LAST", "LAST", ""}));
  EXPECT_TRUE(test::IndexAgreesWithPro(r.run.pro, r.run.ndx));
}

TEST(DialogPikSample, WithEveryTypeWantedItIsTheAllTypesFileAndOneBlankLineMore) {
  TempDir all, pik;
  const auto every = test::RunFilterOn(&FilterDialogAll, all, Sample());
  const auto r = Pik(pik, Sample(), {"3", "5", "8", "3,AB", "KWIC"});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  EXPECT_EQ(r.run.pro, every.pro + "\r\n");
  EXPECT_EQ(r.run.fsc, every.fsc);
  EXPECT_TRUE(test::IndexAgreesWithPro(r.run.pro, r.run.ndx));
  EXPECT_EQ(r.run.ndx.size(), 10u);
  EXPECT_EQ(r.typeOdometers.back(), (std::pair<int, int32_t>{2, 2}));  // 2/5/6 came last: the second of 5
}

TEST(DialogPikSample, AFormatFiveRecordRightBehindTheKwicOnesGoesOnUnderTheirLabel) {
  TempDir dir;
  const auto r = Pik(dir, Sample(), {"KWIC"});
  ASSERT_EQ(r.run.ndx.size(), 2u);
  const std::string second = test::RecordBytes(r.run.pro, r.run.ndx[1]);
  EXPECT_NE(second.find("Record - 2\r\n\r\n 2/5/6\r\n0403340"), std::string::npos) << second;
  EXPECT_NE(second.find("Nutrient burial"), std::string::npos);
  EXPECT_EQ(r.host.recordOdometer.size(), 10u);
}

TEST(DialogPikSample, EveryFieldIsComparedAndAnEmptyOneMatchesNothing) {
  TempDir a, b;
  auto r = Pik(a, Sample(), {"", "", "", "", "8"});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  EXPECT_EQ(r.run.ndx.size(), 1u);
  EXPECT_NE(r.run.pro.find("Fine sediment budgets"), std::string::npos);
  // The 3,AB record right behind it, with no prompt between, stays in it under its
  // label written again: the type's odometer counts that label too.
  EXPECT_NE(r.run.pro.find("Storm deposits"), std::string::npos);
  EXPECT_EQ(r.typeOdometers, (std::vector<std::pair<int, int32_t>>{{5, 1}, {5, 2}}));
  // The filter takes the types as given: a type in small letters finds nothing.
  r = Pik(b, Sample(), {"kwic"});
  EXPECT_EQ(r.run.outcome, JobOutcome::ZeroRecords);
}

TEST(DialogPikZeroRecords, OtherRecordsButNoneOfTheTypesGiveTheFiltersOwnMessage) {
  TempDir dir;
  test::WriteFile(dir.file("session.WRK"), "bookmarks");
  const auto r = Pik(dir, Sample(), {"9", "3,K"});
  EXPECT_EQ(r.run.outcome, JobOutcome::ZeroRecords);
  ASSERT_TRUE(r.run.result.message.has_value());
  EXPECT_EQ(r.run.result.message->title, "Zero Records");
  EXPECT_EQ(r.run.result.message->text,
            "The filter has recognized no records\nof types you specified.  This can happen\nwhen no records of the "
            "specified types\nare present in the file, by choosing the\nwrong filter or with Dialog records\n"
            "retrieved by accession number.");
  EXPECT_FALSE(r.run.proExists || r.run.ndxExists || r.run.fscExists);
  EXPECT_TRUE(test::FileExists(dir.file("session.WRK")));  // kept on the zero-record path
  EXPECT_EQ(r.host.recordOdometer.size(), 10u);
}

TEST(DialogPikInterrupt, NothingOfTheJobSurvives) {
  TempDir dir;
  test::WriteFile(dir.file("session.WRK"), "bookmarks of an earlier run");
  PikRun r;
  r.host.onLine = [&](int32_t line) {
    if (line == 60) r.host.running->giInterrupt = 1;
  };
  r.run = test::RunFilterWith(
      [](JobState& job, JobProgress& progress, const FilterInput& input) {
        return FilterDialogPik(job, progress, PikTypesParams{input, {"3", "5"}});
      },
      dir, Sample(), "session.log", &r.host);
  EXPECT_EQ(r.run.outcome, JobOutcome::Interrupted);
  EXPECT_EQ(r.host.lastLine, 60);
  EXPECT_FALSE(r.run.proExists || r.run.ndxExists || r.run.fscExists);
  EXPECT_FALSE(test::FileExists(dir.file("session.WRK")));
}

}  // namespace
}  // namespace zv
