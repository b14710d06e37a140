// DIALOG filter, specified types to one file: the DIALOG steps, keeping the wanted labels only.
#include "filters/dialog_pick.h"

#include "core/error.h"
#include "core/filter_frame.h"
#include "core/record_file_writer.h"

namespace zv {

namespace {

using sv = std::string_view;

class DialogPik final : public LineFilter {
 public:
  explicit DialogPik(const std::array<std::string, kMaxTypes>& types) : sType(types) {}

  void begin(FilterFrame& f) override { types_ = dynamic_cast<TypeProgress*>(&f.progress); }

  void afterCleaning(FilterFrame& f) override {
    f.iJustLabelled = 0;
    // The odometer moves after this, so the line in hand is one further.
    if (f.iInRecord == -1) Inc16(iSinceLabel, kSinceLabelLimit, {"input line", int64_t{f.lInLine} + 1});
  }

  // Built into the frame's loop (RunLines) rather than called from it once a line.
  [[gnu::always_inline]] void onLine(FilterFrame& f) override {
    JobState& job = f.job;
    const DialogLine l(f);
    const sv line = l.text;

    fsc.beforeRecord(f, l);

    // A label: every one moves the record odometer, a wanted one opens a record. A
    // line that fails only the gap or format test, and an unwanted label, change
    // nothing, but while a kept record is open they write its label again, with the
    // same number, and go on into it (a prompt between prints of different formats
    // normally closes the record first).
    const DialogLabel label = TestDialogLabel(l);
    if (label.test != LabelTest::NotALabel) {
      if (label.test == LabelTest::Label) {
        Add32(job.glRecNum, 1);
        f.progress.recordDone(job.glRecNum);
        for (int k = 0; k < kMaxTypes; ++k) {
          if (label.format == sType[k]) {
            f.iInRecord = -1;
            iCurType = static_cast<int16_t>(k + 1);
            Add32(lKept, 1);
            f.iJustLabelled = -1;
            iSinceLabel = 0;
            break;
          }
        }
      }
      if (f.iInRecord == -1) {
        if (!f.gsPrevLine.empty()) {
          f.writeBlank();
          if (!sBeforePrevEmpty) f.writeBlank();
        }
        f.sLabel = RecordLabel(lKept);
        write(f, f.sLabel);
        f.writeBlank();
        Add32(lTypeCount[iCurType - 1], 1);
        if (types_) types_->typeRecordDone(iCurType, lTypeCount[iCurType - 1]);
      }
    }

    if (DialogEndsRecord(line)) {
      if (f.iInRecord == -1 && f.gsPrevLine.size() > 1) f.writeBlank();
      f.iInRecord = 0;
    }

    if (f.iInRecord == -1) {
      if (f.iJustLabelled == -1) {
        f.iJustLabelled = 0;
      } else if (iSinceLabel == 1) {
        if (!line.empty()) write(f, line);
      } else if (!(line.empty() && f.gsPrevLine.empty())) {
        write(f, line);
      }
    }

    fsc.afterRecord(f, l);
    sBeforePrevEmpty = f.gsPrevLine.empty();
  }

  bool foundRecords(const FilterFrame&) const override { return lKept > 0; }

  void atEndOfInput(FilterFrame& f) override {
    if (f.iInRecord == -1) write(f, f.gsLine);
    f.writeBlank();  // this filter's own closing blank line
    // The kept records number the labels and the index: from here on the frame,
    // which closes the index at record glRecNum, and the result count them.
    f.job.glRecNum = lKept;
  }

  int16_t fscLines() const override { return fsc.iFscLines; }

  Message zeroRecordsMessage() const override {
    return {std::string(kZeroRecordsTitle), std::string(kNoTypesText)};
  }

 private:
  // A text line under the current kept record. UpdateIndex counts the label's length
  // on the pass that kept a label, gsLine's on any other (so a label written again
  // is counted at the length of the line that caused it).
  void write(FilterFrame& f, sv text) {
    const bool labelled = f.iJustLabelled == -1;
    f.pro.writeText(text, lKept, labelled,
                    static_cast<int64_t>(labelled ? f.sLabel.size() : f.gsLine.size()));
  }

  const std::array<std::string, kMaxTypes>& sType;
  DialogFsc fsc{DialogFsc::LogoffWords::Anywhere};
  TypeProgress* types_ = nullptr;  // the observer, when it shows the types' counts
  int16_t iSinceLabel = 0;
  int16_t iCurType = 0;
  int32_t lKept = 0;
  std::array<int32_t, kMaxTypes> lTypeCount{};
  bool sBeforePrevEmpty = true;  // sBeforePrev, of which only its emptiness is asked
};

}  // namespace

JobResult FilterDialogPik(JobState& job, JobProgress& progress, const PikTypesParams& params) {
  DialogPik filter(params.types);
  return RunLineFilter(job, progress, params.input,
                       FilterInfo{.title = kDialogPikTitle, .makesFsc = true, .markedBytes = kDialogMarkedBytes}, filter);
}

}  // namespace zv
