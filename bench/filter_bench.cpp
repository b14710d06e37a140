// Throughput and peak memory of every line filter beside plain reads of the same capture.
//
// A plain main(): for each filter of kFilters it writes a large synthetic capture of
// that filter's service, then runs every case on it in a child process of its own,
// timed by Google Benchmark, so that the peak resident memory wait4() reports for the
// child belongs to that case alone. It ends with one table of all filters side by
// side: MB/s, the filter's time over the plain line read of the same file measured in
// the same run, peak memory, and the verdicts against the targets.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <regex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/files.h"
#include "core/input_file.h"
#include "core/job_state.h"
#include "core/line_reader.h"
#include "core/text_out.h"
#include "bench_harness.h"
#include "capture_adhoc.h"
#include "capture_brs.h"
#include "capture_datastar.h"
#include "capture_dialmail.h"
#include "capture_dialog_types.h"
#include "capture_djnr.h"
#include "capture_nlm.h"
#include "capture_orbit.h"
#include "capture_ovid.h"
#include "capture_stn.h"
#include "filters/adhoc.h"
#include "filters/brs.h"
#include "filters/datastar.h"
#include "filters/dialmail.h"
#include "filters/dialog_all.h"
#include "filters/dialog_pick.h"
#include "filters/dialog_separate.h"
#include "filters/djnr.h"
#include "filters/nlm.h"
#include "filters/orbit.h"
#include "filters/ovid.h"
#include "filters/stn.h"
#include "synthetic_capture.h"

namespace {

using namespace zv::bench;

// What the targets ask of the filter.
constexpr double kTargetFilterMBs = 150.0;
constexpr double kTargetRatio = 4.0;
constexpr double kTargetPeakMB = 32.0;
// The frame's own cost: a filter with progress on at most this many times the line
// copy (the same read and a write of the same size) of its capture, in the same run.
constexpr double kTargetCopyRatio = 1.6;

using FilterFn = zv::JobResult (*)(zv::JobState&, zv::JobProgress&, const zv::FilterInput&);
using CaptureWriter = SyntheticCapture (*)(const std::string& path, int64_t targetBytes);

// A line filter and the generator of a capture of its service.
struct FilterRow {
  const char* name;  // as the table shows it
  const char* key;   // prefix of its case names; the word for ZV_BENCH_FILTERS
  FilterFn filter;
  CaptureWriter writeCapture;
  // The stems of the record files of a filter that writes them apart, ending in null;
  // null: the capture's own stem.
  const char* const* recordFiles = nullptr;
};

// The filters that take more than the capture, with the parameters of their rows: the
// five types the DIALOG types capture holds records of (it has two more that are
// skipped), each to a file of its own for the separate files, and the markers of the
// ad hoc capture.
constexpr const char* kSeparateFiles[] = {"type3", "type5", "type8", "type3ab", "typekwic", nullptr};

zv::JobResult dialogTypes(zv::JobState& job, zv::JobProgress& progress, const zv::FilterInput& input) {
  zv::PikTypesParams params{input, {}};
  for (std::size_t k = 0; k < kWantedTypes.size(); ++k) params.types[k] = kWantedTypes[k];
  return zv::FilterDialogPik(job, progress, params);
}

zv::JobResult dialogSeparate(zv::JobState& job, zv::JobProgress& progress, const zv::FilterInput& input) {
  zv::SepTypesParams params{input, {}};
  for (std::size_t k = 0; k < kWantedTypes.size(); ++k)
    params.outputs.push_back({std::string(kWantedTypes[k]), kSeparateFiles[k]});
  return zv::FilterDialogSep(job, progress, params);
}

zv::JobResult adHoc(zv::JobState& job, zv::JobProgress& progress, const zv::FilterInput& input) {
  return zv::FilterAdHoc(job, progress, zv::AdHocParams{input, std::string(kAdHocBegin), std::string(kAdHocEnd), true});
}

// Every filter the benchmark measures: adding one is adding its row.
constexpr FilterRow kFilters[] = {
    {"DIALOG", "dialog", &zv::FilterDialogAll, &zv::bench::WriteSyntheticCapture},
    {"BRS", "brs", &zv::FilterBRS, &zv::bench::WriteBrsCapture},
    {"DataStar", "datastar", &zv::FilterDataStar, &zv::bench::WriteDataStarCapture},
    {"DJN/R", "djnr", &zv::FilterDJ, &zv::bench::WriteDjnrCapture},
    {"NLM", "nlm", &zv::FilterNLM, &zv::bench::WriteNlmCapture},
    {"Orbit", "orbit", &zv::FilterOrbit, &zv::bench::WriteOrbitCapture},
    {"Ovid", "ovid", &zv::FilterOvid, &zv::bench::WriteOvidCapture},
    {"STN", "stn", &zv::FilterSTN, &zv::bench::WriteStnCapture},
    {"DIALOG types", "types", &dialogTypes, &zv::bench::WriteDialogTypesCapture},
    {"DIALOG sep", "separate", &dialogSeparate, &zv::bench::WriteDialogTypesCapture, kSeparateFiles},
    {"DIALMAIL", "dialmail", &zv::FilterDialmail, &zv::bench::WriteDialmailCapture},
    {"Ad hoc", "adhoc", &adHoc, &zv::bench::WriteAdHocCapture},
};

struct Setup {
  std::string dir;
  const FilterRow* row = nullptr;  // the filter whose cases run now
  SyntheticCapture capture;        // its capture
  bool showProgress = false;
};
Setup gSetup;  // filled before the cases of a filter run

// Lines of a file by its LF bytes, read in small blocks: the check must not add to
// the peak memory of the case it checks.
int64_t countLines(const std::string& path) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return -1;
  char buf[1 << 14];
  int64_t n = 0;
  std::size_t got;
  while ((got = std::fread(buf, 1, sizeof buf, f)) > 0) n += std::count(buf, buf + got, '\n');
  std::fclose(f);
  return n;
}

