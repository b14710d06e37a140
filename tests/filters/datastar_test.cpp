// FilterDataStar: the three start line widths, end lines, page lines, the separator
// and the end of input.
#include "filters/datastar.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunFilterOn;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterDataStar>;

TEST(DataStarDocuments, LabelsEachDocumentAndDropsTheSession) {
  TempDir dir;
  const auto run = RunFilterOn(&FilterDataStar, dir,
                               CrLf({"D-S - SEARCH MODE - ENTER QUERY", "3_: ..p 2 1-2", "       1  LAKE", "AN  0001.",
                                     "", "TI  FIRST.", "END OF DOCUMENT", "       2  LAKE", "AN  0002.",
                                     "END OF DOCUMENTS IN LIST", "D-S - SEARCH MODE - ENTER QUERY", "4_: ..off"}));
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(run.pro, CrLf({"Record -  1", "", "AN  0001.", "TI  FIRST.", "", "Record -  2", "", "AN  0002."}));
  ASSERT_EQ(run.ndx.size(), 2u);
  EXPECT_EQ(run.ndx[1].startByte, 40);  // the label's second blank is counted
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

// Each candidate follows a prompt; `label` is the label it gets, or null for none.
struct StartCase {
  const char* line;
  const char* label;
};

class DataStarStartLineTest : public testing::TestWithParam<StartCase> {};

TEST_P(DataStarStartLineTest, FixedColumnsForEachOfTheThreeWidths) {
  TempDir dir;
  const auto run = Filter(dir, {"D-S - SEARCH MODE - ENTER QUERY", GetParam().line, "BODY", "END OF DOCUMENT"});
  if (GetParam().label) {
    ASSERT_EQ(run.outcome, JobOutcome::Done) << GetParam().line;
    EXPECT_EQ(run.pro, CrLf({GetParam().label, "", "BODY"}));
  } else {
    EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords) << GetParam().line;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, DataStarStartLineTest,
    testing::Values(StartCase{"     123  MEDL", "Record -  1"},    // 14: two blanks after the hyphen
                    StartCase{"    123  MEDL", "Record - 1"},      // 13
                    StartCase{"      123  MEDL", "Record - 1"},    // 15
                    StartCase{"     12x  MEDL", nullptr},          // no digit before the two blanks
                    StartCase{"     x23  MEDL", "Record -  1"},    // the columns to its left are not looked at
                    StartCase{"          MEDL", nullptr},          // position 8 a blank
                    StartCase{"     A23  MEDl", "Record -  1"},    // four capitals, anywhere
                    StartCase{"     123  MEDl", nullptr},          // three capitals
                    StartCase{"     A23  MEDL", nullptr},          // five
                    StartCase{"     123 xMEDL", nullptr},          // one blank behind the number
                    StartCase{"    1123  MEDL", nullptr},          // four leading blanks at width 14
                    StartCase{"   1123  MEDL", nullptr},           // three at width 13
                    StartCase{"       123  MEDL", nullptr},        // 16 columns
                    StartCase{"   123  MEDL", nullptr},            // 12 columns
                    StartCase{"\t    123  MEDL", nullptr},         // a tab is no blank
                    StartCase{"     123  \xCD\xC5\xC4\xCC", "Record -  1"}),  // high bit cleared: capitals
    test::LineCaseName());

TEST(DataStarStartLines, ASeparatorOnlyOnceABodyLineWasWritten) {
  TempDir dir;
  const auto run = Filter(dir, {"       1  MEDL", "       2  MEDL", "A", "END OF DOCUMENT", "NOTICE",
                                "       3  MEDL", "       4  MEDL", "B", "END OF DOCUMENT"});
  EXPECT_EQ(run.pro, CrLf({"Record -  1", "", "Record -  2", "", "A", "", "Record -  3", "", "", "Record -  4",
                           "", "B"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(DataStarEndLines, EachNoticeClosesTheDocumentAndIsNotWritten) {
  for (const char* end : {"END OF DOCUMENT", "  END OF DOCUMENTS IN LIST", "D-S - SEARCH MODE - ENTER QUERY",
                          "HAPPY HOUR on database MEDL begins"}) {
    TempDir dir;
    const auto run = Filter(dir, {"       1  MEDL", "TEXT", end, "AFTER", "       2  MEDL", "NEXT", "END OF DOCUMENT"});
    EXPECT_EQ(run.pro, CrLf({"Record -  1", "", "TEXT", "", "Record -  2", "", "NEXT"})) << end;
  }
  for (const char* body : {"End of document", "END OF DOC", "D-S - SEARCH MODE -", "HAPPY HOUR ON DATABASE MEDL"}) {
    TempDir dir;
    const auto run = Filter(dir, {"       1  MEDL", body, "LAST", "END OF DOCUMENT"});
    EXPECT_EQ(run.pro, CrLf({"Record -  1", "", body, "LAST"})) << body;
  }
}

TEST(DataStarWriting, PageLinesAreDroppedWithoutEndingTheDocument) {
  TempDir dir;
  const auto run = Filter(dir, {"       1  MEDL", "TX 1 OF 12.", "TEXT", "", "TX 10 OF 12345.", "TX 1 of 12.",
                                "  3 OF 12.", "3 OF 12.", "  3 OF 12", "  SEE PART OF 2.", "  PAGE 3 OF TWO.",
                                "   ", "END OF DOCUMENT"});
  EXPECT_EQ(run.pro, CrLf({"Record -  1", "", "TEXT", "TX 10 OF 12345.", "TX 1 of 12.", "3 OF 12.", "  3 OF 12",
                           "  PAGE 3 OF TWO.", "   "}));
}

TEST(DataStarEndOfInput, ADocumentBrokenOffHasItsLastLineTwice) {
  TempDir dir;
  auto run = Filter(dir, {"       1  MEDL", "A", "LAST"});
  EXPECT_EQ(run.pro, CrLf({"Record -  1", "", "A", "LAST", "LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));

  TempDir pageDir;  // the repeat skips the page line tests: a dropped last line comes now
  run = Filter(pageDir, {"       1  MEDL", "A", "  3 OF 12."});
  EXPECT_EQ(run.pro, CrLf({"Record -  1", "", "A", "  3 OF 12."}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(DataStarEndOfInput, AStartLineAtTheEndIsRepeatedRawAndCountedAsItsLabel) {
  TempDir dir;
  const auto run = Filter(dir, {"       1  MEDL", "A", "       2  MEDL"});
  EXPECT_EQ(run.pro, CrLf({"Record -  1", "", "A", "", "Record -  2", "", "       2  MEDL"}));
  ASSERT_EQ(run.ndx.size(), 2u);
  // The last pass labelled, so the repeat is counted at the label's 11 bytes instead
  // of the line's 14: the last record comes out 3 bytes short of the file's end.
  EXPECT_EQ(run.ndx[1].endLine, 7);
  EXPECT_EQ(run.ndx[1].byteLen, static_cast<int32_t>(run.pro.size()) - run.ndx[1].startByte - 3);
}

}  // namespace
}  // namespace zv
