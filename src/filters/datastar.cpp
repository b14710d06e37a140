// Data-Star filter: a document opens at a short line of blanks, a number and a
// four-capital database name, ends at "END OF DOCUMENT" or a notice of the service,
// and loses its page lines on the way.
#include "filters/datastar.h"

#include <string>
#include <string_view>

#include "core/error.h"
#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }
inline bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

// The three widths of the start line and their columns (from 1): the two blanks
// behind the number, the blanks that lead the line, the digit before the two blanks.
struct StartRow {
  std::size_t length;
  std::size_t twoBlanksAt;
  std::size_t leadBlanks;
  std::size_t digitAt;
};
constexpr StartRow kRow13{13, 8, 4, 7};
constexpr StartRow kRow14{14, 9, 5, 8};
constexpr StartRow kRow15{15, 10, 6, 9};

// The row a line's length selects, or null: other lengths are no start line.
const StartRow* startRow(sv line) {
  switch (line.size()) {
    case 13: return &kRow13;
    case 14: return &kRow14;
    case 15: return &kRow15;
    default: return nullptr;
  }
}

// The columns between the leading blanks and the digit are not looked at, and the
// four capitals may stand anywhere in the line.
bool isStartLine(sv line, const StartRow& row) {
  if (line[row.twoBlanksAt - 1] != ' ' || line[row.twoBlanksAt] != ' ') return false;
  for (std::size_t i = 0; i < row.leadBlanks; ++i)
    if (line[i] != ' ') return false;
  int capitals = 0;
  for (char c : line) capitals += isCapital(c) ? 1 : 0;
  if (capitals != 4) return false;
  return isDigit(line[row.digitAt - 1]);
}

// "END OF DOCUMENTS IN LIST" holds "END OF DOCUMENT": the second test adds nothing.
// Each text holds a "D" or an "H", the filter's marked bytes.
constexpr std::string_view kMarkedBytes = "DH";
bool isEndLine(sv line) {
  return Holds(line, "END OF DOCUMENT") || Holds(line, "D-S - SEARCH MODE - ") ||
         Holds(line, "HAPPY HOUR on database ");
}

// "TX 1 OF 12.": the short page line of the text field.
bool isTxLine(sv line) {
  return line.starts_with("TX ") && Holds(line, " OF ") && line.back() == '.' && line.size() < 15;
}

// "  3 OF 12.": an indented page line. Only the character before the "." is tested
// for a digit, so a line of words in that shape goes too.
bool isPageLine(sv line) {
  return Holds(line, " OF ") && line.back() == '.' && line.starts_with("  ") && isDigit(line[line.size() - 2]);
}

class DataStar final : public LineFilter {
 public:
  void afterCleaning(FilterFrame& f) override {
    f.iJustLabelled = 0;
    iSkipTxLine = 0;
    iSkipPageLine = 0;
  }

  void onLine(FilterFrame& f) override {
    JobState& job = f.job;
    const sv line = f.gsLine;

    if (const StartRow* row = startRow(line); row && isStartLine(line, *row)) {
      // The 14-column line keeps the blank that number-to-text puts before a
      // positive number: "Record -  7".
      const int32_t next = job.glRecNum + 1;
      f.openRecord({.blanksBefore = wroteBody_ ? 1 : 0,  // the separator
                    .label = row == &kRow14 ? "Record -  " + std::to_string(next) : RecordLabel(next)});
    }

    if (f.holdsMarked() && isEndLine(line)) f.iInRecord = 0;

    // Page lines need a "." at the end: most lines stop at that test.
    if (!line.empty() && line.back() == '.') {
      if (isTxLine(line)) iSkipTxLine = -1;
      if (isPageLine(line)) iSkipPageLine = -1;
    }

    if (f.iInRecord == -1 && f.iJustLabelled == 0 && iSkipTxLine == 0 && iSkipPageLine == 0 && !line.empty()) {
      f.writeText(line);
      wroteBody_ = true;
    }
  }

 private:
  int16_t iSkipTxLine = 0;
  int16_t iSkipPageLine = 0;
  // sLastWritten, the last body line written: only whether there was one is ever
  // asked, and a written line is never empty.
  bool wroteBody_ = false;
};

}  // namespace

JobResult FilterDataStar(JobState& job, JobProgress& progress, const FilterInput& input) {
  DataStar filter;
  return RunLineFilter(job, progress, input, FilterInfo{.title = kDataStarTitle, .markedBytes = kMarkedBytes}, filter);
}

}  // namespace zv
