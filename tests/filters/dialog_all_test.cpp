// FilterDialogAll: labels, copy rules, the .FSC blocks, and the ways a job ends.
#include "filters/dialog_all.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunFilterOn;
using test::TempDir;

constexpr auto Filter = test::RunFilterOnLines<&FilterDialogAll>;

// The worked example: a begin block, a combined select, two printed records (the
// second behind a five-blank tail), a logoff block with its cost line.
const std::vector<std::string> kWorkedExample = {
    "?b 155",
    "File 155:MEDLINE",
    "?s cat and dog",
    "S1  12  CAT AND DOG",
    "?t 1/5/1-2",
    " 1/5/1",
    "TITLE LINE",
    "",
    "",
    " 1/5/2     (Item 2 from file: 155)",
    "SECOND RECORD",
    "?logoff",
    "$1.23 estimated cost",
    " Logoff: level 12",
};

TEST(DialogAllWorkedExample, WritesLabelledRecordsTheirIndexAndTheSearchStrategy) {
  TempDir dir;
  const auto run = Filter(dir, kWorkedExample);
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(run.pro, CrLf({"", "", "Record - 1", "", "TITLE LINE", "", "Record - 2", "", "SECOND RECORD", ""}));
  // Record 1 stops 2 bytes short of the next label; record 2 counts the final CR LF.
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  ASSERT_EQ(run.ndx.size(), 2u);
  EXPECT_EQ(std::string(run.ndx[0].keepFile.data(), run.ndx[0].keepFile.size()), std::string(255, ' '));
  EXPECT_EQ(test::RecordBytes(run.pro, run.ndx[0]), "Record - 1\r\n\r\nTITLE LINE\r\n");
  EXPECT_EQ(test::RecordBytes(run.pro, run.ndx[1]), "Record - 2\r\n\r\nSECOND RECORD\r\n\r\n");
  ASSERT_TRUE(run.fscExists);
  EXPECT_EQ(run.fsc, CrLf({"?b 155", "File 155:MEDLINE", "", "?s cat and dog", "S1  12  CAT AND DOG", "", "?logoff",
                           "$1.23 estimated cost", " Logoff: level 12", ""}));
}

TEST(DialogAllWorkedExample, ShowsTheJobToItsObserver) {
  TempDir dir;
  test::RecordingProgress host;
  const auto run = test::RunFilterOn(&FilterDialogAll, dir, CrLf(kWorkedExample), "session.log", &host);
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(host.title, "Filtering All DIALOG Types to One File");
  EXPECT_EQ(host.pnlFileLines, "14");
  EXPECT_EQ(host.pnlFileSize, std::to_string(CrLf(kWorkedExample).size()));
  EXPECT_EQ(host.lastLine, 14);
  EXPECT_EQ(host.recordOdometer, (std::vector<int32_t>{1, 2}));
  EXPECT_EQ(run.result.files, (std::vector<std::string>{dir.file("session.PRO"), dir.file("session.NDX"),
                                                      dir.file("session.FSC")}));
  EXPECT_EQ(run.result.records, 2);
  EXPECT_EQ(host.pnlElapsed.size(), 8u);  // "hh:mm:ss"
  EXPECT_EQ(run.job->glRecNum, 2);         // RunCommand zeroes it; the filter never does
  EXPECT_TRUE(run.job->gsInFile.empty());  // CleanUp
}

// Each candidate stands after a prompt; it is a label when the job finds a record.
struct LabelCase {
  const char* line;
  bool label;
};

class DialogAllLabelTest : public testing::TestWithParam<LabelCase> {};

