// What the sifter's files share: the error path of a command, captions, showing.
#pragma once

#include <exception>
#include <string>

#include "core/error.h"
#include "core/job.h"
#include "core/job_state.h"
#include "records/sifter.h"

namespace zv::sift {

// gsErrNumber and gsErrText of a trapped error.
inline void NoteError(JobState& job, const ZvError& error) {
  job.gsErrNumber = ErrNumberText(error.number());
  job.gsErrText = error.text();
}

// A number on a panel: one blank before and one behind. (Appended piece by piece:
// " " + std::to_string(n) draws a false -Wrestrict from GCC 12 at -O3.)
inline std::string NumberCaption(int64_t n) {
  std::string s(1, ' ');
  s += std::to_string(n);
  s += ' ';
  return s;
}
// A number as the number-to-text conversion gives it inside a prompt: a blank before it.
inline std::string NumberText(int64_t n) {
  std::string s(n >= 0 ? 1 : 0, ' ');
  s += std::to_string(n);
  return s;
}

// Shows the current record by the view's command: 1602 in .PRO View, 1601 in .ORD View.
inline void ShowCurrent(SiftView& view) { view.RunCommand(view.sift.ordView() ? kShowOrdRecord : kShowProRecord); }

// A command of the sifter: the context must hold the sifter's view (else NoCommand),
// and any failure takes the general error path: noted, ResetSifter, thrown on.
template <class Body>
JobResult RunSiftCommand(CommandContext& context, Body&& body) {
  JobResult result;
  SiftView* const* found = context.get<SiftView*>();
  if (found == nullptr || *found == nullptr) {
    result.outcome = JobOutcome::NoCommand;
    return result;
  }
  SiftView* view = *found;
  JobState& job = context.job;
  try {
    result.outcome = body(job, *view);
    return result;
  } catch (const std::exception& e) {
    ZvError error = AsZvError(e);
    NoteError(job, error);
    ResetSifter(job, *view);
    throw error;
  }
}

}  // namespace zv::sift