void checkLines(benchmark::State& state, int64_t lines) {
  if (lines != gSetup.capture.lines)
    state.SkipWithError(("read " + std::to_string(lines) + " lines, expected " +
                         std::to_string(gSetup.capture.lines)).c_str());
}

// --- plain reads -----------------------------------------------------------------

// The floor: large fread()s and a memchr for each line end, no line objects at all.
void readFreadMemchr(benchmark::State& state) {
  std::vector<char> buf(1 << 18);
  for (auto _ : state) {
    std::FILE* f = std::fopen(gSetup.capture.path.c_str(), "rb");
    if (!f) {
      state.SkipWithError("cannot open the capture");
      return;
    }
    int64_t lines = 0;
    std::size_t n;
    while ((n = std::fread(buf.data(), 1, buf.size(), f)) > 0) {
      const char* p = buf.data();
      const char* end = p + n;
      while ((p = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)))) != nullptr) {
        ++lines;
        ++p;
      }
    }
    std::fclose(f);
    benchmark::DoNotOptimize(lines);
    checkLines(state, lines);
  }
}

// What most C++ code would write: std::getline from an ifstream into one string.
void readGetline(benchmark::State& state) {
  for (auto _ : state) {
    const LineTally read = TallyGetline(gSetup.capture.path);
    benchmark::DoNotOptimize(read.chars);
    checkLines(state, read.lines);
  }
}

// The program's own buffered line read, as the filter frame uses it.
void readLineReader(benchmark::State& state) {
  for (auto _ : state) {
    const LineTally read = TallyLineReader(gSetup.capture.path);
    benchmark::DoNotOptimize(read.chars);
    checkLines(state, read.lines);
  }
}

