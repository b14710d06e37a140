// DIALMAIL filter: a print opens at "Record -" and ends at a prompt, an item header or the mail's own lines.
#include "filters/dialmail.h"

#include <array>

#include "core/filter_frame.h"
#include "core/text.h"
#include "filters/dialog_family.h"

namespace zv {

namespace {

using sv = std::string_view;

// The end tests: prompts, item headers, the mail's summary and its menu.
bool endsRecord(sv line) {
  static constexpr std::array<sv, 4> kBegins = {"?", " ?", ">>>", "From: File "};
  static constexpr std::array<sv, 4> kMenuBegins = {"Create   ", "Answer   ", "Delete   ", "Help     "};
  static constexpr std::array<sv, 11> kHolds = {
      "*** Item ",          "VIA DIALMAIL", "Files(s) searched:", "Sets selected:",
      "Set     Items   Description", "Dialmail defaults:", "Scan     ",   "Read     ",
      "CLear    ",          "EXit     ",    "** For more commands, "};
  for (sv s : kBegins)
    if (line.starts_with(s)) return true;
  for (sv s : kHolds)
    if (Holds(line, s)) return true;
  if (Holds(line, "Prints requested") && Holds(line, "indicates user print cancellation")) return true;
  for (sv s : kMenuBegins)
    if (line.starts_with(s)) return true;
  return false;
}

class Dialmail final : public LineFilter {
 public:
  void afterCleaning(FilterFrame& f) override { f.iJustLabelled = 0; }

  void onLine(FilterFrame& f) override {
    const DialogLine l(f.gsLine, f.holdsMarked());
    const sv line = l.text;

    fsc.beforeRecord(f, l);

    // Any line holding "Record -" opens a record: the label takes its place, with no
    // blank line before or after it.
    if (Holds(line, "Record -")) f.openRecord({.blanksBefore = 0, .blankAfter = false});

    if (endsRecord(line)) f.iInRecord = 0;

    // The print's lines as they stand, blank ones too.
    if (f.iInRecord == -1) {
      if (f.iJustLabelled == -1)
        f.iJustLabelled = 0;
      else
        f.writeText(line);
    }

    fsc.afterRecord(f, l);
  }

  int16_t fscLines() const override { return fsc.iFscLines; }

 private:
  DialogFsc fsc{DialogFsc::LogoffWords::AtStart};
};

}  // namespace

JobResult FilterDialmail(JobState& job, JobProgress& progress, const FilterInput& input) {
  Dialmail filter;
  return RunLineFilter(job, progress, input, FilterInfo{.title = kDialmailTitle,
                                                           .makesFsc = true,
                                                           .countingTitle = kDialmailCountingTitle,
                                                           .markedBytes = kDialogMarkedBytes}, filter);
}

}  // namespace zv
