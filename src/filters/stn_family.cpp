// STN and Orbit/Questel: start lines, end lines, hyphen lines and blank-line folding.
#include "filters/stn_family.h"

#include <algorithm>
#include <string_view>

#include "core/error.h"
#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;


bool allBetween(sv s, char lo, char hi) {
  return std::all_of(s.begin(), s.end(), [=](char c) { return c >= lo && c <= hi; });
}

// Empty once its blanks are trimmed.
inline bool isBlankLine(sv s) { return s.find_first_not_of(' ') == sv::npos; }

constexpr sv kBiblioGroup = "*** BIBLIO GROUP ***";
constexpr sv kReference = "REFERENCE  ";  // two blanks: "REFERENCE 4" is text

inline std::ptrdiff_t occurrences(sv s, char c) { return std::count(s.begin(), s.end(), c); }

// A line such as "-12- TITLE (CA)": it begins with "-", holds exactly two hyphens and
// a "- ", one "(" and one ")", the ")" last and nothing but capitals between them.
bool hasHyphenPattern(sv line) {
  if (line.empty() || line.front() != '-' || line.back() != ')') return false;
  if (occurrences(line, '-') != 2 || occurrences(line, '(') != 1 || occurrences(line, ')') != 1) return false;
  if (!Holds(line, "- ")) return false;
  // The one "(" stands before the one ")", which is the last character.
  const std::size_t open = line.find('(');
  return allBetween(line.substr(open + 1, line.size() - open - 2), 'A', 'Z');
}

// The end lines: prompts, cost lines, command echoes, logoff and network lines. Most
// lines begin with none of these characters, so the first one picks the few tests
// worth making. `mayHoldO`: the line holds an "O", which each contained text needs.
bool endsRecord(sv line, bool mayHoldO) {
  if (mayHoldO && (Holds(line, "COST IN U.S. DOLLARS") || Holds(line, "FULL ESTIMATED COST") ||
                   Holds(line, "IS NOT A VALID FORMAT")))
    return true;
  if (line.empty()) return false;
  switch (line.front()) {
    case '=': return line.starts_with("=>");
    case ':': return true;
    case 'S': return line.starts_with("SS ") || line.starts_with("SESSION");
    case 'p': return line.starts_with("prt ");
    case 'l': return line.starts_with("logoff");
    case 'E': return line.starts_with("ELAPSED");
    case 'Y': return line.starts_with("YOUR SESSION");
    case 'T': return line.starts_with("TYMNET:");
    default: return false;
  }
}

class StnFamily final : public LineFilter {
 public:
  explicit StnFamily(bool answerAndReferenceLines) : answerAndReference_(answerAndReferenceLines) {}

  void onLine(FilterFrame& f) override {
    JobState& job = f.job;
    const sv line = job.gsLine;
    // Every text the tests look for inside a line holds an "O", but for " ANSWER ",
    // which holds a "W"; most lines hold neither, and one scan each rules them out.
    const bool mayHoldO = line.find('O') != sv::npos;
    const bool biblio = mayHoldO && Holds(line, kBiblioGroup);
    const bool hyphenPattern = hasHyphenPattern(line);

    if (isStartLine(line, biblio, hyphenPattern)) {
      // No blank line goes before the label, and none behind a reference's.
      f.openRecord({.blankAfter = !line.starts_with(kReference)});
    }

    if (endsRecord(line, mayHoldO)) f.iInRecord = 0;

    // A hyphen line that opened no record stays out of the one that goes on.
    const int16_t iSkipLine = hyphenPattern ? -1 : 0;

    // iJustLabelled lives until a pass inside a record clears it here: a start line
    // that is an end line too leaves it set, which harms nothing, since only a new
    // label makes the next write.
    if (f.iInRecord == -1) {
      if (f.iJustLabelled == -1)
        f.iJustLabelled = 0;  // the start line itself is not copied
      else if (iSkipLine == 0 && !(isBlankLine(line) && isBlankLine(job.gsPrevLine)))
        f.writeText(line);  // a blank line too: one of each run of them is kept
    }
    prevBiblio_ = biblio;
  }

 private:
  // The start tests in their order; the first that takes the line ends the series.
  bool isStartLine(sv line, bool biblio, bool hyphenPattern) const {
    if (answerAndReference_) {
      // An answer line without its " OF " is nothing, and goes no further. The scan
      // for a "W" comes first: the search for " ANSWER " stops at every blank.
      if (line.find('W') != sv::npos && Holds(line, " ANSWER ")) return Holds(line, " OF ") || Holds(line, " of ");
      if (line.starts_with(kReference)) return true;
    }
    if (biblio) return true;
    // A hyphen number line, unless it heads the group the line before opened.
    if (!hyphenPattern || prevBiblio_) return false;
    const std::size_t second = line.find('-', 1);
    return allBetween(line.substr(1, second - 1), '0', '9');
  }

  const bool answerAndReference_;
  // gsPrevLine holds "*** BIBLIO GROUP ***": found on the pass before, so that no line
  // is searched twice.
  bool prevBiblio_ = false;
};

}  // namespace

JobResult RunStnFamilyFilter(JobState& job, JobProgress& progress, const FilterInput& input,
                             const StnFamilyOptions& options) {
  StnFamily filter(options.answerAndReferenceLines);
  return RunLineFilter(job, progress, input, FilterInfo{options.title}, filter);
}

}  // namespace zv
