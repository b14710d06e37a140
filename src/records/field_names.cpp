// The tables of tags, Ovid field names and labels the services print.
#include "records/field_names.h"

#include <array>
#include <cctype>
#include <cstdint>

namespace zv {

namespace {

using F = FieldName;

struct TagRow {
  std::string_view tag;
  FieldName name;
};

// Tags at the left margin, as MEDLINE on NLM, BRS, Data-Star, STN, Orbit, DJN/R and the
// RIS-like displays print them. "IN" is an institution here; a record whose only
// people are under "IN" (Orbit's inventors) is settled by the reader.
constexpr std::array kTags{
    TagRow{"TI", F::Title},        TagRow{"T1", F::Title},        TagRow{"HD", F::Title},
    TagRow{"HL", F::Title},        TagRow{"AU", F::Author},       TagRow{"A1", F::Author},
    TagRow{"FAU", F::Author},      TagRow{"BY", F::Author},       TagRow{"IN", F::Institution},
    TagRow{"CS", F::Institution},  TagRow{"AD", F::Institution},  TagRow{"SO", F::Source},
    TagRow{"JN", F::Journal},      TagRow{"JT", F::Journal},      TagRow{"TA", F::Journal},
    TagRow{"JO", F::Journal},      TagRow{"JF", F::Journal},      TagRow{"T2", F::Journal},
    TagRow{"VL", F::Volume},       TagRow{"VI", F::Volume},       TagRow{"VO", F::Volume},
    TagRow{"IP", F::Issue},        TagRow{"PG", F::Pages},        TagRow{"PP", F::Pages},
    TagRow{"PY", F::Year},         TagRow{"YR", F::Year},         TagRow{"PD", F::Date},
    TagRow{"DP", F::Date},         TagRow{"DA", F::Date},         TagRow{"AB", F::Abstract},
    TagRow{"TD", F::Abstract},     TagRow{"LP", F::Abstract},     TagRow{"DE", F::Descriptors},
    TagRow{"MH", F::Descriptors},  TagRow{"CT", F::Descriptors},  TagRow{"ID", F::Keywords},
    TagRow{"KW", F::Keywords},     TagRow{"OT", F::Keywords},     TagRow{"UT", F::Keywords},
    TagRow{"ST", F::Keywords},     TagRow{"LA", F::Language},     TagRow{"LG", F::Language},
    TagRow{"DT", F::DocType},      TagRow{"PT", F::DocType},      TagRow{"AN", F::Accession},
    TagRow{"UI", F::Accession},    TagRow{"PMID", F::Pmid},       TagRow{"PM", F::Pmid},
    TagRow{"DOI", F::Doi},         TagRow{"DO", F::Doi},          TagRow{"DI", F::Doi},
    TagRow{"ISSN", F::Issn},       TagRow{"ISBN", F::Isbn},       TagRow{"BN", F::Isbn},
    TagRow{"IB", F::Isbn},         TagRow{"DB", F::Database},     TagRow{"PB", F::Publisher},
    TagRow{"PU", F::Publisher},
};

// Ovid prints each field's name on a line of its own, its text indented 9 columns.
constexpr std::array kOvidNames{
    TagRow{"Unique Identifier", F::Accession},
    TagRow{"Accession Number", F::Accession},
    TagRow{"Authors", F::Author},
    TagRow{"Author", F::Author},
    TagRow{"Institution", F::Institution},
    TagRow{"Title", F::Title},
    TagRow{"Source", F::Source},
    TagRow{"Journal Name", F::Journal},
    TagRow{"Abstract", F::Abstract},
    TagRow{"Publisher", F::Publisher},
    TagRow{"Language", F::Language},
    TagRow{"Publication Type", F::DocType},
    TagRow{"Document Type", F::DocType},
    TagRow{"Year of Publication", F::Year},
    TagRow{"Date of Publication", F::Date},
    TagRow{"ISSN", F::Issn},
    TagRow{"ISBN", F::Isbn},
    TagRow{"Digital Object Identifier", F::Doi},
    TagRow{"DOI", F::Doi},
    TagRow{"Keywords", F::Keywords},
    TagRow{"Keyword Heading", F::Keywords},
    TagRow{"MeSH Subject Headings", F::Descriptors},
    TagRow{"Subject Headings", F::Descriptors},
    TagRow{"Descriptors", F::Descriptors},
    TagRow{"Database", F::Database},
    TagRow{"Conference", F::Other},
    TagRow{"Country of Publication", F::Other},
    TagRow{"Journal Subset", F::Other},
    TagRow{"Entry Date", F::Other},
    TagRow{"Comments", F::Other},
    TagRow{"Status", F::Other},
    TagRow{"Authors Full Name", F::Other},
};
constexpr std::size_t kOvidMargin = 9;

// "Label: text" lines of DIALOG's formats and of files that print their fields so.
constexpr std::array kLabels{
    TagRow{"title", F::Title},
    TagRow{"author", F::Author},
    TagRow{"authors", F::Author},
    TagRow{"corporate source", F::Institution},
    TagRow{"source", F::Source},
    TagRow{"journal", F::Journal},
    TagRow{"volume", F::Volume},
    TagRow{"issue", F::Issue},
    TagRow{"pages", F::Pages},
    TagRow{"publication year", F::Year},
    TagRow{"publication date", F::Date},
    TagRow{"date", F::Date},
    TagRow{"abstract", F::Abstract},
    TagRow{"descriptors", F::Descriptors},
    TagRow{"identifiers", F::Keywords},
    TagRow{"keywords", F::Keywords},
    TagRow{"language", F::Language},
    TagRow{"languages", F::Language},
    TagRow{"document type", F::DocType},
    TagRow{"publication type", F::DocType},
    TagRow{"accession number", F::Accession},
    TagRow{"pmid", F::Pmid},
    TagRow{"doi", F::Doi},
    TagRow{"issn", F::Issn},
    TagRow{"isbn", F::Isbn},
    TagRow{"database", F::Database},
    TagRow{"publisher", F::Publisher},
    TagRow{"record type", F::Other},
    TagRow{"treatment", F::Other},
    TagRow{"section headings", F::Other},
    TagRow{"journal code", F::Other},
    TagRow{"chemical registry no.", F::Other},
    TagRow{"record date created", F::Other},
    TagRow{"record date completed", F::Other},
    TagRow{"publishing model", F::Other},
    TagRow{"conference", F::Other},
    TagRow{"country", F::Other},
};

// "0917-4420", "1234-567X": the text begins with an ISSN.
bool beginsWithIssn(std::string_view text) {
  std::size_t i = text.find_first_not_of(' ');
  if (i == std::string_view::npos || text.size() - i < 9) return false;
  text = text.substr(i);
  for (std::size_t k = 0; k < 9; ++k) {
    const unsigned char c = static_cast<unsigned char>(text[k]);
    if (k == 4 ? c != '-' : k == 8 ? !(std::isdigit(c) || c == 'X' || c == 'x') : !std::isdigit(c)) return false;
  }
  return text.size() == 9 || !std::isalnum(static_cast<unsigned char>(text[9]));
}

bool equalNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const char c = a[i] >= 'A' && a[i] <= 'Z' ? static_cast<char>(a[i] - 'A' + 'a') : a[i];
    if (c != b[i]) return false;
  }
  return true;
}

