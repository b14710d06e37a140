// Words, terms, report lines, the exchange sort and the choosing of a record file.
#include "analysis/analysis_common.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>

#include "analysis/exchange_sort.h"
#include "analysis/select_record_file.h"
#include "analysis_test_support.h"
#include "core/error.h"
#include "core/text.h"

namespace zv {
namespace {

using test::TempDir;
using test::WriteFile;

TEST(AnalysisWords, TermsMeetWholeWordsOrTheirBeginnings) {
  const DelimiterSet delims(kSearchDelims);
  struct Case {
    const char* line;  // upper-cased, as the tools test it
    const char* typed;
    bool hit;
  } cases[] = {
      {"COST-EFFECTIVE MEASURES", "cost*", true},
      {"COST-EFFECTIVE MEASURES", "cost", false},  // the hyphen is no delimiter
      {"COSTS ROSE", "cost", false},
      {"THE COST, IN SHORT", "cost", true},
      {"(COST)", "COST", true},
      {"CD-ROM DRIVES", "cd-rom", true},
      {"WHY? BECAUSE", "why", false},  // nor is the question mark
      {"WHY? BECAUSE", "why?", true},
      {"A\tCOST", "cost", false},      // nor tab
      {"THE COST", " cost", false},    // a leading blank never equals a word
      {"COST.X", "cost.x", false},     // a delimiter in a term: the plain search finds it, no word equals it
      {"ANY LINE", "*", false},        // "*" alone is an empty term
  };
  for (const Case& c : cases) {
    const Term t = PrepareTerm(c.typed);
    const bool hit = !t.empty() && FirstMatch(c.line, t, delims, true);
    EXPECT_EQ(hit, c.hit) << c.line << " / " << c.typed;
  }
  EXPECT_EQ(CountMatches("COST COSTS COST", PrepareTerm("cost"), delims, true), 2);
  EXPECT_EQ(CountMatches("COST COSTS COST", PrepareTerm("cost*"), delims, true), 3);
}

// The words of a line as the parse table cuts them: trimmed, cut at every delimiter.
std::vector<std::string> CutWords(const std::string& line) {
  std::vector<std::string> words{""};
  for (char c : std::string(TrimBlanks(line))) {
    if (DelimiterSet(kSearchDelims).has(c))
      words.emplace_back();
    else
      words.back() += c;
  }
  return words;
}

TEST(AnalysisWords, MatchesAreTheWordsTheLineIsCutInto) {
  // Random lines of words, delimiters, hyphens and near misses, against the words cut
  // one by one.
  const DelimiterSet delims(kSearchDelims);
  std::mt19937 random(9);
  const char* pieces[] = {"COST", "COSTS", "CO", "XCOST", "COST-X", " ", ", ", "(", ")", "..", "-", "?", "\t", "A"};
  for (int i = 0; i < 3000; ++i) {
    std::string line;
    for (auto k = 0u, n = static_cast<unsigned>(random() % 12); k < n; ++k) line += pieces[random() % std::size(pieces)];
    for (const char* typed : {"cost", "cost*", "co*", "cost-x", "cost,"}) {
      const Term t = PrepareTerm(typed);
      int32_t expected = 0;
      for (const std::string& w : CutWords(line)) expected += WordMatches(w, t) ? 1 : 0;
      ASSERT_EQ(CountMatches(line, t, delims, true), expected) << '"' << line << "\" / " << typed;
      ASSERT_EQ(FirstMatch(line, t, delims, true), expected > 0) << '"' << line << "\" / " << typed;
    }
  }
}

TEST(AnalysisWords, ThePlainSearchFindsATermAtEveryPlaceOfALine) {
  // Every place of lines of every length up to three blocks, against find().
  std::mt19937 random(5);
  for (std::size_t n = 0; n <= 48; ++n) {
    for (const std::string part : {"C", "CO", "COS", "COST", "COSTEFFECTIVE12345"}) {
      for (std::size_t at = 0; at + part.size() <= n; ++at) {
        std::string line(n, 'x');
        for (char& c : line) c = "COSTxy "[random() % 7];  // near misses all round
        line.replace(at, part.size(), part);
        EXPECT_TRUE(LineHolds(line, part)) << line << " / " << part;
      }
      std::string none(n, 'C');
      if (part.size() > 1) {
        EXPECT_EQ(LineHolds(none, part), none.find(part) != std::string::npos) << n << part;
      }
      EXPECT_EQ(LineHolds(std::string(n, 'y'), part), false);
    }
  }
  EXPECT_TRUE(LineHolds("ABC", ""));
}

TEST(AnalysisWords, ALineBeyondSixteenBitsOverflowsOnlyWithTheLimits) {
  const DelimiterSet delims(kSearchDelims);
  const std::string line = std::string(40000, 'X') + " COST";
  try {
    (void)FirstMatch(line, PrepareTerm("cost"), delims, true);
    ADD_FAILURE() << "no overflow";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kOverflow);
    EXPECT_EQ(e.reason(),
              "Limit reached: the length of a line searched for a term can be at most 32767. This one has 40005 "
              "characters.");
  }
  EXPECT_TRUE(FirstMatch(line, PrepareTerm("cost"), delims, false));
  // Blanks around the line are trimmed before the limit is measured.
  EXPECT_TRUE(FirstMatch(std::string(40000, ' ') + "COST", PrepareTerm("cost"), delims, true));
}

TEST(AnalysisReport, PrintLinesLayNumbersAndColumnsOut) {
  EXPECT_EQ(PrintLine().number(1).tab(9).str(12).tab(17).str(7).bytes(), " 1       12      7");
  EXPECT_EQ(PrintLine().number(-3).tab(7).text("x").bytes(), "-3    x");
  EXPECT_EQ(PrintLine().text("Unique Words: ").str(429).bytes(), "Unique Words:  429");
  EXPECT_EQ(PrintLine().number(1000).tab(7).text("cost").bytes(), " 1000 cost");
  // A column already passed is taken on the next line, unless the limits are off.
  EXPECT_EQ(PrintLine().number(10000).tab(7).text("cost").bytes(), " 10000 \r\n      cost");
  EXPECT_EQ(PrintLine(false).number(10000).tab(7).text("cost").bytes(), " 10000 cost");
  EXPECT_TRUE(std::regex_match(ReportDateLine(1'700'000'000),
                               std::regex(R"(\d\d/\d\d/\d\d\d\d   \d\d:\d\d:\d\d)")));
}

struct Elem {
  int32_t id = 0;
  int32_t value = 0;
};

std::vector<int32_t> ids(const std::vector<Elem>& a) {
  std::vector<int32_t> out;
  for (std::size_t i = 1; i < a.size(); ++i) out.push_back(a[i].id);
  return out;
}

TEST(AnalysisSort, TheExchangeSequenceSettlesTiesAndTheStableSortKeepsFileOrder) {
  // Values 0 0 1 0, highest first: gap 2 exchanges 1 and 3, and nothing then moves 2
  // and 1 back into file order.
  std::vector<Elem> a{{}, {1, 0}, {2, 0}, {3, 1}, {4, 0}};
  std::vector<Elem> b = a;
  GapExchangeSort(a, 4, [](const Elem& x, const Elem& y) { return x.value < y.value; });
  StableSortFrom1(b, 4, [](const Elem& x, const Elem& y) { return x.value > y.value; });
  EXPECT_EQ(ids(a), (std::vector<int32_t>{3, 2, 1, 4}));
  EXPECT_EQ(ids(b), (std::vector<int32_t>{3, 1, 2, 4}));
  // One element, or none: no gap, nothing done.
  std::vector<Elem> one{{}, {9, 5}};
  GapExchangeSort(one, 1, [](const Elem&, const Elem&) { return true; });
  EXPECT_EQ(ids(one), std::vector<int32_t>{9});
}

TEST(AnalysisSort, ASixteenBitLastOverflowsOnAnExchangeAboveItsRange) {
  // Highest first, already in order but for records 36000 and 36001: every gap but the
  // last leaves them be, and gap 1 exchanges them at position 36000.
  const int32_t n = 40000;
  std::vector<Elem> a(n + 1);
  for (int32_t i = 1; i <= n; ++i) a[static_cast<std::size_t>(i)] = {i, n - i};
  auto byValue = [](const Elem& x, const Elem& y) { return x.value < y.value; };
  std::vector<Elem> unlimited = a;
  GapExchangeSort(a, n, byValue, true);  // in order: no exchange, no overflow
  std::swap(a[36000].value, a[36001].value);
  unlimited = a;
  try {
    GapExchangeSort(a, n, byValue, true);
    ADD_FAILURE() << "no overflow";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kOverflow);
  }
  GapExchangeSort(unlimited, n, byValue, false);
  EXPECT_EQ(unlimited[36000].id, 36001);
  EXPECT_EQ(unlimited[36001].id, 36000);
}

TEST(SelectRecordFile, NamesAndRefusals) {
  TempDir dir;
  const std::string pro = test::ProText({{"A"}, {"B"}});
  WriteFile(dir.file("r.PRO"), pro);
  WriteFile(dir.file("r.NDX"), std::string(2 * kIndexRecLen, '\0'));
  WriteFile(dir.file("lone.NDX"), std::string(kIndexRecLen, '\0'));
  WriteFile(dir.file("empty.PRO"), "");
  WriteFile(dir.file("notes.txt"), pro);

  JobState job;
  job.outDir = dir.path().string();
  Message refusal;
  ASSERT_TRUE(SelectRecordFile(job, dir.file("r.PRO"), kRankRequirement, refusal));
  EXPECT_EQ(job.gsBaseName, dir.file("r"));
  EXPECT_EQ(job.gsIndexFile, dir.file("r.NDX"));
  EXPECT_FALSE(IndexWasChosen(job));
  ASSERT_TRUE(SelectRecordFile(job, dir.file("r.NDX"), kRankRequirement, refusal));
  EXPECT_EQ(job.gsProFile, dir.file("r.PRO"));
  EXPECT_TRUE(IndexWasChosen(job));

  struct Case {
    std::string name, title, text;
  } cases[] = {
      {dir.file("notes.txt"), "Not a .PRO or .NDX File",
       "The file you specified is\r\n" + dir.file("notes.txt") +
           "\r\n\r\nSorting requires that you specify\r\na .PRO (processed by filter) file\r\nor a .NDX (index of a "
           ".PRO) file."},
      {dir.file("empty.PRO"), "Zero-Length File", dir.file("empty.PRO") + "\r\nis a zero-length file."},
      {dir.file("lone.NDX"), "File Open Error", ".PRO file not found."},
  };
  for (const Case& c : cases) {
    EXPECT_FALSE(SelectRecordFile(job, c.name, kSortRequirement, refusal)) << c.name;
    EXPECT_EQ(refusal.title, c.title);
    EXPECT_EQ(refusal.text, c.text);
    EXPECT_TRUE(job.gsProFile.empty() && job.gsIndexFile.empty() && job.gsBaseName.empty());
  }
  EXPECT_EQ(StemOf("C:\\DIR\\A.B.NDX"), "C:\\DIR\\A.B");
  EXPECT_EQ(StemOf("/x.d/notes"), "/x.d/notes");
}

}  // namespace
}  // namespace zv
