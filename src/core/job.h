// The one frame every tool runs in: progress out, the interrupt in, and every way out.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/error.h"
#include "core/job_state.h"
#include "core/output_files.h"

namespace zv {

// A message of the system's own: a title and a text (lines joined by CR LF).
struct Message {
  std::string title;
  std::string text;
};

// The ways a job can end.
enum class JobOutcome {
  Done,         // outputs written and kept
  Cancelled,    // the user backed out before anything was opened; nothing said
  Refused,      // the input or a parameter was refused; `message` says why; nothing written
  ZeroRecords,  // nothing to write (no record, no hit); outputs removed; `message` is the warning
  Interrupted,  // the user interrupted; outputs removed (or kept where the tool says so)
  Failed,       // an error; `error` holds it; outputs removed (or kept where the tool says so)
  NoCommand,    // the command number has no tool
};

// What a job tells whoever watches it. The desktop's progress windows and the command
// line's progress bar are the two observers; tests use their own. Every call has a
// do-nothing default, so an observer shows only what it has.
//
// lineDone and recordDone are the job's yield: the interrupt may be raised there, and
// the job looks at JobState::giInterrupt right after the call (Job::lineDone does both).
class JobProgress {
 public:
  virtual ~JobProgress() = default;

  // The five timing panels of the main window emptied (frmFilter's Cancel and the
  // start of every job).
  virtual void ClearStatusPanels() {}
  // The job has begun: its window's title, the input's size in bytes and the time,
  // and the totals the bar is measured against (0 where the job has none).
  struct Start {
    std::string_view title;
    int64_t fileSize = 0;
    std::string_view startTime;
    int32_t totalLines = 0;
    int32_t totalRecords = 0;
  };
  virtual void jobStarted(const Start& /*start*/) {}
  // A caption of the step under way ("Writing Kept Records", the file being written).
  virtual void caption(std::string_view /*text*/) {}
  // One more input line read (the line odometer and the bar).
  virtual void lineDone(int32_t /*line*/, int32_t /*totalLines*/) {}
  // The record odometer: a record recognized, read or written.
  virtual void recordDone(int32_t /*record*/) {}
  // The finish time and the elapsed time, for a job that ran to its end.
  virtual void jobFinished(std::string_view /*finishTime*/, std::string_view /*elapsed*/) {}
  // The job has ended, whichever way it went, its outputs already kept or removed: a
  // progress window that belongs to the job alone goes away here.
  virtual void jobEnded(JobOutcome /*outcome*/) {}
};

// An observer that shows nothing.
inline JobProgress& NoProgress() {
  static JobProgress none;
  return none;
}


// What every job hands back. A tool with more to say derives from it.
struct JobResult {
  JobOutcome outcome = JobOutcome::Done;
  std::optional<ZvError> error;    // set when Failed (never for 32755)
  std::optional<Message> message;  // the system's message where one is due
  std::vector<std::string> files;  // the outputs kept, in the order they were made
  int32_t lines = 0;               // input lines read
  int32_t records = 0;             // records recognized, read or written
  std::string startTime;           // "hh:mm:ss"
  std::string finishTime;
  std::string elapsed;

  bool done() const noexcept { return outcome == JobOutcome::Done; }
};

// The reason line of a failed job's error, or empty.
inline std::string ReasonOf(const JobResult& result) { return result.error ? result.error->reason() : std::string(); }

// The frame as a running job sees it: the state, the observer, the outputs. A job
// registers each output with `outputs` before it writes the first byte; the frame
// removes or keeps them as the job ends.
class Job {
 public:
  Job(JobState& jobState, JobProgress& jobProgress) : state(jobState), progress(jobProgress) {}
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;

  JobState& state;
  JobProgress& progress;
  OutputFiles outputs;

  // The yield after an input line: the observer sees the line, then the interrupt is
  // looked at. True when the user has asked to stop.
  [[nodiscard]] bool lineDone(int32_t line, int32_t totalLines) {
    progress.lineDone(line, totalLines);
    return interrupted();
  }
  // The same, once per record, for the jobs that yield per record.
  [[nodiscard]] bool recordDone(int32_t record) {
    progress.recordDone(record);
    return interrupted();
  }
  bool interrupted() const noexcept { return state.giInterrupt.load(std::memory_order_relaxed) == 1; }

  // Fills the start of the result and tells the observer (ClearStatusPanels first).
  void start(JobResult& result, std::string_view title, int64_t fileSize, int32_t totalLines,
             int32_t totalRecords = 0);
  // Fills the finish and elapsed times and tells the observer.
  void finish(JobResult& result);
};

// The one translation of whatever a job threw into the system's error numbers and
// texts: a ZvError as it is; an exhausted memory 7 "Out of memory"; a subscript out of
// range 9 "Subscript out of range"; anything else 51 "Internal error", its text kept
// as the detail.
ZvError AsZvError(const std::exception& e);
// The same for the exception in flight (inside a catch block).
ZvError CurrentZvError();

namespace detail {
// The ways out, shared by every RunJob.
void settleJob(Job& job, JobResult& result);
void failJob(Job& job, JobResult& result, ZvError error);
}  // namespace detail

// Runs `body(job, result)`, which returns the outcome, inside the frame:
//  - the interrupt flag starts at 0: no Cancel pressed for an earlier job outlives it;
//  - Done commits the outputs and lists them in result.files;
//  - ZeroRecords, Interrupted and Refused remove the outputs (but what the job marked
//    to keep on that way out), and the interrupt flag goes back to 0;
//  - anything thrown becomes result.error through AsZvError, gsErrNumber and gsErrText
//    are set, the outputs are removed (but what the job marked to keep on an error),
//    and the outcome is Failed. Nothing is thrown out of RunJob;
//  - last, on every way out, the observer hears jobEnded.
// The body's own locals (open files) are gone before the outputs are removed.
template <class Result = JobResult, class Body>
Result RunJob(JobState& state, JobProgress& progress, Body&& body) {
  state.giInterrupt = 0;
  Job job(state, progress);
  Result result;
  try {
    result.outcome = std::forward<Body>(body)(job, result);
  } catch (...) {
    detail::failJob(job, result, CurrentZvError());
    progress.jobEnded(result.outcome);
    return result;
  }
  detail::settleJob(job, result);
  progress.jobEnded(result.outcome);
  return result;
}

}  // namespace zv
