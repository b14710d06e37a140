// RIS and CSV writers, and the names of the formats.
#include "records/export_writers.h"

#include <algorithm>
#include <array>

#include "records/utf8_text.h"

namespace zv {

namespace {

void twoDigits(std::string& out, int32_t n) {
  out += static_cast<char>('0' + n / 10 % 10);
  out += static_cast<char>('0' + n % 10);
}

void appendNumber(std::string& out, int32_t n) {
  char digits[12];
  int len = 0;
  do {
    digits[len++] = static_cast<char>('0' + n % 10);
    n /= 10;
  } while (n > 0 && len < 11);
  while (len > 0) out += digits[--len];
}

class RisWriter final : public ExportWriter {
 public:
  void record(const Citation& c, bool /*first*/, std::string& out) override {
    tag(out, "TY", RisType(c.type));
    tag(out, "ID", c.label);
    tag(out, "TI", c.title);
    for (const PersonName& p : c.authors) {
      out += "AU  - ";
      AppendUtf8(out, p.family);
      if (!p.given.empty()) {
        out += ", ";
        AppendUtf8(out, p.given);
      }
      out += "\r\n";
    }
    tag(out, "AD", c.institution);
    // JF is the journal's name to every reader; T2 the book or proceedings of the rest.
    tag(out, c.type == WorkType::Journal || c.type == WorkType::News ? "JF" : "T2", c.journal);
    tag(out, "VL", c.volume);
    tag(out, "IS", c.issue);
    tag(out, "SP", c.firstPage);
    tag(out, "EP", c.lastPage);
    if (c.date.year != 0) {
      out += "PY  - ";
      appendNumber(out, c.date.year);
      out += "\r\n";
      if (c.date.month != 0) {
        out += "DA  - ";
        appendNumber(out, c.date.year);
        out += '/';
        twoDigits(out, c.date.month);
        out += '/';
        if (c.date.day != 0) twoDigits(out, c.date.day);
        out += "/\r\n";
      }
    }
    tag(out, "AB", c.abstract);
    for (const std::string& k : c.descriptors.items()) tag(out, "KW", k);
    for (const std::string& k : c.keywords.items()) tag(out, "KW", k);
    tag(out, "LA", c.language);
    tag(out, "M3", c.docType);
    tag(out, "AN", c.accession);
    tag(out, "DO", c.doi);
    tag(out, "SN", c.issn.empty() ? c.isbn : c.issn);
    if (!c.issn.empty()) tag(out, "SN", c.isbn);
    tag(out, "DB", c.database);
    tag(out, "PB", c.publisher);
    if (!c.pmid.empty()) {
      out += "N1  - PMID: ";
      AppendUtf8(out, c.pmid);
      out += "\r\n";
    }
    if (!c.fieldsFound) {
      // The whole text in one note, its lines joined: a RIS field is one line.
      out += "N1  - ";
      bool first = true;
      for (const std::string& line : c.notes.items()) {
        if (!first) out += ' ';
        first = false;
        AppendUtf8(out, line);
      }
      out += "\r\n";
    } else {
      for (const std::string& n : c.notes.items()) tag(out, "N1", n);
    }
    out += "ER  - \r\n\r\n";
  }

 private:
  // Every tag has two characters: the line's head goes on in one piece.
  static void tag(std::string& out, std::string_view name, std::string_view value) {
    if (value.empty()) return;
    const char head[6] = {name[0], name[1], ' ', ' ', '-', ' '};
    out.append(head, sizeof head);
    AppendUtf8(out, value);
    out.append("\r\n", 2);
  }
};

constexpr std::array<std::string_view, 25> kCsvColumns{
    "Label",         "Type",         "Title",     "Authors",  "Journal",  "Volume",      "Issue",
    "Pages",         "Year",         "Date",      "Abstract", "Descriptors", "Keywords", "Language",
    "Document Type", "Accession Number", "PMID", "DOI",      "ISSN",     "ISBN",        "Database",
    "Publisher",     "Institution",  "Source",    "Notes",
};

class CsvWriter final : public ExportWriter {
 public:
  void begin(std::string& out) override {
    out += "\xEF\xBB\xBF";
    for (std::size_t i = 0; i < kCsvColumns.size(); ++i) {
      if (i > 0) out += ',';
      out += kCsvColumns[i];
    }
    out += "\r\n";
  }

