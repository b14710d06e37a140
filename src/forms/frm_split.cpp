// frmSplit: the two names, the save dialogs behind them, the bar, and the split job.
#include <QApplication>
#include <QFile>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/file_display_widget.h"
#include "forms/frm_file_view.h"
#include "forms/frm_filter.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "viewer/split.h"

namespace zv::forms {

namespace {

constexpr std::string_view kSaveFilter =
    "All Files (*.*)|*.*|.COV Files|*.cov|.PRO Files|*.PRO|.KEP Files|*.kep|.ORD Files|*.ord|.QRY Files|*.QRY|"
    ".RNK Files|*.rnk|.SRT Files|*.srt|.REN Files|*.ren|.BRK Files|*.brk|.FMT Files|*.FMT|";

}  // namespace

FrmSplit::FrmSplit(FrmMain& frmMain, FrmFileView& viewer) : QDialog(&frmMain), frmMain_(frmMain), viewer_(viewer) {
  setObjectName(QStringLiteral("frmSplit"));
  setWindowTitle(Q(kSplitTitle));
  setModal(false);
  setProperty("helpContext", kSplitHelpContext);

  auto* layout = new QVBoxLayout(this);
  const char* captions[2] = {"First file", "Second file"};
  for (std::size_t i = 0; i < 2; ++i) {
    auto* panel = new QGroupBox(QLatin1String(captions[i]), this);
    auto* inside = new QVBoxLayout(panel);
    txtSplitFile_[i] = new QLineEdit(panel);
    txtSplitFile_[i]->setObjectName(QStringLiteral("txtSplitFile%1").arg(i + 1));
    txtSplitFile_[i]->setMinimumWidth(360);
    txtSplitFile_[i]->installEventFilter(this);
    inside->addWidget(txtSplitFile_[i]);
    layout->addWidget(panel);
  }
  layout->addWidget(new QLabel(QStringLiteral("For Save As dialog, double click in text boxes."), this));
  pnlProgress_ = PercentBar(this, false);
  layout->addWidget(pnlProgress_);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  cmdSplit_ = new QPushButton(QStringLiteral("&Split"), this);
  cmdOkay_ = new QPushButton(QStringLiteral("OK"), this);
  cmdCancel_ = new QPushButton(QStringLiteral("Cancel"), this);
  cmdHelp_ = new QPushButton(QStringLiteral("&Help"), this);
  const std::pair<QPushButton*, const char*> named[] = {
      {cmdSplit_, "cmdSplit"}, {cmdOkay_, "cmdOkay"}, {cmdCancel_, "cmdCancel"}, {cmdHelp_, "cmdHelp"}};
  for (const auto& [button, name] : named) {
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  layout->addLayout(buttons);
  connect(cmdSplit_, &QPushButton::clicked, this, &FrmSplit::cmdSplitClick);
  connect(cmdOkay_, &QPushButton::clicked, this, &FrmSplit::cmdOkayClick);
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmSplit::cmdCancelClick);
  connect(cmdHelp_, &QPushButton::clicked, this, &FrmSplit::cmdHelpClick);
  ResetSplitForm();
}

void FrmSplit::ResetSplitForm() {
  for (QLineEdit* field : txtSplitFile_) field->clear();
  frmMain_.job().gsInFile.clear();
  pnlProgress_->setValue(0);
  cmdSplit_->setEnabled(true);
  cmdHelp_->setEnabled(true);
  cmdCancel_->setEnabled(true);
  cmdCancel_->setVisible(true);
  cmdOkay_->setVisible(false);
  txtSplitFile_[0]->setFocus();
}

std::string FrmSplit::gsSplitFile1() const { return QFile::encodeName(txtSplitFile_[0]->text()).toStdString(); }
std::string FrmSplit::gsSplitFile2() const { return QFile::encodeName(txtSplitFile_[1]->text()).toStdString(); }

void FrmSplit::showEvent(QShowEvent* event) {
  adjustSize();
  CenterForm(*this, frmMain_);
  QDialog::showEvent(event);
  txtSplitFile_[0]->setFocus();
}

bool FrmSplit::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick) {
    for (std::size_t i = 0; i < 2; ++i)
      if (watched == txtSplitFile_[i]) {
        txtSplitFileDoubleClick(static_cast<int>(i));
        return true;
      }
  }
  return QDialog::eventFilter(watched, event);
}

