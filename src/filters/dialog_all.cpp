// DIALOG filter, all types to one file: every label starts a record.
#include "filters/dialog_all.h"

#include <string_view>

#include "core/error.h"
#include "core/filter_frame.h"
#include "filters/dialog_family.h"

namespace zv {

namespace {

using sv = std::string_view;

class DialogAll final : public LineFilter {
 public:
  void afterCleaning(FilterFrame& f) override {
    // The odometer moves after this, so the line in hand is one further.
    if (f.iInRecord == -1) Inc16(iSinceLabel, kSinceLabelLimit, {"input line", int64_t{f.lInLine} + 1});
  }

  // Built into the frame's loop (RunLines) rather than called from it once a line.
  [[gnu::always_inline]] void onLine(FilterFrame& f) override {
    const DialogLine l(f);
    const sv line = l.text;

    // Steps 2 to 6: the begin, sets and logoff blocks of the .FSC.
    fsc.beforeRecord(f, l);

    // Steps 7 and 8: a label starts a record under "Record - N".
    if (TestDialogLabel(l).test == LabelTest::Label) {
      iSinceLabel = 0;
      f.openRecord({.blanksBefore = f.gsPrevLine.empty() ? 0 : (sBeforePrevEmpty ? 1 : 2)});
    }

    // Step 9: the end of a record.
    if (DialogEndsRecord(line)) {
      if (f.iInRecord == -1 && f.gsPrevLine.size() > 1) f.writeBlank();
      f.iInRecord = 0;
    }

    // Step 10: copy the record's lines; runs of blank lines shrink to one.
    if (f.iInRecord == -1) {
      if (f.iJustLabelled == -1) {
        f.iJustLabelled = 0;
      } else if (iSinceLabel == 1) {
        if (!line.empty()) f.writeText(line);
      } else if (!(line.empty() && f.gsPrevLine.empty())) {
        f.writeText(line);
      }
    }

    // Step 11: copy the logoff block.
    fsc.afterRecord(f, l);

    // Step 12: the frame moves gsLine to gsPrevLine after this.
    sBeforePrevEmpty = f.gsPrevLine.empty();
  }

  int16_t fscLines() const override { return fsc.iFscLines; }

 private:
  DialogFsc fsc{DialogFsc::LogoffWords::Anywhere};
  int16_t iSinceLabel = 0;
  // sBeforePrev, the line before gsPrevLine: nothing but its emptiness is ever asked,
  // so that is all that is kept, and no line is copied for it.
  bool sBeforePrevEmpty = true;
};

}  // namespace

JobResult FilterDialogAll(JobState& job, JobProgress& progress, const FilterInput& input) {
  DialogAll filter;
  return RunLineFilter(job, progress, input,
                       FilterInfo{.title = kDialogAllTitle, .makesFsc = true, .markedBytes = kDialogMarkedBytes}, filter);
}

}  // namespace zv
