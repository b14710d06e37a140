// FilterOrbit: its start tests, and the STN rules it shares on an Orbit/Questel session.
#include "filters/orbit.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterOrbit>;

TEST(OrbitStartTests, AnswerAndReferenceLinesStartNothing) {
  TempDir dir;
  auto run = Filter(dir, {"=> d l1 1-2", "L1  ANSWER 1 OF 2", "A", "L1  ANSWER 2 OF 2", "B", "=>"});
  EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords);
  EXPECT_FALSE(run.proExists || run.ndxExists);
  // Inside a record they are text; outside one they are dropped.
  run = Filter(dir, {"REFERENCE  4", "-1- TITLE TEXT (WPI)", "L1  ANSWER 1 OF 2", "REFERENCE  4", "SS 2 /C?"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "L1  ANSWER 1 OF 2", "REFERENCE  4"}));
}

TEST(OrbitStartTests, HyphenNumberLinesAndBiblioGroupsOpenRecords) {
  TempDir dir;
  const auto run = Filter(dir, {"prt 1-3 ful", "-1- TITLE TEXT (WPI)", "AN  - 2024-101", "-AB- X (WPI)",
                                "*** BIBLIO GROUP ***", "-2- TITLE TEXT (WPI)", "PN  - XX 100", "-3- (WPI)",
                                "TI  - LAST", "SS 3 /C?"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "AN  - 2024-101", "Record - 2", "", "PN  - XX 100", "Record - 3", "",
                           "TI  - LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(OrbitStartTests, AReferenceLineWithABiblioGroupHasNoBlankLineBehindItsLabel) {
  TempDir dir;
  const auto run = Filter(dir, {"REFERENCE  *** BIBLIO GROUP ***", "A", "SS 2 /C?"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "A"}));
}

TEST(OrbitWriting, FoldsBlanksEndsOnTheSharedLinesAndRepeatsAnOpenLastLine) {
  TempDir dir;
  const auto run = Filter(dir, {"-1- TITLE TEXT (WPI)", "", "", "A", "ELAPSED TIME 0.01 HRS", "lost",
                                "-2- TITLE TEXT (WPI)", "B", "LAST"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "", "A", "Record - 2", "", "B", "LAST", "LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

}  // namespace
}  // namespace zv