  void record(const Citation& c, bool /*first*/, std::string& out) override {
    cell(out, c.label, false);
    cell(out, CsvType(c.type));
    cell(out, c.title);
    scratch_.clear();
    for (const PersonName& p : c.authors) {
      if (!scratch_.empty()) scratch_ += "; ";
      scratch_ += p.family;
      if (!p.given.empty()) {
        scratch_ += ", ";
        scratch_ += p.given;
      }
    }
    cell(out, scratch_);
    cell(out, c.journal);
    cell(out, c.volume);
    cell(out, c.issue);
    scratch_.assign(c.firstPage);
    if (!c.lastPage.empty()) {
      scratch_ += '-';
      scratch_ += c.lastPage;
    }
    cell(out, scratch_);
    scratch_.clear();
    if (c.date.year != 0) appendNumber(scratch_, c.date.year);
    cell(out, scratch_);
    if (c.date.month != 0) {
      scratch_ += '-';
      twoDigits(scratch_, c.date.month);
      if (c.date.day != 0) {
        scratch_ += '-';
        twoDigits(scratch_, c.date.day);
      }
    }
    cell(out, scratch_);
    cell(out, c.abstract);
    list(out, c.descriptors);
    list(out, c.keywords);
    cell(out, c.language);
    cell(out, c.docType);
    cell(out, c.accession);
    cell(out, c.pmid);
    cell(out, c.doi);
    cell(out, c.issn);
    cell(out, c.isbn);
    cell(out, c.database);
    cell(out, c.publisher);
    cell(out, c.institution);
    cell(out, c.source);
    scratch_.clear();
    for (const std::string& n : c.notes.items()) {
      if (!scratch_.empty()) scratch_ += '\n';
      scratch_ += n;
    }
    cell(out, scratch_);
    out += "\r\n";
  }

 private:
  static std::string_view CsvType(WorkType type) {
    switch (type) {
      case WorkType::Journal: return "journal article";
      case WorkType::Conference: return "conference paper";
      case WorkType::Book: return "book";
      case WorkType::Chapter: return "book chapter";
      case WorkType::Thesis: return "thesis";
      case WorkType::Report: return "report";
      case WorkType::Patent: return "patent";
      case WorkType::News: return "news article";
      case WorkType::Generic: break;
    }
    return "generic";
  }

  void list(std::string& out, const TextList& items) {
    scratch_.clear();
    for (const std::string& k : items.items()) {
      if (!scratch_.empty()) scratch_ += "; ";
      scratch_ += k;
    }
    cell(out, scratch_);
  }

  // Where the first of `a`, `b` and `c` stands in `text` from `from`, or npos: one
  // pass (the library's search for any of a set looks each byte up in the set).
  static std::size_t firstOf(std::string_view text, std::size_t from, char a, char b, char c) {
    for (std::size_t i = from; i < text.size(); ++i)
      if (text[i] == a || text[i] == b || text[i] == c) return i;
    return std::string_view::npos;
  }

  // A cell, quoted when it holds a comma, a quote or a line end (RFC 4180).
  void cell(std::string& out, std::string_view value, bool comma = true) {
    if (comma) out += ',';
    if (IsPlainAscii(value, ',', '"')) {  // most cells: copied as they are
      out += value;
      return;
    }
    std::string_view text = value;
    const bool printable = IsPlainAscii(value);
    if (!printable) {
      cellText_.clear();
      AppendUtf8(cellText_, value, true);
      text = cellText_;
      if (firstOf(text, 0, ',', '"', '\n') == std::string_view::npos) {
        out += text;
        return;
      }
    }
    // Quotes doubled; a note's line feeds become the CR LF of the file.
    out += '"';
    // Printable text has no line feed, and its quotes are found by the fast search.
    const auto nextSpecial = [&](std::size_t from) {
      return printable ? text.find('"', from) : firstOf(text, from, '"', '\n', '\n');
    };
    std::size_t from = 0;
    for (std::size_t at = nextSpecial(0); at != std::string_view::npos; at = nextSpecial(at + 1)) {
      out.append(text.data() + from, at - from);
      out += text[at] == '"' ? '"' : '\r';
      from = at;
    }
    out.append(text.data() + from, text.size() - from);
    out += '"';
  }

