// split on the command line: the viewer's Split with the line given instead of clicked.
#include "cli/cli_viewer.h"

#include <iostream>
#include <memory>
#include <string>

#include "cli/cli.h"
#include "cli/cli_host.h"
#include "cli/cli_job.h"
#include "core/files.h"
#include "core/input_file.h"
#include "viewer/file_view.h"
#include "viewer/split.h"

namespace zv::cli {

namespace {

int runSplit(const SplitParams& params) {
  if (Exist(params.inFile) == 0) {
    PrintMessage({std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)});
    std::cerr << "  (" << params.inFile << ")\n";
    return kExitUsage;
  }
  if (params.atLine < 1) {
    std::cerr << "--at: the line where the second file begins, from 1.\n";
    return kExitUsage;
  }
  JobState job;
  const JobResult result = RunCliJob(kSplitFile, job, params);
  if (result.done()) PrintWritten(result);
  return ExitCodeOf(result, job, params.inFile);
}

}  // namespace

void AddViewerCommands(CLI::App& app, int& exitCode) {
  auto params = std::make_shared<SplitParams>();
  CLI::App* split = AddTableCommand(app, kSplitFile);
  split->add_option("FILE", params->inFile, "The file to split (never changed)")->required();
  split->add_option("--at", params->atLine, "The line that begins the second file, from 1")->required();
  split->add_option("--first", params->firstFile, "The new file of the lines before it (replaced if it exists)")
      ->required();
  split->add_option("--second", params->secondFile, "The new file of that line and the rest (replaced if it exists)")
      ->required();
  split->footer(
      "Lines 1 to LINE - 1 go to OUT1 and lines LINE to the end to OUT2, each as it stands with a CR LF line end; "
      "a line ends at CR LF, LF or a lone CR, as the viewer counts them. --at 1 gives an empty OUT1, a LINE past "
      "the last an empty OUT2. Existing files of those names are replaced; FILE itself is refused as an output "
      "(exit 2). On Ctrl-C or an error both outputs are removed.");
  split->callback([params, &exitCode] { exitCode = runSplit(*params); });
}

std::string ViewerCommandsHelp() {
  return "  zorvanta-cli split FILE --at LINE --first OUT1 --second OUT2\n"
         "      Lines before LINE to OUT1, LINE and the rest to OUT2, as the viewer's Split; FILE is never changed\n";
}

}  // namespace zv::cli
