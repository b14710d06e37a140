// Export Records beside a plain copy of the same million-record .PRO, and Find
// Duplicates on the same million records with planted duplicates: its time, its
// peak memory, and the precision and recall of the groups it reports.
//
// A plain main() in the manner of the other benchmarks: the record set is written
// first, in a child process of its own so that none of the generator's memory is in
// the cases' peak figures; every case then runs in a child process, timed by Google
// Benchmark. The duplicate finder's report of its last repetition is read back and
// its groups compared with the truth the generator kept.
#include <benchmark/benchmark.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench_harness.h"
#include "core/job_state.h"
#include "core/line_reader.h"
#include "core/text_out.h"
#include "record_set.h"
#include "records/export_records.h"
#include "records/find_duplicates.h"

namespace {

using namespace zv::bench;

constexpr double kTargetExportSpeed = 0.5;  // of copy_lines
constexpr double kTargetPrecision = 0.99;
constexpr double kTargetRecall = 0.95;
constexpr double kTargetDedupSeconds = 20.0;
constexpr double kTargetDedupMB = 1024.0;

struct Setup {
  std::string dir;
  RecordSet set;
  std::string report, kept;
};
Setup gSetup;

// --- cases -------------------------------------------------------------------------

// The floor of any tool that reads a file and writes one of the same size: every line
// read with LineReader and written again through TextOut.
void copyLines(benchmark::State& state) {
  for (auto _ : state) {
    zv::LineReader in(gSetup.set.mixedPro);
    zv::TextOut out(gSetup.dir + "/copy.PRO");
    std::string line;
    int64_t lines = 0;
    while (in.readLine(line)) {
      out.line(line);
      ++lines;
    }
    out.close();
    if (lines != gSetup.set.lines) state.SkipWithError("copy_lines did not read every line");
  }
}

void exportAs(benchmark::State& state, zv::ExportFormat format) {
  const std::string out = gSetup.dir + "/export" + std::string(zv::FormatExtension(format));
  for (auto _ : state) {
    zv::JobState job;
    const zv::JobResult r = zv::ExportRecords(job, zv::NoProgress(), zv::ExportParams{gSetup.set.mixedPro, format, out});
    if (!r.done() || r.records != gSetup.set.records)
      state.SkipWithError(("exported " + std::to_string(r.records) + " of " + std::to_string(gSetup.set.records)).c_str());
  }
}
void exportRis(benchmark::State& state) { exportAs(state, zv::ExportFormat::Ris); }
void exportCslJson(benchmark::State& state) { exportAs(state, zv::ExportFormat::CslJson); }
void exportCsv(benchmark::State& state) { exportAs(state, zv::ExportFormat::Csv); }

// The whole job: both passes, the comparison, the kept records and the report.
void findDuplicates(benchmark::State& state) {
  for (auto _ : state) {
    zv::JobState job;
    zv::DedupSummary summary;
    const zv::JobResult r = zv::FindDuplicates(
        job, zv::NoProgress(), zv::DedupParams{gSetup.set.forms, gSetup.kept, gSetup.report, &summary});
    if (!r.done() || summary.records != gSetup.set.records) state.SkipWithError("the duplicate finder did not finish");
  }
}

struct Case {
  const char* name;
  void (*fn)(benchmark::State&);
};

constexpr Case kCases[] = {
    {"write/copy_lines", copyLines},   {"export/ris", exportRis},       {"export/csl-json", exportCslJson},
    {"export/csv", exportCsv},         {"dedup/find_duplicates", findDuplicates},
};

// --- the truth -----------------------------------------------------------------------

struct Quality {
  int64_t predictedPairs = 0, truePairs = 0, correctPairs = 0, groups = 0;
  std::vector<std::pair<std::string, int64_t>> reasons;  // links by why they were made
  std::vector<int64_t> similarity = std::vector<int64_t>(5);  // near titles: [0.80, 0.84], ... [0.96, 1]
  double precision() const { return predictedPairs == 0 ? 1.0 : static_cast<double>(correctPairs) / static_cast<double>(predictedPairs); }
  double recall() const { return truePairs == 0 ? 1.0 : static_cast<double>(correctPairs) / static_cast<double>(truePairs); }
};

int64_t pairs(int64_t n) { return n * (n - 1) / 2; }

// Pairs of records the report puts in one group, against the pairs that print one work.
Quality judge(const std::string& report) {
  Quality q;
  std::unordered_map<uint32_t, int64_t> perWork;
  for (const auto& form : gSetup.set.workOf)
    for (uint32_t w : form) ++perWork[w];
  for (const auto& [work, n] : perWork) q.truePairs += pairs(n);

  std::ifstream in(report);
  std::string line;
  std::unordered_map<uint32_t, int64_t> group;
  auto close = [&] {
    int64_t size = 0;
    for (const auto& [work, n] : group) {
      size += n;
      q.correctPairs += pairs(n);
    }
    q.predictedPairs += pairs(size);
    group.clear();
  };
  static const std::regex member(R"(^  file (\d+)  Record - (\d+))");
  static const std::regex why(R"(^  why: .* of file \d+: ([^(]*[^ (])( \(similarity ([0-9.]+)\))?$)");
  std::smatch m;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (std::regex_search(line, m, why)) {
      auto r = std::find_if(q.reasons.begin(), q.reasons.end(), [&](const auto& p) { return p.first == m[1].str(); });
      if (r == q.reasons.end()) r = q.reasons.insert(q.reasons.end(), {m[1].str(), 0});
      ++r->second;
      if (m[3].matched) ++q.similarity[std::min<std::size_t>(4, static_cast<std::size_t>((std::stod(m[3]) - 0.8) / 0.04))];
      continue;
    }
    if (line.rfind("Group ", 0) == 0) {
      close();
      ++q.groups;
    } else if (std::regex_search(line, m, member)) {
      const std::size_t file = std::stoul(m[1]) - 1, label = std::stoul(m[2]) - 1;
      ++group[gSetup.set.workOf.at(file).at(label)];
    }
  }
  close();
  return q;
}

