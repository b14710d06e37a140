// The command line's record file commands: index, keep, order.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace zv::cli {

// zorvanta-cli index FILE.PRO; keep FILE.PRO|FILE.NDX --records LIST --to KEEPFILE;
// order FILE.PRO|FILE.NDX --order LIST. Their exit code goes to `exitCode`.
void AddRecordCommands(CLI::App& app, int& exitCode);

// Help text of the three commands, for the program's footer.
std::string RecordCommandsHelp();

}  // namespace zv::cli
