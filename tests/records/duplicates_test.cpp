// The duplicate finder's normal forms, its measure of near titles, and its groups.
#include "records/duplicates.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>
#include <vector>

namespace zv {
namespace {

TEST(Duplicates, NormalTitlesOfOneTitlePrintedInManyWays) {
  struct Row {
    std::string title, normal;
    std::size_t mainWords;
  } rows[] = {
      {"The Effects of Peat on Water.", "effects of peat on water", 5},
      {"Caf\xC3\xA9 soci\xC3\xA9t\xC3\xA9 in M\xC3\xBC" "nster", "cafe societe in munster", 4},  // UTF-8
      {"Caf\xE9 soci\xE9t\xE9 in M\xFCnster", "cafe societe in munster", 4},                      // Windows-1252
      {"Otters' dens & otter's holts", "otters dens and otters holts", 5},
      {"Ditch blocking: a five-year field study", "ditch blocking a five year field study", 2},
      {"Ditch blocking - a review", "ditch blocking a review", 2},
      {"Five-year study", "five year study", 3},
      {"A", "", 0},
  };
  for (const Row& r : rows) {
    std::size_t mainWords = 99;
    EXPECT_EQ(NormalTitle(r.title, &mainWords), r.normal) << r.title;
    EXPECT_EQ(mainWords, r.mainWords) << r.title;
  }
  EXPECT_EQ(NormalSurname("Okafor-Reyes"), "okaforreyes");
  EXPECT_EQ(NormalSurname("M\xFCller"), NormalSurname("MULLER"));
  EXPECT_EQ(NormalDoi("https://doi.org/10.1234/ABC"), "10.1234/abc");
  EXPECT_EQ(NormalDoi("doi:10.1234/x"), "10.1234/x");
}

TEST(Duplicates, TitleSimilarityAsMeasured) {
  struct Row {
    std::string a, b;
    double similarity;
  } rows[] = {
      {"effects of peat on water", "effects of peat on water", 1.0},
      // Word order counts: the two stay apart.
      {"effects of peat on water", "effects of water on peat", 0.6},
      // A word changed in five: exactly at the threshold.
      {"effects of peat on water", "effects of moss on water", 0.8},
      // A typing slip costs half a word.
      {"effects of peat on water", "effects of peet on water", 0.9},
      {"effects of peat on water", "efects of peat on water", 0.9},
      {"effects of peat on water", "effetcs of peat on water", 0.9},
      {"effects of peat on water", "effects of peat on the water", 1.0 - 1.0 / 6},
      {"effects of peat on water", "effects of peat", 0.6},
      // Parts of a series are different works.
      {"peat subsidence in finland part 1", "peat subsidence in finland part 2", 0.0},
      {"peat subsidence ii", "peat subsidence iii", 0.0},
      {"peat subsidence 1990 2000", "peat subsidence 1990 2000", 1.0},
      {"", "", 1.0},
      {"peat", "", 0.0},
  };
  for (const Row& r : rows) EXPECT_NEAR(TitleSimilarity(r.a, r.b), r.similarity, 1e-9) << r.a << " / " << r.b;
  EXPECT_LT(TitleSimilarity("effects of peat on water", "effects of water on peat"), kSimilarTitle);
}

// A record for the finder: title, first author's surname, year, identifiers.
Citation Work(const std::string& title, const std::string& surname, int32_t year, const std::string& doi = {},
              const std::string& pmid = {}) {
  Citation c;
  c.title = title;
  if (!surname.empty()) c.authors.add(surname, "A");
  c.date.year = year;
  c.doi = doi;
  c.pmid = pmid;
  return c;
}

struct GroupCase {
  const char* name;
  std::vector<Citation> records;
  std::vector<uint32_t> first;  // expected first record of each record's group
  std::vector<MatchReason> reasons;
};

void PrintTo(const GroupCase& c, std::ostream* os) { *os << c.name; }

class GroupingRules : public ::testing::TestWithParam<GroupCase> {};

TEST_P(GroupingRules, RecordsOfOneWorkAndOnlyThoseAreGrouped) {
  const GroupCase& c = GetParam();
  WorkSet works;
  for (const Citation& r : c.records) works.add(r);
  const std::optional<Grouping> g = GroupDuplicates(works, [] { return false; });
  ASSERT_TRUE(g.has_value());
  EXPECT_EQ(g->first, c.first);
  std::vector<MatchReason> reasons;
  for (const DuplicateLink& l : g->links) reasons.push_back(l.reason);
  EXPECT_EQ(reasons, c.reasons);
  uint32_t duplicates = 0;
  for (uint32_t i = 0; i < c.first.size(); ++i) duplicates += c.first[i] != i ? 1 : 0;
  EXPECT_EQ(g->duplicates, duplicates);
}

using R = MatchReason;
const std::string kLong = "Hydrological recovery of drained peatlands after ditch blocking";

INSTANTIATE_TEST_SUITE_P(
    Rules, GroupingRules,
    ::testing::Values(
        GroupCase{"SameDoiWhateverTheTitles",
                  {Work("A", "Varga", 2020, "10.1/x"), Work("B", "Holm", 2021, "https://doi.org/10.1/X")},
                  {0, 0},
                  {R::Doi}},
        GroupCase{"SamePmid", {Work("A", "", 0, {}, "123"), Work("B", "", 0, {}, "123")}, {0, 0}, {R::Pmid}},
        GroupCase{"SameTitleYearAuthorInAnyPrint",
                  {Work("Other work", "Varga", 2020), Work(kLong + ".", "Varga", 2020),
                   Work("HYDROLOGICAL RECOVERY OF DRAINED PEATLANDS AFTER DITCH BLOCKING", "VARGA", 2020)},
                  {0, 1, 1},
                  {R::SameTitle}},
        GroupCase{"AnotherYearIsAnotherWork", {Work(kLong, "Varga", 2020), Work(kLong, "Varga", 2021)}, {0, 1}, {}},
        GroupCase{"EffectsOfXOnYAndOfYOnXStayTwo",
                  {Work("Effects of peat on water", "Varga", 2020), Work("Effects of water on peat", "Varga", 2020)},
                  {0, 1},
                  {}},
        GroupCase{"ALetterChanged",
                  {Work(kLong, "Varga", 2020), Work("Hydrological recovery of drained peatlands after ditch blocknig", "Varga", 2020)},
                  {0, 0},
                  {R::SimilarTitle}},
        GroupCase{"AWordChanged",
                  {Work(kLong, "Varga", 2020), Work("Hydrological recovery of drained fens after ditch blocking", "Varga", 2020)},
                  {0, 0},
                  {R::SimilarTitle}},
        GroupCase{"SubtitleCut",
                  {Work(kLong + ": a five-year field study", "Varga", 2020), Work(kLong, "Varga", 2020)},
                  {0, 0},
                  {R::CutSubtitle}},
        GroupCase{"PartsOfASeriesStayApart",
                  {Work(kLong + ", part 1", "Varga", 2020), Work(kLong + ", part 2", "Varga", 2020)},
                  {0, 1},
                  {}},
        GroupCase{"DifferentDoisAreNeverJoinedByTitle",
                  {Work(kLong, "Varga", 2020, "10.1/a"), Work(kLong, "Varga", 2020, "10.1/b")},
                  {0, 1},
                  {}},
        GroupCase{"ALongTitleWithoutYearOrAuthorJoinsItsOneWork",
                  {Work(kLong, "Varga", 2020), Work(kLong, "", 0)},
                  {0, 0},
                  {R::TitleOnly}},
        GroupCase{"ALongTitleWithoutYearOrAuthorBetweenTwoWorksStaysAlone",
                  {Work(kLong, "Varga", 2020), Work(kLong, "Holm", 2018), Work(kLong, "", 0)},
                  {0, 1, 2},
                  {}},
        GroupCase{"AShortTitleWithoutYearOrAuthorStaysAlone",
                  {Work("Peat dams", "Varga", 2020), Work("Peat dams", "", 0)},
                  {0, 1},
                  {}},
        GroupCase{"TheFirstOfAGroupIsTheEarliestRead",
                  {Work("X", "", 0), Work("Y", "", 0, "10.1/z"), Work("Z", "", 0), Work("W", "", 0, "10.1/z")},
                  {0, 1, 2, 1},
                  {R::Doi}}),
    [](const ::testing::TestParamInfo<GroupCase>& p) { return std::string(p.param.name); });

TEST(Duplicates, AnInterruptedSearchGivesNothing) {
  WorkSet works;
  for (int i = 0; i < 70000; ++i) works.add(Work("Title number " + std::to_string(i), "Varga", 2000));
  int asked = 0;
  EXPECT_FALSE(GroupDuplicates(works, [&] { return ++asked >= 2; }).has_value());
  EXPECT_GE(asked, 2);
}

// Thousands of made-up works from a vocabulary of a few hundred words, a fifth of them
// printed again with a change a second service would make: the finder must find
// nearly all of those and join nothing else.
TEST(Duplicates, PlantedDuplicatesAmongManyNearTitles) {
  std::mt19937 random(7);
  std::vector<std::string> vocabulary;
  for (int i = 0; i < 400; ++i) {
    std::string w;
    for (int k = 0; k < 4 + i % 6; ++k) w += static_cast<char>('a' + random() % 26);
    vocabulary.push_back(w);
  }
  const std::vector<std::string> surnames{"varga", "holm", "okafor", "brandvold", "szabo", "faltin", "ekwall"};
  WorkSet works;
  std::vector<int> workOf;
  int planted = 0;
  for (int w = 0; w < 4000; ++w) {
    std::vector<std::string> words;
    const int n = 4 + static_cast<int>(random() % 9);
    for (int k = 0; k < n; ++k) words.push_back(vocabulary[random() % vocabulary.size()]);
    std::string title;
    for (const std::string& word : words) title += (title.empty() ? "" : " ") + word;
    const std::string surname = surnames[random() % surnames.size()];
    const int32_t year = 1990 + static_cast<int32_t>(random() % 30);
    works.add(Work(title, surname, year));
    workOf.push_back(w);
    if (w % 5 != 0) continue;
    std::string again = title;
    switch (w / 5 % 3) {
      case 0: {  // a letter
        std::size_t p = again.size() / 2;
        while (again[p] == ' ') ++p;
        again[p] = again[p] == 'x' ? 'y' : 'x';
        break;
      }
      case 1:
        for (auto& ch : again) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
        break;  // case
      case 2: again += ": a subtitle of " + vocabulary[random() % vocabulary.size()]; break;
    }
    works.add(Work(again, surname, year));
    workOf.push_back(w);
    ++planted;
  }
  const std::optional<Grouping> g = GroupDuplicates(works, [] { return false; });
  ASSERT_TRUE(g.has_value());
  int found = 0, wrong = 0;
  for (uint32_t i = 0; i < works.size(); ++i) {
    if (g->first[i] == i) continue;
    (workOf[g->first[i]] == workOf[i] ? found : wrong) += 1;
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_GE(found, planted * 95 / 100);
}

}  // namespace
}  // namespace zv
