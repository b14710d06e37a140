// The polishing tools on the command line: options in, the tool's job, exit codes out.
#include "cli/cli_polish.h"

#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "cli/cli.h"
#include "cli/cli_host.h"
#include "cli/cli_job.h"
#include "core/settings_file.h"
#include "polish/cover.h"
#include "polish/cover_settings.h"
#include "polish/format.h"
#include "polish/polish_commands.h"
#include "polish/polish_files.h"
#include "polish/replace_labels.h"

namespace zv::cli {

namespace {

// What the user reads of a job that ended: the files written on stdout, a message the
// job ended with (the Files Limit) on stderr.
int finish(const JobResult& result, const JobState& job, const std::string& subject) {
  if (result.done()) {
    if (result.message) PrintMessage(*result.message);
    PrintWritten(result);
    std::cout << "Records: " << result.records << '\n' << "Elapsed: " << result.elapsed << '\n';
  } else if (result.outcome == JobOutcome::Failed && !result.files.empty()) {
    // Divide keeps what it made when its job is abandoned.
    for (const std::string& f : result.files) std::cerr << "Kept: " << f << '\n';
  }
  return ExitCodeOf(result, job, subject);
}

template <class Params>
int runPolish(int32_t number, const Params& params, const std::string& subject) {
  JobState job;
  const JobResult result = RunCliJob(number, job, params);
  return finish(result, job, subject);
}

// The desktop's settings file, read only.
class StoredSettings final : public SettingsAccess {
 public:
  StoredSettings() : file_(SettingsFile::DefaultPath()) {}
  std::string GetSetting(std::string_view section, std::string_view key, std::string_view def) const override {
    return file_.value(section, key).value_or(std::string(def));
  }
  void SaveSetting(std::string_view, std::string_view, std::string_view) override {}

