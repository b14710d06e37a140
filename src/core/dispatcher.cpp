// The dispatcher: glRecNum bookkeeping and the last trap of every command.
#include "core/dispatcher.h"

#include <new>

namespace zv {

const Command* FindCommand(std::span<const Command> table, int32_t number) {
  for (const Command& c : table)
    if (c.number == number) return &c;
  return nullptr;
}

CommandResult RunCommand(int32_t commandNumber, JobState& job, JobHost& host, std::span<const Command> table) {
  CommandResult result;
  job.glRecNum = 0;
  const Command* command = FindCommand(table, commandNumber);
  if (command == nullptr || command->handler == nullptr) return result;
  auto fail = [&](const ZvError& e) {
    job.gsErrNumber = ErrNumberText(e.number());
    job.gsErrText = e.text();
    job.glRecNum = 0;
    if (e.number() == err::kCancel) {
      result.outcome = JobOutcome::Cancelled;
    } else {
      result.outcome = JobOutcome::Done;
      result.error = e;
    }
  };
  try {
    result.outcome = command->handler(job, host);
    job.glRecNum = 0;
  } catch (const ZvError& e) {
    fail(e);
  } catch (const std::bad_alloc&) {
    fail(ZvError(7, "Out of memory"));
  } catch (const std::exception& e) {
    fail(ZvError(51, "Internal error", e.what()));
  }
  return result;
}

}  // namespace zv