  std::string scratch_;
  std::string cellText_;
};

}  // namespace

std::string_view UniqueLabels::operator()(std::string_view label) {
  id_.assign(label);
  bool numeric = !label.empty() && label.size() < 10;
  uint64_t n = 0;
  for (char ch : label) {
    numeric = numeric && ch >= '0' && ch <= '9';
    n = n * 10 + static_cast<uint64_t>(ch - '0');
  }
  // Labels of a filtered file are numbers: a bit each is enough to know them again.
  if (numeric && n < (1u << 27)) {
    if (n >= seenNumbers_.size()) seenNumbers_.resize(std::max<std::size_t>(n + 1, seenNumbers_.size() * 2));
    if (!seenNumbers_[n]) {
      seenNumbers_[n] = true;
      return id_;
    }
  } else if (seen_.insert(id_).second) {
    return id_;
  }
  for (int k = 2;; ++k) {
    std::string candidate = std::string(label) + "-" + std::to_string(k);
    if (seen_.insert(candidate).second) {
      id_ = std::move(candidate);
      return id_;
    }
  }
}

std::string_view FormatName(ExportFormat format) {
  switch (format) {
    case ExportFormat::Ris: return "ris";
    case ExportFormat::CslJson: return "csl-json";
    case ExportFormat::Csv: return "csv";
  }
  return "ris";
}

std::optional<ExportFormat> FormatOfName(std::string_view name) {
  for (ExportFormat f : {ExportFormat::Ris, ExportFormat::CslJson, ExportFormat::Csv})
    if (FormatName(f) == name) return f;
  return std::nullopt;
}

std::string_view FormatExtension(ExportFormat format) {
  switch (format) {
    case ExportFormat::Ris: return ".ris";
    case ExportFormat::CslJson: return ".json";
    case ExportFormat::Csv: return ".csv";
  }
  return ".ris";
}

std::string_view RisType(WorkType type) {
  switch (type) {
    case WorkType::Journal: return "JOUR";
    case WorkType::Conference: return "CPAPER";
    case WorkType::Book: return "BOOK";
    case WorkType::Chapter: return "CHAP";
    case WorkType::Thesis: return "THES";
    case WorkType::Report: return "RPRT";
    case WorkType::Patent: return "PAT";
    case WorkType::News: return "NEWS";
    case WorkType::Generic: break;
  }
  return "GEN";
}

std::string_view CslType(WorkType type) {
  switch (type) {
    case WorkType::Journal: return "article-journal";
    case WorkType::Conference: return "paper-conference";
    case WorkType::Book: return "book";
    case WorkType::Chapter: return "chapter";
    case WorkType::Thesis: return "thesis";
    case WorkType::Report: return "report";
    case WorkType::Patent: return "patent";
    case WorkType::News: return "article-newspaper";
    case WorkType::Generic: break;
  }
  return "document";
}

std::unique_ptr<ExportWriter> MakeRisWriter() { return std::make_unique<RisWriter>(); }
std::unique_ptr<ExportWriter> MakeCsvWriter() { return std::make_unique<CsvWriter>(); }

std::unique_ptr<ExportWriter> MakeExportWriter(ExportFormat format) {
  switch (format) {
    case ExportFormat::Ris: return MakeRisWriter();
    case ExportFormat::CslJson: return MakeCslJsonWriter();
    case ExportFormat::Csv: return MakeCsvWriter();
  }
  return MakeRisWriter();
}

}  // namespace zv