// The line read plus the cleaning every filter applies to each line.
void readLineReaderClean(benchmark::State& state) {
  for (auto _ : state) {
    const LineTally read = TallyLineReader(gSetup.capture.path, true);
    benchmark::DoNotOptimize(read.chars);
    checkLines(state, read.lines);
  }
}

// The count of lines the frame takes before its loop, for the progress percentage.
void readLineCount(benchmark::State& state) {
  for (auto _ : state) {
    const int32_t lines = zv::LineCount(gSetup.capture.path);
    checkLines(state, lines);
  }
}

// The line read with every line written out again through the filters' own output:
// what any tool that reads a capture and writes a file of the same size cannot go
// below. The filter writes more than this (its .PRO about as large, plus the index).
void copyLines(benchmark::State& state) {
  const std::string out = gSetup.dir + "/copy.txt";
  for (auto _ : state) {
    zv::LineReader in(gSetup.capture.path);
    zv::TextOut copy(out);
    std::string line;
    int64_t lines = 0;
    while (in.readLine(line)) {
      copy.line(line);
      ++lines;
    }
    copy.close();
    checkLines(state, lines);
  }
  std::filesystem::remove(out);
}

// --- the filter --------------------------------------------------------------------

// Progress as a terminal bar would show it. The frame reports every line, but the
// bar is drawn again only when the percentage moves, about a hundred times a run;
// between two draws a line costs one compare with the line where the next percent
// begins. The bar goes to stderr only when ZV_BENCH_PROGRESS asks for it and stderr
// is a terminal; otherwise it is only formatted.
class ProgressHost final : public zv::JobProgress {
 public:
  void lineDone(int32_t lInLine, int32_t glLineCount) override {
    linesSeen = lInLine;
    if (lInLine < nextDraw_) return;
    const int64_t total = glLineCount > 0 ? glLineCount : 1;
    const auto percent = static_cast<int32_t>(std::min<int64_t>(int64_t{lInLine} * 100 / total, 100));
    draw(lInLine, glLineCount, percent);
    // The first line whose percentage is above this one: (percent + 1) * total / 100,
    // rounded up.
    nextDraw_ = static_cast<int32_t>(std::min<int64_t>((int64_t{percent} + 1) * total / 100 +
                                                           ((int64_t{percent} + 1) * total % 100 != 0),
                                                       std::numeric_limits<int32_t>::max()));
  }
  void recordDone(int32_t record) override { lastRecord = record; }
  void jobFinished(std::string_view, std::string_view) override {
    if (gSetup.showProgress) std::fputs("\n", stderr);
  }

  int32_t linesSeen = 0;
  int32_t lastRecord = 0;
  int32_t draws = 0;

 private:
  void draw(int32_t line, int32_t lines, int32_t percent) {
    char bar[51];
    const int filled = std::clamp(percent / 2, 0, 50);
    std::memset(bar, '#', static_cast<std::size_t>(filled));
    std::memset(bar + filled, '.', static_cast<std::size_t>(50 - filled));
    bar[50] = '\0';
    const int n = std::snprintf(text_, sizeof text_, "\r  line %d of %d  record %d  [%s] %3d%%", line, lines,
                                lastRecord, bar, percent);
    ++draws;
    if (gSetup.showProgress && n > 0) {
      const ssize_t w = ::write(STDERR_FILENO, text_, static_cast<std::size_t>(n));
      (void)w;
    }
  }

  int32_t nextDraw_ = 0;
  char text_[160] = {};
};

struct JobOutputs {
  std::vector<std::string> pros, ndxs;
  std::string fsc;
  void remove() const {
    for (const auto& p : pros) std::filesystem::remove(p);
    for (const auto& p : ndxs) std::filesystem::remove(p);
    std::filesystem::remove(fsc);
  }
};

