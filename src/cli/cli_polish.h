// The command line's polishing tools: renumber, delete-labels, undelimit,
// replace-labels, line-breaks, page-breaks, divide and cover.
#pragma once

#include <CLI/CLI.hpp>

namespace zv::cli {

void AddPolishCommands(CLI::App& app, int& exitCode);

}  // namespace zv::cli
