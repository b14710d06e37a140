// OpenSifter (command 1600).
#include <filesystem>

#include "core/brindle.h"
#include "core/files.h"
#include "core/output_files.h"
#include "records/build_index.h"
#include "records/record_file.h"
#include "records/record_file_choice.h"
#include "records/sift_common.h"

namespace zv {

namespace {

using sift::NumberCaption;

}  // namespace

JobResult OpenSifter(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    SiftState& s = view.sift;
    for (;;) {
      const std::optional<std::string> chosen = view.chooseFile(kSiftDialogFilter);
      if (!chosen) {
        view.hideSifter();  // the dialog's cancel: no message, no reset
        return JobOutcome::Cancelled;
      }
      Message refusal;
      if (ChooseRecordFile(job, *chosen, refusal)) break;
      view.message(refusal, MsgIcon::Warning);
    }
    const bool indexChosen = IndexChosen(job);

    if (!indexChosen) {
      const JobResult built = BuildIndex(job, view.frmIndexing());
      if (built.error) throw *built.error;  // the general error path
      if (built.outcome == JobOutcome::Refused) view.message(*built.message, MsgIcon::Stop);
      if (!built.done()) {
        ForgetRecordFile(job);
        view.hideSifter();
        return JobOutcome::Cancelled;
      }
    }

    s.glRecCount = RecordCount(job.gsIndexFile);
    s.glOrder = IdentityOrder(s.glRecCount);

    s.glCurRec = 1;
    const std::string wrk = job.outputPath(job.gsBaseName + ".WRK");
    if (indexChosen && Exist(wrk)) {
      const std::optional<int32_t> mark = ReadBookmark(wrk);
      if (!mark) {
        KillIfExists(wrk);
      } else if (*mark > 0 && *mark <= s.glRecCount) {
        s.glCurRec = *mark;
      }
    }

    view.setPanel(SiftPanel::pnlProFileName, job.gsProFile);
    view.setPanel(SiftPanel::pnlTotRecs, NumberCaption(s.glRecCount));
    view.showSifter();
    view.RunCommand(kShowProRecord);
    return JobOutcome::Done;
  });
}

}  // namespace zv