// The outputs of a job on the current capture: its stem, in the benchmark's folder,
// or the row's own record files there.
JobOutputs outputsOf(const std::string& dir) {
  const std::string stem = (std::filesystem::path(dir) / std::filesystem::path(gSetup.capture.path).stem()).string();
  JobOutputs out{{}, {}, stem + ".FSC"};
  if (gSetup.row->recordFiles == nullptr) {
    out.pros = {stem + ".PRO"};
    out.ndxs = {stem + ".NDX"};
  }
  for (const char* const* f = gSetup.row->recordFiles; f != nullptr && *f != nullptr; ++f) {
    const std::string file = (std::filesystem::path(dir) / *f).string();
    out.pros.push_back(file + ".PRO");
    out.ndxs.push_back(file + ".NDX");
  }
  return out;
}

// Everything the filter must have produced from the capture: a failure is reported
// as the case's error, and the figures of a wrong run are not printed.
std::string checkJob(const zv::JobState& job, zv::JobOutcome outcome, const JobOutputs& out,
                     const ProgressHost* progress) {
  const SyntheticCapture& c = gSetup.capture;
  if (outcome != zv::JobOutcome::Done) return "the filter did not finish";
  if (job.glRecNum != c.records)
    return "recognized " + std::to_string(job.glRecNum) + " records, expected " + std::to_string(c.records);
  int64_t indexBytes = 0;
  for (const std::string& ndx : out.ndxs) indexBytes += std::max<int64_t>(FileBytes(ndx), 0);
  if (indexBytes != c.records * static_cast<int64_t>(zv::kIndexRecLen)) return ".NDX of the wrong size";
  for (const std::string& pro : out.pros)
    if (FileBytes(pro) <= 0) return "no " + pro;
  if (c.fscLines + c.fscSeparators == 0) {
    if (std::filesystem::exists(out.fsc)) return "a .FSC where none belongs";
  } else if (const int64_t fscLines = countLines(out.fsc); fscLines != c.fscLines + c.fscSeparators) {
    return ".FSC has " + std::to_string(fscLines) + " lines, expected " +
           std::to_string(c.fscLines + c.fscSeparators);
  }
  const int64_t odometer = c.labels > 0 ? c.labels : c.records;
  if (progress && (progress->linesSeen != c.lines || progress->lastRecord != odometer || progress->draws < 100))
    return "progress did not follow the whole job";
  return {};
}

void runFilter(benchmark::State& state, bool withProgress) {
  const JobOutputs out = outputsOf(gSetup.dir);
  for (auto _ : state) {
    state.PauseTiming();
    out.remove();  // so that truncating the last run's outputs is not timed
    zv::JobState job;
    job.outDir = gSetup.dir;
    zv::JobProgress quiet;
    ProgressHost progress;
    zv::JobProgress& observer = withProgress ? static_cast<zv::JobProgress&>(progress) : quiet;
    const zv::FilterInput input{gSetup.capture.path, gSetup.dir};
    state.ResumeTiming();

    const zv::JobOutcome outcome = gSetup.row->filter(job, observer, input).outcome;

    state.PauseTiming();
    const std::string problem = checkJob(job, outcome, out, withProgress ? &progress : nullptr);
    if (!problem.empty()) {
      // A skipped case leaves its loop with the timer stopped.
      state.SkipWithError(problem.c_str());
      break;
    }
    state.ResumeTiming();
  }
  if (!EnvFlag("ZV_BENCH_KEEP")) out.remove();
}

void filterProgressOff(benchmark::State& state) { runFilter(state, false); }
void filterProgressOn(benchmark::State& state) { runFilter(state, true); }

// --- the cases of each filter ---------------------------------------------------

struct Case {
  const char* name;  // behind the filter's key: "dialog/read/getline"
  void (*fn)(benchmark::State&);
};

// The cases of each filter, each on that filter's capture.
constexpr Case kCases[] = {
    {"read/fread_memchr", readFreadMemchr},   {"read/getline", readGetline},
    {"read/LineReader", readLineReader},      {"read/LineReader_clean", readLineReaderClean},
    {"read/LineCount", readLineCount},        {"write/copy_lines", copyLines},
    {"filter/progress_off", filterProgressOff}, {"filter/progress_on", filterProgressOn},
};

