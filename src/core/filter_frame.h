// The frame every line filter runs in: the capture, the outputs, the loop, the ways out.
#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"
#include "core/clean_line_reader.h"
#include "core/record_file_writer.h"
#include "core/text_out.h"

namespace zv {

struct FilterInfo {
  std::string_view title;  // frmFilter's title while the filter runs
  bool makesFsc = false;   // the DIALOG family also writes the search strategy
  // False for a filter that writes its records itself (separate files); the frame
  // then opens no .PRO/.NDX of gsBaseName.
  bool makesPro = true;
  // The title while the capture's lines are counted, when it differs (DIALMAIL's).
  std::string_view countingTitle = {};
  // Up to four bytes, one of which every text the filter searches a line for holds:
  // the frame notes, as it reads, which lines hold any of them (holdsMarked), and a
  // line that holds none needs none of those searches.
  std::string_view markedBytes = {};
  // The capital letters A to Z are marked as well.
  bool marksCapitals = false;
};


class FilterFrame;

// A filter's own line recognition, plugged into the frame.
class LineFilter {
 public:
  virtual ~LineFilter() = default;
  // Once the outputs are open, before the first line: a filter that writes files of
  // its own (separate files) registers and opens them here.
  virtual void begin(FilterFrame& /*frame*/) {}
  // Right after the line was read and cleaned, before the odometer moves.
  virtual void afterCleaning(FilterFrame& /*frame*/) {}
  // The filter's tests on gsLine and what it writes for them.
  virtual void onLine(FilterFrame& frame) = 0;
  // Whether anything was recognized: by default glRecNum above 0.
  virtual bool foundRecords(const FilterFrame& frame) const;
  // At the end of input with records found: what a record still open needs. By
  // default a capture that breaks off inside a record gets its last line once more,
  // counted by UpdateIndex with iJustLabelled as the last pass left it (a start line
  // at the very end is counted at its label's length). The frame runs FinishIndex
  // after it.
  virtual void atEndOfInput(FilterFrame& frame);
  // Closes the filter's own files at the end of a job that succeeded.
  virtual void close(FilterFrame& /*frame*/) {}
  // Text lines written to the .FSC: the file is deleted at the end when 0.
  virtual int16_t fscLines() const { return 0; }
  // The zero-record warning, for a filter whose message is its own.
  virtual Message zeroRecordsMessage() const;
};

// Runs a filter on `input`: the checks of the chosen capture (a refusal ends the job
// as Refused with the system's message), the line loop, and every way out through
// RunJob. On Done the result's files are the .PRO, the .NDX and (when it holds
// anything) the .FSC, as the job named them.
JobResult RunLineFilter(JobState& job, JobProgress& progress, const FilterInput& input, const FilterInfo& info,
                           LineFilter& filter);

class FilterFrame;
// The line loop: false when the user interrupted. The frame runs the one made for the
// filter's own class (see RunLineFilter below), whose calls of afterCleaning and
// onLine are then direct, and inline where the class is final.
using LineLoop = bool (*)(FilterFrame& frame, LineFilter& filter);
JobResult RunLineFilter(JobState& job, JobProgress& progress, const FilterInput& input, const FilterInfo& info,
                           LineFilter& filter, LineLoop loop);

// What the filters see of the frame while their loop runs.
class FilterFrame {
 public:
  FilterFrame(Job& runningJob, const FilterInfo& filterInfo)
      : frame(runningJob),
        job(runningJob.state),
        progress(runningJob.progress),
        info(filterInfo),
        gsLine(job.gsLine),
        gsPrevLine(job.gsPrevLine) {}

  Job& frame;
  JobState& job;
  JobProgress& progress;
  const FilterInfo& info;
  RecordFileWriter pro;  // gsProFile and gsIndexFile

  // The line being processed and the line before it, cleaned, as views into the
  // capture's read blocks: valid for the pass. Before the first line they show the
  // job's gsLine and gsPrevLine; after the last, both show the last line, which the
  // job's gsLine and gsPrevLine then hold.
  std::string_view gsLine;
  std::string_view gsPrevLine;

