// Rank: weights, the order of equal totals, the .RNK's separators, the .TBL, the limits.
#include "analysis/rank.h"

#include <gtest/gtest.h>

#include "analysis_test_support.h"
#include "core/error.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::Indexer;
using test::Labels;
using test::ReadFile;
using test::Records;
using test::RecordingPanels;
using test::TempDir;
using test::WriteRecordFile;

constexpr std::time_t kFixedTime = 1'700'000'000;

struct RankRun {
  JobResult result;
  std::string rnk, tbl;  // "<none>" when absent
};

RankRun RunOn(const RecordFileChoice& file, std::vector<std::pair<std::string, std::string>> slots,
              bool large = false, const std::function<void(JobState&, RecordingPanels&)>& hook = {}) {
  RankParams params;
  params.file = file;
  params.large = large;
  params.reportTime = kFixedTime;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    params.terms[i] = slots[i].first;
    params.weights[i] = slots[i].second;
  }
  JobState job;
  RecordingPanels panels;
  if (hook) hook(job, panels);
  RankRun run;
  run.result = Rank(job, panels, params);
  auto read = [](const std::string& path) { return FileExists(path) ? ReadFile(path) : std::string("<none>"); };
  run.rnk = read(file.baseName + ".RNK");
  run.tbl = read(file.baseName + ".TBL");
  return run;
}

// A line of `n` occurrences of "hit".
std::string HitLine(int n) {
  std::string s = "t";
  for (int i = 0; i < n; ++i) s += " hit";
  return s;
}

// Twelve records whose totals (term "hit", weight 1) rank them 11, 1, 2, 12, 10, 3...9.
Records Twelve() {
  const int totals[] = {11, 10, 7, 6, 5, 4, 3, 2, 1, 8, 12, 9};
  Records r;
  for (int t : totals) r.push_back({HitLine(t)});
  return r;
}

std::vector<std::string> Rec(int k, bool separator) {
  const int totals[] = {11, 10, 7, 6, 5, 4, 3, 2, 1, 8, 12, 9};
  std::vector<std::string> lines{"Record - " + std::to_string(k), "", HitLine(totals[k - 1])};
  if (separator) lines.emplace_back();
  return lines;
}

std::string Join(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> lines;
  for (const auto& p : parts) lines.insert(lines.end(), p.begin(), p.end());
  return CrLf(lines);
}

TEST(Rank, TheRankedFileSeparatesRecordsByItsRules) {
  // Records 10 to 19 get an empty line before their label (an 11-character line with
  // "Record - 1"); record 1 from BuildIndex's index ends without its empty line, and
  // the record after it follows at once unless it is one of those.
  const std::vector<std::string> blank{""};
  for (Indexer indexer : {Indexer::Filter, Indexer::BuildIndex}) {
    TempDir dir;
    const RankRun run = RunOn(WriteRecordFile(dir, Twelve(), indexer), {{"hit", "1"}});
    ASSERT_EQ(run.result.outcome, JobOutcome::Done) << test::IndexerName(indexer);
    const bool filter = indexer == Indexer::Filter;
    const std::string expected =
        Join({Rec(11, true), Rec(1, filter), Rec(2, true), blank, Rec(12, !filter), blank, Rec(10, true),
              Rec(3, true), Rec(4, true), Rec(5, true), Rec(6, true), Rec(7, true), Rec(8, true), Rec(9, true),
              blank});
    EXPECT_EQ(run.rnk, expected) << test::IndexerName(indexer);
  }
}

