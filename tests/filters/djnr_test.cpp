// FilterDJ: the DOCUMENT markers, the end tests and the blank lines they write.
#include "filters/djnr.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterDJ>;

TEST(DjnrStartTests, EitherMarkerAnywhereStartsADocumentAndItsLineIsLost) {
  for (const char* line :
       {"DOCUMENT=1", "  4 OF 4 DOCUMENTS    DOCUMENT=4 lost", "SEARCH 1  DOCUMENT  3 OF 4", "  DOCUMENT  "}) {
    TempDir dir;
    const auto run = Filter(dir, {"ENTER QUERY", line, "", "BODY", "End of document.", "after"});
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "BODY", ""})) << line;
  }
  for (const char* line : {"document=1", "DOCUMENT =1", " DOCUMENT  3", "  DOCUMENT 3", "DOCUMENTS=2"}) {
    TempDir dir;
    EXPECT_EQ(Filter(dir, {line, "BODY", "End of document."}).outcome, JobOutcome::ZeroRecords) << line;
  }
}

// Each line follows one body line; "Press ENTER" at the end closes what is left open.
struct EndCase {
  const char* line;
  int blanks;  // blank lines written as the record closes; -1: the line does not close it
};

class DjnrEndTest : public testing::TestWithParam<EndCase> {};

TEST_P(DjnrEndTest, ClosesTheDocumentWithItsBlankLines) {
  const EndCase c = GetParam();
  TempDir dir;
  const auto run = Filter(dir, {"DOCUMENT=1", "BODY", c.line, "AFTER", "Press ENTER"});
  std::vector<std::string> want = {"Record - 1", "", "BODY"};
  if (c.blanks < 0) {
    want.insert(want.end(), {c.line, "AFTER"});
  } else {
    want.insert(want.end(), static_cast<std::size_t>(c.blanks), "");
  }
  EXPECT_EQ(run.pro, CrLf(want)) << c.line;
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx)) << c.line;
}

INSTANTIATE_TEST_SUITE_P(Lines, DjnrEndTest,
                         testing::Values(EndCase{"   * END OF DOCUMENT.", 1}, EndCase{"* END OF DOCUMENT", -1},
                                         EndCase{"End of document.", 1}, EndCase{"end of document.", -1},
                                         EndCase{"End of documents in list", 1},  // test 6, not test 2
                                         EndCase{"..s", 1},
                                         EndCase{"  ..S  ", 1},                 // closed by "..S", the blank by ".."
                                         EndCase{"   .. End of document.", 2},  // two writing tests, two blank lines
                                         EndCase{" DOC+1 ", 1}, EndCase{"doc+1", -1}, EndCase{"DOC+12", -1},
                                         EndCase{"   doc=5", 1}, EndCase{"DOC=5", -1},
                                         EndCase{"CURRENT SET_2: 1 OF 2", 1}, EndCase{"CURRENT SET 2: 1 OF 2", -1},
                                         EndCase{"CURRENT SET_2 1 OF 2", -1}, EndCase{" CURRENT SET_2: 1", -1},
                                         EndCase{"Press ENTER to continue", 0}, EndCase{"press enter", -1}),
    test::LineCaseName());

TEST(DjnrWritingRules, BlankLinesAndLinesOutsideADocumentAreDropped) {
  TempDir dir;
  const auto run = Filter(dir, {"DOCUMENT=1", "", "A", "", "", "  B", "End of document.", "", "End of document.", "..s",
                                "* END OF DOCUMENT.", "DOC+1", "DOCUMENT=2", "C", "..s"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "  B", "", "Record - 2", "", "C", ""}));
}

TEST(DjnrWritingRules, DocumentsWithNoEndNoticeBetweenThemRunTogether) {
  TempDir dir;
  const auto run = Filter(dir, {"DOCUMENT=1", "A", "DOCUMENT=2", "BB", "End of document."});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "Record - 2", "", "BB", ""}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(DjnrWritingRules, AStartLineThatIsAlsoAnEndLineLeavesAnEmptyRecord) {
  TempDir dir;
  const auto run = Filter(dir, {"DOCUMENT=1 End of document.", "lost", "DOCUMENT=2", "B", "Press ENTER"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "", "Record - 2", "", "B"}));
}

TEST(DjnrEndOfInput, ACaptureCutOffInsideADocumentWritesItsLastLineTwice) {
  TempDir dir;
  auto run = Filter(dir, {"DOCUMENT=1", "A", "LAST"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "LAST", "LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  run = Filter(dir, {"DOCUMENT=1", "A", ""});  // a blank last line: one extra empty line
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", ""}));
  run = Filter(dir, {"DOCUMENT=1", "A", "DOCUMENT=2"});  // the marker line, raw
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "Record - 2", "", "DOCUMENT=2"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

}  // namespace
}  // namespace zv
