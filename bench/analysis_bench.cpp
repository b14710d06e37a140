// Query by Form, and Rank, Sort and Diction without size limits, beside a plain line read
// of the same 1-million-record .PRO; their peak memory against their own tables; and the
// program's exchange sort on 32,767 records.
//
// A plain main() in the manner of records_bench: it makes the files first (a DIALOG
// capture filtered by FilterDialogAll into a .PRO of at least ZV_BENCH_RECORDS records,
// indexed by BuildIndex, and a .PRO of 32,767 tagged records), then runs every case in
// a child process of its own, timed by Google Benchmark, so that the peak resident
// memory wait4() reports belongs to that case.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include "analysis/diction.h"
#include "analysis/exchange_sort.h"
#include "analysis/qbf.h"
#include "analysis/rank.h"
#include "analysis/sort.h"
#include "bench_harness.h"
#include "core/input_file.h"
#include "core/line_reader.h"
#include "core/text_out.h"
#include "filters/dialog_all.h"
#include "records/build_index.h"
#include "records/record_file.h"
#include "synthetic_capture.h"

namespace {

using namespace zv::bench;

constexpr double kQueryRatio = 2.0;  // query within 2 times the plain read
constexpr double kLargeRatio = 3.0;  // rank, sort and diction without limits within 3 times
constexpr int32_t kExchangeRecords = 32767;

struct RecordFile {
  std::string pro, ndx, stem;
  int64_t bytes = 0, lines = 0, records = 0;
  zv::RecordFileChoice choice() const { return {ndx, pro, ndx, stem}; }
};

struct Setup {
  std::string dir;
  RecordFile large, exchange;
  int64_t distinctWords = 0;  // of the large .PRO, from a run of diction
};
Setup gSetup;

void count(RecordFile& f) {
  zv::LineReader in(f.pro);
  std::string line;
  while (in.readLine(line)) {
    ++f.lines;
    if (line.starts_with("Record - ")) ++f.records;
  }
  f.bytes = FileBytes(f.pro);
}

void index(const RecordFile& f) {
  zv::JobState job;
  job.gsProFile = f.pro;
  job.gsIndexFile = f.ndx;
  if (!zv::BuildIndex(job, zv::NoProgress()).done()) throw std::runtime_error("no index of " + f.pro);
}

// A .PRO from FilterDialogAll on a synthetic DIALOG capture of `captureBytes`.
RecordFile filteredPro(const std::string& stem, int64_t captureBytes) {
  const std::string capture = gSetup.dir + "/" + stem + ".log";
  WriteSyntheticCapture(capture, captureBytes);
  zv::JobState job;
  job.outDir = gSetup.dir;
  if (zv::FilterDialogAll(job, zv::NoProgress(), zv::FilterInput{capture, gSetup.dir}).outcome !=
      zv::JobOutcome::Done)
    throw std::runtime_error("the filter did not finish");
  std::filesystem::remove(capture);
  std::filesystem::remove(gSetup.dir + "/" + stem + ".FSC");
  RecordFile f{gSetup.dir + "/" + stem + ".PRO", gSetup.dir + "/" + stem + ".NDX", gSetup.dir + "/" + stem};
  count(f);
  return f;
}

// 32,767 records, each with an author line of a random name: the exchange sort's case.
RecordFile taggedPro(const std::string& stem) {
  RecordFile f{gSetup.dir + "/" + stem + ".PRO", gSetup.dir + "/" + stem + ".NDX", gSetup.dir + "/" + stem};
  {
    zv::TextOut out(f.pro);
    std::mt19937 random(17);
    for (int32_t k = 1; k <= kExchangeRecords; ++k) {
      std::string name;
      for (auto i = 0u, n = 4 + static_cast<unsigned>(random() % 12); i < n; ++i) name += static_cast<char>((i ? 'a' : 'A') + random() % 26);
      out.line("Record - " + std::to_string(k));
      out.blank();
      out.line("AU - " + name + ", " + static_cast<char>('A' + random() % 26) + ".");
      out.line("TI - " + std::string(40 + random() % 60, 't'));
      out.blank();
    }
    out.close();
  }
  index(f);
  count(f);
  return f;
}

void require(benchmark::State& state, const zv::JobResult& r, const char* what) {
  if (r.outcome != zv::JobOutcome::Done)
    state.SkipWithError((std::string(what) + " did not finish" + (r.error ? ": " + r.error->text() : "")).c_str());
}

// --- cases -------------------------------------------------------------------------

void readGetline(benchmark::State& state) {
  for (auto _ : state) {
    const LineTally read = TallyGetline(gSetup.large.pro);
    benchmark::DoNotOptimize(read.chars);
    if (read.lines != gSetup.large.lines) state.SkipWithError("not every line read");
  }
}

void query(benchmark::State& state) {
  zv::QbfParams params;
  params.file = gSetup.large.choice();
  params.boxes[0] = "peat*";
  params.boxes[1] = "bog*";
  params.boxes[3] = "water";
  params.boxes[6] = "grazing";
  params.queryFile = gSetup.dir + "/hits.QRY";
  for (auto _ : state) {
    zv::JobState job;
    const zv::JobResult r = zv::RunQuery(job, zv::NoProgress(), params);
    state.PauseTiming();
    require(state, r, "the query");
    std::filesystem::remove(params.queryFile);
    state.ResumeTiming();
  }
}

void rankLarge(benchmark::State& state) {
  zv::RankParams params;
  params.file = gSetup.large.choice();
  params.large = true;
  params.terms = {"peat*", "methane", "water", "", "", ""};
  params.weights = {"3", "5", "1", "", "", ""};
  for (auto _ : state) {
    zv::JobState job;
    const zv::JobResult r = zv::Rank(job, zv::NoProgress(), params);
    state.PauseTiming();
    require(state, r, "rank");
    state.ResumeTiming();
  }
}

void sortLarge(benchmark::State& state) {
  for (auto _ : state) {
    zv::JobState job;
    const zv::JobResult r =
        zv::SortRecords(job, zv::NoProgress(), zv::SortParams{gSetup.large.choice(), "  Languages:", true});
    state.PauseTiming();
    require(state, r, "sort");
    state.ResumeTiming();
  }
}

void dictionLarge(benchmark::State& state) {
  const zv::DictionParams params{gSetup.large.pro, gSetup.dir + "/none.LST", true, std::nullopt};
  for (auto _ : state) {
    zv::JobState job;
    const zv::JobResult r = zv::Diction(job, zv::NoProgress(), params);
    state.PauseTiming();
    require(state, r, "diction");
    state.ResumeTiming();
  }
}

// The program's exchange sort alone, on the keys of 32,767 records.
struct Key {
  int32_t recNum = 0;
  std::string key;
};
std::vector<Key> exchangeKeys() {
  std::vector<Key> keys(kExchangeRecords + 1);
  std::mt19937 random(23);
  for (int32_t k = 1; k <= kExchangeRecords; ++k) {
    keys[static_cast<std::size_t>(k)].recNum = k;
    for (auto i = 0u, n = 4 + static_cast<unsigned>(random() % 12); i < n; ++i)
      keys[static_cast<std::size_t>(k)].key += static_cast<char>((i ? 'a' : 'A') + random() % 26);
  }
  return keys;
}

void exchangeSortKeys(benchmark::State& state) {
  const std::vector<Key> keys = exchangeKeys();
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<Key> work = keys;
    state.ResumeTiming();
    zv::GapExchangeSort(work, kExchangeRecords, [](const Key& a, const Key& b) { return a.key > b.key; });
    benchmark::DoNotOptimize(work.data());
  }
}

