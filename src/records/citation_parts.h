// The pieces of a citation's text: names, source lines, dates and identifiers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

// A blank, a tab, or the NUL byte the filters leave where a control character stood.
inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\0'; }
// The text without the blanks at its ends.
inline std::string_view TrimText(std::string_view text) {
  std::size_t a = 0, b = text.size();
  while (a < b && IsBlank(text[a])) ++a;
  while (b > a && IsBlank(text[b - 1])) --b;
  return text.substr(a, b - a);
}

struct DateParts {
  int32_t year = 0;  // 0: none
  int32_t month = 0;
  int32_t day = 0;
};

// The first year (1800 to 2099) that stands as a number of its own: not part of a
// longer number, not a page range ("1995-2001" in "p 1995-2001" is no year).
int32_t FindYear(std::string_view text);
// A year with the month and day beside it when they are there: "2023 Aug", "Jan 2024",
// "04 Mar 2024", "March 4, 2024", "2024-03-04", "20240304".
DateParts ParseDate(std::string_view text);
// The whole text is a date (a year, with a month and day or not).
bool LooksLikeDate(std::string_view text);

// A line of people: "Varga T; Holm E", "By Imogen Trask", "Horvath, E.", "Brook O".
bool LooksLikeAuthors(std::string_view text);
// A source line: a year, or volume, issue and pages in one of the usual shapes.
bool LooksLikeSource(std::string_view text);

struct PersonName {
  std::string family;
  std::string given;  // initials or given names; empty when unknown
};

// People in order, their strings' storage kept from record to record.
class PersonList {
 public:
  const PersonName* begin() const { return items_.data(); }
  const PersonName* end() const { return items_.data() + count_; }
  const PersonName& operator[](std::size_t i) const { return items_[i]; }
  const PersonName& front() const { return items_[0]; }
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  void clear() { count_ = 0; }
  PersonName& add();
  void add(std::string_view family, std::string_view given);

 private:
  std::vector<PersonName> items_;
  std::size_t count_ = 0;
};

// The people of an author field, in order: split at ";", at runs of two blanks (Ovid),
// at "," between "Surname I" names (Data-Star), or after the initials of each name
// ("Varga-Holm T. Okafor-Reyes P.", BRS). A leading "By " is dropped.
void SplitAuthors(std::string_view text, PersonList& out);
// One person: "Surname, Given", "Surname GI", "Given Surname", "G. Surname".
void SplitName(std::string_view text, PersonName& out);

// What a source line holds. Views point into the line; `lastPage` is written out in
// full ("1123-9" gives 1123 and 1129).
struct SourceParts {
  std::string_view journal;
  std::string_view volume;
  std::string_view issue;
  std::string_view firstPage;
  std::string lastPage;
  DateParts date;
};
void ParseSource(std::string_view text, SourceParts& out);

// Identifiers found in running text; empty when there is none.
std::string_view FindDoi(std::string_view text);    // "10.1000/xyz", trailing punctuation off
std::string_view FindPmid(std::string_view text);   // the digits after "PMID: " or "PMID- "
// "0917-4420" after "ISSN" (anywhere, when the text is an ISSN field's: `afterLabel`
// false); the digits and hyphens of an ISBN after "ISBN" (or at the text's start).
std::string_view FindIssn(std::string_view text, bool afterLabel = true);
std::string_view FindIsbn(std::string_view text, bool afterLabel = true);

// Which of the words the searches above begin from stand in a text: "10." (FindDoi),
// "PMID" (FindPmid), "ISSN" and "ISBN" (FindIssn and FindIsbn after their labels), a
// bit each, found in one look. A search whose word is missing finds nothing.
inline constexpr unsigned kDoiMark = 1, kPmidMark = 2, kIssnMark = 4, kIsbnMark = 8;
unsigned IdentifierMarks(std::string_view text);

}  // namespace zv
