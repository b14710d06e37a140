// The polishing commands on the desktop: file dialogs with the tools' own checks, the
// replace and records-per-page questions, the run in frmRenumber, and frmCover.
#include "forms/polish_own.h"

#include <optional>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "forms/center_form.h"
#include "forms/frm_cover.h"
#include "forms/frm_main.h"
#include "forms/frm_renumber.h"
#include "forms/frm_replace_labels.h"
#include "forms/messages.h"
#include "forms/file_dialogs.h"
#include "forms/settings_store.h"
#include "polish/cover_settings.h"
#include "polish/format.h"
#include "polish/polish_commands.h"
#include "polish/polish_files.h"

namespace zv::forms {

namespace {

std::string pathOf(const QString& chosen) { return QFile::encodeName(chosen).toStdString(); }

// The file dialogs, which check nothing of the name; the system's dialog leaves the
// current directory in the folder of the file chosen, where BASE.FMT and the like go.
QString choose(QWidget* parent, FileDialogMode mode, std::string_view filter) {
  const QString path =
      mode == FileDialogMode::Open ? GetOpenFileName(parent, filter) : GetSaveFileName(parent, filter);
  if (!path.isEmpty()) {
    const QFileInfo info(path);
    if (info.dir().exists()) QDir::setCurrent(info.absolutePath());
  }
  return path;
}

void warn(FrmMain& w, const Message& m) {
  // The format tests stop with the stop sign; every other refusal warns.
  const MsgIcon icon = m.title == kFormatErrorTitle ? MsgIcon::Critical : MsgIcon::Warning;
  ShowMessage(&w, icon, m.title, m.text);
}

// A dialog's cancel ends the tool without a word.
void backOut(FrmMain& w) {
  QApplication::restoreOverrideCursor();
  w.EnableMain(true);
  w.activateWindow();
}

// The open dialog until its answer passes `check`; nothing for a cancel.
template <class Check>
std::optional<std::string> chooseInput(FrmMain& w, std::string_view filter, Check check) {
  for (;;) {
    const QString chosen = choose(&w, FileDialogMode::Open, filter);
    if (chosen.isEmpty()) return std::nullopt;
    const std::string in = pathOf(chosen);
    if (const std::optional<Message> refusal = check(in)) {
      warn(w, *refusal);
      continue;
    }
    return in;
  }
}

// Renumber, Replace, Delete and Undelimit: the input, then a new output; a refusal of
// either brings the open dialog back.
struct NamedTool {
  std::string_view openFilter;
  std::string_view saveFilter;
  FileWording wording;
};

std::optional<PolishFiles> chooseFiles(FrmMain& w, const NamedTool& tool) {
  for (;;) {
    const auto in = chooseInput(w, tool.openFilter, [&](const std::string& p) { return CheckPolishInput(p, tool.wording); });
    if (!in) return std::nullopt;
    const QString chosen = choose(&w, FileDialogMode::Save, tool.saveFilter);
    if (chosen.isEmpty()) return std::nullopt;
    const std::string out = pathOf(chosen);
    if (const std::optional<Message> refusal = CheckPolishOutput(*in, out, tool.wording)) {
      warn(w, *refusal);
      continue;
    }
    return PolishFiles{*in, out};
  }
}

// Runs the job in frmRenumber and shows how it ended.
void runInForm(FrmMain& w, const Command& command, std::any params, const QString& outputCaption,
               const std::string& inFile) {
  FrmRenumber& form = RenumberForm(w);
  form.showForRun(outputCaption);
  if (command.number == polish::kDivide) form.setNames(QString(), Q(inFile));
  const JobResult result = w.runJob(command.number, std::move(params), form);
  switch (result.outcome) {
    case JobOutcome::Done: {
      if (result.message) warn(w, *result.message);  // Divide's Files Limit
      // Divide names each file as it makes it; the others name their one output.
      const QString out = command.number == polish::kDivide || result.files.empty() ? QString() : Q(result.files[0]);
      form.setNames(out, Q(inFile));
      form.showFinished();
      break;
    }
    case JobOutcome::Refused:
      if (result.message) warn(w, *result.message);
      form.abandon();
      break;
    case JobOutcome::Failed:
      // Divide's abandoning fails on its own once files are made: its window stays
      // as the job left it, and the files stay on the disk.
      if (command.number == polish::kDivide && !result.files.empty()) break;
      form.abandon();
      break;
    default:
      form.abandon();
      break;
  }
}

void runNamed(FrmMain& w, const Command& command, const NamedTool& tool, const QString& outputCaption,
              const std::function<std::any(const PolishFiles&)>& params = {}) {
  RenumberForm(w).ResetRenumberForm();
  w.EnableMain(false);
  const std::optional<PolishFiles> files = chooseFiles(w, tool);
  if (!files) {
    backOut(w);
    return;
  }
  runInForm(w, command, params ? params(*files) : std::any(*files), outputCaption, files->inFile);
}

// The desktop's settings store as the cover commands read and write it.
class StoreAccess final : public SettingsAccess {
 public:
  explicit StoreAccess(SettingsStore& store) : store_(store) {}
  std::string GetSetting(std::string_view section, std::string_view key, std::string_view def) const override {
    return store_.GetSetting(Q(section), Q(key), Q(def)).toStdString();
  }
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override {
    store_.SaveSetting(Q(section), Q(key), Q(value));
  }

