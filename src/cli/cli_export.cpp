// export and dedup on the command line: the options, their checks, and the job.
#include "cli/cli_export.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "cli/cli.h"
#include "cli/cli_job.h"
#include "records/export_records.h"
#include "records/find_duplicates.h"

namespace zv::cli {

namespace {

// The folder an output goes to must be there: a missing one is the user's slip, told
// before the job starts.
bool folderOfOutputExists(const std::string& path) {
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (folder.empty() || std::filesystem::is_directory(folder)) return true;
  std::cerr << "Output folder not found: " << folder.string() << '\n';
  return false;
}

struct ExportOptions {
  std::string input;
  std::string format;
  std::string to;
};

int runExport(const ExportOptions& o) {
  if (!folderOfOutputExists(o.to)) return kExitUsage;
  if (std::filesystem::is_directory(o.to)) {
    std::cerr << "The output is a folder: " << o.to << '\n';
    return kExitUsage;
  }
  ExportParams params{o.input, *FormatOfName(o.format), o.to};
  JobState job;
  const JobResult result = RunCliJob(kExportRecords, job, params);
  if (result.done()) {
    std::cout << "Records Exported: " << result.records << '\n';
    PrintWritten(result);
  }
  return ExitCodeOf(result, job, o.input);
}

struct DedupOptions {
  std::vector<std::string> inputs;
  std::string to;
  std::string report;
};

int runDedup(const DedupOptions& o) {
  for (const std::string* out : {&o.to, &o.report}) {
    if (out->empty()) continue;
    if (!folderOfOutputExists(*out)) return kExitUsage;
    if (std::filesystem::is_directory(*out)) {
      std::cerr << "The output is a folder: " << *out << '\n';
      return kExitUsage;
    }
  }
  DedupSummary summary;
  JobState job;
  const JobResult result = RunCliJob(kFindDuplicates, job, DedupParams{o.inputs, o.to, o.report, &summary});
  if (result.done()) {
    std::cout << "Records Read: " << summary.records << '\n'
              << "Groups Of One Work: " << summary.groups << '\n'
              << "Records Left Out: " << summary.removed << '\n'
              << "Records Kept: " << result.records << '\n';
    PrintWritten(result);
  }
  return ExitCodeOf(result, job);
}

}  // namespace

void AddExportCommands(CLI::App& app, int& exitCode) {
  auto exportOptions = std::make_shared<ExportOptions>();
  CLI::App* sub = AddTableCommand(app, kExportRecords);
  sub->add_option("FILE", exportOptions->input,
                  "The record file (a .PRO, a keep file, a .QRY...) or its .NDX (never changed)")
      ->required();
  sub->add_option("--format", exportOptions->format, "ris, csl-json or csv")
      ->required()
      ->check(CLI::IsMember({"ris", "csl-json", "csv"}));
  sub->add_option("--to", exportOptions->to, "The file to write (replaced if it exists)")->required();
  sub->footer(
      "One reference for every record, in order, its label's number as its identifier (RIS ID, CSL id, CSV "
      "Label). Fields are found in tagged lines (TI  - , TI- , AN   ...), Ovid's field names, DIALOG's "
      "labels and untagged citations; a record whose fields are not found goes out whole in a note. A .NDX "
      "is read as it stands, with the .PRO of its name beside it; any other file is read by its labels. "
      "RIS, CSL JSON and CSV are UTF-8 with CR LF line ends; CSV begins with a byte order mark.");
  sub->callback([&exitCode, exportOptions] { exitCode = runExport(*exportOptions); });

  auto dedupOptions = std::make_shared<DedupOptions>();
  CLI::App* dedup = AddTableCommand(app, kFindDuplicates);
  dedup->add_option("FILE", dedupOptions->inputs, "Record files (.PRO, keep files, or .NDX), never changed")
      ->required();
  dedup->add_option("--to", dedupOptions->to, "The record file to write (replaced if it exists)")->required();
  dedup->add_option("--report", dedupOptions->report, "A report of the groups found (replaced if it exists)");
  dedup->footer(
      "Records are the same work when their DOI or PMID is the same; or their title, year and first author's "
      "surname are, after case, accents, punctuation and a leading article are set aside; or one title is the "
      "other without its subtitle; or the titles are near-identical (similarity 0.8 or more: a letter or a "
      "word changed) with the same year and author; or a title of six words or more is the same and one "
      "record lacks its year or author. Records whose DOIs or PMIDs differ are never taken for one work, nor "
      "titles whose numbers differ. The output holds every record but the later ones of each group, in the "
      "order read, labels as they stood: Renumber closes the gaps. The report lists each group with its "
      "records' files, labels and titles, and why they matched.");
  dedup->callback([&exitCode, dedupOptions] { exitCode = runDedup(*dedupOptions); });
}

}  // namespace zv::cli
