// FilterBRS: start lines, end lines, what a document keeps, and the end of input.
#include "filters/brs.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunFilterOn;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterBRS>;

// A print of two documents between a search prompt and the end of the list.
const std::vector<std::string> kTwoDocuments = {
    "SEARCH  2      --> ..PRINT 1 ALL/DOC=1-2",
    "       1",
    "AN  ACCESSION 9901.",
    "",
    "TI  FIRST TITLE.",
    "       2",
    "AN  ACCESSION 9902.",
    "END OF DOCUMENTS IN LIST",
    "ENTER ANSWER NUMBER--> ..OFF",
};

TEST(BrsDocuments, LabelsEachDocumentAndDropsTheSession) {
  TempDir dir;
  const auto run = RunFilterOn(&FilterBRS, dir, CrLf(kTwoDocuments));
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "AN  ACCESSION 9901.", "TI  FIRST TITLE.", "", "Record - 2", "",
                           "AN  ACCESSION 9902."}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

// Each candidate follows a print command; it starts a record when the job finds one.
struct StartCase {
  const char* line;
  bool start;
};

class BrsStartLineTest : public testing::TestWithParam<StartCase> {};

TEST_P(BrsStartLineTest, OnlyANumberRightJustifiedInEightColumns) {
  TempDir dir;
  const auto run = Filter(dir, {"SEARCH  1      --> ..P 1", GetParam().line, "BODY"});
  if (GetParam().start) {
    ASSERT_EQ(run.outcome, JobOutcome::Done) << GetParam().line;
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "BODY", "BODY"}));
  } else {
    EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords) << GetParam().line;
    EXPECT_FALSE(run.proExists || run.ndxExists);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BrsStartLineTest,
    testing::Values(StartCase{"       7", true}, StartCase{"     123", true}, StartCase{"19970314", true},  // a date too
                    StartCase{"       7 ", false},                           // nine columns
                    StartCase{"      7", false},                             // seven columns
                    StartCase{"   12 34", false},                            // broken by a blank
                    StartCase{"        ", false}, StartCase{"      7a", false}, StartCase{"     A12", false},
                    StartCase{"\t      7", false},                           // a tab is no blank
                    StartCase{"\xA0\xA0\xA0\xA0\xA0\xA0\xA0" "7", true},     // high bit cleared: blanks
                    StartCase{"      \xB1\xB2", true}),  // ... and digits
    test::LineCaseName());

TEST(BrsStartLines, AStartLineInsideADocumentOpensTheNext) {
  TempDir dir;
  const auto run = Filter(dir, {"       1", "A", "20240314", "B", "       3", "       4", "C", "*SIGN OFF  10:02"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "", "Record - 2", "", "B", "", "Record - 3", "", "",
                           "Record - 4", "", "C"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(BrsEndLines, EachServiceLineClosesTheDocumentAndIsNotWritten) {
  for (const char* end : {"END OF PRINT REQUEST", "XEND OF DISPLAY REQUESTX", "  END OF DOCUMENTS IN LIST",
                          "ENTER ANSWER NUMBER-->", "ENTER SEARCH TERMS, COMMAND, OR ..(DOT DOT) COMMAND",
                          "BRS/MEDS - SEARCH  3      --> ..E", "ANSWER 3     12 DOCUMENTS FOUND",
                          "*CONNECT TIME  0:12:31", "ESTIMATED TOTAL SESSION COST: $4.10", "*SIGN OFF  10:14:02",
                          "BRS DISCONNECTED AT 10:14"}) {
    TempDir dir;
    const auto run = Filter(dir, {"       1", "TEXT", end, "AFTER", "      12", "NEXT", "SEARCH  9      --> "});
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "TEXT", "", "Record - 2", "", "NEXT"})) << end;
  }
}

TEST(BrsEndLines, NearMissesAndSmallLettersEndNothing) {
  for (const char* body : {"END OF DOCUMENT", "THE REQUEST END OF", "end of documents in list", "SEARCH  3 -->",
                           "SEARCH 3      --> X", "ANSWER 3", "*CONNECT TIME 0:12", "SESSION COST: $4",
                           "*SIGN OFF 10:14", "BRS DISCONNECTED", "Enter answer number-->"}) {
    TempDir dir;
    const auto run = Filter(dir, {"       1", body, "LAST", "END OF DOCUMENTS IN LIST"});
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", body, "LAST"})) << body;
  }
}

TEST(BrsWriting, DropsEmptyLinesAndKeepsLinesOfBlanksAsTheyStand) {
  TempDir dir;
  const auto run = Filter(dir, {"       1", "", "", "  INDENTED  ", "", "   ", "", "TAIL", "END OF PRINT REQUEST"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "  INDENTED  ", "   ", "TAIL"}));
}

TEST(BrsWriting, LinesOutsideDocumentsAreDroppedUntilTheNextStartLine) {
  TempDir dir;
  const auto run = Filter(dir, {"BANNER", "       1", "A", "ANSWER 2     5 DOCUMENTS FOUND", "STRAY TEXT",
                                "       2", "B", "*CONNECT TIME  0:01:00", "MORE STRAY"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "", "Record - 2", "", "B"}));
}

TEST(BrsEndOfInput, ADocumentBrokenOffHasItsLastLineTwiceAndIndexed) {
  TempDir dir;
  auto run = Filter(dir, {"       1", "A", "       2", "B", "LAST"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "", "Record - 2", "", "B", "LAST", "LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));

  TempDir blankDir;  // a blank last line comes back as one extra empty line
  run = Filter(blankDir, {"       1", "A", ""});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", ""}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));

  TempDir startDir;  // a start line at the very end stands as its raw text
  run = Filter(startDir, {"       1"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "       1"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

}  // namespace
}  // namespace zv
