// index, keep and order on the command line: the names checked, the list read, then the
// table's jobs.
#include "cli/cli_records.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "cli/cli.h"
#include "cli/cli_host.h"
#include "cli/cli_job.h"
#include "core/error.h"
#include "core/input_file.h"
#include "records/record_commands.h"
#include "records/record_file.h"
#include "records/record_file_choice.h"

namespace zv::cli {

namespace {

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

// The list, or a message and nothing when it is malformed.
bool readList(const std::string& text, std::vector<int32_t>& list) {
  std::string problem;
  list = parseList(text, problem);
  if (list.empty()) std::cerr << problem << '\n';
  return !list.empty();
}

// BuildIndex for a chosen .PRO (a chosen .NDX is used as it stands). kExitDone when
// the index is there to use, else the exit code of the build.
int indexIfRecordFile(JobState& job) {
  if (IndexChosen(job)) return kExitDone;
  const JobResult built = RunCliJob(kIndexRecordFile, job, RecordFileInput{job.gsProFile, job.gsIndexFile});
  return built.done() ? kExitDone : ExitCodeOf(built, job);
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

// A failure outside the jobs (reading the record count): reported as a job's is.
int failed(JobState& job, const ZvError& error) {
  job.gsErrNumber = ErrNumberText(error.number());
  job.gsErrText = error.text();
  PrintError(error, job);
  return kExitFailed;
}

int runIndex(const std::string& file) {
  JobState job;
  if (!openRecordFile(job, file)) return kExitUsage;
  if (IndexChosen(job)) {
    std::cerr << "index takes a .PRO file, not its index: " << file << '\n';
    return kExitUsage;
  }
  const JobResult built = RunCliJob(kIndexRecordFile, job, RecordFileInput{job.gsProFile, job.gsIndexFile});
  if (built.done()) std::cout << "Index Saved To: " << job.gsIndexFile << '\n' << "Records: " << built.records << '\n';
  return ExitCodeOf(built, job);
}

int runKeep(const std::string& file, const std::string& records, const std::string& keepFile) {
  KeepInput input;
  if (!readList(records, input.records)) return kExitUsage;
  if (keepFile.find_first_not_of(' ') == std::string::npos || keepFile.size() > kKeepFileLen) {
    std::cerr << "The keep file needs a name of 1 to " << kKeepFileLen << " characters.\n";
    return kExitUsage;
  }
  JobState job;
  if (!openRecordFile(job, file)) return kExitUsage;
  try {
    if (const int code = indexIfRecordFile(job); code != kExitDone) return code;
    input.glRecCount = countCovering(job, input.records);
  } catch (const std::exception& e) {
    return failed(job, AsZvError(e));
  }
  if (input.glRecCount == 0) return kExitUsage;
  input.file = {job.gsProFile, job.gsIndexFile};
  input.keepFile = keepFile;
  const JobResult kept = RunCliJob(kKeepRecords, job, input);
  if (kept.done()) std::cout << "Kept " << kept.records << " records to " << keepFile << '\n';
  return ExitCodeOf(kept, job);
}

int runOrder(const std::string& file, const std::string& order) {
  std::vector<int32_t> list;
  if (!readList(order, list)) return kExitUsage;
  JobState job;
  if (!openRecordFile(job, file)) return kExitUsage;
  OrderInput input;
  try {
    if (const int code = indexIfRecordFile(job); code != kExitDone) return code;
    input.glRecCount = countCovering(job, list);
  } catch (const std::exception& e) {
    return failed(job, AsZvError(e));
  }
  if (input.glRecCount == 0) return kExitUsage;
  int32_t twice = 0;
  input.glOrder = OrderPuttingFirst(list, input.glRecCount, twice);
  if (input.glOrder.empty()) {
    std::cerr << "Record " << twice << " is listed twice.\n";
    return kExitUsage;
  }
  input.file = {job.gsProFile, job.gsIndexFile};
  input.ordFile = job.outputPath(job.gsBaseName + ".ORD");
  const JobResult written = RunCliJob(kOrderRecords, job, input);
  if (written.done()) std::cout << "Order Saved To: " << input.ordFile << '\n';
  return ExitCodeOf(written, job);
}

}  // namespace

void AddRecordCommands(CLI::App& app, int& exitCode) {
  // The options live as long as the program's parse does.
  struct Options {
    std::string file, list, keepTo;
  };
  auto options = std::make_shared<Options>();

  CLI::App* index = AddTableCommand(app, kIndexRecordFile);
  index->add_option("FILE", options->file, "The .PRO file (never changed)")->required();
  index->callback([&exitCode, options] { exitCode = runIndex(options->file); });

  CLI::App* keep = AddTableCommand(app, kKeepRecords);
  keep->add_option("FILE", options->file, "The .PRO file, or its .NDX")->required();
  keep->add_option("--records", options->list, "Record numbers and ranges, e.g. 4,1,7-9")->required();
  keep->add_option("--to", options->keepTo, "The keep file, added to if it exists")->required();
  keep->callback([&exitCode, options] { exitCode = runKeep(options->file, options->list, options->keepTo); });

  CLI::App* order = AddTableCommand(app, kOrderRecords);
  order->add_option("FILE", options->file, "The .PRO file, or its .NDX")->required();
  order->add_option("--order", options->list, "Records to put first, in this order, e.g. 5,2,9-12")->required();
  order->callback([&exitCode, options] { exitCode = runOrder(options->file, options->list); });
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