// The lengths Ovid's names have (bit n: a name of n characters), and those of the
// tails its filter leaves: most lines are no name, and are told so at once.
struct OvidLengths {
  uint64_t names = 0, tails = 0;
  constexpr OvidLengths() {
    for (const TagRow& row : kOvidNames) {
      names |= uint64_t{1} << row.tag.size();
      if (row.tag.size() > kOvidMargin) tails |= uint64_t{1} << (row.tag.size() - kOvidMargin);
    }
  }
};
constexpr OvidLengths kOvidLengths;

}  // namespace

std::string_view CommonName(FieldName name) {
  switch (name) {
    case F::Other: return "other";
    case F::Title: return "title";
    case F::Author: return "authors";
    case F::Source: return "source";
    case F::Journal: return "journal";
    case F::Volume: return "volume";
    case F::Issue: return "issue";
    case F::Pages: return "pages";
    case F::Year: return "year";
    case F::Date: return "date";
    case F::Abstract: return "abstract";
    case F::Descriptors: return "descriptors";
    case F::Keywords: return "keywords";
    case F::Language: return "language";
    case F::DocType: return "document type";
    case F::Accession: return "accession number";
    case F::Pmid: return "PMID";
    case F::Doi: return "DOI";
    case F::Issn: return "ISSN";
    case F::Isbn: return "ISBN";
    case F::Database: return "database";
    case F::Publisher: return "publisher";
    case F::Institution: return "institution";
  }
  return "other";
}

