// zorvanta-cli: subcommands made from the command table, exit codes, Ctrl-C.
#include "cli/cli.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include "cli/cli_analysis.h"
#include "cli/cli_export.h"
#include "cli/cli_filters.h"
#include "cli/cli_host.h"
#include "cli/cli_job.h"
#include "cli/cli_polish.h"
#include "cli/cli_records.h"
#include "cli/cli_viewer.h"
#include "commands/command_table.h"
#include "core/error.h"
#include "core/files.h"
#include "core/index_rec.h"
#include "core/input_file.h"
#include "records/build_index.h"

namespace zv::cli {

namespace {

int runFilter(const Command& command, const std::string& capture, const std::string& outDir) {
  if (!outDir.empty() && !std::filesystem::is_directory(outDir)) {
    std::error_code ec;
    const bool there = std::filesystem::exists(outDir, ec);
    std::cerr << (there ? "Output directory is a file, not a directory: " : "Output directory not found: ") << outDir
              << '\n';
    return kExitUsage;
  }
  JobState job;
  const JobResult result = RunCliJob(command.number, job, FilterInput{capture, outDir});
  if (result.outcome == JobOutcome::Done) {
    std::cout << "Search File Unaltered: " << capture << '\n'
              << "Records Saved To: " << (result.files.size() > 0 ? result.files[0] : "") << '\n'
              << "Index Saved To: " << (result.files.size() > 1 ? result.files[1] : "") << '\n'
              << "Records: " << result.records << '\n'
              << "Elapsed: " << result.elapsed << '\n';
  }
  return ExitCodeOf(result, job, capture);
}

constexpr std::string_view kNotIndexFileText = "This does not appear to be an index file";

int listIndex(const std::string& path) {
  if (!Exist(path)) {
    PrintMessage({std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)});
    std::cerr << "  (" << path << ")\n";
    return kExitUsage;
  }
  // Any file divides into 277-byte records; one that does not divide is no index
  // (a .PRO named by mistake), and its "records" would be noise.
  if (const int64_t size = FileSize(path); size % static_cast<int64_t>(kIndexRecLen) != 0) {
    PrintMessage({std::string(kFileFormatErrorTitle), std::string(kNotIndexFileText) + " (" + std::to_string(size) +
                                                          " bytes, not a multiple of " + std::to_string(kIndexRecLen) + ")."});
    std::cerr << "  (" << path << ")\n";
    return kExitUsage;
  }
  try {
    for (const IndexRec& r : ReadIndexFile(path)) {
      std::cout << r.recNum << ' ' << r.startByte << ' ' << r.byteLen << ' ' << r.startLine << ' ' << r.endLine
                << ' ' << r.keepFlag;
      const std::string keep = r.keepFileName();
      if (!keep.empty()) std::cout << ' ' << keep;
      std::cout << '\n';
    }
  } catch (const ZvError& e) {
    JobState job;
    job.gsErrNumber = ErrNumberText(e.number());
    job.gsErrText = e.text();
    PrintError(e, job);
    return kExitFailed;
  }
  return kExitDone;
}

}  // namespace

int Main(int argc, char** argv) {
  CLI::App app{"Zorvanta: turns captures of online database searches into numbered record files."};
  app.name("zorvanta-cli");
  app.require_subcommand(1);
  std::string footer = "Commands:\n";
  for (const Command& command : CommandTable()) {
    if (command.cliGroup.empty() || command.handler == nullptr || command.input != CommandInput::Capture) continue;
    footer += "  zorvanta-cli " + std::string(command.cliGroup) + " " + std::string(command.cliName) +
              " CAPTURE [--out-dir DIR]\n      " + std::string(command.description) + "\n";
  }
  footer += FilterCommandsHelp();
  footer += RecordCommandsHelp();
  footer += ViewerCommandsHelp();
  footer +=
      "  zorvanta-cli ndx FILE.NDX\n"
      "      Print an index, one record per line: recNum startByte byteLen startLine endLine keepFlag keepFile\n\n"
      "Outputs are named after the capture (BASE.PRO, BASE.NDX, BASE.FSC) and written to the current "
      "directory unless --out-dir is given. The capture itself is never changed.\n"
      "index, keep and order name BASE.NDX, the BASE.PRO of a given index and BASE.ORD in the folder of "
      "FILE; KEEPFILE is taken as given and added to, never replaced. A LIST is record numbers and ranges, "
      "as 4,1,7-9. A .PRO given to keep or order is indexed first, replacing its BASE.NDX. keep first "
      "clears keep marks an earlier sifter session left in the index, and leaves none behind.\n"
      "A progress bar is drawn on stderr when it is a terminal; messages go to stderr.\n"
      "Exit codes: 0 done, 2 usage or refused input, 3 zero records or zero hits, 4 job failed (outputs removed), "
      "130 interrupted (outputs removed).";
  app.footer(footer);

  CLI::App* filter = app.add_subcommand("filter", "Filter a capture into a record file and its index");
  filter->require_subcommand(1);
  std::string capture;
  std::string outDir;
  int exitCode = kExitUsage;
  for (const Command& command : CommandTable()) {
    // The filters that take more than a capture add their own subcommands.
    if (command.input != CommandInput::Capture || command.handler == nullptr) continue;
    CLI::App* sub = AddTableCommand(app, command.number);
    sub->add_option("CAPTURE", capture, "The capture file to filter (never changed)")->required();
    sub->add_option("--out-dir", outDir, "Folder for the outputs (default: the current directory)");
    const Command* c = &command;
    sub->callback([&, c] { exitCode = runFilter(*c, capture, outDir); });
  }

  // Each area of tools adds its own subcommands, made from the command table's rows.
  // (One line per area: AddXxxCommands(app, exitCode), declared in cli_xxx.h.)
  AddRecordCommands(app, exitCode);
  AddFilterCommands(app, exitCode);
  AddAnalysisCommands(app, exitCode);
  AddPolishCommands(app, exitCode);
  AddViewerCommands(app, exitCode);
  AddExportCommands(app, exitCode);

  CLI::App* ndx = app.add_subcommand(
      "ndx", "Print the records of a .NDX index, one per line: recNum startByte byteLen startLine endLine keepFlag keepFile");
  std::string ndxPath;
  ndx->add_option("FILE", ndxPath, "The .NDX file")->required();
  ndx->callback([&] { exitCode = listIndex(ndxPath); });

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    app.exit(e);
    return kExitUsage;
  }
  return exitCode;
}

}  // namespace zv::cli