TEST(Rank, TheTableListsTermsAndOrderColumnForColumn) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, Twelve(), Indexer::Filter);
  // Slot 2 blank, slot 3 "*" alone (blank after the "*" goes), slot 4 with no weight.
  const RankRun run = RunOn(file, {{"hit", "1"}, {"", ""}, {"*", "4"}, {"Zed*", ""}});
  const std::string expected = CrLf({
      "Rank Table for " + file.baseName + ".RNK",
      ReportDateLine(kFixedTime),
      "",
      "Wts   Terms",
      "---   -----",
      " 1    hit",
      " 0    Zed*",
      "",
      "Rank    Input   Total",
      "Order   Order   Weight",
      "-----   -----   ------",
      " 1       11      12",
      " 2       1       11",
      " 3       2       10",
      " 4       12      9",
      " 5       10      8",
      " 6       3       7",
      " 7       4       6",
      " 8       5       5",
      " 9       6       4",
      " 10      7       3",
      " 11      8       2",
      " 12      9       1",
      "",
  });
  EXPECT_EQ(run.tbl, expected);
}

TEST(Rank, EqualTotalsTakeTheOrderOfTheExchangesOrFileOrderWithoutLimits) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, {{"a"}, {"b"}, {"cost"}, {"d"}}, Indexer::Filter);
  EXPECT_EQ(Labels(RunOn(file, {{"cost", "1"}}).rnk), (std::vector<int>{3, 2, 1, 4}));
  EXPECT_EQ(Labels(RunOn(file, {{"cost", "1"}}, true).rnk), (std::vector<int>{3, 1, 2, 4}));
  // No term anywhere: file order.
  EXPECT_EQ(Labels(RunOn(file, {{"none", "5"}}).rnk), (std::vector<int>{1, 2, 3, 4}));
}

TEST(Rank, OccurrencesAddUpAndRecordOnesFirstLetterIsUnreadFromABuiltIndex) {
  const Records records = {{"cost costs cost-effective", "price"}, {"cost"}, {"nothing"}};
  const std::vector<std::pair<std::string, std::string>> terms = {
      {"cost*", "2"}, {"price", "5"}, {"record", "1"}, {"COST", "10"}};
  struct Case {
    Indexer indexer;
    const char* body;  // the .TBL's order lines
  } cases[] = {
      // Record 1: three cost* (6), price (5), COST once (10), its label (1): 22.
      {Indexer::Filter, " 1       1       22\r\n 2       2       13\r\n 3       3       1\r\n"},
      // From BuildIndex's index record 1 is read from its second byte: "ecord - 1".
      {Indexer::BuildIndex, " 1       1       21\r\n 2       2       13\r\n 3       3       1\r\n"},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const RankRun run = RunOn(WriteRecordFile(dir, records, c.indexer), terms);
    EXPECT_NE(run.tbl.find(c.body), std::string::npos) << test::IndexerName(c.indexer) << "\n" << run.tbl;
  }
}

TEST(Rank, SixteenBitLimitsFailTheJobWithNothingLeftUnlessLifted) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, {{"cost cost"}, {"x"}}, Indexer::Filter);
  struct Case {
    std::vector<std::pair<std::string, std::string>> terms;
    std::string reason;
  } cases[] = {
      // a weight beyond 16 bits
      {{{"cost", "32768"}}, "Limit reached: a term's weight (giRankWt) can be at most 32767. It came to 32768."},
      // a total beyond 16 bits
      {{{"cost", "20000"}},
       "Limit reached: a record's weight (gRankRec.total) can be at most 32767; passed at record 1. It came to 40000."},
  };
  for (const Case& c : cases) {
    const RankRun exact = RunOn(file, c.terms);
    EXPECT_EQ(exact.result.outcome, JobOutcome::Failed);
    EXPECT_EQ(exact.result.error->number(), err::kOverflow);
    EXPECT_EQ(exact.result.error->reason(), c.reason);
    EXPECT_EQ(exact.rnk, "<none>");
    EXPECT_EQ(exact.tbl, "<none>");
    EXPECT_EQ(RunOn(file, c.terms, true).result.outcome, JobOutcome::Done);
    std::filesystem::remove(file.baseName + ".RNK");
    std::filesystem::remove(file.baseName + ".TBL");
  }
  EXPECT_NE(RunOn(file, {{"cost", "20000"}}, true).tbl.find(" 1       1       40000"), std::string::npos);
}

