// Running a table command from the command line.
#include "cli/cli_job.h"

#include <iostream>
#include <stdexcept>
#include <unistd.h>

#include "cli/cli.h"
#include "cli/cli_host.h"
#include "commands/command_table.h"

namespace zv::cli {

CLI::App* AddTableCommand(CLI::App& app, int32_t number) {
  const Command* row = FindCommand(CommandTable(), number);
  if (row == nullptr || row->cliGroup.empty())
    throw std::logic_error("command " + std::to_string(number) + " is not on the command line");
  const std::string group(row->cliGroup);
  if (row->cliName.empty()) return app.add_subcommand(group, std::string(row->description));
  CLI::App* parent = nullptr;
  try {
    parent = app.get_subcommand(group);
  } catch (const CLI::OptionNotFound&) {
    parent = app.add_subcommand(group, "");
    parent->require_subcommand(1);
  }
  return parent->add_subcommand(std::string(row->cliName), std::string(row->description));
}

JobResult RunCliJob(int32_t number, JobState& job, std::any params) {
  TerminalProgress progress(isatty(STDERR_FILENO) == 1);
  CommandContext context{job, progress, std::move(params)};
  JobResult result;
  {
    InterruptGuard guard(job);
    result = RunCommand(number, context, CommandTable());
  }
  progress.endProgress();
  return result;
}

int ExitCodeOf(const JobResult& result, const JobState& job, const std::string& subject) {
  switch (result.outcome) {
    case JobOutcome::Done:
    case JobOutcome::Cancelled:
      return kExitDone;
    case JobOutcome::Refused:
      if (result.message) PrintMessage(*result.message);
      if (!subject.empty()) std::cerr << "  (" << subject << ")\n";
      return kExitUsage;
    case JobOutcome::ZeroRecords:
      if (result.message) PrintMessage(*result.message);
      return kExitZeroRecords;
    case JobOutcome::Failed:
      PrintError(*result.error, job);
      return kExitFailed;
    case JobOutcome::Interrupted:
      std::cerr << "Interrupted: outputs removed.\n";
      return kExitInterrupted;
    case JobOutcome::NoCommand:
      break;
  }
  return kExitUsage;
}

void PrintWritten(const JobResult& result) {
  for (const std::string& f : result.files) std::cout << "Written: " << f << '\n';
}

}  // namespace zv::cli
