// The three forms reference managers import: RIS, CSL JSON and CSV, all UTF-8 with
// CR LF line ends.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "records/citation.h"

namespace zv {

enum class ExportFormat { Ris, CslJson, Csv };

// "ris", "csl-json", "csv" and back.
std::string_view FormatName(ExportFormat format);
std::optional<ExportFormat> FormatOfName(std::string_view name);
// The usual extension of each: ".ris", ".json", ".csv".
std::string_view FormatExtension(ExportFormat format);

// Writes citations to text buffers the caller sends on to the file: begin() once,
// record() for each citation, end() once. A record's text depends on the citation and
// on whether it is the file's first alone, so records may be written in any order
// (and on several threads, a writer each) and their texts joined in order.
class ExportWriter {
 public:
  virtual ~ExportWriter() = default;
  virtual void begin(std::string& /*out*/) {}
  virtual void record(const Citation& citation, bool first, std::string& out) = 0;
  virtual void end(std::string& /*out*/, bool empty) { (void)empty; }
};

// The identifiers of a file's records: each label as it stands, or, when it came
// before (files put together by the duplicate finder), with "-2", "-3"... behind, as
// CSL needs each "id" once. Numbers are remembered a bit each.
class UniqueLabels {
 public:
  std::string_view operator()(std::string_view label);

 private:
  std::string id_;
  std::vector<bool> seenNumbers_;
  std::unordered_set<std::string> seen_;
};

// RIS: "TY  - " first, one "AU  - " a person, "ER  - " last, the record's label under
// "ID  - ", fields no common name covers under "N1  - ".
std::unique_ptr<ExportWriter> MakeRisWriter();
// CSV: a header row, then one row a record; fields holding a comma, a quote or a line
// end are quoted, quotes doubled; a byte order mark first, so that spreadsheets take
// the file as UTF-8.
std::unique_ptr<ExportWriter> MakeCsvWriter();
// CSL JSON: an array of one object a record, one record a line.
std::unique_ptr<ExportWriter> MakeCslJsonWriter();

std::unique_ptr<ExportWriter> MakeExportWriter(ExportFormat format);

// What the forms call the kinds of work.
std::string_view RisType(WorkType type);
std::string_view CslType(WorkType type);

}  // namespace zv
