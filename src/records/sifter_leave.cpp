// Leaving the sifter: the two questions, the bookmark; and the reset of the error path.
#include "core/files.h"
#include "core/output_files.h"
#include "records/record_file.h"
#include "records/sift_common.h"

namespace zv {

namespace {

const Message kKeepingOversight{
    "Keeping Oversight",
    "You have done some keeping either without using Write Kept Records or since the last time you used Write Kept "
    "Records, and are now exiting the sifter.  On exiting, the keeping information will be lost.\r\n\r\n"
    "Would you like to use Write Kept Records now?"};

const Message kReorderingOversight{
    "Reordering Oversight",
    "You have done some reordering either without using Write Order or since the last time you used Write Order, "
    "and are now exiting the sifter.  On exiting, the reordering information will be lost.\r\n\r\n"
    "Would you like to use Write Order now?"};

void backToProView(SiftView& view) {
  view.sift.gsSiftView = kProView;
  view.setViewMode(kProView, kProViewColor);
}

}  // namespace

void LeaveSifter(JobState& job, SiftView& view) {
  SiftState& s = view.sift;
  if (view.keepListVisible()) {
    view.showKeepList(false);
    view.clearKeepList();
  }
  if (s.giSiftKeepFlag == 1) {
    if (view.askYesNo(kKeepingOversight, MsgIcon::Warning)) view.RunCommand(kWriteKept);
    s.giSiftKeepFlag = 0;
  }
  if (s.giSiftOrderFlag == 1) {
    if (view.askYesNo(kReorderingOversight, MsgIcon::Warning)) view.RunCommand(kWriteOrder);
    s.giSiftOrderFlag = 0;
  }
  try {
    s.glOrder = {};
    if (!job.gsIndexFile.empty()) ClearAllMarks(job.gsIndexFile);
    view.setPanel(SiftPanel::pnlCurrentKeepFile, "");
    backToProView(view);
    // In .ORD View glCurRec is a position; it is written all the same, and read back
    // as a record number.
    const std::string wrk = job.outputPath(job.gsBaseName + ".WRK");
    if (s.glCurRec > 1 && s.glCurRec < s.glRecCount) {
      WriteBookmark(wrk, s.glCurRec);
    } else if (s.glCurRec == 1 || s.glCurRec == s.glRecCount) {
      KillIfExists(wrk);
    }
  } catch (const std::exception& e) {
    const ZvError error = AsZvError(e);
    sift::NoteError(job, error);
    ResetSifter(job, view);
    view.showErrorForm(ErrorFormText(job.gsErrNumber, job.gsErrText, error.reason()));
    return;
  }
  view.hideSifter();
}

void ResetSifter(JobState& job, SiftView& view) noexcept {
  try {
    view.sift.glOrder = {};
    try {
      if (!job.gsIndexFile.empty() && Exist(job.gsIndexFile)) ClearAllMarks(job.gsIndexFile);
    } catch (const std::exception&) {
      // The index that failed may fail again here; the first error is the one reported.
    }
    view.setPanel(SiftPanel::pnlCurrentKeepFile, "");
    backToProView(view);
    view.hideSifter();
  } catch (...) {
    // A view that fails while the error path runs: the error in hand is reported.
  }
}

}  // namespace zv
