// The command line's content tools: query, rank, sort, diction.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace zv::cli {

// Adds the subcommands query, rank, sort and diction; each sets `exitCode`.
void AddAnalysisCommands(CLI::App& app, int& exitCode);

// The folder of the running program, where OMIT.LST is looked for.
std::string ProgramFolder();

}  // namespace zv::cli
