// BRS filter: a document opens at its answer number alone in eight columns and ends
// at the next one or at a prompt, cost or sign-off line of the service.
#include "filters/brs.h"

#include <string_view>

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Exactly eight characters: blanks, then from the first digit on digits alone. So a
// number of 1 to 8 digits right-justified in 8 columns, and nothing else.
bool isStartLine(sv line) {
  if (line.size() != 8) return false;
  std::size_t p = 0;
  while (p < line.size() && !isDigit(line[p])) ++p;
  if (p == line.size()) return false;
  for (std::size_t i = 0; i < p; ++i)
    if (line[i] != ' ') return false;
  for (std::size_t i = p; i < line.size(); ++i)
    if (!isDigit(line[i])) return false;
  return true;
}

// The service's prompts, answer counts, cost and sign-off lines: ten independent
// tests, any one of which ends a document. Each text holds a "D", a ">" or a "*"
// (the filter's marked bytes: a line without any needs no test), and one pass counts
// them, so that a line makes only the searches its characters allow.
constexpr std::string_view kMarkedBytes = "D>*";

bool isEndLine(sv line) {
  const auto [ds, arrows, stars, colons] = CountBytes(line, {'D', '>', '*', ':'});
  if (ds + arrows + stars == 0) return false;
  if (ds && Holds(line, "END OF ") && Holds(line, " REQUEST")) return true;           // 1
  if (ds && Holds(line, "END OF DOCUMENTS IN LIST")) return true;                     // 2
  if (arrows && Holds(line, "ENTER ANSWER NUMBER-->")) return true;                   // 3
  if (ds && Holds(line, "ENTER SEARCH TERMS, COMMAND, OR ")) return true;             // 4
  if (arrows && Holds(line, "SEARCH  ") && Holds(line, "--> ")) return true;          // 5
  if (ds && Holds(line, "DOCUMENTS FOUND") && Holds(line, "ANSWER ")) return true;    // 6
  if (stars && Holds(line, "*CONNECT TIME  ")) return true;                           // 7
  if (ds && colons && Holds(line, "SESSION COST: ") && Holds(line, "ESTIMATED")) return true;  // 8
  if (stars && Holds(line, "*SIGN OFF  ")) return true;                               // 9
  return ds && Holds(line, "BRS DISCONNECTED ");                                      // 10
}

class Brs final : public LineFilter {
 public:
  void afterCleaning(FilterFrame& f) override { f.iJustLabelled = 0; }

  void onLine(FilterFrame& f) override {
    JobState& job = f.job;
    const sv line = f.gsLine;

    if (isStartLine(line)) {
      f.openRecord({.blanksBefore = job.glRecNum > 0 ? 1 : 0});  // the separator after the first
    }

    // The tests are independent; a start line never passes one of them.
    if (f.holdsMarked() && isEndLine(line)) f.iInRecord = 0;

    // Blank lines of the capture are dropped; a line of blanks is not blank.
    if (f.iInRecord == -1) {
      if (f.iJustLabelled == 0 && !line.empty()) f.writeText(line);
      f.iJustLabelled = 0;
    }
  }
};

}  // namespace

JobResult FilterBRS(JobState& job, JobProgress& progress, const FilterInput& input) {
  Brs filter;
  return RunLineFilter(job, progress, input, FilterInfo{.title = kBrsTitle, .markedBytes = kMarkedBytes}, filter);
}

}  // namespace zv