TEST_P(DialogAllLabelTest, RecognizesOnlyTheLabelForm) {
  TempDir dir;
  const auto run = Filter(dir, {"?t 1/5/1", GetParam().line, "BODY", "?"});
  if (GetParam().label) {
    EXPECT_EQ(run.outcome, JobOutcome::Done) << GetParam().line;
    EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "BODY", ""}));
  } else {
    EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords) << GetParam().line;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, DialogAllLabelTest,
    testing::Values(LabelCase{" 1/5/1", true}, LabelCase{" 12/25/1997", true},  // a date passes too
                    LabelCase{"1/5/1", false},                                   // no leading blank
                    LabelCase{"  1/5/1", false},                                 // two leading blanks
                    LabelCase{" 1/5/", false},                                   // ends in "/"
                    LabelCase{" 1/ABC/1", false}, LabelCase{" 1/5,K/1", true}, LabelCase{" 1/KWIC/1", true},
                    LabelCase{" 1/kwic/1", false},                                // case-sensitive
                    LabelCase{" 1/5/1     (Item 1 from file: 5)", true},          // gap of exactly five
                    LabelCase{" 1/5/1  (x)", false}, LabelCase{" 1/5/1      x", false},
                    LabelCase{" 1/5/1a", false},                                 // item not all digits
                    LabelCase{" 123/5/1", true}, LabelCase{" 1234/5/1", false},  // set field up to 3
                    LabelCase{" 1/1234567,90/1", true},                          // format of 10
                    LabelCase{" 1/12345678,01/1", false},                        // format of 11
                    LabelCase{" 1/ 5/1", false},                                 // format begins blank
                    LabelCase{" 1//1", false},                                   // empty format
                    LabelCase{" 1/5/1/2", false},                                // three slashes
                    LabelCase{"?1/5/1", false}, LabelCase{" ?/5/1", false},
                    LabelCase{"\t1/5/1", false},                                 // a tab is not a blank
                    LabelCase{"\xA0" "1/5/1", true}),  // high bit cleared: a blank
    test::LineCaseName());

TEST(DialogAllCopyRules, DropsABlankFirstLineAndShrinksBlankRuns) {
  TempDir dir;
  const auto run = Filter(dir, {"?t 1/5/1", " 1/5/1", "", "A", "", "", "", "BB", "?"});
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "A", "", "BB", ""}));
}

TEST(DialogAllCopyRules, RecordsWithoutAPromptBetweenNeedNoClosing) {
  TempDir dir;
  const auto run = Filter(dir, {"?t 1/5/1-2", " 1/5/1", "A", " 1/5/2", "BB", "?"});
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "A", "", "", "Record - 2", "", "BB", ""}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(DialogAllCopyRules, ASingleCharacterBeforeThePromptGetsNoBlankLine) {
  TempDir dir;
  const auto run = Filter(dir, {"?t 1/5/1", " 1/5/1", "A", "x", "?"});
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "A", "x"}));
}

TEST(DialogAllCopyRules, OffAloneDoesNotEndARecordButOtherLogoffWordsDo) {
  TempDir dir;
  auto run = Filter(dir, {"?t 1/5/1", " 1/5/1", "A", "  OFF  ", "BB", "?"});
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "A", "  OFF  ", "BB", ""}));
  for (const char* line : {" off ", "logoff", "  LOGOFF", "logoff hold ", "LOGOFF HOLD", ">>>", " ?x", "?x"}) {
    TempDir d;
    run = Filter(d, {"?t 1/5/1", " 1/5/1", "AA", line, "not copied"});
    EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "AA", ""})) << line;
  }
  TempDir d;  // the prompt must stand in column 1 or 2
  run = Filter(d, {"?t 1/5/1", " 1/5/1", "AA", "  ?x", "BB", "?"});
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "AA", "  ?x", "BB", ""}));
}

