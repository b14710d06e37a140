// The command line's viewer commands: split.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace zv::cli {

// zorvanta-cli split FILE --at LINE --first OUT1 --second OUT2
void AddViewerCommands(CLI::App& app, int& exitCode);

// Help text of split, for the program's footer.
std::string ViewerCommandsHelp();

}  // namespace zv::cli
