// The dispatcher: glRecNum bookkeeping and the last trap of every command.
#include "core/dispatcher.h"

namespace zv {

const Command* FindCommand(std::span<const Command> table, int32_t number) {
  for (const Command& c : table)
    if (c.number == number) return &c;
  return nullptr;
}

JobResult RunCommand(int32_t commandNumber, CommandContext& context, std::span<const Command> table) {
  JobState& job = context.job;
  job.glRecNum = 0;
  const Command* command = FindCommand(table, commandNumber);
  if (command == nullptr || command->handler == nullptr) {
    JobResult none;
    none.outcome = JobOutcome::NoCommand;
    return none;
  }
  JobResult result;
  try {
    result = command->handler(context);
  } catch (...) {
    // The frame traps a job's errors; this catches what failed around it.
    const ZvError e = CurrentZvError();
    job.gsErrNumber = ErrNumberText(e.number());
    job.gsErrText = e.text();
    result = JobResult{};
    if (e.number() == err::kCancel) {
      result.outcome = JobOutcome::Cancelled;
    } else {
      result.outcome = JobOutcome::Failed;
      result.error = e;
    }
  }
  job.glRecNum = 0;
  return result;
}

}  // namespace zv
