// frmSift's commands: through RunCommand for the numbered ones, the sifter's steps for
// the others, and Copy, Help, Font and About, which are the window's own.
#include <QApplication>
#include <QClipboard>
#include <QPlainTextEdit>

#include "commands/command_table.h"
#include "core/dispatcher.h"
#include "forms/frm_about.h"
#include "forms/frm_main.h"
#include "forms/frm_options_fonts.h"
#include "forms/frm_sift.h"
#include "forms/help_window.h"
#include "forms/messages.h"
#include "records/sifter.h"

namespace zv::forms {

void FrmSift::RunCommand(int32_t commandNumber) {
  if (commandNumber == SiftCommandNumber(SiftAction::Dos)) {
    frmMain_.RunCommand(commandNumber);
    return;
  }
  JobState& job = frmMain_.job();
  const bool wasBusy = busy_;
  busy_ = true;
  CommandContext context{job, NoProgress(), static_cast<SiftView*>(this)};
  const JobResult result = zv::RunCommand(commandNumber, context, CommandTable());
  busy_ = wasBusy;
  if (result.error) showErrorForm(ErrorFormText(job.gsErrNumber, job.gsErrText, result.error->reason()));
}

void FrmSift::step(const std::function<void()>& run) {
  JobState& job = frmMain_.job();
  const bool wasBusy = busy_;
  busy_ = true;
  try {
    run();
  } catch (const ZvError& e) {
    // The steps report their own failures; one that escapes still gets frmError.
    job.gsErrNumber = ErrNumberText(e.number());
    job.gsErrText = e.text();
    busy_ = wasBusy;
    showErrorForm(ErrorFormText(job.gsErrNumber, job.gsErrText, e.reason()));
    return;
  }
  busy_ = wasBusy;
}

void FrmSift::doAction(SiftAction action) {
  if (busy_) return;
  JobState& job = frmMain_.job();
  using A = SiftAction;
  switch (action) {
    case A::Next: step([&] { SiftNext(job, *this); }); break;
    case A::Previous: step([&] { SiftPrevious(job, *this); }); break;
    case A::First: step([&] { SiftFirst(job, *this); }); break;
    case A::Last: step([&] { SiftLast(job, *this); }); break;
    case A::KeepList: step([&] { ToggleKeepList(job, *this); }); break;
    case A::Order: step([&] { OrderMenu(job, *this); }); break;
    case A::OrderToggle: step([&] { OrderToggle(job, *this); }); break;
    case A::Exit: step([&] { LeaveSifter(job, *this); }); break;
    case A::Copy: copyCommand(); break;
    case A::Help: helpCommand(); break;
    case A::Font: fontCommand(); break;
    case A::About: {
      FrmAbout about(this);
      ExecModal(about);
      break;
    }
    case A::Submenu:
    case A::Separator: break;
    default: RunCommand(SiftCommandNumber(action)); break;
  }
}

void FrmSift::copyCommand() {
  QClipboard* clipboard = QApplication::clipboard();
  clipboard->clear();
  QString selected = txtRecord_->textCursor().selectedText();
  if (selected.isEmpty()) {
    ShowMessage(this, MsgIcon::None, QStringLiteral("Copy Error"),
                QStringLiteral("No text has been selected for the copy command."));
    return;
  }
  // The editor gives its line breaks as paragraph separators.
  selected.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  clipboard->setText(selected);
}

void FrmSift::helpCommand() {
  QWidget* active = focusWidget() != nullptr ? focusWidget() : txtRecord_;
  active->setProperty("helpContext", kSiftHelpContext);
  ShowHelp(this, HelpPageForContext(HelpContextOf(active)));
}

void FrmSift::fontCommand() {
  const std::optional<QFont> font =
      ChooseFontOptions(*frmOptionsFonts_, txtRecord_->font(), store_, kSifterFontsSection, frmMain_.job().giInterrupt);
  if (font) txtRecord_->setFont(*font);
}

}  // namespace zv::forms
