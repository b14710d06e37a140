// The common names of a record's fields, and the services' tags, field names and
// labels that stand for them.
#pragma once

#include <cstdint>
#include <string_view>

namespace zv {

// What a field holds, whichever service printed it.
enum class FieldName : uint8_t {
  Other,  // found, but no common name covers it: it goes to the note with its tag
  Title,
  Author,
  Source,  // a citation's source line: journal, volume, issue, pages, date in one
  Journal,
  Volume,
  Issue,
  Pages,
  Year,
  Date,
  Abstract,
  Descriptors,
  Keywords,
  Language,
  DocType,
  Accession,
  Pmid,
  Doi,
  Issn,
  Isbn,
  Database,
  Publisher,
  Institution,
};

// "title", "authors", "accession number"...: the name the help and the tests use.
std::string_view CommonName(FieldName name);

// A tag at the left margin ("TI", "AU", "PMID", "HD"), in capitals as printed. Tags no
// service uses for a common field give Other. Two tags mean one thing or another by
// their text: "IS" and "SN" are an ISSN when the text is one (MEDLINE, RIS), else an
// issue and a source name (DJN/R); `text` is the field's first line.
FieldName FieldNameOfTag(std::string_view tag, std::string_view text);

// An Ovid field name standing alone on its line ("Authors", "Title", "Unique
// Identifier"); with `cutTails`, also the tail the Ovid filter leaves of a name longer
// than its 9-column margin ("on" of "Institution"). Nothing when the line is no name.
struct OvidName {
  bool found = false;
  bool full = false;  // the whole name, not a tail
  FieldName name = FieldName::Other;
  std::string_view fullName;  // the name as Ovid prints it, also for a tail
};
OvidName OvidFieldName(std::string_view trimmedLine, bool cutTails);

// The label of a "Label: text" line ("Author", "Document Type", "Descriptors"),
// compared without regard to case. `known` is false for labels of no list.
struct LabelName {
  bool known = false;
  FieldName name = FieldName::Other;
};
LabelName FieldNameOfLabel(std::string_view label);

}  // namespace zv
