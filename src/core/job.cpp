// The frame's ways out and its one translation of errors.
#include "core/job.h"

#include <new>
#include <stdexcept>

#include "core/time_text.h"

namespace zv {

void Job::start(JobResult& result, std::string_view title, int64_t fileSize, int32_t totalLines,
                int32_t totalRecords) {
  progress.ClearStatusPanels();
  result.startTime = TimeOfDayText();
  progress.jobStarted({title, fileSize, result.startTime, totalLines, totalRecords});
}

void Job::finish(JobResult& result) {
  result.finishTime = TimeOfDayText();
  result.elapsed = ShowElapsed(result.startTime, result.finishTime);
  progress.jobFinished(result.finishTime, result.elapsed);
}

ZvError AsZvError(const std::exception& e) {
  if (const auto* z = dynamic_cast<const ZvError*>(&e)) return *z;
  if (dynamic_cast<const std::bad_alloc*>(&e)) return ZvError(7, "Out of memory");
  if (dynamic_cast<const std::out_of_range*>(&e)) return ZvError(9, "Subscript out of range", e.what());
  return ZvError(51, "Internal error", e.what());
}

ZvError CurrentZvError() {
  try {
    throw;
  } catch (const std::exception& e) {
    return AsZvError(e);
  } catch (...) {
    return ZvError(51, "Internal error");
  }
}

namespace detail {

void failJob(Job& job, JobResult& result, ZvError error) {
  job.state.gsErrNumber = ErrNumberText(error.number());
  job.state.gsErrText = error.text();
  job.outputs.settle(WayOut::Failed);
  job.state.giInterrupt = 0;
  if (error.number() == err::kCancel) {
    result.outcome = JobOutcome::Cancelled;
    return;
  }
  result.outcome = JobOutcome::Failed;
  result.error = std::move(error);
}

void settleJob(Job& job, JobResult& result) {
  switch (result.outcome) {
    case JobOutcome::Done:
      job.outputs.commit();
      result.files = job.outputs.existing();
      return;
    case JobOutcome::ZeroRecords:
      job.outputs.settle(WayOut::ZeroRecords);
      break;
    case JobOutcome::Interrupted:
      job.outputs.settle(WayOut::Interrupted);
      break;
    case JobOutcome::Refused:
    case JobOutcome::Failed:
    case JobOutcome::Cancelled:
    case JobOutcome::NoCommand:
      job.outputs.settle(WayOut::Failed);
      break;
  }
  // What a job kept on its way out is still worth naming to the user.
  result.files = job.outputs.existing();
  job.state.giInterrupt = 0;
}

}  // namespace detail

}  // namespace zv
