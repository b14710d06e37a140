// From the fields of a record to its citation.
#include "records/citation.h"


namespace zv {

namespace {

using F = FieldName;

bool containsNoCase(std::string_view text, std::string_view lowerPart) {
  if (lowerPart.size() > text.size()) return false;
  for (std::size_t i = 0; i + lowerPart.size() <= text.size(); ++i) {
    std::size_t k = 0;
    while (k < lowerPart.size()) {
      const char c = text[i + k];
      if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) != lowerPart[k]) break;
      ++k;
    }
    if (k == lowerPart.size()) return true;
  }
  return false;
}

// The kind of work from a document type as the services word it.
WorkType typeOfDocType(std::string_view docType) {
  if (containsNoCase(docType, "patent")) return WorkType::Patent;
  if (containsNoCase(docType, "conference") || containsNoCase(docType, "proceedings") ||
      containsNoCase(docType, "meeting") || containsNoCase(docType, "congress"))
    return WorkType::Conference;
  if (containsNoCase(docType, "chapter")) return WorkType::Chapter;
  if (containsNoCase(docType, "review") || containsNoCase(docType, "journal") || containsNoCase(docType, "article"))
    return WorkType::Journal;
  if (containsNoCase(docType, "book") || containsNoCase(docType, "monograph")) return WorkType::Book;
  if (containsNoCase(docType, "thesis") || containsNoCase(docType, "dissertation")) return WorkType::Thesis;
  if (containsNoCase(docType, "report")) return WorkType::Report;
  if (containsNoCase(docType, "news") || containsNoCase(docType, "wire")) return WorkType::News;
  return WorkType::Generic;
}

void setOnce(std::string& slot, std::string_view text, TextList& notes, const Field& f) {
  if (text.empty()) return;
  if (slot.empty()) {
    slot.assign(text);
    return;
  }
  if (slot == text) return;
  std::string& n = notes.add();
  n.assign(f.tag);
  if (!n.empty()) n += ' ';
  n += f.text;
}

// "*Wetlands; *Soil--chemistry; Hydrology": one term each, the major-topic star off.
void addTerms(std::string_view text, TextList& list) {
  std::size_t i = 0;
  while (i <= text.size()) {
    std::size_t e = text.find(';', i);
    if (e == std::string_view::npos) e = text.size();
    std::string_view term = TrimText(text.substr(i, e - i));
    while (!term.empty() && term.front() == '*') term.remove_prefix(1);
    if (!term.empty()) list.add(term);
    i = e + 1;
  }
}

std::string_view firstWord(std::string_view text) {
  text = TrimText(text);
  std::size_t e = 0;
  while (e < text.size() && !IsBlank(text[e])) ++e;
  return text.substr(0, e);
}

bool capitalsOnly(std::string_view word) {
  if (word.empty()) return false;
  for (char c : word)
    if (!(c >= 'A' && c <= 'Z')) return false;
  return true;
}

}  // namespace

std::string& TextList::add() {
  if (count_ == items_.size()) items_.emplace_back();
  std::string& s = items_[count_++];
  s.clear();
  return s;
}

void Citation::clear() {
  label.clear();
  type = WorkType::Generic;
  for (std::string* s : {&title, &source, &journal, &volume, &issue, &firstPage, &lastPage, &abstract, &language,
                         &docType, &accession, &pmid, &doi, &issn, &isbn, &database, &publisher, &institution})
    s->clear();
  authors.clear();
  date = {};
  descriptors.clear();
  keywords.clear();
  notes.clear();
  fieldsFound = true;
}

std::string_view LabelNumber(std::string_view labelLine) {
  constexpr std::string_view kLabel = "Record - ";
  if (!labelLine.starts_with(kLabel)) return {};
  return TrimText(labelLine.substr(kLabel.size()));
}