 private:
  SettingsFile file_;
};

struct PolishOptions {
  std::string in, out;
  // replace-labels
  std::optional<std::string> single;
  bool isDouble = false, surround = false;
  std::string begin, end;
  // page-breaks
  std::string perPage;
  // cover
  std::string prefix, prefixBreak, toLabel, fromLabel;
  std::optional<std::string> forText, from1, from2, from3, subject, date, jobNo, database, memo;
};

void addNamedCommand(CLI::App& app, int32_t number, PolishOptions& o, int& exitCode, const char* inHelp) {
  CLI::App* sub = AddTableCommand(app, number);
  sub->add_option("IN", o.in, inHelp)->required();
  sub->add_option("--to", o.out, "The file to write; it must not exist")->required();
  sub->callback([&o, &exitCode, number] { exitCode = runPolish(number, PolishFiles{o.in, o.out}, o.in); });
}

int runReplaceLabels(const PolishOptions& o) {
  ReplaceLabelsParams p{{o.in, o.out}, ReplaceMode::Single, o.single.value_or(""), o.begin, o.end};
  if (o.isDouble) p.mode = ReplaceMode::Double;
  if (o.surround) p.mode = ReplaceMode::Surround;
  return runPolish(polish::kReplaceLabels, p, o.in);
}

int runPageBreaks(const PolishOptions& o) {
  // The input box's rules: an answer it would ask again for is refused here; one that
  // does not convert (empty, too large) fails the job as it fails the desktop's.
  const PerPageAnswer answer = CheckRecordsPerPage(o.perPage);
  if (answer.kind == PerPageAnswer::Kind::AskAgain) {
    PrintMessage(answer.message);
    std::cerr << "  (--per-page \"" << o.perPage << "\")\n";
    return kExitUsage;
  }
  return runPolish(polish::kPageBreaks, PageBreaksParams{o.in, o.perPage}, o.in);
}

int runCover(const PolishOptions& o) {
  JobState job;
  // Command 3230 fills the fields from the settings the desktop program saved.
  StoredSettings store;
  CoverFields fields;
  const JobResult loaded = RunCliJob(polish::kCoverLoadSettings, job, CoverSettingsParams{&store, &fields});
  if (!loaded.done()) return ExitCodeOf(loaded, job, SettingsFile::DefaultPath());

  if (o.toLabel == "requester") fields.toLabel = ToLabel::Requester;
  if (o.toLabel == "client") fields.toLabel = ToLabel::Client;
  if (o.fromLabel == "library") fields.fromLabel = FromLabel::Library;
  if (o.fromLabel == "searcher") fields.fromLabel = FromLabel::Searcher;
  if (o.fromLabel == "firm") fields.fromLabel = FromLabel::Firm;
  const auto set = [](std::string& field, const std::optional<std::string>& given) {
    if (given) field = BoxText(*given);
  };
  set(fields.to, o.forText);
  set(fields.from1, o.from1);
  set(fields.from2, o.from2);
  set(fields.from3, o.from3);
  set(fields.subject, o.subject);
  set(fields.jobNo, o.jobNo);
  set(fields.database, o.database);
  set(fields.memo, o.memo);
  fields.date = o.date ? BoxText(*o.date) : TodayCoverDate();

  CoverParams params{fields, {}, o.out};
  if (!o.prefix.empty()) {
    params.fields.saveMode = SaveMode::Prefix;
    params.inFile = o.prefix;
  } else if (!o.prefixBreak.empty()) {
    params.fields.saveMode = SaveMode::PrefixWithBreak;
    params.inFile = o.prefixBreak;
  } else {
    params.fields.saveMode = SaveMode::SepFile;
  }
  const int32_t number =
      LayoutOf(params.fields) == CoverLayout::Firm ? polish::kCoverFirm : polish::kCoverLibrary;
  const JobResult result = RunCliJob(number, job, params);
  if (result.done()) PrintWritten(result);
  return ExitCodeOf(result, job, params.inFile);
}

}  // namespace

void AddPolishCommands(CLI::App& app, int& exitCode) {
  // The options outlive the parse: CLI11 fills them, the callbacks read them.
  static PolishOptions o;
  o = PolishOptions{};

  addNamedCommand(app, polish::kRenumber, o, exitCode, "The record file (never changed)");
  addNamedCommand(app, polish::kDeleteLabels, o, exitCode, "The record file (never changed)");
  addNamedCommand(app, polish::kUndelimit, o, exitCode, "The file of TAGed records (never changed)");

  CLI::App* replace = AddTableCommand(app, polish::kReplaceLabels);
  replace->add_option("IN", o.in, "The record file (never changed)")->required();
  replace->add_option("--to", o.out, "The file to write; it must not exist")->required();
  CLI::Option* single = replace->add_option("--single", o.single, "Replace each label with TEXT");
  CLI::Option* twice = replace->add_flag("--double", o.isDouble, "Put each record between --begin and --end; labels go");
  CLI::Option* around =
      replace->add_flag("--surround", o.surround, "Put each record with its label between --begin and --end");
  replace->add_option("--begin", o.begin, "The beginning record marker (may be empty)");
  replace->add_option("--end", o.end, "The ending record marker (may be empty)");
  single->excludes(twice)->excludes(around);
  twice->excludes(around);
  replace->footer(
      "Exactly one of --single, --double, --surround. Every mode ends the file with the ending marker (empty "
      "with --single) and an empty line.");
  replace->callback([&exitCode] {
    if (o.single.has_value() + o.isDouble + o.surround != 1) {
      std::cerr << "replace-labels: give one of --single TEXT, --double, --surround\n";
      exitCode = kExitUsage;
      return;
    }
    exitCode = runReplaceLabels(o);
  });

  CLI::App* lineBreaks = AddTableCommand(app, polish::kLineBreaks);
  lineBreaks->add_option("IN", o.in, "The .PRO of TAGed DIALOG records (never changed)")->required();
  lineBreaks->footer(
      "Writes BASE.FMT in the current directory (BASE: IN's name without folder and last extension; IN's whole "
      "path when it holds no \".\"), replacing a file of that name. A last paragraph that no empty line, tagged "
      "line or label follows is not written.");
  lineBreaks->callback([&exitCode] { exitCode = runPolish(polish::kLineBreaks, PolishInput{o.in}, o.in); });

  CLI::App* pageBreaks = AddTableCommand(app, polish::kPageBreaks);
  pageBreaks->add_option("IN", o.in, "The record file (never changed)")->required();
  pageBreaks->add_option("--per-page", o.perPage, "Records per page, 1 to 99")->required();
  pageBreaks->footer(
      "Writes BASE.BRK in the current directory, replacing a file of that name, with a line holding a form feed "
      "above records N + 1, 2N + 1... An empty --per-page or one past 32767 fails as a cancelled input box "
      "does (error 13 or 6).");
  pageBreaks->callback([&exitCode] { exitCode = runPageBreaks(o); });

  CLI::App* divide = AddTableCommand(app, polish::kDivide);
  divide->add_option("IN", o.in, "The record file (never changed); its first line must be a label")->required();
  divide->footer(
      "Writes BASE.001, BASE.002... (at most 999) in the current directory, replacing files of those names. Each "
      "file holds a record without its label and the line behind it. After the first file is made, an interrupt "
      "or an error ends as error 13 (exit 4) and the files made are kept.");
  divide->callback([&exitCode] { exitCode = runPolish(polish::kDivide, PolishInput{o.in}, o.in); });

  CLI::App* page = AddTableCommand(app, polish::kCoverLibrary);
  page->add_option("--to", o.out, "The file to write (replaced if it exists)")->required();
  CLI::Option* pre = page->add_option("--prefix", o.prefix, "Put the page in front of this file (never changed)");
  CLI::Option* preBreak =
      page->add_option("--prefix-break", o.prefixBreak, "The same, with a page break between page and file");
  pre->excludes(preBreak);
  page->add_option("--to-label", o.toLabel, "The To label")->check(CLI::IsMember({"requester", "client"}));
  page->add_option("--from-label", o.fromLabel, "The From label; firm chooses the research firm's layout")
      ->check(CLI::IsMember({"library", "searcher", "firm"}));
  page->add_option("--for", o.forText, "The To box: who the results are for");
  page->add_option("--from1", o.from1, "The first From box");
  page->add_option("--from2", o.from2, "The second From box");
  page->add_option("--from3", o.from3, "The third From box");
  page->add_option("--subject", o.subject, "The subject");
  page->add_option("--date", o.date, "The date (default: today, as \"mmmm d, yyyy\")");
  page->add_option("--job-no", o.jobNo, "The job number");
  page->add_option("--database", o.database, "The databases and dates searched (wrapped at 70)");
  page->add_option("--memo", o.memo, "A memo (wrapped at 70)");
  page->footer(
      "Without --prefix or --prefix-break the page is a file of its own. Options not given take the settings the "
      "desktop program saved under \"Header/Cover\" (ZORVANTA_SETTINGS names another settings file), and their "
      "defaults: requester, library, empty texts.");
  page->callback([&exitCode] { exitCode = runCover(o); });
}

}  // namespace zv::cli
