// fork/exec of the command-line program with its output captured in files.
#include "support/process.h"

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/test_support.h"

namespace zv::test {

namespace {

pid_t spawn(const std::vector<std::string>& args, const std::string& cwd, const std::string& outFile,
            const std::string& errFile, long fileSizeLimit) {
  std::vector<std::string> argvStrings{ZV_CLI_PATH};
  argvStrings.insert(argvStrings.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (auto& a : argvStrings) argv.push_back(a.data());
  argv.push_back(nullptr);
  const pid_t pid = fork();
  if (pid != 0) return pid;
  // child
  if (!cwd.empty() && chdir(cwd.c_str()) != 0) _exit(120);
  const int out = open(outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const int err = open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (out < 0 || err < 0) _exit(121);
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  const int devNull = open("/dev/null", O_RDONLY);
  if (devNull >= 0) dup2(devNull, STDIN_FILENO);
  if (fileSizeLimit >= 0) {
    // Our own two files were opened before the limit; the job's outputs hit it.
    signal(SIGXFSZ, SIG_IGN);
    rlimit lim{static_cast<rlim_t>(fileSizeLimit), static_cast<rlim_t>(fileSizeLimit)};
    setrlimit(RLIMIT_FSIZE, &lim);
  }
  execv(argv[0], argv.data());
  _exit(127);
}

}  // namespace

int WaitCli(pid_t pid) {
  int status = 0;
  while (waitpid(pid, &status, 0) < 0) {
  }
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
  return -1;
}

ProcessResult RunCli(const std::vector<std::string>& args, const ProcessOptions& options) {
  TempDir io;
  const std::string outFile = io.file("stdout"), errFile = io.file("stderr");
  const pid_t pid = spawn(args, options.cwd, outFile, errFile, options.fileSizeLimit);
  ProcessResult r;
  r.exitCode = WaitCli(pid);
  r.out = ReadFile(outFile);
  r.err = ReadFile(errFile);
  return r;
}

pid_t StartCli(const std::vector<std::string>& args, const std::string& cwd) {
  return spawn(args, cwd, cwd + "/cli.stdout", cwd + "/cli.stderr", -1);
}

}  // namespace zv::test

#include <pty.h>

namespace zv::test {

ProcessResult RunCliOnTerminal(const std::vector<std::string>& args, const std::string& cwd) {
  std::vector<std::string> argvStrings{ZV_CLI_PATH};
  argvStrings.insert(argvStrings.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (auto& a : argvStrings) argv.push_back(a.data());
  argv.push_back(nullptr);
  int master = -1;
  const pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
  if (pid == 0) {
    if (chdir(cwd.c_str()) != 0) _exit(120);
    execv(argv[0], argv.data());
    _exit(127);
  }
  ProcessResult r;
  char buf[4096];
  for (;;) {
    const ssize_t n = read(master, buf, sizeof buf);
    if (n <= 0) break;  // EIO once the child has closed the terminal
    r.out.append(buf, static_cast<std::size_t>(n));
  }
  close(master);
  r.exitCode = WaitCli(pid);
  return r;
}

int InterruptCliOnceItWrites(const std::vector<std::string>& args, const std::string& cwd, const std::string& watched,
                             const std::function<void(int copies)>& writeInput, int copies) {
  for (int tries = 0; tries < 4; ++tries, copies *= 4) {
    writeInput(copies);
    const pid_t pid = StartCli(args, cwd);
    while (!FileExists(watched) && waitpid(pid, nullptr, WNOHANG) == 0) usleep(200);
    kill(pid, SIGINT);
    const int code = WaitCli(pid);
    if (code != 0) return code;
  }
  return 0;
}

}  // namespace zv::test
