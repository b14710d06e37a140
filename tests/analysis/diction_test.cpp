// Diction: which words count, the omit list, the order of the list, its groups and limits.
#include "analysis/diction.h"

#include <gtest/gtest.h>

#include "analysis_test_support.h"
#include "core/error.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::RecordingPanels;
using test::TempDir;
using test::WriteFile;

constexpr std::time_t kFixedTime = 1'700'000'000;

struct DictionRun {
  JobResult result;
  std::string dic;   // "<none>" when absent
  std::string body;  // the lines after the five head lines
  RecordingPanels panels;
};

DictionRun RunOn(const TempDir& dir, const std::string& text, const std::string& omit = "<none>", bool large = false,
                 const std::string& name = "words.txt",
                 const std::function<void(JobState&, RecordingPanels&)>& hook = {}) {
  WriteFile(dir.file(name), text);
  if (omit != "<none>") WriteFile(dir.file("OMIT.LST"), omit);
  JobState job;
  DictionRun run;
  if (hook) hook(job, run.panels);
  run.result = Diction(job, run.panels, DictionParams{dir.file(name), OmitFileIn(dir.path().string()), large, kFixedTime});
  const std::string out = DicFileOf(dir.file(name));
  run.dic = FileExists(out) ? ReadFile(out) : "<none>";
  std::size_t at = 0;
  for (int i = 0; i < 5 && at != std::string::npos; ++i) at = run.dic.find("\r\n", at) + 2;
  run.body = run.dic == "<none>" ? "<none>" : run.dic.substr(at);
  return run;
}

TEST(Diction, TheListOfAWorkedText) {
  TempDir dir;
  // "Record - " lines go whole; "--" splits; "?" is a delimiter; the hyphen is not;
  // case is lowered. The omit list works only with small letters and no blanks.
  const DictionRun run = RunOn(dir,
                               CrLf({"Record - 1", "The cost--benefit of well-known costs?", "COST and cost, Cost.",
                                     "why? why? well-known", "see Record - 12 for cost"}),
                               CrLf({"and", "The", " of"}));
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.dic, CrLf({"Diction List for " + dir.file("words.txt"), ReportDateLine(kFixedTime), "",
                           "Unique Words:  7", "", " 4      cost", " 2      well-known", " 2      why",
                           " 1      benefit", " 1      costs", " 1      of", " 1      the"}));
  EXPECT_EQ(run.result.records, 7);
  EXPECT_EQ(run.panels.lastUnique, 7);
}

TEST(Diction, GroupsAreWrittenWhenALowerCountFollowsThemAndTheLastOnlyAtOne) {
  struct Case {
    const char* text;
    const char* head;  // line 4
    std::string body;
  } cases[] = {
      {"a a b b c c c\r\n", "Unique Words:  3", CrLf({" 3      c"})},  // the group of 2 is left out
      {"x y z\r\n", "Unique Words:  3", ""},                           // all 1: nothing listed
      {"b a b a c\r\n", "Unique Words:  3", CrLf({" 2      a", " 2      b", " 1      c"})},
      {"", "Unique Words:  0", ""},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const DictionRun run = RunOn(dir, c.text);
    EXPECT_NE(run.dic.find(std::string("\r\n\r\n") + c.head + "\r\n\r\n"), std::string::npos) << c.text;
    EXPECT_EQ(run.body, c.body) << c.text;
  }
}

TEST(Diction, WordsLongerThanTheirSlotStandApartUnlessLimitsAreLifted) {
  const std::string w40(40, 'q'), w35(35, 'q');
  for (bool large : {false, true}) {
    TempDir dir;
    // The second 40-letter word, compared whole, misses the 35 stored of the first;
    // the 35-letter word then meets the first element.
    const DictionRun run = RunOn(dir, w40 + " " + w40 + " " + w35 + " end\r\n", "<none>", large);
    EXPECT_EQ(run.body, CrLf({" 2      " + w35, " 1      end", " 1      " + w35}));
  }
}

