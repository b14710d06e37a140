// index, keep and order on the command line: the sifter's own steps without its window.
#include "cli/cli_records.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <unistd.h>
#include <vector>

#include "cli/cli.h"
#include "cli/cli_host.h"
#include "core/input_file.h"
#include "core/error.h"
#include "records/build_index.h"
#include "records/record_file.h"
#include "records/record_file_choice.h"
#include "records/record_writers.h"
#include "records/sifter.h"

namespace zv::cli {

namespace {

// Ctrl-C while records are written: the writers take back what they wrote.
struct Interrupted : std::exception {
  const char* what() const noexcept override { return "interrupted"; }
};

// A line counter on stderr while a terminal watches; the interrupt seen by the job.
class Progress final : public IndexProgress, public WritingProgress {
 public:
  explicit Progress(JobState& job) : job_(job), shown_(isatty(STDERR_FILENO) == 1) {}
  ~Progress() override { clear(); }

  void indexLine(int32_t n) override { tick("indexing line", n); }
  void indexRecord(int32_t n) override { records_ = n; }
  void writingRecord(int32_t n) override { records_ = n; }
  void writingLine(int32_t n) override {
    if (job_.giInterrupt == 1) throw Interrupted();
    tick("writing record", records_, n);
  }
  void clear() {
    if (!drawn_) return;
    std::fprintf(stderr, "\r%60s\r", "");
    drawn_ = false;
  }

 private:
  void tick(const char* what, int32_t n, int32_t line = 0) {
    if (!shown_ || (++calls_ & 4095) != 1) return;
    const int64_t now = std::chrono::duration_cast<std::chrono::milliseconds>(
                            std::chrono::steady_clock::now().time_since_epoch())
                            .count();
    if (drawn_ && now - lastMs_ < 100) return;
    lastMs_ = now;
    if (line > 0)
      std::fprintf(stderr, "\r  %s %d, line %d   ", what, n, line);
    else
      std::fprintf(stderr, "\r  %s %d, records %d   ", what, n, records_);
    std::fflush(stderr);
    drawn_ = true;
  }

  JobState& job_;
  bool shown_;
  bool drawn_ = false;
  uint32_t calls_ = 0;
  int32_t records_ = 0;
  int64_t lastMs_ = 0;
};

// The chosen file's folder stands for the current directory that the sifter's file
// dialog would have left there: the index, the .PRO of a chosen index, the .ORD and
// the bookmark are named in it.
bool openRecordFile(JobState& job, const std::string& file) {
  job.outDir = std::filesystem::path(file).parent_path().string();
  // The file dialog offers only files that are there; a name typed here may not be.
  if (!std::filesystem::exists(file)) {
    PrintMessage({std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)});
    std::cerr << "  (" << file << ")\n";
    return false;
  }
  Message refusal;
  if (!ChooseRecordFile(job, file, refusal)) {
    PrintMessage(refusal);
    return false;
  }
  return true;
}

// A list of record numbers: "3", "1,4", "2-5,9". Empty on a malformed list.
std::vector<int32_t> parseList(const std::string& text, std::string& problem) {
  std::vector<int32_t> out;
  std::size_t at = 0;
  while (at <= text.size()) {
    std::size_t end = text.find(',', at);
    if (end == std::string::npos) end = text.size();
    const std::string item = text.substr(at, end - at);
    try {
      const std::size_t dash = item.find('-', 1);
      const int32_t first = ToLong(item.substr(0, dash));
      const int32_t last = dash == std::string::npos ? first : ToLong(item.substr(dash + 1));
      if (first < 1 || last < first) throw ZvError(err::kInvalidCall, "");
      if (static_cast<int64_t>(out.size()) + (last - first) > 50'000'000) throw ZvError(err::kOverflow, "");
      for (int32_t k = first; k <= last; ++k) out.push_back(k);
    } catch (const ZvError&) {
      problem = "Not a record number or range (N or N-M, from 1): \"" + item + "\"";
      return {};
    }
    at = end + 1;
  }
  return out;
}

int failed(JobState& job, const std::exception& e, Progress& progress) {
  progress.clear();
  if (dynamic_cast<const Interrupted*>(&e)) {
    std::cerr << "Interrupted: outputs removed.\n";
    return kExitInterrupted;
  }
  const auto* z = dynamic_cast<const ZvError*>(&e);
  const ZvError error = z ? *z : ZvError(51, "Internal error", e.what());
  job.gsErrNumber = ErrNumberText(error.number());
  job.gsErrText = error.text();
  PrintError(error, job);
  return kExitFailed;
}

// BuildIndex for a chosen .PRO; kExitDone when the index is there to use.
int indexIfRecordFile(JobState& job, Progress& progress) {
  if (IndexChosen(job)) return kExitDone;
  const IndexOutcome built = BuildIndex(job, progress);
  progress.clear();
  if (built == IndexOutcome::NotARecordFile) {
    PrintMessage({std::string(kFileFormatErrorTitle), std::string(kNotRecordFileText)});
    return kExitUsage;
  }
  if (built == IndexOutcome::Interrupted) {
    std::cerr << "Interrupted: outputs removed.\n";
    return kExitInterrupted;
  }
  return kExitDone;
}

// The record count, or a message and 0 when a listed number lies beyond it.
int32_t countCovering(const JobState& job, const std::vector<int32_t>& list) {
  const int32_t count = RecordCount(job.gsIndexFile);
  for (int32_t k : list) {
    if (k > count) {
      std::cerr << "There aren't that many records: " << k << " (the file has " << count << ")\n";
      return 0;
    }
  }
  return count;
}

}  // namespace

