// NLM filter: citations open at their number line and close at the service's
// prompts, command echoes and status lines.
#include "filters/nlm.h"

#include <algorithm>
#include <string_view>

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }
inline bool allDigits(sv s) { return std::all_of(s.begin(), s.end(), isDigit); }

// A citation's number line: "12 (MEDLINE)", the number, one blank and one bracketed
// word that ends the line; or a bare number of one to four digits.
bool isStart(sv line) {
  if (line.empty() || !isDigit(line.front())) return false;
  const auto open = line.find('(');
  const auto close = line.find(')');
  if (open == sv::npos || close == sv::npos) return line.size() < 5 && allDigits(line);
  if (std::count(line.begin(), line.end(), '(') != 1 || std::count(line.begin(), line.end(), ')') != 1) return false;
  if (line.back() != ')') return false;
  if (std::count(line.begin(), line.end(), ' ') != 1) return false;
  const auto blank = line.find(' ');
  if (open != blank + 1) return false;
  // With one blank in the line, standing before "(", the bracketed word holds none.
  return allDigits(line.substr(0, blank));
}

// The prompts, echoes and status lines that end a citation, tested only while one is
// open: clearing the flag is all they do.
bool endsCitation(sv line, uint32_t capitalRs, uint32_t colons, uint32_t capitalPs, uint32_t capitalYs) {
  // The whole lines and the words a line begins with, by its first character.
  if (line.empty()) return false;  // it holds nothing either
  switch (line.front()) {
    case 'O': if (line == "OK") return true; break;
    case 'Y': if (line == "Y") return true; break;
    case 'N': if (line == "N") return true; break;
    case 'n': if (line == "n") return true; break;
    case 'p': if (line.starts_with("print")) return true; break;
    case 'P': if (line.starts_with("PRINT") || line.starts_with("PROG:")) return true; break;
    case 'a': if (line.starts_with("all")) return true; break;
    case 'C': if (line.starts_with("CNT")) return true; break;
    case 'S': if (line.starts_with("SS")) return true; break;
    case 's': if (line.starts_with("stop")) return true; break;
    case 'T': if (line.starts_with("TIME") || line.starts_with("THE")) return true; break;
    case '.': if (line.starts_with("...")) return true; break;
    case 'G': if (line.starts_with("GOOD")) return true; break;
    case '*': if (line.starts_with("***")) return true; break;
    default: break;
  }
  // Every text looked for inside a line holds an "R"; all but two hold "PRINT".
  if (!capitalRs) return false;
  if (colons && Holds(line, "USER:")) return true;
  if (capitalYs && Holds(line, "YOUR LAST SEARCH")) return true;
  if (!capitalPs || !Holds(line, "PRINT")) return false;
  return Holds(line, "CONTINUE PRINTING?") || Holds(line, "READY TO PRINT FROM") ||
         Holds(line, "REPRINT PRIOR SEARCH") || Holds(line, "'PRINTSPECS'") || Holds(line, "SUPERPRINT COMPLETED.");
}

class Nlm final : public LineFilter {
 public:
  // Built into the frame's loop (RunLines) rather than called from it once a line.
  [[gnu::always_inline]] void onLine(FilterFrame& f) override {
    const sv line = f.gsLine;
    // Cleared at the top of every pass, and so still set after the loop when the last
    // line was a number line: the end-of-input copy of that line is then counted in
    // lOutBytes with the label's length.
    f.iJustLabelled = 0;

    // Whether this pass opened a record (and so set iJustLabelled again), kept here:
    // reading the flag back beside iInRecord would wait for the store above to land.
    const bool labelled = isStart(line);
    if (labelled) {
      f.openRecord({.blanksBefore = bodyWritten ? 1 : 0});
    }

    if (f.iInRecord == -1) {
      // A line without an "R" (the filter's marked byte) needs no count.
      const auto [capitalRs, colons, capitalPs, capitalYs] =
          f.holdsMarked() ? CountBytes(line, {'R', ':', 'P', 'Y'}) : std::array<uint32_t, 4>{};
      if (endsCitation(line, capitalRs, colons, capitalPs, capitalYs)) f.iInRecord = 0;
    }

    if (f.iInRecord == -1 && !labelled && !line.empty()) {
      f.writeText(line);
      bodyWritten = true;
    }
  }

 private:
  // sLastWritten, the last body line written: only whether there was one is ever
  // asked (it decides the blank line ahead of a label), so that is all that is kept.
  bool bodyWritten = false;
};

}  // namespace

JobResult FilterNLM(JobState& job, JobProgress& progress, const FilterInput& input) {
  Nlm filter;
  return RunLineFilter(job, progress, input, FilterInfo{.title = kNlmTitle, .markedBytes = "R"}, filter);
}

}  // namespace zv