// Writes the record set in a child and reads back what it tells, so that the
// generator's memory is gone before the cases run.
bool writeSet(const RecordSetOptions& options) {
  const std::string truth = gSetup.dir + "/truth.bin";
  const pid_t pid = fork();
  if (pid == 0) {
    try {
      const RecordSet set = WriteRecordSet(gSetup.dir, options);
      std::ofstream out(truth, std::ios::binary);
      const int64_t head[] = {set.records, set.works, set.plantedCopies, set.nearPairs, set.bytes, set.lines};
      out.write(reinterpret_cast<const char*>(head), sizeof head);
      for (const auto& form : set.workOf) {
        const int64_t n = static_cast<int64_t>(form.size());
        out.write(reinterpret_cast<const char*>(&n), sizeof n);
        out.write(reinterpret_cast<const char*>(form.data()), static_cast<std::streamsize>(n * 4));
      }
      _exit(out ? 0 : 1);
    } catch (const std::exception& e) {
      std::fprintf(stderr, "%s\n", e.what());
      _exit(1);
    }
  }
  int status = 0;
  if (pid < 0 || waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return false;
  std::ifstream in(truth, std::ios::binary);
  int64_t head[6];
  in.read(reinterpret_cast<char*>(head), sizeof head);
  RecordSet& set = gSetup.set;
  set.records = head[0];
  set.works = head[1];
  set.plantedCopies = head[2];
  set.nearPairs = head[3];
  set.bytes = head[4];
  set.lines = head[5];
  set.mixedPro = gSetup.dir + "/mixed.PRO";
  for (const char* f : {"nlm.PRO", "ovid.PRO", "dialog.PRO", "datastar.PRO"}) {
    set.forms.push_back(gSetup.dir + "/" + f);
    int64_t n = 0;
    in.read(reinterpret_cast<char*>(&n), sizeof n);
    set.workOf.emplace_back(static_cast<std::size_t>(n));
    in.read(reinterpret_cast<char*>(set.workOf.back().data()), static_cast<std::streamsize>(n * 4));
  }
  return static_cast<bool>(in);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::regex only(argc > 1 ? argv[1] : ".*");
  const int64_t reps = EnvInt("ZV_BENCH_REPS", 3);
  RecordSetOptions options;
  options.records = EnvInt("ZV_BENCH_RECORDS", 1'000'000);
  for (const Case& c : kCases) RegisterCase(c.name, c.fn, reps, true);

  gSetup.dir = MakeBenchDir("zv-export-bench-");
  if (gSetup.dir.empty()) return 2;
  gSetup.report = gSetup.dir + "/dedup.txt";
  gSetup.kept = gSetup.dir + "/dedup.PRO";

  PrintBanner("export and duplicates benchmark");
  if (options.records < 1'000'000) std::printf("  note: fewer than a million records is for trying the benchmark\n");
  std::fflush(stdout);
  const auto setupStart = std::chrono::steady_clock::now();
  if (!writeSet(options)) {
    std::fprintf(stderr, "the record set could not be written\n");
    std::filesystem::remove_all(gSetup.dir);
    return 2;
  }
  const RecordSet& set = gSetup.set;
  std::printf("  record set made in %.1f s: %lld records of %lld works, %lld planted copies, %lld look-alike pairs\n",
              std::chrono::duration<double>(std::chrono::steady_clock::now() - setupStart).count(),
              static_cast<long long>(set.records), static_cast<long long>(set.works),
              static_cast<long long>(set.plantedCopies), static_cast<long long>(set.nearPairs));
  std::printf("  mixed .PRO %.1f MB, %lld lines; the same records in four files of one form each for dedup\n",
              static_cast<double>(set.bytes) / kMiB, static_cast<long long>(set.lines));
  std::printf("  %lld repetitions per case, each case in its own process; MB = 2^20 bytes;\n"
              "  cpu s is the CPU time of the case's process, every thread of it (the workers of export\n"
              "  and dedup too)\n\n",
              static_cast<long long>(reps));

  std::printf("  %-24s %9s %9s %10s %10s\n", "case", "best s", "cpu s", "MB/s", "peak RSS");
  std::vector<CaseResult> results;
  bool failed = false;
  for (const Case& c : kCases) {
    if (!std::regex_search(c.name, only)) continue;
    results.push_back(RunCaseInChild(c.name));
    CaseResult& r = results.back();
    r.bytes = set.bytes;
    if (!r.ok()) {
      failed = true;
      std::printf("  %-24s FAILED: %s\n", r.name.c_str(), r.error.c_str());
      continue;
    }
    std::printf("  %-24s %9.3f %9.3f %10.1f %7.1f MB\n", r.name.c_str(), r.best(), r.bestCpu(), r.mbPerSecond(),
                static_cast<double>(r.peakKb) / 1024.0);
    std::fflush(stdout);
  }

  std::printf("\n  targets (best repetition of each case; wall clock, then CPU time of all threads)\n");
  const CaseResult* copy = FindCase(results, "write/copy_lines");
  for (const char* name : {"export/ris", "export/csl-json", "export/csv"}) {
    const CaseResult* e = FindCase(results, name);
    if (copy == nullptr || e == nullptr) continue;
    // The speed ratio is the time ratio upside down. On the wall clock the export's
    // workers share the machine's cores with whatever else runs; its CPU time, all
    // threads added up, is the steadier figure and the stricter one, as it gives the
    // workers no credit for running side by side.
    const double speed = copy->best() / e->best();
    PrintVerdict((std::string(name) + " speed / copy_lines speed").c_str(), speed, "", ">= 0.5", speed >= kTargetExportSpeed);
    const double cpuSpeed = copy->bestCpu() / e->bestCpu();
    PrintVerdict((std::string(name) + " CPU speed / copy_lines").c_str(), cpuSpeed, "", ">= 0.5",
                 cpuSpeed >= kTargetExportSpeed);
  }
  if (const CaseResult* d = FindCase(results, "dedup/find_duplicates")) {
    const Quality q = judge(gSetup.report);
    std::printf("  dedup: %lld groups reported; pairs of one work: %lld true, %lld reported, %lld of them right\n",
                static_cast<long long>(q.groups), static_cast<long long>(q.truePairs),
                static_cast<long long>(q.predictedPairs), static_cast<long long>(q.correctPairs));
    for (const auto& [reason, n] : q.reasons) std::printf("    %8lld joined by %s\n", static_cast<long long>(n), reason.c_str());
    std::printf("    near titles by similarity: 0.80-0.84 %lld, 0.84-0.88 %lld, 0.88-0.92 %lld, 0.92-0.96 %lld, 0.96-1 %lld\n",
                static_cast<long long>(q.similarity[0]), static_cast<long long>(q.similarity[1]),
                static_cast<long long>(q.similarity[2]), static_cast<long long>(q.similarity[3]),
                static_cast<long long>(q.similarity[4]));
    PrintVerdict("dedup precision (pairs)", q.precision(), "", ">= 0.99", q.precision() >= kTargetPrecision);
    PrintVerdict("dedup recall (pairs)", q.recall(), "", ">= 0.95", q.recall() >= kTargetRecall);
    std::printf("  %-44s %.4f / %.4f\n", "    precision / recall to four places", q.precision(), q.recall());
    PrintVerdict("dedup time", d->best(), "s", "< 20", d->best() < kTargetDedupSeconds);
    const double mb = static_cast<double>(d->peakKb) / 1024.0;
    PrintVerdict("dedup peak RSS", mb, "MB", "< 1024", mb < kTargetDedupMB);
    failed = failed || q.precision() < kTargetPrecision || q.recall() < kTargetRecall;
  }

  std::error_code ec;
  if (!EnvFlag("ZV_BENCH_KEEP")) std::filesystem::remove_all(gSetup.dir, ec);
  benchmark::Shutdown();
  return failed ? 1 : 0;
}