void FrmSplit::txtSplitFileDoubleClick(int index) {
  // The save dialog's cancel (32755) returns to the form without a word.
  const QString path = viewer_.chooseFile(true, kSaveFilter);
  if (path.isEmpty()) return;
  txtSplitFile_[static_cast<std::size_t>(index)]->setText(path);
  if (index == 0) {
    txtSplitFile_[1]->setFocus();
  } else {
    cmdSplit_->setFocus();
  }
}

void FrmSplit::cmdSplitClick() {
  for (QLineEdit* field : txtSplitFile_) {
    if (field->text().isEmpty()) {
      field->setFocus();
      return;
    }
  }
  frmMain_.RunCommand(kSplitFile);
}

void FrmSplit::RunSplit(const Command& command) {
  if (!isVisible()) return;  // 2901 runs from this form alone
  cmdSplit_->setEnabled(false);
  cmdHelp_->setEnabled(false);
  cmdCancel_->setEnabled(false);
  FileDisplay& display = viewer_.display().display();
  SplitParams params{display.fileName(), display.selLine(), gsSplitFile1(), gsSplitFile2()};
  frmMain_.job().gsInFile = params.inFile;
  // The display holds the file open: it lets go while the file is read.
  viewer_.releaseFile();
  const JobResult result = frmMain_.runJob(command.number, params, *this);
  viewer_.restoreFile();
  viewer_.display().clearSelection();
  if (result.done()) {
    pnlProgress_->setValue(100);
    cmdSplit_->setEnabled(false);
    cmdOkay_->setVisible(true);
    cmdOkay_->setFocus();
    cmdCancel_->setVisible(false);
    cmdHelp_->setEnabled(true);
    return;
  }
  // A refusal or a failure (frmError has been shown): nothing was written, and the
  // names may be given again.
  if (result.outcome == JobOutcome::Refused && result.message)
    ShowMessage(this, MsgIcon::Warning, result.message->title, result.message->text);
  pnlProgress_->setValue(0);
  cmdSplit_->setEnabled(true);
  cmdHelp_->setEnabled(true);
  cmdCancel_->setEnabled(true);
}

void FrmSplit::jobStarted(const Start& /*start*/) {
  pnlProgress_->setValue(0);
  repaintClock_.invalidate();
}

void FrmSplit::lineDone(int32_t line, int32_t totalLines) {
  if (repaintClock_.isValid() && repaintClock_.elapsed() < FrmFilter::kRepaintMs) return;
  repaintClock_.start();
  if (totalLines > 0) pnlProgress_->setValue(static_cast<int>(static_cast<int64_t>(line) * 100 / totalLines));
  QCoreApplication::processEvents();
}

void FrmSplit::cmdCancelClick() {
  ResetSplitForm();
  viewer_.display().clearSelection();
  viewer_.setEnabled(true);
  hide();
  viewer_.activateWindow();
}

void FrmSplit::cmdOkayClick() {
  ResetSplitForm();
  frmMain_.EnableMain(true);
  // The viewer was disabled when the form came up; it is the window the user goes
  // back to, with its file open again.
  viewer_.setEnabled(true);
  hide();
  viewer_.activateWindow();
}

void FrmSplit::cmdHelpClick() {
  QKeyEvent press(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
  QApplication::sendEvent(focusWidget() != nullptr ? focusWidget() : this, &press);
}

void FrmSplit::reject() {
  // Escape and the close box are Cancel while Cancel is there, OK after the split.
  if (cmdOkay_->isVisible()) {
    cmdOkayClick();
  } else if (cmdCancel_->isEnabled()) {
    cmdCancelClick();
  }
}

}  // namespace zv::forms
