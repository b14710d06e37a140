// Keep, Keep Express, Unkeep, the keep list, and Write Kept Records (1607).
#include "core/text.h"
#include "records/record_file.h"
#include "records/record_writers.h"
#include "records/sift_common.h"

namespace zv {

namespace {

void fillKeepList(JobState& job, SiftView& view) {
  view.clearKeepList();
  const int32_t count = view.sift.glRecCount;
  // A record of its own for the walk: gIndexRec holds the record on display.
  ForEachIndexRec(job.gsIndexFile, [&](int32_t k, IndexRec& rec) {
    if (k <= count && rec.keepFlag != 0) view.addKeepListItem(std::to_string(k));
    return false;
  });
}

// Steps 3 to 6 of Keep and Keep Express. The entry written at glCurRec is the one on
// display, gIndexRec: in .ORD View that is the slot of another record, and this is
// how the command has always worked.
void markAndMoveOn(JobState& job, SiftView& view, bool showKeepFile) {
  SiftState& s = view.sift;
  job.gIndexRec.keepFlag = 1;
  job.gIndexRec.setKeepFile(s.gsKeepFile);
  PutIndexRec(job.gsIndexFile, s.glCurRec, job.gIndexRec);
  if (showKeepFile) view.setPanel(SiftPanel::pnlCurrentKeepFile, s.gsKeepFile);
  s.giSiftKeepFlag = 1;
  if (view.keepListVisible()) fillKeepList(job, view);
  SiftNext(job, view);
}

}  // namespace

JobResult Keep(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    const std::optional<std::string> typed = view.askKeepFile();
    if (!typed) {
      job.giInterrupt = 0;  // frmKeepFile's Cancel raised it
      return JobOutcome::Done;
    }
    if (QPTrim(*typed).empty()) return JobOutcome::Done;
    view.sift.gsKeepFile = *typed;
    markAndMoveOn(job, view, true);
    return JobOutcome::Done;
  });
}

JobResult KeepExpress(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    if (view.sift.gsKeepFile.empty()) {
      view.message({"No Keep File",
                    "There is no current keep file.  You must use Keep at least once before using Keep Express."},
                   MsgIcon::Warning);
      return JobOutcome::Done;
    }
    markAndMoveOn(job, view, false);
    return JobOutcome::Done;
  });
}

JobResult Unkeep(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    const int32_t at = view.sift.glCurRec;
    job.gIndexRec = GetIndexRec(job.gsIndexFile, at);
    job.gIndexRec.keepFlag = 0;
    job.gIndexRec.setKeepFile("");
    PutIndexRec(job.gsIndexFile, at, job.gIndexRec);
    view.setPanel(SiftPanel::pnlKeptFileName, job.gIndexRec.keepFileName());
    return JobOutcome::Done;
  });
}

namespace {

// The list filled, or the general error path taken and reported: false.
bool fillOrReport(JobState& job, SiftView& view) {
  try {
    fillKeepList(job, view);
    return true;
  } catch (const std::exception& e) {
    const ZvError error = AsZvError(e);
    sift::NoteError(job, error);
    ResetSifter(job, view);
    view.showErrorForm(ErrorFormText(job.gsErrNumber, job.gsErrText, error.reason()));
    return false;
  }
}

}  // namespace

void FillKeepList(JobState& job, SiftView& view) { (void)fillOrReport(job, view); }

void ToggleKeepList(JobState& job, SiftView& view) {
  if (!view.keepListVisible()) {
    if (fillOrReport(job, view)) view.showKeepList(true);
  } else {
    view.showKeepList(false);
    view.clearKeepList();
  }
}

JobResult SiftWriteKept(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    SiftState& s = view.sift;
    const JobResult written = WriteKeptRecords(job, view.frmWriting(), {job.gsProFile, job.gsIndexFile, s.glRecCount});
    if (written.error) throw *written.error;
    if (!written.done()) return written.outcome;
    s.gsKeepFile.clear();
    s.giSiftKeepFlag = 0;
    return JobOutcome::Done;
  });
}

}  // namespace zv
