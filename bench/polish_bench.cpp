// The polishing line tools on a large .PRO of TAGed DIALOG records, each beside the
// plain copy of the same file (LineReader in, TextOut out), and their peak memory at
// two file sizes.
//
// A plain main() in the manner of records_bench: it writes the two record files first,
// then runs every case in a child process of its own, timed by Google Benchmark, so
// that the peak resident memory wait4() reports belongs to that case.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include "bench_harness.h"
#include "core/job.h"
#include "core/job_state.h"
#include "core/line_reader.h"
#include "core/text_out.h"
#include "polish/delete_labels.h"
#include "polish/format.h"
#include "polish/renumber.h"
#include "polish/replace_labels.h"
#include "polish/undelimit.h"

namespace {

using namespace zv::bench;

constexpr double kTargetRatio = 2.0;   // each tool within twice the plain copy's time
constexpr double kTargetFlatMB = 4.0;  // peak memory of the large and the small run may differ by this

struct RecordFile {
  std::string pro;
  int64_t bytes = 0, lines = 0, records = 0;
};

struct Setup {
  std::string dir;
  RecordFile large, small;
};
Setup gSetup;

// TAGed DIALOG records as the DIALOG filter leaves them: a label and its empty line,
// fields of two capitals and "- ", delimiters at line ends, fields going on over
// indented lines, a descriptor field with "||", "_" and "^_", runs of blanks, and an
// empty line between records. Always the same bytes for the same size.
RecordFile writeTaggedPro(const std::string& name, int64_t bytes) {
  RecordFile f{gSetup.dir + "/" + name + ".PRO"};
  zv::TextOut out(f.pro);
  std::mt19937 random(5);
  static const char* kWords[] = {"wheat", "rust", "fungal", "resistance", "yield",  "cultivar", "field",
                                 "trial", "spore", "infection", "genetic", "marker", "climate",  "season"};
  const auto words = [&](int n) {
    std::string s;
    for (int i = 0; i < n; ++i) s += (i ? " " : "") + std::string(kWords[random() % 14]);
    return s;
  };
  int64_t written = 0;
  const auto line = [&](const std::string& s) {
    out.line(s);
    written += static_cast<int64_t>(s.size()) + 2;
    ++f.lines;
  };
  while (written < bytes) {
    ++f.records;
    line("Record - " + std::to_string(f.records));
    line("");
    line("TI- " + words(8) + "  of  " + words(3) + "|");
    line("AU- " + words(2) + "^" + words(2) + "^" + words(2) + "|");
    line("SO- " + words(5) + ".  Vol. " + std::to_string(random() % 90) + ":  " + std::to_string(random() % 900) + "||");
    line("DE- " + words(2) + "|" + words(1) + "||" + words(2) + "_" + words(1) + "^_" + words(1) + "|");
    line("    " + words(3) + "|");
    line("AB- " + words(12));
    for (uint32_t i = 0, n = 2 + static_cast<uint32_t>(random() % 6); i < n; ++i) line("      " + words(10) + (i % 3 == 0 ? "   " : ""));
    line("      " + words(6) + "|");
    line("");
  }
  out.close();
  f.bytes = FileBytes(f.pro);
  return f;
}

// --- cases ---------------------------------------------------------------------

void checkLines(benchmark::State& state, const RecordFile& f, int64_t lines) {
  if (lines != f.lines)
    state.SkipWithError(("read " + std::to_string(lines) + " lines, expected " + std::to_string(f.lines)).c_str());
}

// The floor of any tool that reads a file and writes one of the same size.
void copyLines(benchmark::State& state) {
  const std::string out = gSetup.dir + "/copy.txt";
  for (auto _ : state) {
    zv::LineReader in(gSetup.large.pro);
    zv::TextOut copy(out);
    std::string line;
    int64_t lines = 0;
    while (in.readLine(line)) {
      copy.line(line);
      ++lines;
    }
    copy.close();
    checkLines(state, gSetup.large, lines);
  }
  std::filesystem::remove(out);
}

// Progress as the windows take it: every line and every record reach the observer.
struct CountingProgress : zv::JobProgress {
  void lineDone(int32_t line, int32_t) override { lines = line; }
  void recordDone(int32_t record) override { records = record; }
  int32_t lines = 0, records = 0;
};

using Tool = zv::JobResult (*)(zv::JobState&, zv::JobProgress&, const std::string& in, const std::string& out);

zv::JobResult renumber(zv::JobState& s, zv::JobProgress& p, const std::string& in, const std::string& out) {
  return zv::RenumberLabels(s, p, {in, out});
}
zv::JobResult replace(zv::JobState& s, zv::JobProgress& p, const std::string& in, const std::string& out) {
  return zv::ReplaceLabels(s, p, {{in, out}, zv::ReplaceMode::Surround, "", "<record>", "</record>"});
}
zv::JobResult deleteLabels(zv::JobState& s, zv::JobProgress& p, const std::string& in, const std::string& out) {
  return zv::DeleteLabels(s, p, {in, out});
}
zv::JobResult undelimit(zv::JobState& s, zv::JobProgress& p, const std::string& in, const std::string& out) {
  return zv::UndelimitRecords(s, p, {in, out});
}
zv::JobResult lineBreaks(zv::JobState& s, zv::JobProgress& p, const std::string& in, const std::string&) {
  return zv::RemoveLineBreaks(s, p, {in});
}
zv::JobResult pageBreaks(zv::JobState& s, zv::JobProgress& p, const std::string& in, const std::string&) {
  return zv::InsertPageBreaks(s, p, {in, "10"});
}

struct ToolRow {
  const char* key;
  Tool tool;
  const char* ext;  // the output the tool names itself, or null for a named output
};

constexpr ToolRow kTools[] = {
    {"renumber", renumber, nullptr},    {"replace", replace, nullptr},       {"delete", deleteLabels, nullptr},
    {"line_breaks", lineBreaks, ".FMT"}, {"page_breaks", pageBreaks, ".BRK"}, {"undelimit", undelimit, nullptr},
};

void runTool(benchmark::State& state, const ToolRow& row, const RecordFile& f) {
  const std::string stem = f.pro.substr(0, f.pro.size() - 4);
  const std::string out = row.ext ? std::filesystem::path(stem).filename().string() + row.ext : stem + ".out";
  for (auto _ : state) {
    zv::JobState job;
    CountingProgress progress;
    const zv::JobResult result = row.tool(job, progress, f.pro, out);
    state.PauseTiming();
    // Delete reads two lines in the pass of a label and reports the second.
    if (!result.done() || progress.records != f.records || progress.lines != f.lines)
      state.SkipWithError(("the tool did not read every line and label: " + std::to_string(progress.lines) + " lines, " +
                           std::to_string(progress.records) + " records")
                              .c_str());
    std::filesystem::remove(out);
    state.ResumeTiming();
  }
}

template <int Row, bool Small>
void toolCase(benchmark::State& state) {
  runTool(state, kTools[Row], Small ? gSetup.small : gSetup.large);
}

struct Case {
  std::string name;
  void (*fn)(benchmark::State&);
};

template <int... Rows>
std::vector<Case> toolCases(std::integer_sequence<int, Rows...>) {
  std::vector<Case> cases{{"write/copy_lines", copyLines}};
  ((cases.push_back({std::string("polish/") + kTools[Rows].key, toolCase<Rows, false>})), ...);
  ((cases.push_back({std::string("polish/") + kTools[Rows].key + "_small", toolCase<Rows, true>})), ...);
  return cases;
}

void describe(const char* what, const RecordFile& f) {
  std::printf("  %-8s %s\n           %.1f MB, %lld lines, %lld records\n", what, f.pro.c_str(),
              static_cast<double>(f.bytes) / kMiB, static_cast<long long>(f.lines), static_cast<long long>(f.records));
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::regex only(argc > 1 ? argv[1] : ".*");
  const int64_t proMb = EnvInt("ZV_BENCH_PRO_MB", 512);
  const int64_t reps = EnvInt("ZV_BENCH_REPS", 3);
  const std::vector<Case> cases = toolCases(std::make_integer_sequence<int, std::size(kTools)>());
  for (const Case& c : cases) RegisterCase(c.name, c.fn, reps);

  gSetup.dir = MakeBenchDir("zv-polish-bench-");
  if (gSetup.dir.empty()) return 2;
  // The tools that name their output write it in the current directory.
  std::filesystem::current_path(gSetup.dir);

  PrintBanner("polishing tools benchmark");
  if (proMb < 500) std::printf("  note: a .PRO below 500 MB is for trying the benchmark, not for its figures\n");
  std::fflush(stdout);
  const auto setupStart = std::chrono::steady_clock::now();
  gSetup.large = writeTaggedPro("large", proMb * 1024 * 1024);
  gSetup.small = writeTaggedPro("small", std::max<int64_t>(proMb / 8, 16) * 1024 * 1024);
  std::printf("  files made in %.1f s\n",
              std::chrono::duration<double>(std::chrono::steady_clock::now() - setupStart).count());
  describe("large", gSetup.large);
  describe("small", gSetup.small);
  std::printf("  %lld repetitions per case, each case in its own process; MB = 2^20 bytes\n\n",
              static_cast<long long>(reps));

  std::printf("  %-28s %9s %10s %10s\n", "case", "best s", "rate", "peak RSS");
  std::vector<CaseResult> results;
  bool failed = false;
  for (const Case& c : cases) {
    if (!std::regex_search(c.name, only)) continue;
    results.push_back(RunCaseInChild(c.name));
    const CaseResult& r = results.back();
    if (!r.ok()) {
      failed = true;
      std::printf("  %-28s FAILED: %s\n", r.name.c_str(), r.error.c_str());
      continue;
    }
    const RecordFile& f = r.name.ends_with("_small") ? gSetup.small : gSetup.large;
    std::printf("  %-28s %9.3f %6.0f MB/s %7.1f MB\n", r.name.c_str(), r.best(),
                static_cast<double>(f.bytes) / kMiB / r.best(), static_cast<double>(r.peakKb) / 1024.0);
    std::fflush(stdout);
  }

  const CaseResult* copy = FindCase(results, "write/copy_lines");
  std::printf("\n  targets (best repetition of each case, wall clock)\n");
  for (const ToolRow& row : kTools) {
    const CaseResult* large = FindCase(results, std::string("polish/") + row.key);
    const CaseResult* small = FindCase(results, std::string("polish/") + row.key + "_small");
    if (large && copy) {
      const double ratio = large->best() / copy->best();
      PrintVerdict((std::string(row.key) + " time / copy_lines time").c_str(), ratio, "x", "<= 2", ratio <= kTargetRatio);
      // The figure to trust when other work shares the machine.
      const double cpu = large->bestCpu() / copy->bestCpu();
      PrintVerdict((std::string(row.key) + " CPU time / copy_lines CPU").c_str(), cpu, "x", "<= 2", cpu <= kTargetRatio);
    }
    if (large && small) {
      const double grow = static_cast<double>(large->peakKb - small->peakKb) / 1024.0;
      PrintVerdict((std::string(row.key) + " peak RSS growth, large - small").c_str(), grow, "MB", "< 4 (flat)",
                   grow < kTargetFlatMB);
    }
  }

  std::error_code ec;
  std::filesystem::current_path(std::filesystem::temp_directory_path(), ec);
  std::filesystem::remove_all(gSetup.dir, ec);
  benchmark::Shutdown();
  return failed ? 1 : 0;
}
