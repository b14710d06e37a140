// query, rank, sort and diction on the command line: the forms' checks, then the jobs.
#include "cli/cli_analysis.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <unistd.h>
#include <vector>

#include "analysis/diction.h"
#include "analysis/qbf.h"
#include "analysis/rank.h"
#include "analysis/sort.h"
#include "cli/cli.h"
#include "cli/cli_host.h"
#include "cli/cli_job.h"
#include "core/input_file.h"

namespace zv::cli {

namespace {

constexpr const char* kLargeHelp =
    "No size limits: 32-bit counts, no limit on records, lines, words or omit entries, and a sort in n log n "
    "whose equal keys keep their file order. Without it the tool keeps the program's limits and its exchange "
    "sort, whose sequence of exchanges settles the order of equal keys; the two orders of equal keys can differ.";

constexpr const char* kRecordFileFooter =
    "FILE is a .PRO, indexed first (its BASE.NDX replaced), or a .NDX, used as it stands with the BASE.PRO "
    "beside it. Outputs are named BASE plus the tool's extension, beside FILE, and replace files of that name.";

// A refusal before the job: the system's message, exit 2.
int refuse(const Message& message) {
  PrintMessage(message);
  return kExitUsage;
}

// The opening of QBF, Rank and Sort: SelectRecordFile and the index, as command
// `number` does it. kExitDone when the job state holds the chosen names.
int openRecordFile(int32_t number, JobState& job, const std::string& file) {
  // The chosen file's folder stands for the current directory that the open dialog
  // would have left there: an index made for a .PRO lies beside it.
  job.outDir = std::filesystem::path(file).parent_path().string();
  if (!std::filesystem::exists(file)) {
    PrintMessage({std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)});
    std::cerr << "  (" << file << ")\n";
    return kExitUsage;
  }
  const JobResult opened = RunCliJob(number, job, RecordFileName{file});
  return opened.outcome == JobOutcome::Done ? kExitDone : ExitCodeOf(opened, job, file);
}

// --- query ---------------------------------------------------------------------------

struct QueryOptions {
  std::string file, to;
  std::vector<std::string> nests[3];  // --or, --and, --not
};

int runQuery(const QueryOptions& o) {
  QbfBoxes boxes;
  const char* names[3] = {"--or", "--and", "--not"};
  for (std::size_t nest = 0; nest < 3; ++nest) {
    if (o.nests[nest].size() > 3) {
      std::cerr << "At most three terms for " << names[nest] << ".\n";
      return kExitUsage;
    }
    for (std::size_t i = 0; i < o.nests[nest].size(); ++i) boxes[nest * 3 + i] = o.nests[nest][i];
  }
  if (boxes[0].empty()) return refuse(KeyWordError());
  JobState job;
  if (const int code = openRecordFile(kOpenQbf, job, o.file); code != kExitDone) return code;
  if (const std::optional<Message> refusal = RefuseQueryFile(o.to, job.gsProFile)) return refuse(*refusal);
  std::cout << ImpliedSearchStatement(boxes).gsSearchStatement << '\n';
  const JobResult result = RunCliJob(kRunQbf, job, QbfParams{ChoiceOf(job), boxes, o.to});
  if (result.done()) {
    PrintWritten(result);
    std::cout << "Records hit: " << result.records << '\n';
  }
  return ExitCodeOf(result, job, o.file);
}

// --- rank ----------------------------------------------------------------------------

struct RankOptions {
  std::string file;
  std::vector<std::string> terms;
  bool large = false;
};

int runRank(const RankOptions& o) {
  if (o.terms.size() > static_cast<std::size_t>(kRankSlots)) {
    std::cerr << "At most " << kRankSlots << " terms.\n";
    return kExitUsage;
  }
  RankParams params;
  params.large = o.large;
  for (std::size_t i = 0; i < o.terms.size(); ++i) {
    const std::size_t eq = o.terms[i].find('=');
    if (eq == std::string::npos) {
      std::cerr << "A term is given as WORD=WEIGHT (WORD= for no weight, = for a blank slot): " << o.terms[i] << '\n';
      return kExitUsage;
    }
    params.terms[i] = o.terms[i].substr(0, eq);
    params.weights[i] = o.terms[i].substr(eq + 1);
    // What the boxes would not have let through, key by key.
    for (char c : params.terms[i])
      if (const auto refusal = RankTermKeyRefusal(c)) return refuse(*refusal);
    for (char c : params.weights[i])
      if (const auto refusal = RankWeightKeyRefusal(c)) return refuse(*refusal);
  }
  if (const auto refusal = RankBeginRefusal(params)) return refuse(*refusal);
  JobState job;
  if (const int code = openRecordFile(kOpenRank, job, o.file); code != kExitDone) return code;
  params.file = ChoiceOf(job);
  const JobResult result = RunCliJob(kRunRank, job, params);
  if (result.done()) PrintWritten(result);
  return ExitCodeOf(result, job, o.file);
}

// --- sort ----------------------------------------------------------------------------

struct SortOptions {
  std::string file, tag;
  bool large = false;
};

int runSort(const SortOptions& o) {
  if (const auto refusal = SortBeginRefusal(o.tag)) return refuse(*refusal);
  JobState job;
  if (const int code = openRecordFile(kSort, job, o.file); code != kExitDone) return code;
  const JobResult result = RunCliJob(kSort, job, SortParams{ChoiceOf(job), o.tag, o.large});
  if (result.done()) PrintWritten(result);
  return ExitCodeOf(result, job, o.file);
}

// --- diction -------------------------------------------------------------------------

struct DictionOptions {
  std::string file, omit;
  bool large = false;
};

int runDiction(const DictionOptions& o) {
  if (!std::filesystem::is_regular_file(o.file)) {
    PrintMessage({std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)});
    std::cerr << "  (" << o.file << ")\n";
    return kExitUsage;
  }
  DictionParams params{o.file, o.omit.empty() ? OmitFileIn(ProgramFolder()) : o.omit, o.large, std::nullopt};
  // The job runs without a list after saying so.
  if (const auto missing = OmitListMissing(params.gsOmitFile)) PrintMessage(*missing);
  JobState job;
  const JobResult result = RunCliJob(kDiction, job, params);
  if (result.done()) {
    PrintWritten(result);
    std::cout << "Unique Words: " << result.records << '\n';
  }
  return ExitCodeOf(result, job, o.file);
}

}  // namespace

