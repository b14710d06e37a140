// The command-line front end: every tool in batch, for scripts and tests.
#pragma once

namespace zv::cli {

// Exit codes of zorvanta-cli.
inline constexpr int kExitDone = 0;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitZeroRecords = 3;
inline constexpr int kExitFailed = 4;
inline constexpr int kExitInterrupted = 130;

int Main(int argc, char** argv);

}  // namespace zv::cli
