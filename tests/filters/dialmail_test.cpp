// FilterDialmail: mailed prints between "Record -" lines and the mail's own lines, and the .FSC.
#include "filters/dialmail.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterDialmail>;

TEST(DialmailRecords, APrintStandsAsItCameUnderItsLabel) {
  TempDir dir;
  const auto run = Filter(dir, {"?read 1", "*** Item   1 ***", "From: File 155 Print P1 VIA DIALMAIL", "",
                                "  Record - 1", "TEXT A", "", "", "TEXT B", "  Record - 2", "", "TEXT C",
                                "*** Item   2 ***", "not kept"});
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  // No blank line before or after a label; the print's own blank lines as they were.
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "TEXT A", "", "", "TEXT B", "Record - 2", "", "TEXT C"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  EXPECT_FALSE(run.fscExists);
}

TEST(DialmailRecords, AnyLineHoldingTheLabelTextStartsARecordAndIsLost) {
  TempDir dir;
  const auto run = Filter(dir, {"Record - 1", "A", "see Record - 7 above", "B", "RRRecord - 3", "C",
                                "lower case words past the first blocks of the line: Record - 4", "D",
                                "Record 5, Record-6, record - 7", "E", "?"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "A", "Record - 2", "B", "Record - 3", "C", "Record - 4", "D",
                           "Record 5, Record-6, record - 7", "E"}));
}

struct EndCase {
  const char* line;
  bool ends;
};

class DialmailEndTest : public testing::TestWithParam<EndCase> {};

TEST_P(DialmailEndTest, EndsARecordOnlyOnTheMailsOwnLines) {
  TempDir dir;
  const std::string line = GetParam().line;
  const auto run = Filter(dir, {"Record - 1", "A", line, "AFTER"});
  if (GetParam().ends)
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "A"})) << line;
  else  // the record runs on to the end of the capture: its last line stands twice
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "A", line, "AFTER", "AFTER"})) << line;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, DialmailEndTest,
    testing::Values(EndCase{"?", true}, EndCase{" ?read 2", true}, EndCase{">>> Invalid", true},
                    EndCase{"x *** Item 2 ***", true}, EndCase{"From: File 155", true},
                    EndCase{"Alert A1 VIA DIALMAIL", true}, EndCase{"Files(s) searched: 155", true},
                    EndCase{"Sets selected: S1", true}, EndCase{"Set     Items   Description", true},
                    EndCase{"Prints requested (* indicates user print cancellation):", true},
                    EndCase{"Dialmail defaults: Scan", true}, EndCase{"x Scan     y", true},
                    EndCase{"x Read     y", true}, EndCase{"Create   x", true}, EndCase{"Answer   x", true},
                    EndCase{"Delete   x", true}, EndCase{"Help     x", true}, EndCase{"x CLear    y", true},
                    EndCase{"x EXit     y", true}, EndCase{"** For more commands, enter HELP", true},
                    // Behind capitals and stars that begin no text, or begin one that fails;
                    // far into a long line; at its very end.
                    EndCase{"******* Item 9", true}, EndCase{"SSSets selected: S2", true},
                    EndCase{"DDialmail Dialmail defaults: x", true},
                    EndCase{"words in lower case for more than two blocks of sixteen, then VIA DIALMAIL", true},
                    EndCase{"lower case words, Prints requested, and later on: indicates user print cancellation", true},
                    EndCase{"ends with EXit     ", true},
                    EndCase{"via dialmail", false}, EndCase{"** For more commands,", false},
                    EndCase{"Set     Items   Descriptio", false},
                    // Not ends: the menu words that must begin the line, in the middle of one;
                    // half of a two-part test; a prompt in column 3; the case of a word.
                    EndCase{"x Create   y", false}, EndCase{"x Help     y", false},
                    EndCase{"Prints requested: 3", false}, EndCase{" From: File 155", false},
                    EndCase{"  ?x", false}, EndCase{"Scan    x", false}, EndCase{"x CLEAR    y", false},
                    EndCase{"OFF", false}),
    [](const testing::TestParamInfo<EndCase>& param) { return "Line" + std::to_string(param.index); });

TEST(DialmailFsc, HoldsTheBeginAndSetsBlocksButNeverTheLogoff) {
  TempDir dir;
  const auto run = Filter(dir, {"?bye", "banner", "?ds", "Set Items", "?s cats and dogs", "S1", "?s cats", "S2",
                                "?s cats AND", "S3", "?logoff", "$1.00 cost", " Logoff: level 1", "Record - 1", "A"});
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(run.fsc, CrLf({"?bye", "banner", "", "?ds", "Set Items", "", "?s cats and dogs", "S1", ""}));
}

TEST(DialmailSample, FindsTheFourPrintsAndTheirStrategy) {
  TempDir dir;
  test::RecordingProgress host;
  const auto run =
      test::RunFilterOn(&FilterDialmail, dir, test::ReadFile(ZV_SAMPLES_DIR "/dialmail_session.log"), "mail.log", &host);
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  // "Prints" while the capture is counted, "Offline Prints" for the rest of the job.
  ASSERT_FALSE(host.captions.empty());
  EXPECT_EQ(host.captions.front(), "Filtering DIALMAILed Prints");
  EXPECT_EQ(host.title, "Filtering DIALMAILed Offline Prints");
  ASSERT_EQ(run.ndx.size(), 4u);
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  EXPECT_EQ(test::RecordBytes(run.pro, run.ndx[3]), "Record - 4\r\n");
  EXPECT_EQ(run.pro.find("of the series above"), std::string::npos);
  for (const char* dropped : {"*** Item", "Scan     Read", "Prints requested", "?ds"})
    EXPECT_EQ(run.pro.find(dropped), std::string::npos) << dropped;
  EXPECT_NE(run.fsc.find("?s peat? and rewet?\r\n"), std::string::npos);
  EXPECT_EQ(run.fsc.find("Logoff:"), std::string::npos);
}

}  // namespace
}  // namespace zv
