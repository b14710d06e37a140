// RunCommand: the one dispatcher of menu, toolbar, sifter and command-line commands.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "core/error.h"
#include "core/job_host.h"
#include "core/job_state.h"

namespace zv {

using CommandHandler = JobOutcome (*)(JobState& job, JobHost& host);

// One row of the command table that menus, toolbars and the command line all read.
struct Command {
  int32_t number;
  std::string_view name;         // the tool's routine, e.g. "FilterDialogAll"
  std::string_view cliGroup;     // command-line group ("filter"); empty: not on the command line
  std::string_view cliName;      // command-line name within the group ("dialog-all")
  std::string_view description;  // one line for --help and the manual
  CommandHandler handler;        // null: answered by the desktop program alone
};

struct CommandResult {
  JobOutcome outcome = JobOutcome::NoCommand;
  // Set when the command failed; gsErrNumber and gsErrText of the job hold the same.
  // Never set for 32755, the file dialog's cancel.
  std::optional<ZvError> error;
};

// Zeroes glRecNum, runs the command's handler, zeroes glRecNum again. It is the last
// catcher of errors: a failure comes back in `error`, never as an exception. A number
// without a handler in `table` does nothing.
CommandResult RunCommand(int32_t commandNumber, JobState& job, JobHost& host, std::span<const Command> table);

// The row of `table` for a number, or null.
const Command* FindCommand(std::span<const Command> table, int32_t number);

}  // namespace zv