  // The locals every filter has, under their usual names.
  int32_t lInLine = 0;        // input lines read
  int16_t iInRecord = 0;      // -1 inside a record
  int16_t iJustLabelled = 0;  // -1 on the pass that recognized a label
  std::string sLabel;         // the label text of the current record

  int32_t lOutBytes() const noexcept { return pro.lOutBytes; }

  // A blank line to the .PRO, accounted as 2 bytes and one line.
  void writeBlank() { pro.writeBlank(); }
  // A text line to the .PRO, then UpdateIndex (which counts gsLine, or the label).
  void writeText(std::string_view line) { pro.writeText(line, job.glRecNum, iJustLabelled == -1, countedLength()); }
  // The same, but UpdateIndex counts `counted` bytes for the line in place of gsLine's
  // length: for a filter whose byte count differs from what it prints.
  void writeText(std::string_view line, int64_t counted) {
    pro.writeText(line, job.glRecNum, iJustLabelled == -1, counted);
  }
  // Ties the line just printed to the index: the label's length on the pass that
  // labelled, gsLine's otherwise.
  void UpdateIndex() { pro.UpdateIndex(job.glRecNum, iJustLabelled == -1, countedLength()); }
  void FinishIndex() { pro.FinishIndex(job.glRecNum); }

  // Whether gsLine holds any of the filter's markedBytes (true when it named none).
  bool holdsMarked() const { return in_->holdsMarked(); }
  // Where gsLine holds them, as CleanLineReader::markPlaces tells.
  bool markPlaces(const std::size_t*& first, const std::size_t*& last, std::size_t& base) const {
    return in_->markPlaces(first, last, base);
  }

  // How a record is opened: blank lines before the label, the label text, and what
  // follows it.
  struct Opening {
    int blanksBefore = 0;
    bool blankAfter = true;
    // The flag stays set for the rest of the pass (the usual case); false clears it
    // right after the label's own UpdateIndex.
    bool flagForPass = true;
    std::string label;  // empty: RecordLabel(glRecNum)
  };
  // Opens a record: iJustLabelled and iInRecord to -1, glRecNum up by one, the blank
  // lines before, the label line through UpdateIndex, the blank line after, and the
  // record odometer. The flag is set before the label is written, so its
  // UpdateIndex always sees a new record.
  void openRecord(const Opening& opening);

  // The .FSC: a text line (the caller counts it) or a blank separator.
  void fscLine(std::string_view line) { fsc_.line(line); }
  void fscBlank() { fsc_.blank(); }

 private:
  friend JobResult RunLineFilter(JobState&, JobProgress&, const FilterInput&, const FilterInfo&, LineFilter&,
                                 LineLoop);
  template <class Filter>
  friend bool RunLines(FilterFrame& frame, LineFilter& filter);

  int64_t countedLength() const {
    return static_cast<int64_t>(iJustLabelled == -1 ? sLabel.size() : gsLine.size());
  }

  std::unique_ptr<CleanLineReader> in_;
  TextOut fsc_;
};

// Each line: shown to the filter after its cleaning, counted, reported to the
// observer (the yield), handed to the filter, and then the interrupt looked at.
template <class Filter>
bool RunLines(FilterFrame& frame, LineFilter& base) {
  Filter& filter = static_cast<Filter&>(base);
  CleanLineReader& in = *frame.in_;
  const int32_t& total = frame.job.glLineCount;
  while (in.next()) {
    frame.gsLine = in.line();
    frame.gsPrevLine = in.previous();
    filter.afterCleaning(frame);
    Count32(frame.lInLine, 1, "the lines of a capture (lInLine)", {"input line", int64_t{frame.lInLine} + 1});
    frame.progress.lineDone(frame.lInLine, total);
    filter.onLine(frame);
    if (frame.frame.interrupted()) return false;
  }
  return true;
}

// The same as the first RunLineFilter, with the loop made for the filter's class.
template <class Filter>
  requires std::derived_from<Filter, LineFilter>
JobResult RunLineFilter(JobState& job, JobProgress& progress, const FilterInput& input, const FilterInfo& info,
                           Filter& filter) {
  return RunLineFilter(job, progress, input, info, filter, &RunLines<Filter>);
}

}  // namespace zv