 private:
  SettingsStore& store_;
};

}  // namespace

void RunRenumberLabels(FrmMain& w, const Command& command) {
  runNamed(w, command, {kRenumberOpenFilter, kRenumberSaveFilter, kRenumberWording}, QStringLiteral("Renumbered File:"));
}

void RunDeleteLabels(FrmMain& w, const Command& command) {
  runNamed(w, command, {kRecordFilesFilter, kAllFilesFilter, kLabelToolWording}, QStringLiteral("Renumbered File"));
}

void RunUndelimitRecords(FrmMain& w, const Command& command) {
  runNamed(w, command, {kRecordFilesFilter, kAllFilesFilter, kUndelimitWording}, QStringLiteral("Output File:"));
}

void RunReplaceLabels(FrmMain& w, const Command& command) {
  RenumberForm(w).ResetRenumberForm();
  // The mode and its texts first; Cancel there ends the command.
  FrmReplaceLabels dialog(&w);
  dialog.ResetReplaceForm();
  CenterForm(dialog, w);
  if (ExecModal(dialog) != QDialog::Accepted) {
    backOut(w);
    return;
  }
  runNamed(w, command, {kRecordFilesFilter, kAllFilesFilter, kLabelToolWording}, QStringLiteral("Renumbered File"),
           [&](const PolishFiles& files) { return std::any(dialog.params(files)); });
}

void RunLineBreaks(FrmMain& w, const Command& command) {
  RenumberForm(w).ResetRenumberForm();
  w.EnableMain(false);
  const auto in = chooseInput(w, kLineBreaksFilter, [](const std::string& p) { return CheckBreaksInput(p, ".FMT"); });
  if (!in) return backOut(w);
  runInForm(w, command, PolishInput{*in}, QStringLiteral("Reformatted File:"), *in);
}

void RunPageBreaks(FrmMain& w, const Command& command) {
  RenumberForm(w).ResetRenumberForm();
  w.EnableMain(false);
  const auto in = chooseInput(w, kPageBreaksFilter, [](const std::string& p) { return CheckBreaksInput(p, ".BRK"); });
  if (!in) return backOut(w);
  // The input box until its answer is taken. Cancel gives an empty answer, which the
  // job cannot convert: it fails as it always has.
  std::string answer;
  for (;;) {
    answer = InputBox(&w, Q(kPerPagePrompt), Q(kPerPageTitle)).toStdString();
    const PerPageAnswer checked = CheckRecordsPerPage(answer);
    if (checked.kind != PerPageAnswer::Kind::AskAgain) break;
    warn(w, checked.message);
  }
  runInForm(w, command, PageBreaksParams{*in, answer}, QStringLiteral("Page-broken file:"), *in);
}

void RunDivideRecords(FrmMain& w, const Command& command) {
  RenumberForm(w).ResetRenumberForm();
  w.EnableMain(false);
  const auto in = chooseInput(w, kRecordFilesFilter, [](const std::string& p) { return CheckPolishInput(p, {1, 1}); });
  if (!in) return backOut(w);
  runInForm(w, command, PolishInput{*in}, QStringLiteral("Output File:"), *in);
}

void RunCoverOpen(FrmMain& w, const Command& command) {
  FrmCover& form = CoverForm(w);
  CoverFields fields = form.fields();
  StoreAccess store(w.store());
  const JobResult loaded = w.runJob(command.number, CoverSettingsParams{&store, &fields}, NoProgress());
  if (loaded.done()) form.setFields(fields);
  CenterForm(form, w);
  w.EnableMain(false);
  ExecModal(form);
  w.EnableMain(true);
}

void RunCoverSaveSettings(FrmMain& w, const Command& command) {
  CoverFields fields = CoverForm(w).fields();
  StoreAccess store(w.store());
  (void)w.runJob(command.number, CoverSettingsParams{&store, &fields}, NoProgress());
  w.store().sync();
}

void RunCoverSave(FrmMain& w, const Command& command) {
  FrmCover& form = CoverForm(w);
  CoverParams params{form.fields(), {}, {}};
  form.savingStarted();
  const SaveMode mode = params.fields.saveMode;
  // Both names are asked for before anything is written: a cancel leaves no file.
  if (mode == SaveMode::Prefix || mode == SaveMode::PrefixWithBreak) {
    w.EnableMain(false);
    const QString in = choose(&form, FileDialogMode::Open, kCoverFilter);
    if (in.isEmpty()) return form.quit();
    params.inFile = pathOf(in);
  }
  if (mode != SaveMode::None) {
    const QString out = choose(&form, FileDialogMode::Save, kCoverFilter);
    if (out.isEmpty()) return form.quit();
    params.outFile = pathOf(out);
  }
  const JobResult result = w.runJob(command.number, params, form);
  switch (result.outcome) {
    case JobOutcome::Done:
      form.savingDone();
      break;
    case JobOutcome::Refused:
      if (result.message) warn(w, *result.message);
      form.quit();
      break;
    default:  // the error was shown in frmError
      form.quit();
      break;
  }
}

}  // namespace zv::forms