TEST(Diction, CountsOfTwoHundredAndAThousandComeOutTrue) {
  // Exchanging the word and only the low byte of each count would swap these for ever.
  std::string text;
  for (int line = 0; line < 2; ++line) {
    for (int i = 0; i < 100; ++i) text += "rare ";
    text += "\r\n";
  }
  for (int line = 0; line < 10; ++line) {
    for (int i = 0; i < 100; ++i) text += "common ";
    text += "\r\n";
  }
  text += "once\r\n";
  for (bool large : {false, true}) {
    TempDir dir;
    EXPECT_EQ(RunOn(dir, text, "<none>", large).body, CrLf({" 1000   common", " 200    rare", " 1      once"}));
  }
}

TEST(Diction, OmitListRefusalsAndTheMissingList) {
  TempDir dir;
  std::string many;
  for (int i = 0; i < 501; ++i) many += "w" + std::to_string(i) + "\r\n";
  struct Case {
    std::string omit;
    bool large;
    JobOutcome outcome;
  } cases[] = {
      {many, false, JobOutcome::Failed},  // a 501st entry
      {"", false, JobOutcome::Failed},    // an empty list
      {many, true, JobOutcome::Done},
      {"", true, JobOutcome::Done},
  };
  for (const Case& c : cases) {
    const DictionRun run = RunOn(dir, "w1 w2 w2 w600\r\n", c.omit, c.large);
    EXPECT_EQ(run.result.outcome, c.outcome);
    if (c.outcome == JobOutcome::Failed) {
      EXPECT_EQ(run.result.error->number(), 9);
      EXPECT_EQ(run.dic, "<none>");
    }
  }
  EXPECT_EQ(OmitListMissing(dir.file("OMIT.LST")), std::nullopt);
  const auto missing = OmitListMissing(dir.file("NONE.LST"));
  ASSERT_TRUE(missing.has_value());
  EXPECT_EQ(missing->title, "No Omit List");
  EXPECT_EQ(missing->text, "The optional omit list file, " + dir.file("NONE.LST") + ", does not exist.");
}

TEST(Diction, SixteenBitAndTableLimitsFailUnlessLifted) {
  std::string manyLines, manyWords, oneWordOften;
  for (int i = 0; i < 32768; ++i) manyLines += "x\r\n";
  for (int i = 0; i <= 10000; ++i) manyWords += "w" + std::to_string(i) + (i % 20 == 19 ? "\r\n" : " ");
  for (int i = 0; i < 32768; ++i) oneWordOften += (i % 1000 == 999) ? "w\r\n" : "w ";
  struct Case {
    const std::string* text;
    int32_t error;
    std::string reason;
  } cases[] = {
      {&manyLines, err::kOverflow,
       "Limit reached: the lines Diction reads (glLineCount) can be at most 32767. It came to 32768."},
      {&manyWords, 9, ""},
      {&oneWordOften, err::kOverflow, "Limit reached: the count of a word can be at most 32767. \"w\" passed it."},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const DictionRun exact = RunOn(dir, *c.text);
    EXPECT_EQ(exact.result.outcome, JobOutcome::Failed);
    EXPECT_EQ(exact.result.error->number(), c.error);
    EXPECT_EQ(exact.result.error->reason(), c.reason);
    EXPECT_EQ(exact.dic, "<none>");
    EXPECT_EQ(RunOn(dir, *c.text, "<none>", true).result.outcome, JobOutcome::Done);
  }
}

TEST(Diction, AnInterruptOrAnInputTheListWouldReplaceLeavesNoList) {
  TempDir dir;
  for (const bool large : {false, true}) {
    const DictionRun stopped =
        RunOn(dir, "a b\r\nc d\r\n", "<none>", large, "words.txt", [](JobState& job, RecordingPanels& panels) {
          panels.onLine = [&job](int32_t) { job.giInterrupt = 1; };
        });
    EXPECT_EQ(stopped.result.outcome, JobOutcome::Interrupted) << large;
    EXPECT_EQ(stopped.dic, "<none>") << large;
  }
  const DictionRun self = RunOn(dir, "a b\r\n", "<none>", false, "list.DIC");
  EXPECT_EQ(self.result.outcome, JobOutcome::Refused);
  EXPECT_EQ(ReadFile(dir.file("list.DIC")), "a b\r\n");
  EXPECT_EQ(DicFileOf("/d.x/notes"), "/d.x/notes.DIC");
}

}  // namespace
}  // namespace zv
