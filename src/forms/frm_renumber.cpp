// frmRenumber: odometers, bar, the names of the files, Okay and the interrupt.
#include "forms/frm_renumber.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_filter.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

namespace {

QLabel* captionLabel(const char* name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  return label;
}

}  // namespace

FrmRenumber::FrmRenumber(FrmMain& frmMain, JobState& job) : QDialog(&frmMain), frmMain_(frmMain), job_(job) {
  setObjectName(QStringLiteral("frmRenumber"));
  setModal(false);
  setMouseTracking(true);
  setMinimumWidth(480);

  auto* layout = new QVBoxLayout(this);
  auto* odometers = new QGridLayout;
  odometers_.lineOdom = NamePanel("pnlLineOdom", this);
  odometers_.recOdom = NamePanel("pnlRecOdom", this);
  for (QLabel* odom : {odometers_.lineOdom, odometers_.recOdom}) {
    odom->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    odom->setMinimumWidth(100);
  }
  pnlRenumRecsProc_ = captionLabel("pnlRenumRecsProc", this);
  pnlRenumRecsProc_->setText(QStringLiteral("Processing record ....."));
  odometers->addWidget(new QLabel(QStringLiteral("Processing line .........."), this), 0, 0);
  odometers->addWidget(odometers_.lineOdom, 0, 1);
  odometers->addWidget(pnlRenumRecsProc_, 1, 0);
  odometers->addWidget(odometers_.recOdom, 1, 1);
  odometers->setColumnStretch(2, 1);
  layout->addLayout(odometers);

  odometers_.bar = PercentBar(this);
  layout->addWidget(odometers_.bar);

  pnlRenumFile_ = captionLabel("pnlRenumFile", this);
  pnlFileName_ = NamePanel("pnlFileName", this);
  pnlRenumFileUnaltered_ = captionLabel("pnlRenumFileUnaltered", this);
  pnlUnalteredFileName_ = NamePanel("pnlUnalteredFileName", this);
  for (QWidget* w : {static_cast<QWidget*>(pnlRenumFile_), static_cast<QWidget*>(pnlFileName_),
                     static_cast<QWidget*>(pnlRenumFileUnaltered_), static_cast<QWidget*>(pnlUnalteredFileName_)})
    layout->addWidget(w);

  cmdOkay_ = NamedButton("Okay", "cmdOkay", this);
  cmdCancel_ = NamedButton("Cancel", "cmdCancel", this);
  cmdCancel_->installEventFilter(this);
  layout->addLayout(CentredRow({cmdOkay_, cmdCancel_}));

  connect(cmdOkay_, &QPushButton::clicked, this, &FrmRenumber::cmdOkayClick);
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmRenumber::cmdCancelClick);
  ResetRenumberForm();
}

void FrmRenumber::ResetRenumberForm() {
  odometers_.reset();
  for (QLabel* panel : {pnlFileName_, pnlUnalteredFileName_}) panel->clear();
  cmdOkay_->setEnabled(false);
  cmdCancel_->setEnabled(true);
  cmdCancel_->show();
  setWindowTitle(QStringLiteral("Renumber Record File"));
  pnlRenumRecsProc_->show();
  odometers_.recOdom->show();
  pnlRenumFile_->setText(QStringLiteral("Renumbered File"));
  pnlRenumFileUnaltered_->setText(QStringLiteral("Record File Unaltered"));
}

void FrmRenumber::showForRun(const QString& outputCaption) {
  pnlRenumFile_->setText(outputCaption);
  CenterForm(*this, frmMain_);
  show();
  raise();
  frmMain_.EnableMain(false);
  repaint();
}

void FrmRenumber::setNames(const QString& outputName, const QString& unalteredName) {
  if (!outputName.isNull()) pnlFileName_->setText(outputName);
  if (!unalteredName.isNull()) pnlUnalteredFileName_->setText(unalteredName);
}

void FrmRenumber::showFinished() {
  odometers_.show();
  cmdCancel_->setEnabled(false);
  cmdCancel_->hide();
  cmdOkay_->setEnabled(true);
  cmdOkay_->setFocus();
}

void FrmRenumber::abandon() {
  ResetRenumberForm();
  hide();
  frmMain_.EnableMain(true);
  frmMain_.activateWindow();
}

void FrmRenumber::ClearStatusPanels() { frmMain_.ClearStatusPanels(); }

void FrmRenumber::jobStarted(const Start& start) {
  setWindowTitle(Q(start.title));
  frmMain_.showJobStart(QString::number(start.fileSize), Q(start.startTime), QString::number(start.totalLines));
}

void FrmRenumber::lineDone(int32_t line, int32_t totalLines) { odometers_.lineDone(line, totalLines); }

void FrmRenumber::recordDone(int32_t record) { odometers_.recordDone(record); }

void FrmRenumber::caption(std::string_view text) {
  // The file the job writes now (Divide's numbered files).
  pnlFileName_->setText(Q(text));
}

void FrmRenumber::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  odometers_.show();
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

void FrmRenumber::cmdOkayClick() {
  frmMain_.EnableMain(true);
  hide();
  frmMain_.activateWindow();
  ResetRenumberForm();
}

void FrmRenumber::cmdCancelClick() {
  // A window whose job has ended (Divide's abandon leaves it up) just goes.
  if (!frmMain_.jobRunning()) {
    abandon();
    return;
  }
  job_.giInterrupt = 1;
}

void FrmRenumber::reject() {
  // The close box and Escape do what the button in view does.
  if (cmdOkay_->isEnabled())
    cmdOkayClick();
  else
    cmdCancelClick();
}

bool FrmRenumber::event(QEvent* e) {
  if (e->type() == QEvent::MouseMove) frmMain_.setStatusMsg(QString());
  return QDialog::event(e);
}

bool FrmRenumber::eventFilter(QObject* watched, QEvent* e) {
  if (watched == cmdCancel_ && e->type() == QEvent::Enter)
    frmMain_.setStatusMsg(QStringLiteral("Interrupt and abandon this process."));
  return QDialog::eventFilter(watched, e);
}

FrmRenumber& RenumberForm(FrmMain& frmMain) {
  if (auto* form = frmMain.findChild<FrmRenumber*>(QStringLiteral("frmRenumber"), Qt::FindDirectChildrenOnly))
    return *form;
  return *new FrmRenumber(frmMain, frmMain.job());
}

}  // namespace zv::forms