TEST(Rank, AnExchangeAboveSixteenBitsOfRecordsFails) {
  // Totals 1 for records 1 to 35999 and 36001, 0 elsewhere: only the last pass, at
  // position 36000, exchanges.
  Records records(40000, std::vector<std::string>{"x"});
  for (int k = 1; k <= 36001; ++k)
    if (k != 36000) records[static_cast<std::size_t>(k - 1)] = {"cost"};
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, records, Indexer::Filter);
  const RankRun exact = RunOn(file, {{"cost", "1"}});
  EXPECT_EQ(exact.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(exact.result.error->number(), err::kOverflow);
  EXPECT_EQ(exact.result.error->reason(),
            "Limit reached: the place of the last exchange (last) can be at most 32767. An exchange came at 36000.");
  EXPECT_EQ(exact.rnk, "<none>");
  const RankRun large = RunOn(file, {{"cost", "1"}}, true);
  EXPECT_EQ(large.result.outcome, JobOutcome::Done);
  EXPECT_EQ(large.result.records, 40000);
}

TEST(Rank, AnInterruptWhileWeighingLeavesNoOutput) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, Twelve(), Indexer::Filter);
  const RankRun run = RunOn(file, {{"hit", "1"}}, false, [](JobState& job, RecordingPanels& panels) {
    panels.onLine = [&job](int32_t) { job.giInterrupt = 1; };
  });
  EXPECT_EQ(run.result.outcome, JobOutcome::Interrupted);
  EXPECT_EQ(run.rnk, "<none>");
  EXPECT_EQ(run.tbl, "<none>");
}

TEST(RankKeys, TheBoxesRefuseWhatTheWordsWouldNeverHold) {
  const std::string delimiterText =
      "The character key just pressed, ?, is one the Rank command uses as a delimiter between terms in the "
      "records, and thus is not valid as part of a ranking term.\r\n\r\nThe delimiters are:  \r\n"
      "` ~ ! @ # $ % ^ & ( ) _ = + [ ] { } ; : ' , . < > / ? \\ |\r\n\r\nThe hyphen, -, is valid, and thus you "
      "would be able to rank by the term, CD-ROM, for example.\r\n\r\nThe asterisk, *, can be used for right "
      "truncation, e.g., cost* will add weight to a record for cost, costs, costly, cost-effective, etc.";
  EXPECT_EQ(RankTermKeyRefusal('?')->text, delimiterText);
  EXPECT_EQ(RankTermKeyRefusal('?')->title, "Rank Term Error");
  EXPECT_EQ(RankTermKeyRefusal(' ')->text,
            "The <space> key was pressed.  At this time, the Rank command does not support ranking by phrases.  "
            "Only single terms are supported.");
  for (char refused : std::string("\"`~!@#$%^&()_=+[]{};:',.<>/\\|"))
    EXPECT_TRUE(RankTermKeyRefusal(refused).has_value()) << refused;
  for (char accepted : std::string("aZ09-*\t\x80"))
    EXPECT_FALSE(RankTermKeyRefusal(accepted).has_value()) << static_cast<int>(accepted);
  for (char c : std::string("0123456789")) EXPECT_FALSE(RankWeightKeyRefusal(c).has_value());
  for (char c : std::string("a- \b")) {
    ASSERT_TRUE(RankWeightKeyRefusal(c).has_value());
    EXPECT_EQ(RankWeightKeyRefusal(c)->text, "Valid weights are the numerals 0 through 9");
    EXPECT_EQ(RankWeightKeyRefusal(c)->title, "Term Weight Error");
  }
  RankParams p;
  EXPECT_EQ(RankBeginRefusal(p)->text,
            "The first term has been left blank.  glExist should be at least one term for ranking.");
  p.terms[0] = "cost";
  EXPECT_EQ(RankBeginRefusal(p)->text, "The weight for the first term has been left blank.");
  p.weights[0] = "3";
  EXPECT_FALSE(RankBeginRefusal(p).has_value());
}

}  // namespace
}  // namespace zv
