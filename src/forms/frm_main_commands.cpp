// RunCommand of the desktop program, the actions of menus and toolbars, and shutdown.
#include "forms/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QRadioButton>

#include "commands/command_table.h"
#include "core/dispatcher.h"
#include "core/input_file.h"
#include "records/sifter.h"
#include "forms/app_settings.h"
#include "forms/center_form.h"
#include "forms/frm_about.h"
#include "forms/frm_error.h"
#include "forms/frm_filter.h"
#include "forms/frm_settings.h"
#include "forms/frm_sift.h"
#include "forms/help_window.h"
#include "forms/messages.h"
#include "forms/own_commands.h"
#include "forms/programs.h"
#include "forms/version_record.h"

namespace zv::forms {

namespace {

constexpr int32_t kDosWindow = 3000;
constexpr int32_t kShutdown = 3010;

}  // namespace

void FrmMain::RunCommand(int32_t commandNumber) {
  job_.glRecNum = 0;
  if (commandNumber == kDosWindow) {
    dosWindow();
    job_.glRecNum = 0;
    return;
  }
  if (commandNumber == kShutdown) {
    Shutdown();
    return;
  }
  const Command* command = FindCommand(CommandTable(), commandNumber);
  if (command == nullptr || command->handler == nullptr) return;  // no tool answers it yet
  if (command->input == CommandInput::Sifter) {
    frmSift_->RunCommand(commandNumber);
    job_.glRecNum = 0;
    return;
  }
  if (command->input == CommandInput::Own) {
    // The tool's own dialog gathers its input and runs it through runJob.
    if (const OwnCommand* own = FindOwnCommand(commandNumber)) own->run(*this, *command);
    job_.glRecNum = 0;
    return;
  }
  if (command->input != CommandInput::Capture) return;

  // The input first: the open dialog with its checks; a cancel ends the command.
  const std::optional<std::string> capture = frmFilter_->GetInputFile(job_, kCaptureDialogFilter);
  if (!capture) {
    job_.glRecNum = 0;
    return;
  }
  runFilterJob(commandNumber, FilterInput{*capture, {}}, *capture);
}

void FrmMain::runFilterJob(int32_t commandNumber, std::any params, const std::string& capture) {
  jobRunning_ = true;
  CommandContext context{job_, *frmFilter_, std::move(params)};
  const JobResult result = zv::RunCommand(commandNumber, context, CommandTable());
  jobRunning_ = false;
  QApplication::restoreOverrideCursor();
  // "Interrupt and quit this filtering." and the like were about the job.
  setStatusMsg(QString());

  switch (result.outcome) {
    case JobOutcome::Failed:
      // The frame has deleted what the job made; its window goes as on an interrupt.
      frmFilter_->ResetFilterForm();
      frmFilter_->hide();
      showErrorForm(DisplayText(Q(ErrorFormText(job_.gsErrNumber, job_.gsErrText, ReasonOf(result)))));
      job_.glRecNum = 0;
      EnableMain(true);
      return;
    case JobOutcome::ZeroRecords:
    case JobOutcome::Refused:
      // frmFilter stays on the screen, reset, until the next job takes it.
      if (result.message) ShowMessage(this, MsgIcon::Warning, result.message->title, result.message->text);
      frmFilter_->ResetFilterForm();
      EnableMain(true);
      activateWindow();
      break;
    case JobOutcome::Interrupted:
      frmFilter_->ResetFilterForm();
      EnableMain(true);
      frmFilter_->hide();
      activateWindow();
      break;
    case JobOutcome::Done:
      // The result waits in frmFilter for its OK.
      frmFilter_->FinishFilter(capture, result.files.size() > 0 ? result.files[0] : std::string(),
                               result.files.size() > 1 ? result.files[1] : std::string());
      break;
    case JobOutcome::Cancelled:
      EnableMain(true);
      break;
    case JobOutcome::NoCommand:
      break;
  }
}

JobResult FrmMain::runJob(int32_t commandNumber, std::any params, JobProgress& progress) {
  jobRunning_ = true;
  CommandContext context{job_, progress, std::move(params)};
  JobResult result = zv::RunCommand(commandNumber, context, CommandTable());
  jobRunning_ = false;
  QApplication::restoreOverrideCursor();
  setStatusMsg(QString());  // what the job's window said there was about the job
  if (result.outcome == JobOutcome::Failed) {
    showErrorForm(DisplayText(Q(ErrorFormText(job_.gsErrNumber, job_.gsErrText, ReasonOf(result)))));
    job_.glRecNum = 0;
    EnableMain(true);
  }
  return result;
}

void FrmMain::doAction(UiAction action, int32_t number) {
  switch (action) {
    case UiAction::Filter:
      frmFilter_->ResetFilterForm();
      RunCommand(number);
      break;
    case UiAction::Command:
    case UiAction::LabelCommand:  // frmRenumber's reset joins here with Renumber
    case UiAction::Cover:         // and frmCover with the header tool
      RunCommand(number);
      break;
    case UiAction::DialogOption:
      dialogButton();
      break;
    case UiAction::Settings:
      CenterForm(*frmSettings_, *this);
      frmSettings_->show();
      frmSettings_->raise();
      EnableMain(false);
      break;
    case UiAction::Help:
      ShowHelp(this);
      break;
    case UiAction::About: {
      FrmAbout about(this);
      ExecModal(about);
      break;
    }
    case UiAction::Submenu:
    case UiAction::Separator:
      break;
  }
}

void FrmMain::dialogButton() {
  // "DialogWeb" has no filter: it counts as no option chosen.
  for (std::size_t i = 0; i < 4; ++i) {
    if (optDial_[i]->isChecked()) {
      doAction(UiAction::Filter, DialogOptions()[i].number);
      return;
    }
  }
  ShowMessage(this, MsgIcon::Warning, QLatin1String(kDialogOptionErrorTitle), QLatin1String(kDialogOptionErrorText));
}

void FrmMain::dosWindow() {
  const QString terminal = TerminalCommand();
  const int result = RunProgram(terminal, 1);
  if (result < 32)
    ShowMessage(this, MsgIcon::None, QLatin1String(AppVersion().title),
                QStringLiteral("Error ") + QString::number(result) + QStringLiteral(" executing WinExec function."));
}

void FrmMain::showErrorForm(const QString& text) {
  frmError_->setMessage(text);
  EnableMain(false);
  ExecModal(*frmError_);
  EnableMain(true);
}

void FrmMain::shutdownSteps() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  // The jobs close their own files on every way out, so none is open here, and the
  // job state goes with the window.
  SaveWindowPosition(store_, *this);
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w != this && w->isVisible()) w->hide();
  QApplication::restoreOverrideCursor();
  shutDown_ = true;
}

void FrmMain::Shutdown() {
  if (shutDown_) return;
  shutdownSteps();
  close();
}

void FrmMain::closeEvent(QCloseEvent* event) {
  if (!shutDown_ && jobRunning_) {
    // Closing the window during a job interrupts it; the window stays.
    job_.giInterrupt = 1;
    event->ignore();
    return;
  }
  if (!shutDown_) shutdownSteps();
  event->accept();
  QCoreApplication::quit();
}

}  // namespace zv::forms
