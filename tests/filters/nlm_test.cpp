// FilterNLM: the citation number lines, the 23 end lines and the separator rule.
#include "filters/nlm.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterNLM>;

TEST(NlmStartTests, ANumberWithOneBracketedWordOrABareNumberOfUpToFourDigits) {
  for (const char* line : {"12 (MEDFILE)", "1 ()", "7", "77", "777", "7777", "0042"}) {
    TempDir dir;
    const auto run = Filter(dir, {"PROG:", line, "BODY", "OK"});
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "BODY"})) << line;
  }
  for (const char* line :
       {"12  (MEDFILE)", "12 (MED FILE)", "12 (A)(B)", "12 (MEDFILE).", "12 (MEDFILE) ", "1A (MEDFILE)", "(12) MEDFILE",
        "12 MEDFILE)", "12 (MEDFILE", "77777", " 77", "7 7", "12a", ""}) {
    TempDir dir;
    EXPECT_EQ(Filter(dir, {"PROG:", line, "BODY", "OK"}).outcome, JobOutcome::ZeroRecords) << line;
  }
}

// Each line follows one body line of an open citation; "OK" closes what is left open.
struct EndCase {
  const char* line;
  bool ends;
};

class NlmEndTest : public testing::TestWithParam<EndCase> {};

TEST_P(NlmEndTest, EndsTheCitationWithoutWritingTheLine) {
  const EndCase c = GetParam();
  TempDir dir;
  const auto run = Filter(dir, {"1 (MEDFILE)", "BODY", c.line, "AFTER", "OK"});
  const auto want = c.ends ? CrLf({"Record - 1", "", "BODY"}) : CrLf({"Record - 1", "", "BODY", c.line, "AFTER"});
  EXPECT_EQ(run.pro, want) << c.line;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, NlmEndTest,
    testing::Values(EndCase{"OK", true}, EndCase{"OK.", false}, EndCase{"OK ", false}, EndCase{" OK", false},
                    EndCase{"CONTINUE PRINTING? (YES/NO)", true}, EndCase{"CONTINUE PRINTING", false},
                    EndCase{"ENTER USER: ", true}, EndCase{"user:", false}, EndCase{"Y", true}, EndCase{"N", true},
                    EndCase{"n", true}, EndCase{"y", false}, EndCase{"YES", false}, EndCase{"print full", true},
                    EndCase{"PRINTED 3", true}, EndCase{"allergy to nickel", true}, EndCase{"CNT", true},
                    EndCase{"PROG:", true}, EndCase{"SS 2 /C?", true}, EndCase{"stop", true},
                    EndCase{"TIME 00:01:02", true}, EndCase{"... more", true}, EndCase{"GOOD BYE!", true},
                    EndCase{"THE END", true}, EndCase{"  THE END", false}, EndCase{"The end", false},
                    EndCase{"*** DISCONNECTED", true}, EndCase{"** note", false}, EndCase{"Print", false},
                    EndCase{"   READY TO PRINT FROM SS 1", true}, EndCase{"x YOUR LAST SEARCH", true},
                    EndCase{"REPRINT PRIOR SEARCH? ", true}, EndCase{"SEE 'PRINTSPECS' FOR FORMATS", true},
                    EndCase{"SEE PRINTSPECS", false}, EndCase{"  SUPERPRINT COMPLETED.", true},
                    EndCase{"  SUPERPRINT COMPLETED", false},
                    // Found past other "R"s of the line, or cut short by its end.
                    EndCase{"RARE R: USER: R", true}, EndCase{"CORRECT, READY TO PRINT FRO", false},
                    EndCase{"R YOUR LAST SEARC", false},
                    // One character short of a word, or a word of another first character.
                    EndCase{"OKAY", false}, EndCase{"TIM", false}, EndCase{"..", false}, EndCase{"GOO", false},
                    EndCase{"TH", false}, EndCase{"PROG", false}, EndCase{"al", false}, EndCase{"stoP", false}),
    test::LineCaseName());

TEST(NlmWritingRules, TheSeparatorComesOnlyAfterAWrittenBodyLine) {
  TempDir dir;
  const auto run = Filter(dir, {"1 (MEDFILE)", "OK", "2 (MEDFILE)", "", "A", "", "", "  B", "2023", "C", "OK",
                                "session text", "3 (MEDFILE)", "D", "USER:"});
  // The first citation writes nothing, so no separator goes before record 2; a year
  // alone on its line starts a record of its own.
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "Record - 2", "", "A", "  B", "", "Record - 3", "", "C", "", "Record - 4",
                           "", "D"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(NlmEndOfInput, ACaptureCutOffInsideACitationWritesItsLastLineTwice) {
  TempDir dir;
  const auto run = Filter(dir, {"1 (MEDFILE)", "A", "LAST"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "LAST", "LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(NlmEndOfInput, ANumberLineAtTheVeryEndIsCountedWithTheLabelsLength) {
  TempDir dir;
  const auto run = Filter(dir, {"1 (MEDFILE)", "A", "77"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "", "Record - 2", "", "77"}));
  ASSERT_EQ(run.ndx.size(), 2u);
  // The label flag is still up after the loop, so the repeated "77" is accounted as
  // "Record - 2": the last record's length runs 8 bytes past the end of the file.
  EXPECT_EQ(run.ndx[1].startByte, 19);
  EXPECT_EQ(run.ndx[1].byteLen, static_cast<int32_t>(run.pro.size()) - 19 + 8);
  EXPECT_EQ(run.ndx[1].endLine, 7);
}

}  // namespace
}  // namespace zv
