// BuildIndex beside a plain line read of the same .PRO, its peak memory at two file
// sizes, and random record access through the index.
//
// A plain main() in the manner of filter_bench: it makes the files first (a DIALOG
// capture filtered by FilterDialogAll into a .PRO of at least ZV_BENCH_PRO_MB, a small
// .PRO for the memory comparison, and a .PRO of exactly ZV_BENCH_RECORDS records with
// its index), then runs every case in a child process of its own, timed by Google
// Benchmark, so that the peak resident memory wait4() reports belongs to that case.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include "bench_harness.h"
#include "core/index_rec.h"
#include "core/input_file.h"
#include "core/job_state.h"
#include "core/line_reader.h"
#include "core/text_out.h"
#include "filters/dialog_all.h"
#include "records/build_index.h"
#include "records/record_file.h"
#include "synthetic_capture.h"

namespace {

using namespace zv::bench;

constexpr double kTargetGetline = 1.0;   // BuildIndex at least as fast as std::getline of the same file
constexpr double kTargetLineReader = 1.0 / 3.0;  // and at a third of the program's own read at the least
constexpr double kTargetFlatMB = 4.0;    // peak memory of the large and the small build may differ by this

struct RecordFile {
  std::string pro, ndx;
  int64_t bytes = 0, lines = 0, records = 0;
};

struct Setup {
  std::string dir;
  RecordFile large, small, access;
  int64_t accesses = 0;
};
Setup gSetup;

// Lines and labels of a .PRO, counted once at setup to check the cases by.
void count(RecordFile& f) {
  zv::LineReader in(f.pro);
  std::string line;
  while (in.readLine(line)) {
    ++f.lines;
    if (line.starts_with("Record - ")) ++f.records;
  }
  f.bytes = FileBytes(f.pro);
}

// A .PRO from FilterDialogAll on a synthetic DIALOG capture of `captureBytes`.
RecordFile filteredPro(const std::string& stem, int64_t captureBytes) {
  const std::string capture = gSetup.dir + "/" + stem + ".log";
  zv::bench::WriteSyntheticCapture(capture, captureBytes);
  zv::JobState job;
  job.outDir = gSetup.dir;
  if (zv::FilterDialogAll(job, zv::NoProgress(), zv::FilterInput{capture, gSetup.dir}).outcome != zv::JobOutcome::Done)
    throw std::runtime_error("the filter did not finish");
  std::filesystem::remove(capture);
  std::filesystem::remove(gSetup.dir + "/" + stem + ".FSC");
  RecordFile f{gSetup.dir + "/" + stem + ".PRO", gSetup.dir + "/" + stem + ".NDX"};
  std::filesystem::remove(f.ndx);  // each BuildIndex case makes its own
  count(f);
  return f;
}

// A .PRO of exactly `records` records of one to eight text lines, and its index.
RecordFile plainPro(const std::string& stem, int64_t records) {
  RecordFile f{gSetup.dir + "/" + stem + ".PRO", gSetup.dir + "/" + stem + ".NDX"};
  {
    zv::TextOut out(f.pro);
    std::mt19937 random(7);
    const std::string text(120, 't');
    for (int64_t k = 1; k <= records; ++k) {
      out.line("Record - " + std::to_string(k));
      out.blank();
      for (uint32_t i = 0, n = 1 + random() % 8; i < n; ++i) out.line(std::string_view(text).substr(0, 20 + random() % 100));
      out.blank();
    }
    out.close();
  }
  zv::JobState job;
  job.gsProFile = f.pro;
  job.gsIndexFile = f.ndx;
  if (!zv::BuildIndex(job, zv::NoProgress()).done()) throw std::runtime_error("no index of " + f.pro);
  count(f);
  return f;
}

void checkLines(benchmark::State& state, const RecordFile& f, int64_t lines) {
  if (lines != f.lines)
    state.SkipWithError(("read " + std::to_string(lines) + " lines, expected " + std::to_string(f.lines)).c_str());
}

// --- cases -------------------------------------------------------------------------

// The plain buffered line read: std::getline from an ifstream.
void readGetline(benchmark::State& state) {
  for (auto _ : state) {
    const LineTally read = TallyGetline(gSetup.large.pro);
    benchmark::DoNotOptimize(read.chars);
    checkLines(state, gSetup.large, read.lines);
  }
}

// The program's own line read, which BuildIndex is built on.
void readLineReader(benchmark::State& state) {
  for (auto _ : state) {
    const LineTally read = TallyLineReader(gSetup.large.pro);
    benchmark::DoNotOptimize(read.chars);
    checkLines(state, gSetup.large, read.lines);
  }
}

// Progress as frmIndexing takes it: every line and every label reach the host.
struct CountingProgress : zv::JobProgress {
  void lineDone(int32_t n, int32_t) override { lines = n; }
  void recordDone(int32_t n) override { records = n; }
  int32_t lines = 0, records = 0;
};

void buildIndex(benchmark::State& state, const RecordFile& f) {
  for (auto _ : state) {
    zv::JobState job;
    job.gsProFile = f.pro;
    job.gsIndexFile = f.ndx;
    CountingProgress progress;
    const zv::JobResult built = zv::BuildIndex(job, progress);
    state.PauseTiming();
    if (!built.done() || progress.lines != f.lines || progress.records != f.records ||
        FileBytes(f.ndx) != f.records * static_cast<int64_t>(zv::kIndexRecLen))
      state.SkipWithError("BuildIndex did not index every record");
    std::filesystem::remove(f.ndx);
    state.ResumeTiming();
  }
}
void buildIndexLarge(benchmark::State& state) { buildIndex(state, gSetup.large); }
void buildIndexSmall(benchmark::State& state) { buildIndex(state, gSetup.small); }

// Random records, each one index read and one .PRO read. `sifterPath` opens and closes
// both files around every record, as the sifter's display does; otherwise both stay
// open, as a batch tool holds them.
void randomAccess(benchmark::State& state, bool sifterPath) {
  const RecordFile& f = gSetup.access;
  std::mt19937 random(11);
  std::uniform_int_distribution<int32_t> pick(1, static_cast<int32_t>(f.records));
  for (auto _ : state) {
    std::size_t bytes = 0;
    if (sifterPath) {
      for (int64_t i = 0; i < gSetup.accesses; ++i) {
        const int32_t k = pick(random);
        const zv::IndexRec rec = zv::GetIndexRec(f.ndx, k);
        zv::RecordReader pro(f.pro);
        bytes += pro.readDisplay(k, rec).bytes.size();
      }
    } else {
      zv::IndexFile ndx;
      ndx.openRead(f.ndx);
      zv::RecordReader pro(f.pro);
      for (int64_t i = 0; i < gSetup.accesses; ++i) {
        const int32_t k = pick(random);
        bytes += pro.readDisplay(k, ndx.get(k)).bytes.size();
      }
    }
    benchmark::DoNotOptimize(bytes);
    if (bytes == 0) state.SkipWithError("no record text read");
  }
  state.counters["records_per_s"] =
      benchmark::Counter(static_cast<double>(gSetup.accesses) * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
}
void accessSifterPath(benchmark::State& state) { randomAccess(state, true); }
void accessHeldOpen(benchmark::State& state) { randomAccess(state, false); }

// --- the cases in their order ------------------------------------------------

struct Case {
  const char* name;
  void (*fn)(benchmark::State&);
};

constexpr Case kCases[] = {
    {"read/getline", readGetline},          {"read/LineReader", readLineReader},
    {"index/BuildIndex", buildIndexLarge},  {"index/BuildIndex_small", buildIndexSmall},
    {"access/sifter_path", accessSifterPath}, {"access/held_open", accessHeldOpen},
};

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
  const int64_t records = EnvInt("ZV_BENCH_RECORDS", 1'000'000);
  gSetup.accesses = EnvInt("ZV_BENCH_ACCESSES", 200'000);
  for (const Case& c : kCases)
    RegisterCase(c.name, c.fn, reps);

  gSetup.dir = MakeBenchDir("zv-records-bench-");
  if (gSetup.dir.empty()) return 2;

  PrintBanner("record file benchmark");
  if (proMb < 500) std::printf("  note: a .PRO below 500 MB is for trying the benchmark, not for its figures\n");
  std::fflush(stdout);
  const auto setupStart = std::chrono::steady_clock::now();
  try {
    // The filter keeps most of a capture: start a little above the target and grow.
    for (int64_t capture = proMb * 9 / 8; gSetup.large.bytes < proMb * 1024 * 1024; capture = capture * 5 / 4)
      gSetup.large = filteredPro("large", capture * 1024 * 1024);
    gSetup.small = filteredPro("small", std::max<int64_t>(proMb / 8, 16) * 1024 * 1024);
    gSetup.access = plainPro("access", records);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    std::filesystem::remove_all(gSetup.dir);
    return 2;
  }
  std::printf("  files made in %.1f s\n",
              std::chrono::duration<double>(std::chrono::steady_clock::now() - setupStart).count());
  describe("large", gSetup.large);
  describe("small", gSetup.small);
  describe("access", gSetup.access);
  std::printf("  %lld repetitions per case, each case in its own process; MB = 2^20 bytes;\n"
              "  %lld random records per access run\n\n",
              static_cast<long long>(reps), static_cast<long long>(gSetup.accesses));

  std::printf("  %-24s %9s %12s %10s\n", "case", "best s", "rate", "peak RSS");
  std::vector<CaseResult> results;
  bool failed = false;
  for (const Case& c : kCases) {
    if (!std::regex_search(c.name, only)) continue;
    results.push_back(RunCaseInChild(c.name));
    const CaseResult& r = results.back();
    if (!r.ok()) {
      failed = true;
      std::printf("  %-24s FAILED: %s\n", r.name.c_str(), r.error.c_str());
      continue;
    }
    const bool access = r.name.rfind("access/", 0) == 0;
    const RecordFile& f = r.name == "index/BuildIndex_small" ? gSetup.small : gSetup.large;
    const double rate = access ? static_cast<double>(gSetup.accesses) / r.best()
                               : static_cast<double>(f.bytes) / kMiB / r.best();
    std::printf("  %-24s %9.3f %10.0f %s %7.1f MB\n", r.name.c_str(), r.best(), rate, access ? "rec/s" : " MB/s",
                static_cast<double>(r.peakKb) / 1024.0);
    std::fflush(stdout);
  }

  const CaseResult* getlineRead = FindCase(results, "read/getline");
  const CaseResult* lineReader = FindCase(results, "read/LineReader");
  const CaseResult* large = FindCase(results, "index/BuildIndex");
  const CaseResult* small = FindCase(results, "index/BuildIndex_small");
  std::printf("\n  targets (best repetition of each case, wall clock)\n");
  // Speed is the file's bytes over the time, so the speed ratio is the time ratio upside down.
  if (large && getlineRead) {
    const double speed = getlineRead->best() / large->best();
    PrintVerdict("BuildIndex speed / std::getline speed", speed, "", ">= 1.0", speed >= kTargetGetline);
  }
  if (large && lineReader) {
    const double speed = lineReader->best() / large->best();
    PrintVerdict("BuildIndex speed / LineReader speed", speed, "", ">= 0.33", speed >= kTargetLineReader);
  }
  if (large && small) {
    const double grow = static_cast<double>(large->peakKb - small->peakKb) / 1024.0;
    std::printf("  BuildIndex peak RSS: %.1f MB on %.0f MB, %.1f MB on %.0f MB\n",
                static_cast<double>(large->peakKb) / 1024.0, static_cast<double>(gSetup.large.bytes) / kMiB,
                static_cast<double>(small->peakKb) / 1024.0, static_cast<double>(gSetup.small.bytes) / kMiB);
    PrintVerdict("BuildIndex peak RSS growth, large - small", grow, "MB", "< 4 (flat)", grow < kTargetFlatMB);
  }

  std::error_code ec;
  std::filesystem::remove_all(gSetup.dir, ec);
  benchmark::Shutdown();
  return failed ? 1 : 0;
}
