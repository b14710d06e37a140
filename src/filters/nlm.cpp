// NLM filter: citations open at their number line and close at the service's
// prompts, command echoes and status lines.
#include "filters/nlm.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "core/error.h"
#include "core/filter_frame.h"

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

// Whether the text `at` begins where `line` has an "R" at `r`, that being the text's
// first "R", `offset` bytes into it.
inline bool textAtR(sv line, std::size_t r, std::size_t offset, sv at) {
  return r >= offset && line.substr(r - offset, at.size()) == at;
}

// Whether one of the texts looked for inside a line stands on the "R" at `r`. Every one
// of them holds an "R", so a line holds one exactly when one begins where its first "R"
// lies on an "R" of the line; the byte after that "R" tells which can.
bool endTextAtR(sv line, std::size_t r) {
  const char after = r + 1 < line.size() ? line[r + 1] : '\0';
  switch (after) {
    case ':': return textAtR(line, r, 3, "USER:");
    case ' ': return textAtR(line, r, 3, "YOUR LAST SEARCH");
    case 'I': return textAtR(line, r, 10, "CONTINUE PRINTING?") || textAtR(line, r, 2, "'PRINTSPECS'");
    case 'E': return textAtR(line, r, 0, "READY TO PRINT FROM") || textAtR(line, r, 0, "REPRINT PRIOR SEARCH");
    case 'P': return textAtR(line, r, 4, "SUPERPRINT COMPLETED.");
    default: return false;
  }
}

// The prompts, echoes and status lines that end a citation, tested only while one is
// open: clearing the flag is all they do. [rFirst, rLast) are the places of the line's
// "R"s, offsets less `base`.
bool endsCitation(sv line, const std::size_t* rFirst, const std::size_t* rLast, std::size_t base) {
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
  for (const std::size_t* r = rFirst; r != rLast; ++r)
    if (endTextAtR(line, *r - base)) return true;
  return false;
}

// The same for a line whose "R"s were not listed: it finds them itself.
bool endsCitationUnlisted(sv line) {
  std::vector<std::size_t> rs;
  for (auto r = line.find('R'); r != sv::npos; r = line.find('R', r + 1)) rs.push_back(r);
  return endsCitation(line, rs.data(), rs.data() + rs.size(), 0);
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
      // The reader lists where the block holds an "R" (the filter's marked byte).
      const std::size_t *first = nullptr, *last = nullptr;
      std::size_t base = 0;
      const bool ends = f.markPlaces(first, last, base) ? endsCitation(line, first, last, base)
                                                         : endsCitationUnlisted(line);
      if (ends) f.iInRecord = 0;
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
