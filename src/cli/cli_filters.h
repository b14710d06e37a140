// The command line's filters that take more than a capture: types, separate files, markers.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace zv::cli {

// filter dialog-types, filter dialog-separate and filter adhoc, made from the
// command table's rows 200, 300 and 1.
void AddFilterCommands(CLI::App& app, int& exitCode);

// Help text of those commands, for the program's footer.
std::string FilterCommandsHelp();

}  // namespace zv::cli
