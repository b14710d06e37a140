// RunCommand: the one dispatcher of menu, toolbar, sifter and command-line commands.
#pragma once

#include <any>
#include <cstdint>
#include <span>
#include <string_view>

#include "core/error.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

// What a front end hands a command: the job's state, the observer of its progress,
// and the parameters it gathered before the job started (the tool's own struct, such
// as FilterInput, or the sifter's window for the sifter's commands).
struct CommandContext {
  JobState& job;
  JobProgress& progress;
  std::any params;

  // The parameters as the tool's own type, or null when the front end gave another.
  template <class Params>
  const Params* get() const {
    return std::any_cast<Params>(&params);
  }
};

using CommandHandler = JobResult (*)(CommandContext& context);

// What a front end gathers before it runs a command.
enum class CommandInput {
  None,     // nothing (the desktop's own commands)
  Capture,  // a capture to filter: FilterInput
  Sifter,   // the sifter's window: SiftView*
  Own,      // the tool's own parameter struct, gathered by its dialog or options
};

// One row of the command table that menus, toolbars and the command line all read.
struct Command {
  int32_t number;
  std::string_view name;         // the tool's routine, e.g. "FilterDialogAll"
  std::string_view cliGroup;     // command-line group ("filter"), or the subcommand itself
                                 // when cliName is empty; empty: not on the command line
  std::string_view cliName;      // command-line name within the group ("dialog-all")
  std::string_view description;  // one line for --help and the manual
  CommandHandler handler;        // null: answered by the desktop program alone
  CommandInput input = CommandInput::None;
};

// Zeroes glRecNum, runs the command's handler, zeroes glRecNum again. It is the last
// catcher of errors: a failure comes back as Failed with `error` set, never as an
// exception, and 32755 (the file dialog's cancel) as Cancelled without an error. A
// number without a handler in `table` does nothing (NoCommand).
JobResult RunCommand(int32_t commandNumber, CommandContext& context, std::span<const Command> table);

// The row of `table` for a number, or null.
const Command* FindCommand(std::span<const Command> table, int32_t number);

}  // namespace zv
