// DJN/R //TEXT filter: documents open at a DOCUMENT marker and close, mostly with a
// blank line of their own, at an end notice, a command echo or a "Press ENTER".
#include "filters/djnr.h"

#include <string_view>

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;


sv trimLeft(sv s) {
  const auto first = s.find_first_not_of(' ');
  return first == sv::npos ? sv{} : s.substr(first);
}

sv trimBoth(sv s) {
  s = trimLeft(s);
  return s.substr(0, s.find_last_not_of(' ') + 1);  // npos + 1 is 0: an empty s stays empty
}

// Holds "DOCUMENT=" or "  DOCUMENT  ", the two start markers; the start line itself is
// never written, since it holds one. One search for the word, and its neighbours
// looked at: a search for the blank-led marker would stop at every blank of the line.
bool holdsMarker(sv line) {
  constexpr sv kWord = "DOCUMENT";
  for (auto at = line.find(kWord); at != sv::npos; at = line.find(kWord, at + 1)) {
    const sv after = line.substr(at + kWord.size());
    if (after.starts_with('=')) return true;
    if (at >= 2 && line.substr(at - 2, 2) == "  " && after.starts_with("  ")) return true;
  }
  return false;
}

class Djnr final : public LineFilter {
 public:
  void onLine(FilterFrame& f) override {
    const sv line = f.gsLine;
    // Which searches can find anything: both markers and every notice that is searched
    // for hold an "E" but one, which holds a "*" (the filter's marked bytes: a line
    // without either is not counted), and most body lines hold no capital P.
    const auto [capitalEs, stars, capitalPs, dots] =
        f.holdsMarked() ? CountBytes(line, {'E', '*', 'P', '.'}) : std::array<uint32_t, 4>{};
    const bool marker = capitalEs && holdsMarker(line);

    if (marker) {
      // Only the label's own UpdateIndex sees the flag set.
      f.openRecord({.flagForPass = false});
    }

    // The flag is looked at once, ahead of the whole row: a later test still runs, and
    // still writes its blank line, after an earlier one has closed the record.
    if (f.iInRecord == -1) {
      const sv left = trimLeft(line);
      const sv both = trimBoth(left);
      auto close = [&](bool blank) {
        f.iInRecord = 0;
        if (blank) f.writeBlank();
      };
      if (stars && dots && Holds(line, "* END OF DOCUMENT.")) close(true);                                 // 1
      if (capitalEs && dots && Holds(line, "End of document.")) close(true);                               // 2
      if (both.size() == 3 && both.starts_with("..") && (both[2] == 'S' || both[2] == 's')) close(false);  // 3
      if (both == "DOC+1") close(true);                                                                    // 4
      if (line.starts_with("CURRENT ") && Holds(line, "_") && Holds(line, ":")) close(true);               // 5
      if (capitalEs && Holds(line, "End of documents in list")) close(true);                               // 6
      if (left.starts_with("..")) close(true);                                                             // 7
      if (left.starts_with("doc=")) close(true);                                                           // 8
      if (capitalPs && capitalEs && Holds(line, "Press ENTER")) close(false);                              // 9
    }

    if (f.iInRecord == -1 && !marker && !line.empty()) f.writeText(line);
  }
};

}  // namespace

JobResult FilterDJ(JobState& job, JobProgress& progress, const FilterInput& input) {
  Djnr filter;
  return RunLineFilter(job, progress, input, FilterInfo{.title = kDjnrTitle, .markedBytes = "E*"}, filter);
}

}  // namespace zv