std::string caseName(const FilterRow& row, const Case& c) { return std::string(row.key) + "/" + c.name; }

// What one filter's run gave: its capture and its cases.
struct FilterResult {
  const FilterRow* row;
  SyntheticCapture capture;
  std::vector<CaseResult> cases;
};

// The ratios of one filter's cases to each other, below its case lines.
void printFigures(const std::vector<CaseResult>& results) {
  const CaseResult* lineReader = FindCase(results, "/read/LineReader");
  const CaseResult* getlineRead = FindCase(results, "/read/getline");
  const CaseResult* copy = FindCase(results, "/write/copy_lines");
  const CaseResult* off = FindCase(results, "/filter/progress_off");
  const CaseResult* on = FindCase(results, "/filter/progress_on");
  if (off && lineReader) {
    std::printf("    filter (progress off) / LineReader time:      %6.2fx\n", off->best() / lineReader->best());
    if (on) std::printf("    filter (progress on) / LineReader time:       %6.2fx\n", on->best() / lineReader->best());
  }
  if (on && lineReader)
    std::printf("    filter (progress on) / LineReader CPU time:   %6.2fx\n", on->bestCpu() / lineReader->bestCpu());
  if (off && getlineRead)
    std::printf("    filter (progress off) / std::getline time:    %6.2fx\n", off->best() / getlineRead->best());
  if (off && copy)
    std::printf("    filter (progress off) / line copy time:       %6.2fx\n", off->best() / copy->best());
  if (off && on) {
    std::printf("    progress reporting overhead (best):           %+6.1f %%\n", (on->best() / off->best() - 1.0) * 100.0);
    std::printf("    progress reporting overhead (median):         %+6.1f %%\n",
                (on->median() / off->median() - 1.0) * 100.0);
    std::printf("    progress reporting overhead (best CPU time):  %+6.1f %%\n",
                (on->bestCpu() / off->bestCpu() - 1.0) * 100.0);
  }
}

// Whether a filter is one of the comma-separated names or keys of ZV_BENCH_FILTERS
// (any case); every filter when it is unset.
bool chosen(const FilterRow& row) {
  const char* v = std::getenv("ZV_BENCH_FILTERS");
  if (!v || !*v) return true;
  const auto lower = [](std::string_view t) {
    std::string l(t);
    for (char& ch : l) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return l;
  };
  const std::string list = lower(v);
  for (std::size_t at = 0; at <= list.size();) {
    std::size_t end = list.find(',', at);
    if (end == std::string::npos) end = list.size();
    const std::string word = list.substr(at, end - at);
    if (word == lower(row.name) || word == lower(row.key)) return true;
    at = end + 1;
  }
  return false;
}

