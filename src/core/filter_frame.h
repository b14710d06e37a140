// The frame every filter runs in: input, outputs, bookkeeping, progress, interrupt.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/index_rec.h"
#include "core/job_host.h"
#include "core/job_state.h"
#include "core/line_reader.h"
#include "core/output_files.h"
#include "core/text_out.h"

namespace zv {

struct FilterInfo {
  std::string_view title;  // frmFilter's title while the filter runs
  bool makesFsc = false;   // the DIALOG family also writes the search strategy
};

class FilterFrame;

// A filter's own line recognition, plugged into the frame.
class LineFilter {
 public:
  virtual ~LineFilter() = default;
  // Right after the line was read and cleaned, before the odometer moves.
  virtual void afterCleaning(FilterFrame& /*frame*/) {}
  // The filter's tests on job.gsLine and what it writes for them.
  virtual void onLine(FilterFrame& frame) = 0;
  // At the end of input with records found: what a record still open needs. By
  // default a capture that breaks off inside a record gets its last line once more,
  // counted by UpdateIndex with iJustLabelled as the last pass left it (a start line
  // at the very end is counted at its label's length).
  virtual void atEndOfInput(FilterFrame& frame);
  // Text lines written to the .FSC: the file is deleted at the end when 0.
  virtual int16_t fscLines() const { return 0; }
  // Empties the filter's own string locals.
  virtual void CleanUp() {}
};

// Runs a filter: GetInputFile, the line loop, and every way out. Returns Done,
// Cancelled, ZeroRecords or Interrupted; on an error the outputs (and the stem's
// .WRK) are deleted, gsErrNumber and gsErrText are set, and the ZvError is thrown on
// to RunCommand.
JobOutcome RunLineFilter(JobState& job, JobHost& host, const FilterInfo& info, LineFilter& filter);

// What the filters see of the frame while their loop runs.
class FilterFrame {
 public:
  FilterFrame(JobState& runningJob, JobHost& jobHost) : job(runningJob), host(jobHost) {}

  JobState& job;
  JobHost& host;

  // The locals every filter has, under their usual names.
  int32_t lOutBytes = 0;      // bytes written to the .PRO; the offset of the next line
  int32_t lInLine = 0;        // input lines read
  int16_t iInRecord = 0;      // -1 inside a record
  int16_t iJustLabelled = 0;  // -1 on the pass that recognized a label
  int32_t lLastIndexed = 0;   // glRecNum at the last UpdateIndex
  std::string sLabel;         // the label text of the current record

  // A blank line to the .PRO, accounted as 2 bytes and one line.
  void writeBlank();
  // A text line to the .PRO, then UpdateIndex.
  void writeText(std::string_view line);
  // The same, but UpdateIndex counts `countedLength` bytes for the line in place of
  // gsLine's length: for a filter whose byte count differs from what it prints.
  void writeText(std::string_view line, int64_t countedLength);
  // Adds 1 to glRecNum, prints "Record - N" as sLabel and runs UpdateIndex with
  // iJustLabelled at -1 (the caller sets it), then shows the record odometer after the
  // caller's own blank lines: see FilterDialogAll for the order.
  void writeLabel();
  // Ties the line just printed to the index (see the .cpp for the exact steps).
  void UpdateIndex();
  // Closes the last record: its end line and a byte length that reaches the file's end.
  void FinishIndex();
  // Shows the record odometer.
  void showRecordOdometer() { host.recordLabelled(job.glRecNum); }

  // The .FSC: a text line (the caller counts it) or a blank separator.
  void fscLine(std::string_view line) { fsc_.line(line); }
  void fscBlank() { fsc_.blank(); }

 private:
  friend JobOutcome RunLineFilter(JobState&, JobHost&, const FilterInfo&, LineFilter&);

  void updateIndex(int64_t countedLength);

  std::unique_ptr<LineReader> in_;
  TextOut pro_;
  IndexFile ndx_;
  TextOut fsc_;
  OutputFiles outputs_;
};

// The record label text: "Record - " and the number without blanks.
std::string RecordLabel(int32_t recNum);

}  // namespace zv
