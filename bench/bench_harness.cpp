#include "bench_harness.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "core/line_reader.h"
#include "core/text.h"

#ifndef ZV_BENCH_BUILD_TYPE
#define ZV_BENCH_BUILD_TYPE "unknown"
#endif

namespace zv::bench {

int64_t EnvInt(const char* name, int64_t fallback) {
  const char* v = std::getenv(name);
  if (!v || !*v) return fallback;
  char* end = nullptr;
  const long long n = std::strtoll(v, &end, 10);
  return (end && *end == '\0' && n > 0) ? n : fallback;
}

bool EnvFlag(const char* name) {
  const char* v = std::getenv(name);
  return v && *v && std::strcmp(v, "0") != 0;
}

int64_t FileBytes(const std::string& path) {
  std::error_code ec;
  const auto n = std::filesystem::file_size(path, ec);
  return ec ? -1 : static_cast<int64_t>(n);
}

LineTally TallyGetline(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::string line;
  LineTally tally;
  while (std::getline(in, line)) {
    ++tally.lines;
    tally.chars += line.size();
  }
  return tally;
}

LineTally TallyLineReader(const std::string& path, bool clean) {
  static constexpr char kNul[1] = {'\0'};
  zv::LineReader in(path);
  std::string line;
  LineTally tally;
  while (in.readLine(line)) {
    if (clean) {
      zv::LowAscii(line);
      zv::RemCtrl(line, std::string_view(kNul, 1));
    }
    ++tally.lines;
    tally.chars += line.size();
  }
  return tally;
}

void RegisterCase(const std::string& name, void (*fn)(benchmark::State&), int64_t repetitions, bool processCpu) {
  benchmark::internal::Benchmark* b =
      benchmark::RegisterBenchmark(name.c_str(), fn)->Iterations(1)->Repetitions(static_cast<int>(repetitions));
  if (processCpu) b->MeasureProcessCPUTime();
  b->UseRealTime();
}

double CaseResult::best() const { return *std::min_element(seconds.begin(), seconds.end()); }

double CaseResult::median() const {
  std::vector<double> s = seconds;
  std::sort(s.begin(), s.end());
  return s.size() % 2 ? s[s.size() / 2] : (s[s.size() / 2 - 1] + s[s.size() / 2]) / 2;
}

double CaseResult::bestCpu() const { return *std::min_element(cpuSeconds.begin(), cpuSeconds.end()); }

namespace {

// Keeps the seconds of each repetition; prints nothing.
class CollectingReporter final : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      if (run.error_occurred) {
        error = run.error_message.empty() ? "failed" : run.error_message;
        continue;
      }
      const auto iterations = static_cast<double>(std::max<int64_t>(run.iterations, 1));
      seconds.push_back(run.real_accumulated_time / iterations);
      cpuSeconds.push_back(run.cpu_accumulated_time / iterations);
    }
  }
  std::vector<double> seconds;
  std::vector<double> cpuSeconds;
  std::string error;
};

void writeAll(int fd, const std::string& text) {
  for (std::size_t at = 0; at < text.size();) {
    const ssize_t w = ::write(fd, text.data() + at, text.size() - at);
    if (w <= 0) break;
    at += static_cast<std::size_t>(w);
  }
}

std::string readAll(int fd) {
  std::string text;
  char buf[4096];
  ssize_t n;
  while ((n = ::read(fd, buf, sizeof buf)) > 0 || (n < 0 && errno == EINTR))
    if (n > 0) text.append(buf, static_cast<std::size_t>(n));
  return text;
}

}  // namespace

CaseResult RunCaseInChild(const std::string& name) {
  CaseResult result;
  result.name = name;
  int fds[2];
  if (::pipe(fds) != 0) {
    result.error = std::strerror(errno);
    return result;
  }
  std::fflush(nullptr);
  const pid_t pid = ::fork();
  if (pid < 0) {
    result.error = std::strerror(errno);
    ::close(fds[0]);
    ::close(fds[1]);
    return result;
  }
  if (pid == 0) {
    ::close(fds[0]);
    CollectingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter, "^" + name + "(/|$)");
    std::string report;
    for (std::size_t i = 0; i < reporter.seconds.size(); ++i)
      report += "s " + std::to_string(reporter.seconds[i]) + " " + std::to_string(reporter.cpuSeconds[i]) + "\n";
    if (!reporter.error.empty()) report += "e " + reporter.error + "\n";
    writeAll(fds[1], report);
    ::_exit(0);  // no destructors or atexit handlers: the parent owns the temporary folder
  }
  ::close(fds[1]);
  const std::string report = readAll(fds[0]);
  ::close(fds[0]);
  int status = 0;
  struct rusage usage {};
  while (::wait4(pid, &status, 0, &usage) < 0 && errno == EINTR) {
  }
  result.peakKb = usage.ru_maxrss;
  std::size_t at = 0;
  while (at < report.size()) {
    std::size_t end = report.find('\n', at);
    if (end == std::string::npos) end = report.size();
    const std::string lineText = report.substr(at, end - at);
    if (lineText.starts_with("s ")) {
      std::size_t used = 0;
      result.seconds.push_back(std::stod(lineText.substr(2), &used));
      result.cpuSeconds.push_back(std::stod(lineText.substr(2 + used)));
    }
    if (lineText.starts_with("e ")) result.error = lineText.substr(2);
    at = end + 1;
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) result.error = "the case's process failed";
  if (result.error.empty() && result.seconds.empty()) result.error = "no timing";
  return result;
}

const CaseResult* FindCase(const std::vector<CaseResult>& results, std::string_view nameEnd) {
  for (const auto& r : results)
    if (r.name.ends_with(nameEnd) && r.ok()) return &r;
  return nullptr;
}

void PrintVerdict(const char* what, double value, const char* unit, const char* target, bool met) {
  std::printf("  %-44s %9.2f %-5s %-16s %s\n", what, value, unit, target, met ? "met" : "MISSED");
}

void PrintBanner(const char* title) {
  std::printf("Zorvanta %s (%s build)\n", title, ZV_BENCH_BUILD_TYPE);
  if (std::string_view(ZV_BENCH_BUILD_TYPE) != "Release")
    std::printf("  note: not a Release build; the figures do not stand for the program\n");
}

std::string MakeBenchDir(const char* prefix) {
  const char* tmp = std::getenv("ZV_BENCH_DIR");
  if (!tmp || !*tmp) tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/" + prefix + "XXXXXX";
  if (!::mkdtemp(pattern.data())) {
    std::fprintf(stderr, "cannot make a folder from %s: %s\n", pattern.c_str(), std::strerror(errno));
    return {};
  }
  return pattern;
}

long CurrentRssKb() {
  std::FILE* f = std::fopen("/proc/self/statm", "r");
  long pages = 0, resident = 0;
  if (f) {
    if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2) resident = 0;
    std::fclose(f);
  }
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace zv::bench