TEST(DialogAllEndOfInput, ALastLineInsideARecordIsWrittenTwice) {
  TempDir dir;
  const auto run = Filter(dir, {"?t 1/5/1", " 1/5/1", "A", "LAST"});
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "A", "LAST", "LAST"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(DialogAllEndOfInput, ALabelOnTheVeryLastLineStandsAsRawText) {
  TempDir dir;
  const auto run = Filter(dir, {"?t 1/5/1-2", " 1/5/1", "A", " 1/5/2"});
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "A", "", "", "Record - 2", "", " 1/5/2"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(DialogAllEndOfInput, LineEndsOfAnyKindGiveTheSameRecords) {
  const std::vector<std::string> lines = {"?t 1/5/1", " 1/5/1", "A", "", "B", "?logoff"};
  std::string lf, cr, crlf = CrLf(lines);
  for (const auto& l : lines) lf += l + "\n", cr += l + "\r";
  TempDir a, b, c;
  const auto want = RunFilterOn(&FilterDialogAll, a, crlf).pro;
  EXPECT_EQ(RunFilterOn(&FilterDialogAll, b, lf).pro, want);
  EXPECT_EQ(RunFilterOn(&FilterDialogAll, c, cr).pro, want);
  TempDir d;  // no line end after the last line
  EXPECT_EQ(RunFilterOn(&FilterDialogAll, d, crlf.substr(0, crlf.size() - 2)).pro, want);
}

TEST(DialogAllEndOfInput, TheSampleSessionsIndexAgreesWithItsRecordFile) {
  TempDir dir;
  const auto run = RunFilterOn(&FilterDialogAll, dir, test::ReadFile(ZV_SAMPLES_DIR "/dialog_session.log"));
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  std::string broken = run.pro;
  broken.insert(0, "\r\n");  // every label one line and two bytes further on
  EXPECT_FALSE(test::IndexAgreesWithPro(broken, run.ndx));
}

TEST(DialogAllFsc, BlocksOpenOnTheirCommandsAndCloseAtTheNextPrompt) {
  TempDir dir;
  const auto run = Filter(dir, {"? begin 1,5", "banner", "", "?ds", "Set Items", "?s cat", "S2 3 CAT",
                             "?display sets", "S1", "? S a AND b", "S3", "?t 1/5/1", " 1/5/1", "A", "?"});
  EXPECT_EQ(run.fsc, CrLf({"? begin 1,5", "banner", "", "", "?ds", "Set Items", "", "?display sets", "S1", "",
                           "? S a AND b", "S3", ""}));
}

TEST(DialogAllFsc, ACommandLineThatHoldsOffGoesToTheFscTwice) {
  TempDir dir;
  const auto run = Filter(dir, {"?b offsite", "x", "?t 1/5/1", " 1/5/1", "A", "?"});
  // The begin block copies it, and so does the logoff block it opened, which no
  // "Logoff:" line closes: it copies the rest of the capture.
  EXPECT_EQ(run.fsc, CrLf({"?b offsite", "?b offsite", "x", "x", "", "?t 1/5/1", " 1/5/1", "A", "?"}));
}

TEST(DialogAllFsc, AnErrorLineClosesTheLogoffBlockWithoutBeingCopied) {
  TempDir dir;
  const auto run = Filter(dir, {"?t 1/5/1", " 1/5/1", "A", "?s coffee", ">>> error", "after"});
  EXPECT_EQ(run.fsc, CrLf({"?s coffee"}));
}

TEST(DialogAllZeroRecords, AnEmptyCaptureSkipsTheLoop) {
  TempDir dir;
  test::RecordingProgress host;
  const auto run = test::RunFilterOn(&FilterDialogAll, dir, "", "empty.log", &host);
  EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords);
  EXPECT_EQ(host.lastLine, 0);
  EXPECT_FALSE(run.proExists || run.ndxExists || run.fscExists);
}

TEST(DialogAllInterrupt, DuringTheLastLineAbandonsEvenACompleteJob) {
  TempDir dir;
  test::WriteFile(dir.file("session.WRK"), "bookmarks of an earlier run");
  test::RecordingProgress host;
  host.onLine = [&](int32_t line) {
    if (line == static_cast<int32_t>(kWorkedExample.size())) host.running->giInterrupt = 1;
  };
  const auto run = test::RunFilterOn(&FilterDialogAll, dir, CrLf(kWorkedExample), "session.log", &host);
  EXPECT_EQ(run.outcome, JobOutcome::Interrupted);
  EXPECT_FALSE(run.proExists || run.ndxExists || run.fscExists);
  EXPECT_FALSE(test::FileExists(dir.file("session.WRK")));
  EXPECT_EQ(run.job->giInterrupt, 0);
  EXPECT_TRUE(run.result.files.empty());
}

TEST(DialogAllRerun, ReplacesEveryOutputAndLeavesNoStaleIndexRecords) {
  TempDir dir;
  auto run = Filter(dir, {"?t 1/5/1-3", " 1/5/1", "A", " 1/5/2", "B", " 1/5/3", "C", "?ds", "S1", "?"});
  ASSERT_EQ(run.ndx.size(), 3u);
  run = Filter(dir, {"?t 1/5/1", " 1/5/1", "AA", "?"});
  EXPECT_EQ(run.ndx.size(), 1u);
  EXPECT_EQ(run.pro, CrLf({"", "Record - 1", "", "AA", ""}));
  EXPECT_FALSE(run.fscExists);  // the new run wrote none, so the old one went too
}

TEST(DialogAllFailure, ARecordOf32768LinesOverflowsAndRemovesTheOutputs) {
  TempDir dir;
  test::WriteFile(dir.file("big.WRK"), "bookmarks");
  std::string capture = CrLf({"?t 1/5/1", " 1/5/1"});
  for (int i = 0; i < 32768; ++i) capture += "line\r\n";
  capture += "?\r\n";
  const auto run = test::RunFilterOn(&FilterDialogAll, dir, capture, "big.log");
  EXPECT_TRUE(run.threw);
  EXPECT_EQ(run.errorNumber, err::kOverflow);
  EXPECT_EQ(run.job->gsErrNumber, " 6");
  EXPECT_EQ(run.job->gsErrText, "Overflow");
  // The label is line 2; line 32770 is the 32768th behind it.
  EXPECT_EQ(run.result.error->reason(),
            "Limit reached: the lines of one record (iSinceLabel) can be at most 32767; passed at input line 32770.");
  EXPECT_FALSE(run.proExists || run.ndxExists || run.fscExists);
  EXPECT_FALSE(test::FileExists(dir.file("big.WRK")));
}

TEST(DialogAllFailure, TooManyStrategyLinesOverflowTheFscCounter) {
  TempDir dir;
  std::string capture = CrLf({"?b 1"});
  for (int i = 0; i < 32767; ++i) capture += "x\r\n";
  capture += CrLf({"?t 1/5/1", " 1/5/1", "A", "?"});
  const auto run = test::RunFilterOn(&FilterDialogAll, dir, capture);
  EXPECT_TRUE(run.threw);
  EXPECT_EQ(run.errorNumber, err::kOverflow);
  // "?b 1" is the first line copied; the last "x", line 32768, would be the 32768th.
  EXPECT_EQ(run.result.error->reason(),
            "Limit reached: the lines written to the .FSC (iFscLines) can be at most 32767; passed at input line 32768.");
  EXPECT_FALSE(run.proExists || run.ndxExists || run.fscExists);
}

// About 5 MB of DIALOG capture (the sample session 440 times) is enough to pass the
// .FSC's 16-bit line count. The line the reason names is where it is passed: the
// capture up to the line before it filters, up to that line it fails the same way.
TEST(DialogAllFailure, FourHundredFortySampleSessionsPassTheFscLimitAtTheLineTheReasonNames) {
  TempDir dir;
  const std::string sample = test::ReadFile(std::string(ZV_SAMPLES_DIR) + "/dialog_session.log");
  std::string capture;
  for (int i = 0; i < 440; ++i) capture += sample;
  ASSERT_GT(capture.size(), 4'500'000u);
  const auto run = test::RunFilterOn(&FilterDialogAll, dir, capture);
  ASSERT_EQ(run.errorNumber, err::kOverflow);
  const std::string reason = run.result.error->reason();
  const std::string head = "Limit reached: the lines written to the .FSC (iFscLines) can be at most 32767; passed at input line ";
  ASSERT_TRUE(reason.starts_with(head)) << reason;
  const int64_t line = std::stoll(reason.substr(head.size()));
  // The first `n` lines of the capture, each with its CR LF.
  const auto firstLines = [&](int64_t n) {
    std::size_t at = 0;
    for (int64_t i = 0; i < n; ++i) at = capture.find("\r\n", at) + 2;
    return capture.substr(0, at);
  };
  const auto before = test::RunFilterOn(&FilterDialogAll, dir, firstLines(line - 1));
  EXPECT_EQ(before.outcome, JobOutcome::Done);
  EXPECT_TRUE(before.fscExists);
  const auto at = test::RunFilterOn(&FilterDialogAll, dir, firstLines(line));
  ASSERT_EQ(at.errorNumber, err::kOverflow);
  EXPECT_EQ(at.result.error->reason(), reason);
}

}  // namespace
}  // namespace zv
