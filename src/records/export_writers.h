// The three forms reference managers import: RIS, CSL JSON and CSV, all UTF-8 with
// CR LF line ends.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "records/citation.h"

namespace zv {

enum class ExportFormat { Ris, CslJson, Csv };

// "ris", "csl-json", "csv" and back.
std::string_view FormatName(ExportFormat format);
std::optional<ExportFormat> FormatOfName(std::string_view name);
// The usual extension of each: ".ris", ".json", ".csv".
std::string_view FormatExtension(ExportFormat format);

// Writes citations to a text buffer the caller sends on to the file: begin() once,
// record() for each citation in order, end() once.
class ExportWriter {
 public:
  virtual ~ExportWriter() = default;
  virtual void begin(std::string& /*out*/) {}
  virtual void record(const Citation& citation, std::string& out) = 0;
  virtual void end(std::string& /*out*/) {}
};

// RIS: "TY  - " first, one "AU  - " a person, "ER  - " last, the record's label under
// "ID  - ", fields no common name covers under "N1  - ".
std::unique_ptr<ExportWriter> MakeRisWriter();
// CSV: a header row, then one row a record; fields holding a comma, a quote or a line
// end are quoted, quotes doubled; a byte order mark first, so that spreadsheets take
// the file as UTF-8.
std::unique_ptr<ExportWriter> MakeCsvWriter();
// CSL JSON: an array of one object a record, one record a line. Labels that repeat
// (files put together by the duplicate finder) get "-2", "-3"... behind, as CSL needs
// each "id" once.
std::unique_ptr<ExportWriter> MakeCslJsonWriter();

std::unique_ptr<ExportWriter> MakeExportWriter(ExportFormat format);

// What the forms call the kinds of work.
std::string_view RisType(WorkType type);
std::string_view CslType(WorkType type);

}  // namespace zv