// A tag of up to four characters as one number, for a table lookup without string
// compares (the reader asks for every line of every record).
static constexpr uint32_t packed(std::string_view tag) {
  uint32_t v = 0;
  for (std::size_t i = 0; i < 4; ++i) v = (v << 8) | (i < tag.size() ? static_cast<unsigned char>(tag[i]) : 0u);
  return v;
}

namespace {
// The tags by their packed form in a table of open addressing, four times the size of
// the list, so that a lookup is a slot or two.
struct TagTable {
  static constexpr std::size_t kSlots = 256;
  std::array<uint32_t, kSlots> keys{};  // 0: empty (no tag packs to 0)
  std::array<FieldName, kSlots> names{};
  static constexpr std::size_t slotOf(uint32_t key) { return (key * 0x9E3779B1u) >> 24; }
  constexpr TagTable() {
    for (const TagRow& row : kTags) {
      std::size_t s = slotOf(packed(row.tag));
      while (keys[s] != 0) s = (s + 1) % kSlots;
      keys[s] = packed(row.tag);
      names[s] = row.name;
    }
  }
  FieldName find(uint32_t key) const {
    for (std::size_t s = slotOf(key);; s = (s + 1) % kSlots) {
      if (keys[s] == key) return names[s];
      if (keys[s] == 0) return F::Other;
    }
  }
};
static_assert(kTags.size() * 4 <= TagTable::kSlots);
constexpr TagTable kTagTable;
}  // namespace

FieldName FieldNameOfTag(std::string_view tag, std::string_view text) {
  if (tag.empty() || tag.size() > 4) return F::Other;
  const uint32_t key = packed(tag);
  if (key == packed("IS")) return beginsWithIssn(text) ? F::Issn : F::Issue;
  if (key == packed("SN")) return beginsWithIssn(text) ? F::Issn : F::Source;
  return kTagTable.find(key);
}

OvidName OvidFieldName(std::string_view trimmedLine, bool cutTails) {
  if (trimmedLine.empty() || trimmedLine.size() > 30) return {};
  const uint64_t length = uint64_t{1} << trimmedLine.size();
  if ((kOvidLengths.names & length) != 0)
    for (const TagRow& row : kOvidNames)
      if (row.tag == trimmedLine) return {true, true, row.name, row.tag};
  if (!cutTails || (kOvidLengths.tails & length) == 0) return {};
  for (const TagRow& row : kOvidNames)
    if (row.tag.size() > kOvidMargin && row.tag.substr(kOvidMargin) == trimmedLine) return {true, false, row.name, row.tag};
  return {};
}

LabelName FieldNameOfLabel(std::string_view label) {
  for (const TagRow& row : kLabels)
    if (equalNoCase(label, row.tag)) return {true, row.name};
  return {};
}

}  // namespace zv
