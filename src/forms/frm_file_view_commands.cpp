// frmFileView's menus, toolbar and commands: the viewer's own (Copy, Font, Help, Jump,
// Split's check) and those of src/viewer over the display.
#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QKeyEvent>
#include <QToolButton>

#include "core/error.h"
#include "forms/file_display_widget.h"
#include "forms/frm_about.h"
#include "forms/frm_file_view.h"
#include "forms/frm_main.h"
#include "forms/frm_options_fonts.h"
#include "forms/frm_sift.h"
#include "forms/messages.h"
#include "forms/picture_toolbar.h"
#include "forms/viewer_pictures.h"

namespace zv::forms {

namespace {

constexpr int64_t kMaxCopyBytes = int64_t{64} << 20;

// "Not found" is news, the rest are the user's mistakes.
MsgIcon iconOf(const Message& m) {
  return m.title == "Text Not Found" || m.title == "Last Record" ? MsgIcon::Information : MsgIcon::Warning;
}

}  // namespace

void FrmFileView::buildMenus() {
  BuildMenuTree(
      menuBar(), ViewerMenuRows(), [](const ViewerMenuRow&, QMenu*) {},
      [this](const ViewerMenuRow& row, QAction* action) {
        const ViewerAction what = row.action;
        connect(action, &QAction::triggered, this, [this, what] { doAction(what); });
      });
}

// The viewer's captions keep their colour in the disabled group too (while Split is open).
QWidget* FrmFileView::buildToolbar() {
  return BuildPictureToolbar(central_, ViewerButtons(), &ViewerPicture, kViewerPictureSize, true,
                             [this](int i, const ViewerButton& b, QToolButton* button) {
                               button->installEventFilter(this);
                               const ViewerAction what = b.action;
                               connect(button, &QToolButton::clicked, this, [this, what] { doAction(what); });
                               cmdTB_[static_cast<std::size_t>(i)] = button;
                             });
}

void FrmFileView::buttonHover(QToolButton* button, bool entering) {
  HoverPictureButton(button, &ViewerPicture, entering, true);
  if (entering) display_->setFocus();
}

bool FrmFileView::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Enter:
    case QEvent::Leave:
      if (auto* button = qobject_cast<QToolButton*>(watched); button != nullptr && button->parentWidget() == toolbar_)
        buttonHover(button, event->type() == QEvent::Enter);
      break;
    case QEvent::Resize:
      if (watched == central_) placeChildren();
      break;
    default:
      break;
  }
  return QMainWindow::eventFilter(watched, event);
}

void FrmFileView::doAction(ViewerAction action) {
  FileDisplay& display = display_->display();
  std::string& gsSearchText = frmMain_.frmSift().sift.gsSearchText;  // the sifter's too
  using A = ViewerAction;
  switch (action) {
    case A::Open: frmMain_.RunCommand(kOpenFileView); break;
    case A::Dos: frmMain_.RunCommand(3000); break;
    case A::Split: splitCommand(); break;
    case A::Exit: exitCommand(); break;
    case A::Copy: copyCommand(); break;
    case A::FindText: fileview::FindText(display, *this, gsSearchText); break;
    case A::RepeatSearch: fileview::RepeatSearch(display, *this, gsSearchText); break;
    case A::RecordStepper: fileview::RecordStepper(display); break;
    case A::JumpToLine: jumpCommand(); break;
    case A::Top: display_->setTopLine(1); break;
    case A::Bottom: fileview::Bottom(display); break;
    case A::Font: fontCommand(); break;
    case A::Help: helpCommand(); break;
    case A::About: {
      FrmAbout about(this);
      ExecModal(about);
      break;
    }
    case A::Submenu:
    case A::Separator: break;
  }
  display_->viewport()->update();
}

std::string FrmFileView::inputBox(std::string_view prompt, std::string_view title) {
  return InputBox(this, Q(prompt), Q(title)).toLatin1().toStdString();
}

void FrmFileView::message(const Message& m) { ShowMessage(this, iconOf(m), m.title, m.text); }

void FrmFileView::jumpCommand() {
  try {
    fileview::JumpToLine(display_->display(), *this);
  } catch (const ZvError& e) {
    // Above 32767 the 16-bit number overflows: the error goes to frmError.
    JobState& job = frmMain_.job();
    job.gsErrNumber = ErrNumberText(e.number());
    job.gsErrText = e.text();
    frmMain_.showErrorForm(DisplayText(Q(ErrorFormText(job.gsErrNumber, job.gsErrText))));
  }
}

void FrmFileView::splitCommand() {
  if (const std::optional<Message> refusal = fileview::SplitRefusal(display_->display())) {
    message(*refusal);
    return;
  }
  frmSplit_->ResetSplitForm();
  setEnabled(false);
  frmSplit_->show();
  frmSplit_->raise();
  frmSplit_->activateWindow();
}

void FrmFileView::copyCommand() {
  QClipboard* clipboard = QApplication::clipboard();
  clipboard->clear();
  // Lines selected from the top of a large file to its end would not fit the
  // clipboard; Split is the way to take such a part.
  if (display_->display().selLength() > kMaxCopyBytes) {
    ShowMessage(this, MsgIcon::Warning, QStringLiteral("Copy Error"),
                QStringLiteral("The selection is too large for the clipboard.  Use Split to write a part of the "
                               "file to a file of its own."));
    return;
  }
  const QString selected = display_->selectedText();
  if (selected.isEmpty()) {
    ShowMessage(this, MsgIcon::None, QStringLiteral("Copy Error"),
                QStringLiteral("No text has been selected for the copy command."));
    return;
  }
  clipboard->setText(selected);
}

void FrmFileView::fontCommand() {
  const std::optional<QFont> font = ChooseFontOptions(*frmOptionsFonts_, display_->font(), store_,
                                                      kViewerFontsSection, frmMain_.job().giInterrupt);
  if (font) display_->setFont(*font);
}

void FrmFileView::helpCommand() {
  // Sends the key F1, which opens the page of the element in focus.
  QWidget* target = focusWidget() != nullptr ? focusWidget() : display_;
  QKeyEvent press(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
  QApplication::sendEvent(target, &press);
}

void RunOpenFileView(FrmMain& frmMain, const Command& command) { FrmFileView::Of(frmMain).Open(command); }

void RunSplitFile(FrmMain& frmMain, const Command& command) { FrmFileView::Of(frmMain).frmSplit().RunSplit(command); }

}  // namespace zv::forms
