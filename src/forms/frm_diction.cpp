// frmDiction: the line and word counters while the list is made, and its file at the end.
#include "forms/frm_diction.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/files.h"
#include "core/input_file.h"
#include "forms/center_form.h"
#include "forms/frm_main.h"
#include "forms/frm_startup.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

FrmDiction& FrmDiction::Of(FrmMain& frmMain) {
  if (auto* existing = frmMain.findChild<FrmDiction*>(QStringLiteral("frmDiction"))) return *existing;
  return *new FrmDiction(frmMain);
}

void FrmDiction::Run(FrmMain& frmMain, const Command&) {
  std::string input;
  for (;;) {
    input = ChooseAnalysisFile(&frmMain, FileDialogKind::Open, kDictionDialogFilter);
    if (input.empty()) return;
    // The dialog takes any name; one that is not there is said so.
    if (Exist(input)) break;
    ShowMessage(&frmMain, MsgIcon::Warning, kFileNotFoundTitle, kFileNotFoundText);
  }
  DictionParams params;
  params.gsInFile = input;
  params.gsOmitFile = OmitFileIn(QFile::encodeName(AppPath()).toStdString());
  // Without the list the job runs, after saying so.
  if (const std::optional<Message> missing = OmitListMissing(params.gsOmitFile))
    ShowMessage(&frmMain, MsgIcon::Information, missing->title, missing->text);
  Of(frmMain).run(params);
}

FrmDiction::FrmDiction(FrmMain& frmMain) : QDialog(&frmMain), frmMain_(frmMain) {
  setObjectName(QStringLiteral("frmDiction"));
  setWindowTitle(QStringLiteral("Generating Diction List"));
  setModal(false);
  setMinimumWidth(420);

  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  panels_.lineOdom = OdometerPanel("pnlLineOdom", this, 22);
  panels_.recOdom = OdometerPanel("pnlWords", this, 22);
  grid->addWidget(new QLabel(QStringLiteral("Processing Line:"), this), 0, 0);
  grid->addWidget(panels_.lineOdom, 0, 1);
  grid->addWidget(new QLabel(QStringLiteral("Unique Words:"), this), 1, 0);
  grid->addWidget(panels_.recOdom, 1, 1);
  grid->setColumnStretch(2, 1);
  layout->addLayout(grid);
  panels_.bar = PercentBar(this);
  layout->addWidget(panels_.bar);
  layout->addWidget(new QLabel(QStringLiteral("Diction Table Written To:"), this));
  pnlDicFile_ = NamePanel("pnlDicFile", this);
  layout->addWidget(pnlDicFile_);
  // Read when the next list is begun: tick it before Okay to run again without limits.
  chkNoLimits_ = NoLimitsCheckBox(this);
  layout->addWidget(chkNoLimits_);

  cmdCancel_ = NamedButton("Cancel", "cmdCancel", this);
  cmdOkay_ = NamedButton("Okay", "cmdOkay", this);
  layout->addLayout(CentredRow({cmdCancel_, cmdOkay_}));
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmDiction::cmdCancelClick);
  connect(cmdOkay_, &QPushButton::clicked, this, &FrmDiction::cmdOkayClick);
  ResetForm();
}

void FrmDiction::ResetForm() {
  panels_.reset();
  pnlDicFile_->clear();
  cmdCancel_->show();
  cmdCancel_->setEnabled(true);
  cmdOkay_->hide();
  chkNoLimits_->setEnabled(true);
  hide();
}

void FrmDiction::run(const DictionParams& given) {
  DictionParams params = given;
  params.large = chkNoLimits_->isChecked();
  ResetForm();
  chkNoLimits_->setEnabled(false);
  CenterForm(*this, frmMain_);
  show();
  raise();
  frmMain_.EnableMain(false);
  QCoreApplication::processEvents();

  running_ = true;
  const JobResult result = frmMain_.runJob(kDiction, params, *this);
  running_ = false;
  chkNoLimits_->setEnabled(true);
  if (result.outcome != JobOutcome::Done) {
    if (result.outcome == JobOutcome::Refused && result.message)
      ShowMessage(this, MsgIcon::Warning, result.message->title, result.message->text);
    ResetForm();
    frmMain_.EnableMain(true);
    frmMain_.activateWindow();
    return;
  }
  panels_.show();
  panels_.bar->setValue(100);
  pnlDicFile_->setText(QLatin1Char(' ') + Q(result.files.empty() ? std::string() : result.files.front()));
  cmdCancel_->hide();
  cmdOkay_->show();
  cmdOkay_->setEnabled(true);
  cmdOkay_->setFocus();
}

void FrmDiction::cmdCancelClick() {
  if (!running_) return;
  frmMain_.job().giInterrupt = 1;
  frmMain_.ClearStatusPanels();
}

void FrmDiction::cmdOkayClick() {
  frmMain_.job().giInterrupt = 0;
  ResetForm();
  frmMain_.EnableMain(true);
  frmMain_.activateWindow();
}

void FrmDiction::reject() {
  if (cmdOkay_->isVisible())
    cmdOkayClick();
  else
    cmdCancelClick();
}

void FrmDiction::ClearStatusPanels() { frmMain_.ClearStatusPanels(); }

void FrmDiction::jobStarted(const Start& start) {
  frmMain_.showJobStart(QString::number(start.fileSize), Q(start.startTime), QString::number(start.totalLines));
}

void FrmDiction::lineDone(int32_t line, int32_t totalLines) {
  panels_.line(line);
  panels_.lineDone(line, totalLines);
}

void FrmDiction::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  panels_.show();
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

}  // namespace zv::forms
