// frmIndexing: two odometers while the index is built, and Cancel.
#include "forms/frm_indexing.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_filter.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

FrmIndexing::FrmIndexing(FrmMain& frmMain, std::atomic<int16_t>& giInterrupt)
    : QDialog(&frmMain), frmMain_(frmMain), giInterrupt_(giInterrupt) {
  setObjectName(QStringLiteral("frmIndexing"));
  setWindowTitle(QStringLiteral("Indexing Record File"));
  setModal(false);

  auto* layout = new QVBoxLayout(this);
  auto* odometers = new QGridLayout;
  odometers_.lineOdom = OdometerPanel("pnlLineOdom", this, 22);
  odometers_.recOdom = OdometerPanel("pnlRecOdom", this, 22);
  for (QLabel* odom : {odometers_.lineOdom, odometers_.recOdom}) odom->setMinimumWidth(100);
  odometers->addWidget(new QLabel(QStringLiteral("Scanning line number:"), this), 0, 0);
  odometers->addWidget(odometers_.lineOdom, 0, 1);
  odometers->addWidget(new QLabel(QStringLiteral("Indexing record number:"), this), 1, 0);
  odometers->addWidget(odometers_.recOdom, 1, 1);
  layout->addLayout(odometers);

  QPushButton* cmdCancel = NamedButton("Cancel", "cmdCancel", this);
  layout->addLayout(CentredRow({cmdCancel}));
  connect(cmdCancel, &QPushButton::clicked, this, &FrmIndexing::cmdCancelClick);
}

void FrmIndexing::ClearStatusPanels() { frmMain_.ClearStatusPanels(); }

void FrmIndexing::jobStarted(const Start& start) {
  // Both counters blank, the main window's timing panels (cleared just before) given
  // the .PRO's size and the start time, the main window disabled.
  building_ = true;
  odometers_.reset();
  frmMain_.showJobStart(QString::number(start.fileSize), Q(start.startTime), QString());
  frmMain_.EnableMain(false);
  CenterForm(*this, frmMain_);
  show();
  raise();
  repaint();
}

// The builder's yield, where Cancel gets through.
void FrmIndexing::lineDone(int32_t lineNumber, int32_t totalLines) { odometers_.lineDone(lineNumber, totalLines); }

void FrmIndexing::recordDone(int32_t recordCount) { odometers_.recordDone(recordCount); }

void FrmIndexing::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  odometers_.show();
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

void FrmIndexing::jobEnded(JobOutcome /*outcome*/) {
  building_ = false;
  frmMain_.EnableMain(true);
  hide();
  frmMain_.activateWindow();
}

void FrmIndexing::cmdCancelClick() {
  // Cancel on a window whose build has ended closes it: an interrupt raised now would
  // belong to no job, and would stop the next one.
  if (!building_) {
    hide();
    return;
  }
  // The builder looks at the flag after the line in hand and removes what it made.
  giInterrupt_ = 1;
  frmMain_.ClearStatusPanels();
}

void FrmIndexing::reject() { cmdCancelClick(); }

}  // namespace zv::forms