void MakeCitation(std::string_view label, const RecordFields& fields, std::span<const std::string_view> lines,
                  Citation& out) {
  out.clear();
  out.label.assign(label);
  if (!fields.anyCommonField()) {
    // Nothing recognised: the whole text goes along as a note, line by line.
    out.fieldsFound = false;
    for (const Field& f : fields.fields())
      if (f.name == F::Database && out.database.empty()) out.database = f.text;
    for (std::string_view line : lines) {
      const std::string_view t = TrimText(line);
      if (!t.empty()) out.notes.add(t);
    }
    return;
  }
  bool journalGiven = false, yearGiven = false, dateGiven = false, patent = false, news = false;
  SourceParts parts;
  for (const Field& f : fields.fields()) {
    const std::string_view text = f.text;
    switch (f.name) {
      case F::Title: {
        std::string_view t = text;
        if (t.size() > 1 && t.back() == '.' && t[t.size() - 2] != '.') t.remove_suffix(1);
        setOnce(out.title, t, out.notes, f);
        news = news || f.tag == "HD" || f.tag == "HL";
        break;
      }
      case F::Author:
        SplitAuthors(text, out.authors);
        break;
      case F::Source:
        if (!out.source.empty()) {
          setOnce(out.source, text, out.notes, f);
          break;
        }
        out.source.assign(text);
        ParseSource(text, parts);
        if (!journalGiven) out.journal.assign(parts.journal);
        if (out.volume.empty()) out.volume.assign(parts.volume);
        if (out.issue.empty()) out.issue.assign(parts.issue);
        if (out.firstPage.empty()) {
          out.firstPage.assign(parts.firstPage);
          out.lastPage = parts.lastPage;
        }
        if (!yearGiven && !dateGiven && parts.date.year != 0) out.date = parts.date;
        break;
      case F::Journal:
        out.journal.assign(text);
        journalGiven = true;
        break;
      case F::Volume: setOnce(out.volume, text, out.notes, f); break;
      case F::Issue: setOnce(out.issue, text, out.notes, f); break;
      case F::Pages: {
        std::size_t at = 0;
        while (at < text.size() && !(text[at] >= '0' && text[at] <= '9')) ++at;
        const std::string pagesLine = "x, p " + std::string(text.substr(at));
        SourceParts pages;
        ParseSource(pagesLine, pages);
        out.firstPage.assign(pages.firstPage);
        out.lastPage = pages.lastPage;
        break;
      }
      case F::Year:
        if (const int32_t y = FindYear(text); y != 0) {
          if (out.date.year != y) out.date = {y, 0, 0};
          yearGiven = true;
        }
        break;
      case F::Date:
        if (const DateParts d = ParseDate(text); d.year != 0 && !dateGiven) {
          if (!yearGiven || d.year == out.date.year) out.date = d;
          dateGiven = true;
        }
        break;
      case F::Abstract:
        if (!out.abstract.empty()) out.abstract += ' ';
        out.abstract += text;
        break;
      case F::Descriptors: addTerms(text, out.descriptors); break;
      case F::Keywords: addTerms(text, out.keywords); break;
      case F::Language: setOnce(out.language, text, out.notes, f); break;
      case F::DocType: setOnce(out.docType, text, out.notes, f); break;
      case F::Accession: {
        // "24003117 LAKE.", "2024:118230  POLYDOC": the number, and the file's name.
        std::string_view number = firstWord(text);
        std::string_view rest = TrimText(text.substr(number.data() + number.size() - text.data()));
        while (number.size() > 1 && number.back() == '.') number.remove_suffix(1);
        setOnce(out.accession, number, out.notes, f);
        std::string_view db = rest;
        while (!db.empty() && db.back() == '.') db.remove_suffix(1);
        if (capitalsOnly(db) && out.database.empty())
          out.database.assign(db);
        else if (!rest.empty())
          out.notes.add(std::string(f.tag) + (f.tag.empty() ? "" : " ") + std::string(rest));
        break;
      }
      case F::Pmid: {
        const std::string_view p = FindPmid(text);
        setOnce(out.pmid, p.empty() ? firstWord(text) : p, out.notes, f);
        break;
      }
      case F::Doi: {
        const std::string_view d = FindDoi(text);
        setOnce(out.doi, d.empty() ? TrimText(text) : d, out.notes, f);
        break;
      }
      case F::Issn: {
        const std::string_view s = FindIssn(text, false);
        setOnce(out.issn, s.empty() ? TrimText(text) : s, out.notes, f);
        break;
      }
      case F::Isbn: {
        const std::string_view s = FindIsbn(text, false);
        setOnce(out.isbn, s.empty() ? TrimText(text) : s, out.notes, f);
        break;
      }
      case F::Database: setOnce(out.database, text, out.notes, f); break;
      case F::Publisher: setOnce(out.publisher, text, out.notes, f); break;
      case F::Institution: setOnce(out.institution, text, out.notes, f); break;
      case F::Other: {
        std::string& n = out.notes.add();
        n.assign(f.tag);
        if (!n.empty() && !text.empty()) n += ' ';
        n += text;
        patent = patent || f.tag == "PN" || f.tag == "PA";
        break;
      }
    }
  }
  // Identifiers printed inside other fields: "ISSN: 0917-4420" on a source line, a DOI
  // in a note. One look tells which of the searches can find anything in a field.
  for (const Field& f : fields.fields()) {
    if (f.name != F::Other && f.name != F::Source) continue;
    const unsigned wanted = (out.doi.empty() ? kDoiMark : 0u) | (out.pmid.empty() ? kPmidMark : 0u) |
                            (out.issn.empty() ? kIssnMark : 0u) | (out.isbn.empty() ? kIsbnMark : 0u);
    if (wanted == 0) break;
    const unsigned marks = IdentifierMarks(f.text) & wanted;
    if (marks == 0) continue;
    if ((marks & kDoiMark) != 0) out.doi.assign(FindDoi(f.text));
    if ((marks & kPmidMark) != 0) out.pmid.assign(FindPmid(f.text));
    if ((marks & kIssnMark) != 0) out.issn.assign(FindIssn(f.text));
    if ((marks & kIsbnMark) != 0) out.isbn.assign(FindIsbn(f.text));
  }
  out.type = typeOfDocType(out.docType);
  if (out.type == WorkType::Generic) {
    if (patent && out.source.empty())
      out.type = WorkType::Patent;
    else if (news)
      out.type = WorkType::News;
    else if (!out.isbn.empty() && out.volume.empty())
      out.type = WorkType::Book;
    else if (!out.journal.empty() && (!out.volume.empty() || !out.firstPage.empty() || !out.issn.empty()))
      out.type = WorkType::Journal;
    else if (!out.journal.empty() && out.date.day != 0)
      out.type = WorkType::News;  // a source dated to the day, with no volume: a paper or a wire
  }
}

}  // namespace zv
