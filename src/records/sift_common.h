// What the sifter's files share: the error path of a command, captions, showing.
#pragma once

#include <exception>
#include <string>

#include "core/error.h"
#include "core/job_state.h"
#include "records/sifter.h"

namespace zv::sift {

// The error a trap stores: a ZvError as it is, anything else under a number.
ZvError AsZvError(const std::exception& e);

// gsErrNumber and gsErrText of a trapped error.
void NoteError(JobState& job, const ZvError& error);

// A number on a panel: one blank before and one behind.
inline std::string NumberCaption(int64_t n) { return " " + std::to_string(n) + " "; }
// A number as the number-to-text conversion gives it inside a prompt: a blank before it.
inline std::string NumberText(int64_t n) { return n >= 0 ? " " + std::to_string(n) : std::to_string(n); }

// Shows the current record by the view's command: 1602 in .PRO View, 1601 in .ORD View.
inline void ShowCurrent(SiftView& view) { view.RunCommand(view.sift.ordView() ? kShowOrdRecord : kShowProRecord); }

// A command of the sifter: the host must be the sifter's view (else NoCommand), and
// any failure takes the general error path: noted, ResetSifter, thrown on.
template <class Body>
JobOutcome RunSiftCommand(JobState& job, JobHost& host, Body&& body) {
  SiftView* view = AsSiftView(host);
  if (view == nullptr) return JobOutcome::NoCommand;
  try {
    return body(*view);
  } catch (const std::exception& e) {
    ZvError error = AsZvError(e);
    NoteError(job, error);
    ResetSifter(job, *view);
    throw error;
  }
}

}  // namespace zv::sift
