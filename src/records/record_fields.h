// Finding the fields of one record in the forms the filters leave them in.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/field_names.h"

namespace zv {

// One field as the record has it: the service's own tag ("TI", "Authors", "Author:",
// "DIALOG(R)File", or empty for a field known by its place, as the title line of a
// short citation), its common name, and its text, continuation lines joined by one
// blank (none after a line that ends in a hyphen).
struct Field {
  std::string tag;
  FieldName name = FieldName::Other;
  std::string text;
  // Where the field's first line stood: its indentation, and whether an empty line
  // came before it. The roles of untagged text are read from them.
  std::size_t indent = 0;
  bool paragraph = false;
};

// The fields of one record, in the order they stand. Reused from record to record, so
// that reading a file does not allocate for every record.
class RecordFields {
 public:
  std::span<const Field> fields() const { return {fields_.data(), count_}; }
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }

  // Whether any field has a common name (Other and Database do not count: a record of
  // stray lines under a file banner is still a record whose fields were not found).
  bool anyCommonField() const;

  Field& at(std::size_t i) { return fields_[i]; }
  void clear() { count_ = 0; }
  // A new field at the end (references to earlier fields may not survive it).
  Field& add(std::string_view tag, FieldName name);

 private:
  std::vector<Field> fields_;
  std::size_t count_ = 0;
};

// Reads the lines of a record (the label taken off) into its fields. The forms known:
//  - tags at the left margin, behind at most two blanks: "TI  - ", "TI- ", "TI  ",
//    "AN   ", "  HD  ": two to four capitals or digits, a letter first, then a hyphen
//    or two blanks. Indented lines continue the field above; a line at the margin that
//    is no tag is a field of its own, with no tag;
//  - Ovid's field names alone on a line (or what the filter's cut left of them), the
//    text on the lines below;
//  - "Label: text" lines, for the labels of DIALOG's formats;
//  - untagged text (DIALOG's citations, short citations, news): blocks that begin
//    indented two blanks, after an empty line, or at the margin below a line too short
//    to have been wrapped; their place and their look say what they are (accession
//    line, title or headline, authors, institution, source, date, abstract). Excerpts
//    that begin "..." are kept as they are, with no common name.
// Every non-empty line of the record ends up in some field.
void ReadRecordFields(std::span<const std::string_view> lines, RecordFields& out);

}  // namespace zv