void stableSortKeys(benchmark::State& state) {
  const std::vector<Key> keys = exchangeKeys();
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<Key> work = keys;
    state.ResumeTiming();
    zv::StableSortFrom1(work, kExchangeRecords, [](const Key& a, const Key& b) { return a.key < b.key; });
    benchmark::DoNotOptimize(work.data());
  }
}

// The whole Sort job within the limits, on 32,767 records.
void exchangeSortJob(benchmark::State& state) {
  for (auto _ : state) {
    zv::JobState job;
    const zv::JobResult r =
        zv::SortRecords(job, zv::NoProgress(), zv::SortParams{gSetup.exchange.choice(), "AU -", false});
    state.PauseTiming();
    require(state, r, "the sort within limits");
    state.ResumeTiming();
  }
}

struct Case {
  const char* name;
  void (*fn)(benchmark::State&);
};

constexpr Case kCases[] = {
    {"read/getline", readGetline},
    {"query", query},
    {"rank/large", rankLarge},
    {"sort/large", sortLarge},
    {"diction/large", dictionLarge},
    {"exchange/sort_keys_32767", exchangeSortKeys},
    {"exchange/stable_keys_32767", stableSortKeys},
    {"exchange/sort_job_32767", exchangeSortJob},
};

// What each tool keeps in memory: one element per record, or per distinct word.
// Rank: the record number and total (8 bytes), where the record is written from and
// what it becomes (24), and the writer's note of its run and place (16). Sort: the
// record number and 75-character key (80), the same 24 and 16. Diction: a word's
// entry (32), its slots in the hashed index, at most half full (16), and its element
// of the ordered list (24).
double tableMb(const std::string& name) {
  const double records = static_cast<double>(gSetup.large.records);
  if (name == "rank/large") return records * (8 + 24 + 16) / kMiB;
  if (name == "sort/large") return records * (80 + 24 + 16) / kMiB;
  if (name == "diction/large") return static_cast<double>(gSetup.distinctWords) * (32 + 16 + 24) / kMiB;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::regex only(argc > 1 ? argv[1] : ".*");
  const int64_t reps = EnvInt("ZV_BENCH_REPS", 3);
  const int64_t records = EnvInt("ZV_BENCH_RECORDS", 1'000'000);
  for (const Case& c : kCases) RegisterCase(c.name, c.fn, reps);

  gSetup.dir = MakeBenchDir("zv-analysis-bench-");
  if (gSetup.dir.empty()) return 2;
  PrintBanner("content analysis benchmark");
  if (records < 1'000'000) std::printf("  note: fewer than 1,000,000 records are for trying the benchmark\n");
  std::fflush(stdout);
  const auto setupStart = std::chrono::steady_clock::now();
  try {
    // A pilot capture gives the records per byte; the large one is made a little
    // bigger than that says, and grown until it holds enough records.
    const RecordFile pilot = filteredPro("pilot", 8 * 1024 * 1024);
    std::filesystem::remove(pilot.pro);
    std::filesystem::remove(pilot.ndx);
    const double bytesPerRecord = 8.0 * 1024 * 1024 / static_cast<double>(std::max<int64_t>(pilot.records, 1));
    for (auto capture = static_cast<int64_t>(bytesPerRecord * static_cast<double>(records) * 1.03);
         gSetup.large.records < records; capture = capture * 21 / 20)
      gSetup.large = filteredPro("large", capture);
    std::filesystem::remove(gSetup.large.ndx);
    index(gSetup.large);
    gSetup.exchange = taggedPro("exchange");
    zv::JobState job;
    const zv::JobResult words = zv::Diction(
        job, zv::NoProgress(), zv::DictionParams{gSetup.large.pro, gSetup.dir + "/none.LST", true, std::nullopt});
    gSetup.distinctWords = words.records;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    std::filesystem::remove_all(gSetup.dir);
    return 2;
  }
  std::printf("  files made in %.1f s\n",
              std::chrono::duration<double>(std::chrono::steady_clock::now() - setupStart).count());
  std::printf("  large    %s\n           %.1f MB, %lld lines, %lld records, %lld distinct words\n",
              gSetup.large.pro.c_str(), static_cast<double>(gSetup.large.bytes) / kMiB,
              static_cast<long long>(gSetup.large.lines), static_cast<long long>(gSetup.large.records),
              static_cast<long long>(gSetup.distinctWords));
  std::printf("  exchange %s, %lld records\n", gSetup.exchange.pro.c_str(),
              static_cast<long long>(gSetup.exchange.records));
  std::printf("  %lld repetitions per case, each case in its own process; MB = 2^20 bytes\n\n",
              static_cast<long long>(reps));

  std::printf("  %-28s %9s %9s %10s %10s %10s\n", "case", "best s", "best CPU", "MB/s", "peak RSS", "table");
  std::vector<CaseResult> results;
  bool failed = false;
  for (const Case& c : kCases) {
    if (!std::regex_search(c.name, only)) continue;
    results.push_back(RunCaseInChild(c.name));
    const CaseResult& r = results.back();
    if (!r.ok()) {
      failed = true;
      std::printf("  %-28s FAILED: %s\n", r.name.c_str(), r.error.c_str());
      continue;
    }
    const bool onLarge = !r.name.starts_with("exchange/");
    std::printf("  %-28s %9.3f %9.3f %10.0f %7.1f MB %7.1f MB\n", r.name.c_str(), r.best(), r.bestCpu(),
                onLarge ? static_cast<double>(gSetup.large.bytes) / kMiB / r.best() : 0.0,
                static_cast<double>(r.peakKb) / 1024.0, tableMb(r.name));
    std::fflush(stdout);
  }

  // The machine is shared: CPU time is the figure that other work does not disturb;
  // the wall clock is shown beside it.
  std::printf("\n  targets (best repetition of each case, CPU time; wall clock in brackets)\n");
  const CaseResult* plain = FindCase(results, "read/getline");
  auto ratio = [&](const char* name, double target) {
    const CaseResult* r = FindCase(results, name);
    if (!r || !plain) return;
    const double times = r->bestCpu() / plain->bestCpu();
    const std::string what = std::string(name) + " / std::getline (" +
                             std::to_string(r->best() / plain->best()).substr(0, 4) + ")";
    const std::string want = "<= " + std::to_string(static_cast<int>(target));
    PrintVerdict(what.c_str(), times, "", want.c_str(), times <= target);
  };
  ratio("query", kQueryRatio);
  ratio("rank/large", kLargeRatio);
  ratio("sort/large", kLargeRatio);
  ratio("diction/large", kLargeRatio);
  // Memory: the plain read's own peak, the tool's table with room for a sort's copy of
  // it, and a little more; never anything like the file.
  for (const char* name : {"query", "rank/large", "sort/large", "diction/large"}) {
    const CaseResult* r = FindCase(results, name);
    if (!r || !plain) continue;
    const double grow = static_cast<double>(r->peakKb - plain->peakKb) / 1024.0;
    const double bound = 2.5 * tableMb(name) + 32.0;
    const std::string what = std::string(name) + " peak RSS over the plain read";
    const std::string want = "<= " + std::to_string(static_cast<int>(bound)) + " MB";
    PrintVerdict(what.c_str(), grow, "MB", want.c_str(), grow <= bound);
  }
  if (const CaseResult* r = FindCase(results, "exchange/sort_keys_32767"))
    std::printf("  the exchange sort on 32,767 keys: %.3f s (the stable sort: %.3f s)\n", r->best(),
                FindCase(results, "exchange/stable_keys_32767") ? FindCase(results, "exchange/stable_keys_32767")->best()
                                                                : 0.0);
  if (const CaseResult* r = FindCase(results, "exchange/sort_job_32767"))
    std::printf("  Sort within the limits on 32,767 records, reading and writing included: %.3f s\n", r->best());

  // ZV_BENCH_KEEP leaves the files, to run the tools on them by hand.
  std::error_code ec;
  if (EnvFlag("ZV_BENCH_KEEP"))
    std::printf("  kept: %s\n", gSetup.dir.c_str());
  else
    std::filesystem::remove_all(gSetup.dir, ec);
  benchmark::Shutdown();
  return failed ? 1 : 0;
}