std::string ProgramFolder() {
  std::error_code ec;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::string() : self.parent_path().string();
}

void AddAnalysisCommands(CLI::App& app, int& exitCode) {
  auto query = std::make_shared<QueryOptions>();
  CLI::App* q = AddTableCommand(app, kOpenQbf);
  q->add_option("FILE", query->file, "The .PRO file (indexed first) or its .NDX; never changed")->required();
  q->add_option("--to", query->to, "The file the records hit go to; it must not exist yet")->required();
  q->add_option("--or", query->nests[0], "A term of the first nest (up to three; the first fills txt11)");
  q->add_option("--and", query->nests[1], "A term of the AND nest (up to three)");
  q->add_option("--not", query->nests[2], "A term of the NOT nest (up to three)");
  q->footer(std::string("A record is hit when a term of the first nest, and a term of the AND nest if it has any, "
                        "occur in it, and no term of the NOT nest does. Terms are whole words in any case; a final "
                        "* matches every word that begins with the rest. The implied search statement is printed "
                        "first; the records hit are written in file order, labels unchanged. No hit: exit 3, and "
                        "no file.\n") +
            kRecordFileFooter);
  q->callback([query, &exitCode] { exitCode = runQuery(*query); });

  auto rank = std::make_shared<RankOptions>();
  CLI::App* r = AddTableCommand(app, kOpenRank);
  r->add_option("FILE", rank->file, "The .PRO file (indexed first) or its .NDX; never changed")->required();
  r->add_option("--term", rank->terms,
                "WORD=WEIGHT, up to six, in the order of the form's slots; WORD= has no weight, = is a blank slot")
      ->required();
  r->add_flag("--large", rank->large, kLargeHelp);
  r->footer(std::string("Every occurrence of a term in a record adds its weight (digits only) to the record's "
                        "total; a final * on a term matches every word that begins with the rest. Terms take no "
                        "blank and none of the delimiters. Writes BASE.RNK, all records by falling total, and "
                        "BASE.TBL, the table of terms and order.\n") +
            kRecordFileFooter);
  r->callback([rank, &exitCode] { exitCode = runRank(*rank); });

  auto sort = std::make_shared<SortOptions>();
  CLI::App* s = AddTableCommand(app, kSort);
  s->add_option("FILE", sort->file, "The .PRO file (indexed first) or its .NDX; never changed")->required();
  s->add_option("--tag", sort->tag, "The field's tag as it stands at the left margin, blanks and hyphens kept")
      ->required();
  s->add_flag("--large", sort->large, kLargeHelp);
  s->footer(std::string("Each record's key is the rest of its last line that begins with the tag (in any case), "
                        "up to 75 characters, ^ and | made blanks. Writes BASE.SRT, the records in ascending "
                        "order of character codes (capitals before small letters); records without the field "
                        "come after those whose field is empty and before all others.\n") +
            kRecordFileFooter);
  s->callback([sort, &exitCode] { exitCode = runSort(*sort); });

  auto diction = std::make_shared<DictionOptions>();
  CLI::App* d = AddTableCommand(app, kDiction);
  d->add_option("FILE", diction->file, "Any text file; never changed")->required();
  d->add_option("--omit", diction->omit, "The omit list (default: OMIT.LST in the program's folder)");
  d->add_flag("--large", diction->large, kLargeHelp);
  d->footer(
      "Writes BASE.DIC beside FILE: every word with its count, most frequent first and alphabetical among equals, "
      "without the words of the omit list (one small-letter word a line) and without lines holding \"Record - \". "
      "Words are cut at blanks and punctuation but not at hyphens; \"--\" counts as a blank. Only groups followed "
      "by a lower count are listed, and the lowest group only when its count is 1.");
  d->callback([diction, &exitCode] { exitCode = runDiction(*diction); });
}

}  // namespace zv::cli