int RunIndex(const std::string& file) {
  JobState job;
  if (!openRecordFile(job, file)) return kExitUsage;
  if (IndexChosen(job)) {
    std::cerr << "index takes a .PRO file, not its index: " << file << '\n';
    return kExitUsage;
  }
  Progress progress(job);
  InterruptGuard guard(job);
  try {
    const int code = indexIfRecordFile(job, progress);
    if (code != kExitDone) return code;
    std::cout << "Index Saved To: " << job.gsIndexFile << '\n'
              << "Records: " << RecordCount(job.gsIndexFile) << '\n';
    return kExitDone;
  } catch (const std::exception& e) {
    return failed(job, e, progress);
  }
}

int RunKeep(const std::string& file, const std::string& records, const std::string& keepFile) {
  std::string problem;
  const std::vector<int32_t> list = parseList(records, problem);
  if (list.empty()) {
    std::cerr << problem << '\n';
    return kExitUsage;
  }
  if (keepFile.find_first_not_of(' ') == std::string::npos || keepFile.size() > kKeepFileLen) {
    std::cerr << "The keep file needs a name of 1 to " << kKeepFileLen << " characters.\n";
    return kExitUsage;
  }
  JobState job;
  if (!openRecordFile(job, file)) return kExitUsage;
  Progress progress(job);
  InterruptGuard guard(job);
  bool marking = false;
  try {
    if (const int code = indexIfRecordFile(job, progress); code != kExitDone) return code;
    const int32_t count = countCovering(job, list);
    if (count == 0) return kExitUsage;
    // Marks left by a session that ended abnormally would send records to files not
    // named here: they go first.
    std::vector<bool> wanted(static_cast<std::size_t>(count) + 1, false);
    for (int32_t k : list) wanted[static_cast<std::size_t>(k)] = true;
    marking = true;
    ForEachIndexRec(job.gsIndexFile, [&](int32_t k, IndexRec& rec) {
      const bool keep = k <= count && wanted[static_cast<std::size_t>(k)];
      IndexRec marked = rec;
      marked.keepFlag = keep ? 1 : 0;
      marked.setKeepFile(keep ? keepFile : "");
      if (marked.keepFlag == rec.keepFlag && marked.keepFile == rec.keepFile) return false;
      rec = marked;
      return true;
    });
    const int16_t written = WriteKeptRecords(job.gsProFile, job.gsIndexFile, count, progress);
    progress.clear();
    std::cout << "Kept " << written << " records to " << keepFile << '\n';
    return kExitDone;
  } catch (const std::exception& e) {
    if (marking) {
      try {
        ClearAllMarks(job.gsIndexFile);
      } catch (const std::exception&) {
        // The first failure is the one reported.
      }
    }
    return failed(job, e, progress);
  }
}

int RunOrder(const std::string& file, const std::string& order) {
  std::string problem;
  const std::vector<int32_t> list = parseList(order, problem);
  if (list.empty()) {
    std::cerr << problem << '\n';
    return kExitUsage;
  }
  JobState job;
  if (!openRecordFile(job, file)) return kExitUsage;
  Progress progress(job);
  InterruptGuard guard(job);
  try {
    if (const int code = indexIfRecordFile(job, progress); code != kExitDone) return code;
    const int32_t count = countCovering(job, list);
    if (count == 0) return kExitUsage;
    // The listed records take positions 1, 2, ... in turn, the rest following in
    // their order: what Order gives when each listed record is moved to the next
    // position in turn.
    std::vector<int32_t> glOrder(static_cast<std::size_t>(count) + 2, 0);
    std::vector<bool> placed(static_cast<std::size_t>(count) + 1, false);
    std::size_t p = 1;
    for (int32_t k : list) {
      if (placed[static_cast<std::size_t>(k)]) {
        std::cerr << "Record " << k << " is listed twice.\n";
        return kExitUsage;
      }
      placed[static_cast<std::size_t>(k)] = true;
      glOrder[p++] = k;
    }
    for (int32_t k = 1; k <= count; ++k)
      if (!placed[static_cast<std::size_t>(k)]) glOrder[p++] = k;
    const std::string ordFile = job.outputPath(job.gsBaseName + ".ORD");
    WriteOrder(job.gsProFile, job.gsIndexFile, ordFile, glOrder, count, progress);
    progress.clear();
    std::cout << "Order Saved To: " << ordFile << '\n';
    return kExitDone;
  } catch (const std::exception& e) {
    return failed(job, e, progress);
  }
}

std::string RecordCommandsHelp() {
  return "  zorvanta-cli index FILE.PRO\n"
         "      Index a record file: FILE.NDX beside it, as the sifter makes it when a .PRO is opened\n"
         "  zorvanta-cli keep FILE.PRO|FILE.NDX --records LIST --to KEEPFILE\n"
         "      Append the listed records to KEEPFILE, as the sifter's Keep and Write Kept Records do\n"
         "  zorvanta-cli order FILE.PRO|FILE.NDX --order LIST\n"
         "      Write every record to BASE.ORD, the listed ones first in the order given, the rest after them\n"
         "      in their own order, as the sifter's Order and Write Order do\n";
}

}  // namespace zv::cli
