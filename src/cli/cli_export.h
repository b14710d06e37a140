// The command line's commands for reference managers: export and dedup.
#pragma once

#include <CLI/CLI.hpp>

namespace zv::cli {

// zorvanta-cli export FILE.PRO|FILE.NDX --format ris|csl-json|csv --to OUT
// zorvanta-cli dedup FILE.PRO [FILE.PRO ...] --to OUT [--report REPORT]
void AddExportCommands(CLI::App& app, int& exitCode);

}  // namespace zv::cli
