// DIALOG filter, all types to one file: record labels, .PRO copy rules and the .FSC.
#include "filters/dialog_all.h"

#include <array>
#include <string>
#include <string_view>

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;

// Step 7: a line with exactly two "/" of the form blank, set, "/", format, "/",
// item, optionally five blanks and a tail. The eleven tests in their order.
bool isLabel(sv line, uint32_t slashes) {
  if (slashes != 2) return false;
  if (line.front() == '?') return false;                  // 1
  if (line.find('?') == 1) return false;                  // 2
  if (line.front() != ' ') return false;                  // 3
  if (Blanks(line) > 1) return false;                     // 4
  const std::size_t slash1 = line.find('/');              // iSlash1 - 1
  const sv after1 = line.substr(slash1 + 1);
  const std::size_t slash2 = after1.find('/');            // iSlash2 - 1
  const sv format = after1.substr(0, slash2);
  if (Blanks(format) != 0) return false;                  // 5
  const std::string after2 = QPTrim(after1.substr(slash2 + 1));
  const std::size_t blank = after2.find(' ');
  const sv item = sv(after2).substr(0, blank);
  if (InCountTbl(item, "0123456789") != static_cast<int32_t>(item.size())) return false;  // 6
  if (TrimBlanks(line).back() == '/') return false;       // 7
  if (slash1 + 1 > 5) return false;                       // 8
  if (slash2 + 1 > 11) return false;                      // 9
  const int32_t gap = blank == std::string::npos ? 0 : Blanks(sv(after2).substr(blank));
  if (gap != 0 && gap != 5) return false;                 // 10
  const std::size_t len = format.size();                  // 11
  return len == 1 || len == 2 || (len > 2 && (InCount(format, ",") > 0 || Holds(format, "KWIC")));
}

// Step 9: a prompt, or a line that is nothing but a logoff word or ">>>". "OFF" is
// not among them: its comparison never succeeded, and a line of OFF ends nothing.
bool endsRecord(sv line) {
  if (line.starts_with("?") || line.starts_with(" ?")) return true;
  const sv t = TrimBlanks(line);
  return t == "off" || t == "logoff" || t == "LOGOFF" || t == "logoff hold" || t == "LOGOFF HOLD" || t == ">>>";
}

// The 16-bit counts of the filter, as the reason line of their overflow names them.
constexpr std::string_view kSinceLabelLimit = "the lines of one record (iSinceLabel)";
constexpr std::string_view kFscLinesLimit = "the lines written to the .FSC (iFscLines)";

class DialogAll final : public LineFilter {
 public:
  void afterCleaning(FilterFrame& f) override {
    // Step 1; the odometer moves after this, so the line in hand is one further.
    if (f.iInRecord == -1) Inc16(iSinceLabel, kSinceLabelLimit, {"input line", int64_t{f.lInLine} + 1});
  }

  void onLine(FilterFrame& f) override {
    JobState& job = f.job;
    const sv line = job.gsLine;
    // Which searches can find anything: most lines hold none of these.
    const auto [queries, angles, capitalLs, slashes] = CountBytes(line, {'?', '>', 'L', '/'});
    // Column - 1 of the first "?": one search serves steps 3 and 5.
    const std::size_t firstQuery = queries ? line.find('?') : sv::npos;

    // Step 2: a prompt closes the begin and sets blocks.
    if (line.starts_with("?")) {
      if (iBeginBlock == -1) {
        iBeginBlock = 0;
        f.fscBlank();
      }
      if (iSetsBlock == -1) {
        iSetsBlock = 0;
        f.fscBlank();
      }
    }

    // Step 3: open the blocks. Every test needs a "?", so other lines skip the copy.
    if (firstQuery != sv::npos) {
      const std::string u = UCase(line);
      if (u.starts_with("?B") || u.starts_with("? B") || u.starts_with("?BEGIN") || u.starts_with("? BEGIN"))
        iBeginBlock = -1;
      if (u.starts_with("?DS") || u.starts_with("? DS") || Holds(u, "?DISPLAY SETS") || Holds(u, "? DISPLAY SETS"))
        iSetsBlock = -1;
      if ((u.starts_with("?S") || u.starts_with("? S")) && Holds(u, " AND ")) iSetsBlock = -1;
    }

    // Step 4: copy to the .FSC while a block is open.
    if (iBeginBlock == -1 || iSetsBlock == -1) {
      Inc16(iFscLines, kFscLinesLimit, {"input line", f.lInLine});
      f.fscLine(line);
    }

    // Step 5: a prompt at column 1 or 2 with a logoff word opens the logoff block.
    // "off" and "OFF" lie inside every longer word, so they alone decide.
    if ((firstQuery == 0 || firstQuery == 1) && (Holds(line, "off") || Holds(line, "OFF"))) iLogoffBlock = -1;

    // Step 6: "Logoff:" or ">>>" ends the logoff block.
    const bool errorLine = angles && Holds(line, ">>>");
    if ((capitalLs && Holds(line, "Logoff:")) || errorLine) {
      if (iLogoffBlock == -1 && !errorLine) {
        Inc16(iFscLines, kFscLinesLimit, {"input line", f.lInLine});
        f.fscLine(line);
        f.fscBlank();
      }
      iLogoffBlock = 0;
    }

    // Steps 7 and 8: a label starts a record under "Record - N".
    if (isLabel(line, slashes)) {
      iSinceLabel = 0;
      f.openRecord({.blanksBefore = job.gsPrevLine.empty() ? 0 : (sBeforePrevEmpty ? 1 : 2)});
    }

    // Step 9: the end of a record.
    if (endsRecord(line)) {
      if (f.iInRecord == -1 && job.gsPrevLine.size() > 1) f.writeBlank();
      f.iInRecord = 0;
    }

    // Step 10: copy the record's lines; runs of blank lines shrink to one.
    if (f.iInRecord == -1) {
      if (f.iJustLabelled == -1) {
        f.iJustLabelled = 0;
      } else if (iSinceLabel == 1) {
        if (!line.empty()) f.writeText(line);
      } else if (!(line.empty() && job.gsPrevLine.empty())) {
        f.writeText(line);
      }
    }

    // Step 11: copy the logoff block.
    if (iLogoffBlock == -1 && !errorLine) {
      Inc16(iFscLines, kFscLinesLimit, {"input line", f.lInLine});
      f.fscLine(line);
    }

    // Step 12: the frame moves gsLine to gsPrevLine after this.
    sBeforePrevEmpty = job.gsPrevLine.empty();
  }

  int16_t fscLines() const override { return iFscLines; }

  void CleanUp() override { sBeforePrevEmpty = true; }

 private:
  int16_t iBeginBlock = 0;
  int16_t iSetsBlock = 0;
  int16_t iLogoffBlock = 0;
  int16_t iSinceLabel = 0;
  int16_t iFscLines = 0;
  // sBeforePrev, the line before gsPrevLine: nothing but its emptiness is ever asked,
  // so that is all that is kept, and no line is copied for it.
  bool sBeforePrevEmpty = true;
};

}  // namespace

JobResult FilterDialogAll(JobState& job, JobProgress& progress, const FilterInput& input) {
  DialogAll filter;
  return RunLineFilter(job, progress, input, FilterInfo{kDialogAllTitle, true}, filter);
}

}  // namespace zv
