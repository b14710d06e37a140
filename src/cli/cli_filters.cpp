// filter dialog-types, dialog-separate and adhoc: the dialogs' fields as options.
#include "cli/cli_filters.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "cli/cli.h"
#include "cli/cli_host.h"
#include "cli/cli_job.h"
#include "core/text.h"
#include "filters/adhoc.h"
#include "filters/dialog_pick.h"
#include "filters/dialog_separate.h"

namespace zv::cli {

namespace {

constexpr int32_t kAdHoc = 1;
constexpr int32_t kDialogTypes = 200;
constexpr int32_t kDialogSeparate = 300;

// What the three subcommands read from the command line.
struct Options {
  std::string capture;
  std::string outDir;
  std::vector<std::string> types;
  std::string begin, end;
  bool endGiven = false;
};

bool outDirFound(const std::string& outDir) {
  if (outDir.empty() || std::filesystem::is_directory(outDir)) return true;
  std::cerr << "Output directory not found: " << outDir << '\n';
  return false;
}

// A refusal before the job: the dialog's message, exit 2.
int refuse(const Message& message) {
  PrintMessage(message);
  return kExitUsage;
}

// What every filter prints when it is done, with one pair of names per record file.
void printDone(const JobResult& result, const std::string& capture) {
  std::cout << "Search File Unaltered: " << capture << '\n';
  for (const std::string& file : result.files) {
    const std::string ext = file.size() >= 4 ? file.substr(file.size() - 4) : std::string();
    if (ext == ".PRO") std::cout << "Records Saved To: " << file << '\n';
    if (ext == ".NDX") std::cout << "Index Saved To: " << file << '\n';
  }
  std::cout << "Records: " << result.records << '\n' << "Elapsed: " << result.elapsed << '\n';
}

template <class Params>
int run(int32_t number, const Params& params) {
  JobState job;
  const JobResult result = RunCliJob(number, job, params);
  if (result.outcome == JobOutcome::Done) printDone(result, params.input.gsInFile);
  return ExitCodeOf(result, job, params.input.gsInFile);
}

// A type as the dialog's key rule leaves it: in capitals.
std::vector<std::string> upperCased(const std::vector<std::string>& types) {
  std::vector<std::string> out;
  for (const std::string& t : types) out.push_back(UCase(t));
  return out;
}

int runTypes(const Options& o) {
  if (!outDirFound(o.outDir)) return kExitUsage;
  const std::vector<std::string> types = upperCased(o.types);
  Message refusal;
  if (!CheckTypes(types, refusal)) return refuse(refusal);
  PikTypesParams params{{o.capture, o.outDir}, {}};
  for (std::size_t k = 0; k < types.size(); ++k) params.types[k] = types[k];
  return run(kDialogTypes, params);
}

int runSeparate(const Options& o) {
  if (!outDirFound(o.outDir)) return kExitUsage;
  SepTypesParams params{{o.capture, o.outDir}, {}};
  for (const std::string& pair : o.types) {
    const std::size_t eq = pair.find('=');
    if (eq == std::string::npos) {
      std::cerr << "--type takes TYPE=NAME: " << pair << '\n';
      return kExitUsage;
    }
    params.outputs.push_back({UCase(pair.substr(0, eq)), pair.substr(eq + 1)});
  }
  JobState probe;
  probe.outDir = o.outDir;
  Message refusal;
  if (!CheckSepOutputs(probe, params, refusal)) return refuse(refusal);
  return run(kDialogSeparate, params);
}

int runAdHoc(const Options& o) {
  if (!outDirFound(o.outDir)) return kExitUsage;
  // Every run starts with gsPrevLine empty, as the desktop's first filter does: empty
  // lines inside records are dropped.
  const AdHocParams params{{o.capture, o.outDir}, o.begin, o.end, o.endGiven};
  return run(kAdHoc, params);
}

}  // namespace

void AddFilterCommands(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<Options>();
  const auto common = [options](CLI::App* sub) {
    sub->add_option("CAPTURE", options->capture, "The capture file to filter (never changed)")->required();
    sub->add_option("--out-dir", options->outDir, "Folder for the outputs (default: the current directory)");
  };

  CLI::App* types = AddTableCommand(app, kDialogTypes);
  common(types);
  types->add_option("--type", options->types, "A type to keep, as 3,AB (1 to 5 of them, each up to 10 characters)")
      ->required()
      ->allow_extra_args(false);
  types->callback([options, &exitCode] { exitCode = runTypes(*options); });

  CLI::App* separate = AddTableCommand(app, kDialogSeparate);
  common(separate);
  separate->add_option("--type", options->types, "TYPE=NAME: records of TYPE to NAME.PRO and NAME.NDX (1 to 5)")
      ->required()
      ->allow_extra_args(false);
  separate->callback([options, &exitCode] { exitCode = runSeparate(*options); });

  CLI::App* adhoc = AddTableCommand(app, kAdHoc);
  common(adhoc);
  // A marker is taken as given, also one that begins with a hyphen (--begin -begin-).
  adhoc->add_option("--begin", options->begin, "The line that begins a record, exactly")->required();
  CLI::Option* end = adhoc->add_option("--end", options->end, "The line that ends a record, exactly");
  adhoc->callback([options, end, &exitCode] {
    options->endGiven = end->count() > 0;
    exitCode = runAdHoc(*options);
  });
}

std::string FilterCommandsHelp() {
  return "  zorvanta-cli filter dialog-types CAPTURE --type T [--type T ...] [--out-dir DIR]\n"
         "      DIALOG: only the records of 1 to 5 types (the format of the label line, as 3,AB; up to 10\n"
         "      characters, put in capitals) to BASE.PRO, BASE.NDX, BASE.FSC\n"
         "  zorvanta-cli filter dialog-separate CAPTURE --type T=NAME [--type T=NAME ...] [--out-dir DIR]\n"
         "      DIALOG: the records of each type to NAME.PRO and NAME.NDX of its own, numbered from 1; BASE.FSC.\n"
         "      A type without records leaves no files; two types may not name the same file\n"
         "  zorvanta-cli filter adhoc CAPTURE --begin MARKER [--end MARKER] [--out-dir DIR]\n"
         "      Any service: a record begins at a line equal to MARKER and, with --end, ends at a line equal to\n"
         "      the end MARKER (markers are taken exactly as given, case and blanks too)\n";
}

}  // namespace zv::cli
