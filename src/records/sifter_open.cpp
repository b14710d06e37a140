// OpenSifter (command 1600), and the sifter's common error handling.
#include <filesystem>
#include <new>
#include <stdexcept>

#include "core/brindle.h"
#include "core/files.h"
#include "core/output_files.h"
#include "records/build_index.h"
#include "records/record_file.h"
#include "records/record_file_choice.h"
#include "records/sift_common.h"

namespace zv {

namespace sift {

void NoteError(JobState& job, const ZvError& error) {
  job.gsErrNumber = ErrNumberText(error.number());
  job.gsErrText = error.text();
}

}  // namespace sift

namespace {

using sift::NumberCaption;

void forgetNames(JobState& job) {
  job.gsInFile.clear();
  job.gsBaseName.clear();
  job.gsProFile.clear();
  job.gsIndexFile.clear();
}

}  // namespace

bool ChooseRecordFile(JobState& job, const std::string& name, Message& refusal) {
  forgetNames(job);
  if (name.find(".PRO") == std::string::npos && name.find(".NDX") == std::string::npos) {
    refusal = {"Not a .PRO or .NDX File", "The file you specified is\r\n" + name +
                                              "\r\n\r\nThe sifter requires that you specify\r\n"
                                              "a .PRO (processed by filter) file\r\n"
                                              "or a .NDX (index of a .PRO) file."};
    return false;
  }
  // A name that is not there has no length either; nothing is created to find out.
  if (FileSize(name) == 0) {
    refusal = {"Zero-Length File", name + "\r\nis a zero-length file."};
    return false;
  }
  job.gsInFile = name;
  job.gsBaseName = BaseName(name);
  if (IndexChosen(job)) {
    job.gsIndexFile = name;
    job.gsProFile = job.outputPath(job.gsBaseName + ".PRO");
  } else {
    job.gsProFile = name;
    job.gsIndexFile = job.outputPath(job.gsBaseName + ".NDX");
  }
  std::string problem;
  if (IndexChosen(job) && !Exist(job.gsIndexFile)) {
    problem = ".NDX file not found.";
  } else if (!Exist(job.gsProFile)) {
    problem = ".PRO file not found.";
  } else if (SameFile(job.gsProFile, job.gsIndexFile)) {
    // "x.NDX.PRO" names its own index: marks would be written into the records.
    problem = "The record file and its index would be the same file.";
  }
  if (!problem.empty()) {
    refusal = {"File Open Error", problem};
    forgetNames(job);
    return false;
  }
  return true;
}

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
        forgetNames(job);
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
