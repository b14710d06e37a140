// What the benchmark programs share: their settings from the environment, the plain
// line reads they judge the program against, and the running of each case in a child
// process of its own, timed by Google Benchmark, so that the peak resident memory
// wait4() reports for the child belongs to that case alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

namespace zv::bench {

inline constexpr double kMiB = 1024.0 * 1024.0;

// A positive whole number from the environment, or `fallback` when it is unset or not one.
int64_t EnvInt(const char* name, int64_t fallback);
// Set, and not "0".
bool EnvFlag(const char* name);

// The size of a file, -1 when it cannot be had.
int64_t FileBytes(const std::string& path);

// Lines and characters of one read of a file, for the check and for DoNotOptimize.
struct LineTally {
  int64_t lines = 0;
  std::size_t chars = 0;
};
// std::getline from an ifstream: the plain line read most C++ code would write.
LineTally TallyGetline(const std::string& path);
// zv::LineReader, the program's own line read; with `clean`, LowAscii and RemCtrl on
// every line as the filters apply them.
LineTally TallyLineReader(const std::string& path, bool clean = false);

// Registers a case for RunCaseInChild: one iteration a repetition, wall-clock time.
// With `processCpu` the CPU time is that of every thread of the process (a case whose
// job hands work to worker threads), else that of the case's own thread.
void RegisterCase(const std::string& name, void (*fn)(benchmark::State&), int64_t repetitions,
                  bool processCpu = false);

struct CaseResult {
  std::string name;
  std::vector<double> seconds;     // wall clock, one per repetition
  std::vector<double> cpuSeconds;  // CPU time of the same repetitions
  long peakKb = 0;                 // the child's ru_maxrss
  std::string error;
  int64_t bytes = 0;  // of the file the case reads, for mbPerSecond()

  bool ok() const { return error.empty() && !seconds.empty(); }
  double best() const;
  double median() const;
  // CPU time is the figure to compare when other work shares the machine.
  double bestCpu() const;
  double mbPerSecond() const { return static_cast<double>(bytes) / kMiB / best(); }
};

// Runs the registered case `name` in a forked child and collects its times, its error
// and its peak resident memory. The child leaves by _exit: the parent owns the files.
CaseResult RunCaseInChild(const std::string& name);

// The successful result whose name ends with `nameEnd`, or null.
const CaseResult* FindCase(const std::vector<CaseResult>& results, std::string_view nameEnd);

// One line of the targets block: the figure, its target and "met" or "MISSED".
void PrintVerdict(const char* what, double value, const char* unit, const char* target, bool met);

// The first lines of a program's output: its title with the build type, and a note
// when that is not a Release build.
void PrintBanner(const char* title);

// A new folder named `prefix` and six random characters, in ZV_BENCH_DIR, $TMPDIR or
// /tmp. Says why on stderr and returns "" when it cannot be made.
std::string MakeBenchDir(const char* prefix);

// Resident memory of this process now, in KB.
long CurrentRssKb();

}  // namespace zv::bench
