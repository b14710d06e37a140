// Running the command-line program as a child process, as a script would.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zv::test {

struct ProcessResult {
  int exitCode = -1;  // the exit status, or 128 + signal number
  std::string out;
  std::string err;
};

struct ProcessOptions {
  std::string cwd;            // empty: the test's own
  long fileSizeLimit = -1;    // bytes; writes past it fail as on a full disk
};

// Runs zorvanta-cli with `args` and waits for it.
ProcessResult RunCli(const std::vector<std::string>& args, const ProcessOptions& options = {});

// Starts zorvanta-cli with `args` without waiting; stdout and stderr go to files in
// `cwd`. Wait with WaitCli.
pid_t StartCli(const std::vector<std::string>& args, const std::string& cwd);
int WaitCli(pid_t pid);

// Runs zorvanta-cli in `cwd` and sends it Ctrl-C as soon as `watched` appears there.
// `writeInput(copies)` writes the input before each try; a machine fast enough to
// finish first gets four times the copies on the next of four tries. Returns the exit
// code of the first run the signal caught (its stderr in cwd/cli.stderr), or 0.
int InterruptCliOnceItWrites(const std::vector<std::string>& args, const std::string& cwd, const std::string& watched,
                             const std::function<void(int copies)>& writeInput, int copies);

}  // namespace zv::test

namespace zv::test {

// Runs zorvanta-cli in `cwd` on a pseudo-terminal, as a user at a terminal would, and
// returns everything it wrote there (stdout and stderr both).
ProcessResult RunCliOnTerminal(const std::vector<std::string>& args, const std::string& cwd);

}  // namespace zv::test
