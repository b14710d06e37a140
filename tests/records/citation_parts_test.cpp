// Names, source lines, dates and identifiers, in the shapes the services print them.
#include "records/citation_parts.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

namespace zv {
namespace {

std::string CaseName(const std::string& text) {
  std::string s;
  for (char c : text) s += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
  return s;
}

struct SourceCase {
  std::string line;
  std::string journal, volume, issue, first, last;
  int32_t year, month;
};

void PrintTo(const SourceCase& c, std::ostream* os) { *os << c.line; }

class Sources : public ::testing::TestWithParam<SourceCase> {};

TEST_P(Sources, SplitIntoJournalVolumeIssuePagesAndDate) {
  const SourceCase& c = GetParam();
  SourceParts p;
  ParseSource(c.line, p);
  EXPECT_EQ(p.journal, c.journal);
  EXPECT_EQ(p.volume, c.volume);
  EXPECT_EQ(p.issue, c.issue);
  EXPECT_EQ(p.firstPage, c.first);
  EXPECT_EQ(p.lastPage, c.last);
  EXPECT_EQ(p.date.year, c.year);
  EXPECT_EQ(p.date.month, c.month);
}

INSTANTIATE_TEST_SUITE_P(
    Services, Sources,
    ::testing::Values(
        SourceCase{"Journal of Invented Cardiology 2023 Aug;41(8):1123-9", "Journal of Invented Cardiology", "41", "8",
                   "1123", "1129", 2023, 8},
        SourceCase{"Journal of Applied Mire Science. 12(3): 201-214, 2023.", "Journal of Applied Mire Science", "12",
                   "3", "201", "214", 2023, 0},
        SourceCase{"Journal of River Landscapes, 1994, 18(2), 141-158.", "Journal of River Landscapes", "18", "2", "141",
                   "158", 1994, 0},
        SourceCase{"Journal of Separation Polymers (2024), 41(3), 211-229", "Journal of Separation Polymers", "41", "3",
                   "211", "229", 2024, 0},
        SourceCase{"Journal of Inland Mammal Studies. 14(2):117-29, 1996 Jun.", "Journal of Inland Mammal Studies",
                   "14", "2", "117", "129", 1996, 6},
        SourceCase{"Freshwater Survey Methods. 3:45-58, 1997.", "Freshwater Survey Methods", "3", "", "45", "58", 1997,
                   0},
        SourceCase{"Journal of Applied Mire Science (Netherlands)  Jan 2024,  61 (1) p88-104,  ISSN: 0917-4420",
                   "Journal of Applied Mire Science", "61", "1", "88", "104", 2024, 1},
        SourceCase{"Journal of Peatland Engineering, v 9, n 2, p 133-150, 2023", "Journal of Peatland Engineering", "9",
                   "2", "133", "150", 2023, 0},
        SourceCase{"J SEP POLYM 41 (3) 211 (2024)", "J SEP POLYM", "41", "3", "211", "", 2024, 0},
        SourceCase{"Invented Toxicology Letters 2020;12:77-85", "Invented Toxicology Letters", "12", "", "77", "85",
                   2020, 0},
        SourceCase{"Fisheries Extension Notes, 2024, 3, 5-6.", "Fisheries Extension Notes", "3", "", "5", "6", 2024, 0},
        SourceCase{"Valley Business Wire", "Valley Business Wire", "", "", "", "", 0, 0},
        SourceCase{"Brandvold, K; Journal of Separation Polymers 2021, V38, P77", "Brandvold", "38", "", "77", "", 2021,
                   0}),
    [](const ::testing::TestParamInfo<SourceCase>& p) { return CaseName(p.param.line.substr(0, 40)); });

struct AuthorsCase {
  std::string text;
  std::vector<std::string> people;  // "family|given"
};

void PrintTo(const AuthorsCase& c, std::ostream* os) { *os << c.text; }

class Authors : public ::testing::TestWithParam<AuthorsCase> {};

TEST_P(Authors, SplitIntoPeopleWithFamilyAndGivenNames) {
  PersonList out;
  SplitAuthors(GetParam().text, out);
  std::vector<std::string> got;
  for (const PersonName& p : out) got.push_back(p.family + "|" + p.given);
  EXPECT_EQ(got, GetParam().people);
}

INSTANTIATE_TEST_SUITE_P(
    Services, Authors,
    ::testing::Values(
        AuthorsCase{"Varga T; Holm-Lindqvist E; Okafor-Reyes P", {"Varga|T", "Holm-Lindqvist|E", "Okafor-Reyes|P"}},
        AuthorsCase{"Okonkwo-Lind P ; Brandvold K", {"Okonkwo-Lind|P", "Brandvold|K"}},
        AuthorsCase{"Quellmark, Annika B.  Tressidy, Paul L.", {"Quellmark|Annika B.", "Tressidy|Paul L."}},
        AuthorsCase{"Petrakis N, Aldana-Ruiz C, Brook O.", {"Petrakis|N", "Aldana-Ruiz|C", "Brook|O."}},
        AuthorsCase{"Varga-Holm T. Okafor-Reyes P. Brandvold K.", {"Varga-Holm|T.", "Okafor-Reyes|P.", "Brandvold|K."}},
        AuthorsCase{"Rautio, H.; Ekholm, V.", {"Rautio|H.", "Ekholm|V."}},
        AuthorsCase{"Rautio, H., Ekholm, V.", {"Rautio|H.", "Ekholm|V."}},
        AuthorsCase{"Pellworth, Sigrun.", {"Pellworth|Sigrun"}},
        AuthorsCase{"Oyelaran, T. M.", {"Oyelaran|T. M."}},
        AuthorsCase{"By Imogen Trask", {"Trask|Imogen"}},
        AuthorsCase{"T. Varga", {"Varga|T."}},
        AuthorsCase{"Horvath E", {"Horvath|E"}},
        AuthorsCase{"de la Cruz, Maria", {"de la Cruz|Maria"}}),
    [](const ::testing::TestParamInfo<AuthorsCase>& p) { return std::to_string(p.index) + "_" + CaseName(p.param.text.substr(0, 30)); });

TEST(CitationParts, WhatLooksLikeAuthorsADateOrASource) {
  struct Row {
    std::string text;
    bool authors, date, source;
  } rows[] = {
      {"Varga T; Holm-Lindqvist E", true, false, false},
      {"By Imogen Trask", true, false, false},
      {"Horvath, E.", true, false, false},
      {"Brook O", true, false, false},
      {"Valley Business Wire", false, false, false},
      {"Methane fluxes; a review", false, false, false},
      {"04 Mar 2024", false, true, true},
      {"March 4, 2024", false, true, true},
      {"2023", false, true, true},
      {"2024-03-04", false, true, true},
      {"Monday 4 March", false, false, false},
      {"River Works Quarterly. 9(4):301-322", false, false, true},
      {"Institute of Wetland Ecology, Tarnby University, Tarnby, Denmark.", false, false, false},
  };
  for (const Row& r : rows) {
    EXPECT_EQ(LooksLikeAuthors(r.text), r.authors) << r.text;
    EXPECT_EQ(LooksLikeDate(r.text), r.date) << r.text;
    EXPECT_EQ(LooksLikeSource(r.text), r.source) << r.text;
  }
}

TEST(CitationParts, DatesAndYears) {
  struct Row {
    std::string text;
    int32_t year, month, day;
  } rows[] = {
      {"04 Mar 2024", 2024, 3, 4},        {"March 4, 2024", 2024, 3, 4},    {"2023 Aug;41(8):1123-9", 2023, 8, 0},
      {"2022 Jan;19(1):44-51", 2022, 1, 0}, {"Jan 2024,  61 (1)", 2024, 1, 0}, {"2024-03-04", 2024, 3, 4},
      {"20231219", 2023, 12, 19},         {"p 1995-2001", 0, 0, 0},         {"Marine Notes 1999", 1999, 0, 0},
      {"vol 12, 1850 pages", 1850, 0, 0}, {"12345", 0, 0, 0},
  };
  for (const Row& r : rows) {
    const DateParts d = ParseDate(r.text);
    EXPECT_EQ(d.year, r.year) << r.text;
    EXPECT_EQ(d.month, r.month) << r.text;
    EXPECT_EQ(d.day, r.day) << r.text;
  }
  EXPECT_EQ(FindYear("3:1995-2001, 1996"), 1996);
}

TEST(CitationParts, IdentifiersInRunningText) {
  EXPECT_EQ(FindDoi("see doi:10.1016/j.peat.2023.04.001."), "10.1016/j.peat.2023.04.001");
  EXPECT_EQ(FindDoi("https://doi.org/10.1234/ABC-12(3)x)"), "10.1234/ABC-12(3)x");
  EXPECT_EQ(FindDoi("version 10.12 of the 110.1234/x"), "");
  EXPECT_EQ(FindPmid("24318876   PMID: 38122410"), "38122410");
  EXPECT_EQ(FindPmid("PMID- 123"), "123");
  EXPECT_EQ(FindPmid("PMIDX"), "");
  EXPECT_EQ(FindIssn("p88-104,  ISSN: 0917-4420--Print"), "0917-4420");
  EXPECT_EQ(FindIssn("pages 1123-1129"), "");
  EXPECT_EQ(FindIssn("1234-567X", false), "1234-567X");
  EXPECT_EQ(FindIsbn("ISBN 0-19-852663-6 (pbk)"), "0-19-852663-6");
  EXPECT_EQ(FindIsbn("ISBN-13: 978-3-16-148410-0"), "978-3-16-148410-0");
  EXPECT_EQ(FindIsbn("ISBN 12-34"), "");
  EXPECT_EQ(TrimText(std::string_view("  \0x\t ", 6)), "x");
}

TEST(CitationParts, IdentifierMarksTellWhichSearchesCanFindAnything) {
  struct Row {
    std::string_view text;
    unsigned marks;
  } rows[] = {
      {"", 0},
      {"10.", kDoiMark},
      {"10", 0},
      {"1 0.", 0},
      {"PMID", kPmidMark},
      {"PMI", 0},
      {"pmid 123", 0},
      {"ISSN", kIssnMark},
      {"ISBN", kIsbnMark},
      {"ISSBN ISXN IS", 0},
      {"ISSN 0917-4420; ISBN 0-19-852663-6, PMID: 5 doi:10.1/x", kDoiMark | kPmidMark | kIssnMark | kIsbnMark},
      {"IIIIPPPP11111111PMIPMI10,10 IS.N", 0},
  };
  for (const Row& r : rows) EXPECT_EQ(IdentifierMarks(r.text), r.marks) << r.text;

  // Each word at every place of texts around the width of the vector look, among
  // bytes that begin the words, and with its last letter cut off.
  const std::pair<std::string_view, unsigned> words[] = {
      {"10.", kDoiMark}, {"PMID", kPmidMark}, {"ISSN", kIssnMark}, {"ISBN", kIsbnMark}};
  for (const auto& [word, mark] : words) {
    for (std::size_t length : {4u, 15u, 16u, 17u, 19u, 31u, 32u, 33u, 48u, 70u}) {
      for (std::size_t at = 0; at + word.size() <= length; ++at) {
        std::string text(length, 'x');
        for (std::size_t k = 0; k < length; k += 5) text[k] = "1PI"[k % 3];
        text.replace(at, word.size(), word);
        EXPECT_EQ(IdentifierMarks(text) & mark, mark) << word << " at " << at << " of " << length;
        // The same text less the word's last letter: only another copy would count.
        text[at + word.size() - 1] = 'x';
        const bool elsewhere = text.find(word) != std::string::npos;
        EXPECT_EQ((IdentifierMarks(text) & mark) != 0, elsewhere) << word << " cut at " << at << " of " << length;
      }
    }
  }
}

}  // namespace
}  // namespace zv
