// A record as a reference: the common fields a reference manager imports, made from
// the fields the reader found.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/citation_parts.h"
#include "records/record_fields.h"

namespace zv {

// What kind of work a record is, as the export formats name it.
enum class WorkType : uint8_t { Journal, Conference, Book, Chapter, Thesis, Report, Patent, News, Generic };

// A list of texts that keeps its strings' storage from record to record.
class TextList {
 public:
  std::span<const std::string> items() const { return {items_.data(), count_}; }
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  void clear() { count_ = 0; }
  std::string& add();
  void add(std::string_view text) { add().assign(text); }

 private:
  std::vector<std::string> items_;
  std::size_t count_ = 0;
};

struct Citation {
  std::string label;  // the number of the record's label, as it stood ("4")
  WorkType type = WorkType::Generic;
  std::string title;
  PersonList authors;
  std::string source;  // the source line as printed
  std::string journal;
  std::string volume;
  std::string issue;
  std::string firstPage;
  std::string lastPage;
  DateParts date;  // year, and month and day where known
  std::string abstract;
  TextList descriptors;
  TextList keywords;
  std::string language;
  std::string docType;
  std::string accession;
  std::string pmid;
  std::string doi;
  std::string issn;
  std::string isbn;
  std::string database;
  std::string publisher;
  std::string institution;
  // Fields no common name covers, "TAG text" each; or, for a record whose fields were
  // not found, its whole text, one line each.
  TextList notes;
  bool fieldsFound = true;  // false: the notes hold the record's whole text

  void clear();
};

// The citation of a record from its fields and lines (the lines go whole into the
// notes when no field with a common name was found). `label` is the number of its
// label line.
void MakeCitation(std::string_view label, const RecordFields& fields, std::span<const std::string_view> lines,
                  Citation& out);

// The label's number: "Record - 12" and "Record -  1" give "12" and "1".
std::string_view LabelNumber(std::string_view labelLine);

}  // namespace zv