// The table of all filters: the filter with progress on, as the programs run it,
// against the plain line read of its own capture in the same run.
void printTable(const std::vector<FilterResult>& filters) {
  // "x copy" is the wall-clock ratio to copy_lines; "x copy cpu" the ratio of the CPU
  // times, the steadier figure on a machine that is busy with other work.
  std::printf("\n  %-12s %10s %9s %8s %10s %12s %7s %10s %8s   %-10s %-12s %-12s\n", "filter", "capture MB", "records",
              "MB/s", "x getline", "x LineReader", "x copy", "x copy cpu", "peak MB", ">=150 MB/s", "<=4x getline",
              "<=1.6x copy");
  for (const FilterResult& f : filters) {
    const CaseResult* on = FindCase(f.cases, "/filter/progress_on");
    const CaseResult* getlineRead = FindCase(f.cases, "/read/getline");
    const CaseResult* lineReader = FindCase(f.cases, "/read/LineReader");
    const CaseResult* copy = FindCase(f.cases, "/write/copy_lines");
    std::printf("  %-12s %10.1f %9lld ", f.row->name, static_cast<double>(f.capture.bytes) / kMiB,
                static_cast<long long>(f.capture.records));
    if (!on) {
      std::printf("%8s %10s %12s %7s %10s %8s   %-10s %-12s %-12s\n", "-", "-", "-", "-", "-", "-", "-", "-", "-");
      continue;
    }
    const auto ratioText = [&](const CaseResult* read, bool cpu = false) {
      if (!read) return std::string("-");
      char text[32];
      std::snprintf(text, sizeof text, "%.2f", cpu ? on->bestCpu() / read->bestCpu() : on->best() / read->best());
      return std::string(text);
    };
    const char* ratioVerdict = !getlineRead                                         ? "-"
                               : on->best() / getlineRead->best() <= kTargetRatio ? "met"
                                                                                   : "MISSED";
    const char* copyVerdict = !copy                                                ? "-"
                              : on->best() / copy->best() <= kTargetCopyRatio ? "met"
                                                                               : "MISSED";
    std::printf("%8.1f %10s %12s %7s %10s %8.1f   %-10s %-12s %-12s\n", on->mbPerSecond(), ratioText(getlineRead).c_str(),
                ratioText(lineReader).c_str(), ratioText(copy).c_str(), ratioText(copy, true).c_str(),
                static_cast<double>(on->peakKb) / 1024.0, on->mbPerSecond() >= kTargetFilterMBs ? "met" : "MISSED",
                ratioVerdict, copyVerdict);
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::regex only(argc > 1 ? argv[1] : ".*");

  const int64_t mb = EnvInt("ZV_BENCH_MB", 100);
  const int64_t reps = EnvInt("ZV_BENCH_REPS", 3);
  gSetup.showProgress = EnvFlag("ZV_BENCH_PROGRESS") && ::isatty(STDERR_FILENO);
  // The filters to run, and the names of their cases that the pattern picks.
  std::vector<std::pair<const FilterRow*, std::vector<std::string>>> plan;
  for (const FilterRow& row : kFilters) {
    if (!chosen(row)) continue;
    std::vector<std::string> names;
    for (const Case& c : kCases) {
      const std::string name = caseName(row, c);
      if (!std::regex_search(name, only)) continue;
      RegisterCase(name, c.fn, reps);
      names.push_back(name);
    }
    if (!names.empty()) plan.emplace_back(&row, std::move(names));
  }
  if (plan.empty()) {
    std::fprintf(stderr, "no case of any filter is picked\n");
    return 2;
  }

  gSetup.dir = MakeBenchDir("zv-bench-");
  if (gSetup.dir.empty()) return 2;
  const bool keep = EnvFlag("ZV_BENCH_KEEP");

  PrintBanner("line filter benchmark");
  if (mb < 100) std::printf("  note: a capture below 100 MB is for trying the benchmark, not for its figures\n");
  std::printf("  %lld repetitions per case, each case in its own process; MB = 2^20 bytes\n",
              static_cast<long long>(reps));
  std::fflush(stdout);

  std::vector<FilterResult> filters;
  bool failed = false;
  for (const auto& [row, names] : plan) {
    gSetup.row = row;
    const auto genStart = std::chrono::steady_clock::now();
    try {
      gSetup.capture = row->writeCapture(gSetup.dir + "/" + row->key + ".log", mb * 1024 * 1024);
    } catch (const std::exception& e) {
      std::fprintf(stderr, "%s\n", e.what());
      std::filesystem::remove_all(gSetup.dir);
      return 2;
    }
    const double genSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - genStart).count();
    const SyntheticCapture& cap = gSetup.capture;
    std::printf("\n%s\n  capture: %s\n  %.1f MB, %lld lines, %lld records, %lld .FSC lines (written in %.1f s)\n",
                row->name, cap.path.c_str(), static_cast<double>(cap.bytes) / kMiB, static_cast<long long>(cap.lines),
                static_cast<long long>(cap.records), static_cast<long long>(cap.fscLines), genSeconds);
    std::printf("  resident memory of this process before the cases: %.1f MB\n\n",
                static_cast<double>(CurrentRssKb()) / 1024.0);
    std::printf("  %-30s %9s %9s %9s %9s %10s\n", "case", "best s", "median s", "cpu s", "MB/s", "peak RSS");
    FilterResult result{row, cap, {}};
    for (const std::string& name : names) {
      result.cases.push_back(RunCaseInChild(name));
      result.cases.back().bytes = cap.bytes;
      const CaseResult& r = result.cases.back();
      if (r.ok()) {
        std::printf("  %-30s %9.3f %9.3f %9.3f %9.1f %7.1f MB\n", r.name.c_str(), r.best(), r.median(), r.bestCpu(),
                    r.mbPerSecond(), static_cast<double>(r.peakKb) / 1024.0);
      } else {
        failed = true;
        std::printf("  %-30s FAILED: %s\n", r.name.c_str(), r.error.c_str());
      }
      std::fflush(stdout);
    }
    printFigures(result.cases);
    filters.push_back(std::move(result));
    // One capture on disk at a time, unless they are to be kept.
    if (!keep) std::filesystem::remove(cap.path);
  }

  std::printf("\nAll filters, from the best repetition of each case (filter with progress on)\n");
  printTable(filters);

  std::printf("\n  targets\n");
  for (const FilterResult& f : filters) {
    const CaseResult* on = FindCase(f.cases, "/filter/progress_on");
    const CaseResult* off = FindCase(f.cases, "/filter/progress_off");
    const CaseResult* getlineRead = FindCase(f.cases, "/read/getline");
    const CaseResult* lineReader = FindCase(f.cases, "/read/LineReader");
    const std::string name = f.row->name;
    if (on)
      PrintVerdict((name + " filter, progress on").c_str(), on->mbPerSecond(), "MB/s", ">= 150",
                   on->mbPerSecond() >= kTargetFilterMBs);
    if (off)
      PrintVerdict((name + " filter, progress off").c_str(), off->mbPerSecond(), "MB/s", ">= 150",
                   off->mbPerSecond() >= kTargetFilterMBs);
    // The plain buffered read of a capture's lines is std::getline from an ifstream. The
    // program's own LineReader is faster than that, so the ratio to it is shown too, as
    // the stricter figure.
    if (on && getlineRead)
      PrintVerdict((name + " (progress on) / std::getline").c_str(), on->best() / getlineRead->best(), "x", "<= 4",
                   on->best() / getlineRead->best() <= kTargetRatio);
    if (on && lineReader)
      PrintVerdict((name + " (progress on) / LineReader").c_str(), on->best() / lineReader->best(), "x", "<= 4",
                   on->best() / lineReader->best() <= kTargetRatio);
    if (const CaseResult* copy = FindCase(f.cases, "/write/copy_lines"); on && copy)
      PrintVerdict((name + " (progress on) / line copy").c_str(), on->best() / copy->best(), "x", "<= 1.6",
                   on->best() / copy->best() <= kTargetCopyRatio);
    for (const CaseResult* r : {off, on}) {
      if (!r) continue;
      const double peak = static_cast<double>(r->peakKb) / 1024.0;
      PrintVerdict((r->name + " peak RSS").c_str(), peak, "MB", "< 32", peak < kTargetPeakMB);
    }
  }
  std::printf("  (peak memory must not grow with the input: compare runs at two ZV_BENCH_MB sizes)\n");

  if (keep) {
    std::printf("\n  kept %s\n", gSetup.dir.c_str());
  } else {
    std::error_code ec;
    std::filesystem::remove_all(gSetup.dir, ec);
  }
  benchmark::Shutdown();
  return failed ? 1 : 0;
}
