// What every subcommand shares: the row of the command table it stands for, running
// its job with a progress bar and Ctrl-C, and turning the result into an exit code.
#pragma once

#include <any>
#include <cstdint>
#include <string>

#include <CLI/CLI.hpp>

#include "core/dispatcher.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv::cli {

// The subcommand of table row `number`: named and described as the table says. A row
// with a group and a name is `GROUP NAME` (the group made on first use); a row with a
// group alone is the subcommand `GROUP`. Throws std::logic_error when the row is not
// on the command line, so that a missing row fails every run of the tests at once.
CLI::App* AddTableCommand(CLI::App& app, int32_t number);

// Runs command `number` on `params` as a job of the command line: the progress bar on
// stderr when it is a terminal, Ctrl-C and SIGTERM raising the interrupt, RunCommand's
// traps. `job` is the caller's, for what the job leaves in it (gsErrNumber...).
JobResult RunCliJob(int32_t number, JobState& job, std::any params);

// The exit code of a result, with what the user must read printed on stderr:
//   Done 0; Refused 2 (its message); ZeroRecords 3 (its message); Failed 4 ("Error
//   number N" and its text, and the file involved); Interrupted 130 ("Interrupted:
//   outputs removed."); Cancelled 0; NoCommand 2.
// `subject` (the input named) is printed under a refusal when it is not empty.
int ExitCodeOf(const JobResult& result, const JobState& job, const std::string& subject = {});

// Prints "Written: FILE" for each file the job kept, on stdout.
void PrintWritten(const JobResult& result);

}  // namespace zv::cli
