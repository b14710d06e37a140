// FilterSTN: start lines, end lines, hyphen lines, blank folding and the end of input.
#include "filters/stn.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterSTN>;

// A candidate start line after a prompt, one body line, and a prompt that ends it.
struct StartCase {
  const char* line;
  bool start;
  bool blankAfterLabel = true;
};

class StnStartTest : public testing::TestWithParam<StartCase> {};

TEST_P(StnStartTest, OpensARecordOnlyOnItsStartLines) {
  const StartCase& c = GetParam();
  TempDir dir;
  const auto run = Filter(dir, {"=> d l1 1-2", c.line, "BODY", "=> "});
  if (!c.start) {
    EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords) << c.line;
    return;
  }
  ASSERT_EQ(run.outcome, JobOutcome::Done) << c.line;
  EXPECT_EQ(run.pro, c.blankAfterLabel ? CrLf({"Record - 1", "", "BODY"}) : CrLf({"Record - 1", "BODY"})) << c.line;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, StnStartTest,
    testing::Values(StartCase{"L1  ANSWER 3 OF 9", true}, StartCase{"L1  ANSWER 3 of 9", true},
                    StartCase{" ANSWER 3 ", false}, StartCase{"L1  answer 3 OF 9", false},
                    StartCase{"L1 ANSWER 3 OF", false},                  // " OF " needs its blank behind
                    StartCase{"REFERENCE  4", true, false},             // no blank line behind the label
                    StartCase{"REFERENCE 4", false}, StartCase{" REFERENCE  4", false},
                    StartCase{"REFERENCE  ANSWER 4", false},            // an answer line goes no further
                    StartCase{"*** BIBLIO GROUP ***", true}, StartCase{"  see *** BIBLIO GROUP *** x", true},
                    StartCase{"*** biblio group ***", false},
                    StartCase{"-12- X (CA)", true}, StartCase{"-- (CA)", true},  // nothing between: digits
                    StartCase{"-12- X ()", true},                       // nothing in brackets: capitals
                    StartCase{"-12- X (Ca)", false}, StartCase{"-AB- X (CA)", false},
                    StartCase{"-12- X (CA) ", false},                   // ")" not last
                    StartCase{"-1-2- X (CA)", false},                   // three hyphens
                    StartCase{"-12-X (CA)", false},                     // no "- "
                    StartCase{"-12- X ((CA)", false},                    // two "("
                    StartCase{"-12- X CA)", false}, StartCase{"-12- X (C A)", false},
                    StartCase{" -12- X (CA)", false}, StartCase{"12- X (CA)", false}),
    test::LineCaseName());

TEST(StnStartTests, ABiblioGroupKeepsTheHyphenLineBelowItOutOfTheRecord) {
  TempDir dir;
  const auto run = Filter(dir, {"*** BIBLIO GROUP ***", "-12- X (CA)", "A", "-13- Y (CA)", "B", "=>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "Record - 2", "", "B"}));
}

TEST(StnStartTests, HyphenLinesThatStartNothingAreLeftOutButLookalikesAreText) {
  TempDir dir;
  const auto run = Filter(dir, {"L1  ANSWER 1 OF 1", "A", "-AB- X (CA)", "-12- X (Ca)", "--- (CA)", "B", "=>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "-12- X (Ca)", "--- (CA)", "B"}));
}

TEST(StnEndTests, EachEndLineClosesTheRecordAndIsNotWritten) {
  for (const char* end : {"=> d", "  COST IN U.S. DOLLARS   TOTAL", "FULL ESTIMATED COST  1.20", "SS 2 /C?",
                          "prt 1-3 ful", "logoff y", "SESSION CONTINUED", "ELAPSED TIME 0.02", "YOUR SESSION ENDS",
                          "TYMNET: call cleared", ":", ":AB  note", "'x' IS NOT A VALID FORMAT"}) {
    TempDir dir;
    const auto run = Filter(dir, {"L1  ANSWER 1 OF 2", "A", end, "not copied"});
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A"})) << end;
  }
}

TEST(StnEndTests, LookalikesInTheWrongCaseOrColumnStayInTheRecord) {
  const std::vector<std::string> body = {" => d", "cost in u.s. dollars", "SS2", "Prt 1", "LOGOFF", " logoff",
                                         "Session", " :x", "YOUR  SESSION", "TYMNET", "ELAPSE"};
  std::vector<std::string> capture = {"L1  ANSWER 1 OF 2"};
  capture.insert(capture.end(), body.begin(), body.end());
  capture.push_back("=>");
  TempDir dir;
  const auto run = Filter(dir, capture);
  std::vector<std::string> want = {"Record - 1", ""};
  want.insert(want.end(), body.begin(), body.end());
  EXPECT_EQ(run.pro, CrLf(want));
}

TEST(StnEndTests, AStartLineThatEndsTooLeavesItsRecordEmpty) {
  TempDir dir;
  const auto run = Filter(dir, {"L1  ANSWER 1 OF 2  FULL ESTIMATED COST", "lost", "L1  ANSWER 2 OF 2", "B", "=>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "Record - 2", "", "B"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(StnWriting, RunsOfBlankLinesFoldIntoTheFirstAsItStands) {
  TempDir dir;
  const auto run = Filter(dir, {"L1  ANSWER 1 OF 1", "A", "", "", "", "B", "   ", "", "  ", "  C  ", "=>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "", "B", "   ", "  C  "}));
}

TEST(StnWriting, ABlankLineBehindTheStartLineIsWrittenUnlessTheLabelIsAReference) {
  TempDir dir;
  auto run = Filter(dir, {"L1  ANSWER 1 OF 1", "", "", "A", "=>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "", "A"}));
  run = Filter(dir, {"REFERENCE  1", "", "A", "=>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A"}));
}

TEST(StnWriting, RecordsFollowEachOtherWithoutASeparator) {
  TempDir dir;
  const auto run = Filter(dir, {"=> d l1 1-3", "L1  ANSWER 1 OF 3", "A", "REFERENCE  2", "BB", "",
                                "*** BIBLIO GROUP ***", "CCC", "=> logoff"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "Record - 2", "BB", "", "Record - 3", "", "CCC"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(StnEndOfInput, ARecordOpenAtTheEndRepeatsItsLastLine) {
  TempDir dir;
  auto run = Filter(dir, {"L1  ANSWER 1 OF 1", "A", "LAST"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "LAST", "LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  run = Filter(dir, {"L1  ANSWER 1 OF 1", "A", ""});  // a blank last line gives one more
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A", "", ""}));
  run = Filter(dir, {"L1  ANSWER 1 OF 1", "A", "=>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "A"}));
}

}  // namespace
}  // namespace zv
