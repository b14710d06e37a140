// Ovid filter: a citation opens at its number in angle brackets on a line of its own
// and ends at the next one, at a database line or at a transmission notice. Body
// lines lose their 9-column left margin.
#include "filters/ovid.h"

#include <string_view>

#include "core/error.h"
#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;

// The width of the left margin of a body line.
constexpr std::size_t kMargin = 9;

// sTrimmed: the line without blanks on either side.
// "<", nothing but digits (or nothing at all), ">", with blanks around it or not.
bool isStart(sv trimmed) {
  if (trimmed.empty() || trimmed.front() != '<') return false;
  if (trimmed.back() != '>') return false;  // a lone "<" fails here
  const sv inner = trimmed.substr(1, trimmed.size() - 2);  // sInner
  return InCountTbl(inner, "0123456789") == static_cast<int32_t>(inner.size());
}

class Ovid final : public LineFilter {
 public:
  void onLine(FilterFrame& f) override {
    JobState& job = f.job;
    const sv line = f.gsLine;
    f.iJustLabelled = 0;
    const sv trimmed = TrimBlanks(line);

    if (isStart(trimmed)) {
      f.openRecord({.blanksBefore = job.glRecNum > 0 ? 1 : 0});
    }

    // The end tests. Each text searched for holds a "T" or a "P", the filter's marked
    // bytes: most lines hold neither, which the frame found as it read them.
    const bool marked = f.holdsMarked();
    if (line.starts_with("Database: ")) f.iInRecord = 0;
    if (marked && (Holds(line, "Transmission complete ...") || Holds(line, "Turn off screen capture.") ||
                   Holds(line, "Press Enter once screen")))
      f.iInRecord = 0;

    if (f.iInRecord == -1) {
      if (f.iJustLabelled == 0 && !trimmed.empty() && !(marked && Holds(line, "Page Number : "))) {
        // Counted 9 bytes short, also when the line was too short to lose its margin.
        const int64_t counted = static_cast<int64_t>(line.size()) - static_cast<int64_t>(kMargin);
        f.writeText(line.size() > kMargin ? line.substr(kMargin) : line, counted);
      }
      f.iJustLabelled = 0;
    }
  }

  // A capture that ends inside a citation gets its last line a second time, whole,
  // and counted 9 bytes short like every body line.
  void atEndOfInput(FilterFrame& f) override {
    if (f.iInRecord == -1) {
      const sv line = f.gsLine;
      f.writeText(line, static_cast<int64_t>(line.size()) - static_cast<int64_t>(kMargin));
    }
  }
};

}  // namespace

JobResult FilterOvid(JobState& job, JobProgress& progress, const FilterInput& input) {
  Ovid filter;
  return RunLineFilter(job, progress, input, FilterInfo{.title = kOvidTitle, .markedBytes = "TP"}, filter);
}

}  // namespace zv
