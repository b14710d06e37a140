// CSL JSON, its strings escaped by the JSON library.
//
// A document object per record, built and dumped, costs more than the rest of the
// export together (a million records would take seconds), so the writer lays out the
// few fixed keys itself and hands every string value to the library's serializer,
// which escapes quotes, backslashes and control characters and checks the UTF-8.
// Values of printable 7-bit text without a quote or backslash need no escaping and
// are copied as they are; lines of such text (a record's notes) only their line feeds
// escaped, as the library would.
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "records/export_writers.h"
#include "records/utf8_text.h"

namespace zv {

namespace {

using Json = nlohmann::json;

class JsonStrings {
 public:
  JsonStrings()
      : serializer_(nlohmann::detail::output_adapter<char>(escaped_), ' ', nlohmann::detail::error_handler_t::replace),
        value_(std::string()) {}

  // `text` as a JSON string, in UTF-8.
  void put(std::string& out, std::string_view text) {
    if (plain(text)) {
      out += '"';
      out += text;
      out += '"';
      return;
    }
    if (plainLines(text)) {  // a record's notes, one a line: each line feed escaped
      out += '"';
      for (std::size_t from = 0;;) {
        const std::size_t lf = text.find('\n', from);
        if (lf == std::string_view::npos) {
          out.append(text.data() + from, text.size() - from);
          break;
        }
        out.append(text.data() + from, lf - from);
        out += "\\n";
        from = lf + 1;
      }
      out += '"';
      return;
    }
    std::string& s = value_.get_ref<std::string&>();
    s.clear();
    AppendUtf8(s, text, true);
    escaped_.clear();
    serializer_.dump(value_, false, false, 0);
    out += escaped_;
  }

 private:
  static bool plain(std::string_view text) { return IsPlainAscii(text, '"', '\\'); }
  // Lines of such text parted by line feeds.
  static bool plainLines(std::string_view text) {
    for (std::size_t from = 0;;) {
      const std::size_t lf = text.find('\n', from);
      if (!plain(text.substr(from, lf == std::string_view::npos ? std::string_view::npos : lf - from))) return false;
      if (lf == std::string_view::npos) return true;
      from = lf + 1;
    }
  }

  std::string escaped_;  // declared first: the serializer writes to it
  nlohmann::detail::serializer<Json> serializer_;
  Json value_;
};

class CslJsonWriter final : public ExportWriter {
 public:
  void begin(std::string& out) override { out += "[\r\n"; }

  void record(const Citation& c, bool first, std::string& out) override {
    if (!first) out += ",\r\n";
    out += "{\"id\":";
    strings_->put(out, c.label);
    out += ",\"type\":\"";
    out += CslType(c.type);
    out += '"';
    key(out, "title", c.title);
    if (!c.authors.empty()) {
      out += ",\"author\":[";
      for (std::size_t i = 0; i < c.authors.size(); ++i) {
        if (i > 0) out += ',';
        out += "{\"family\":";
        strings_->put(out, c.authors[i].family);
        if (!c.authors[i].given.empty()) {
          out += ",\"given\":";
          strings_->put(out, c.authors[i].given);
        }
        out += '}';
      }
      out += ']';
    }
    key(out, "container-title", c.journal);
    key(out, "volume", c.volume);
    key(out, "issue", c.issue);
    if (!c.firstPage.empty()) {
      scratch_.assign(c.firstPage);
      if (!c.lastPage.empty()) scratch_ += '-' + c.lastPage;
      key(out, "page", scratch_);
    }
    if (c.date.year != 0) {
      out += ",\"issued\":{\"date-parts\":[[";
      out += std::to_string(c.date.year);
      if (c.date.month != 0) out += ',' + std::to_string(c.date.month);
      if (c.date.month != 0 && c.date.day != 0) out += ',' + std::to_string(c.date.day);
      out += "]]}";
    }
    key(out, "abstract", c.abstract);
    if (!c.descriptors.empty() || !c.keywords.empty()) {
      scratch_.clear();
      for (const TextList* list : {&c.descriptors, &c.keywords})
        for (const std::string& k : list->items()) {
          if (!scratch_.empty()) scratch_ += "; ";
          scratch_ += k;
        }
      key(out, "keyword", scratch_);
    }
    key(out, "language", c.language);
    key(out, "genre", c.docType);
    key(out, "DOI", c.doi);
    key(out, "PMID", c.pmid);
    key(out, "ISSN", c.issn);
    key(out, "ISBN", c.isbn);
    key(out, "archive_location", c.accession);
    key(out, "source", c.database);
    key(out, "publisher", c.publisher);
    scratch_.clear();
    if (!c.institution.empty()) scratch_ = "Institution: " + c.institution;
    for (const std::string& n : c.notes.items()) {
      if (!scratch_.empty()) scratch_ += '\n';
      scratch_ += n;
    }
    key(out, "note", scratch_);
    out += '}';
  }

  void end(std::string& out, bool empty) override { out += empty ? "]\r\n" : "\r\n]\r\n"; }

 private:
  void key(std::string& out, std::string_view name, std::string_view value) {
    if (value.empty()) return;
    out += ",\"";
    out += name;
    out += "\":";
    strings_->put(out, value);
  }

  std::unique_ptr<JsonStrings> strings_ = std::make_unique<JsonStrings>();
  std::string scratch_;
};

}  // namespace

std::unique_ptr<ExportWriter> MakeCslJsonWriter() { return std::make_unique<CslJsonWriter>(); }

}  // namespace zv
