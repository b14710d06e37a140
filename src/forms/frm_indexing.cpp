// frmIndexing: two odometers while the index is built, and Cancel.
#include "forms/frm_indexing.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/frm_filter.h"
#include "forms/frm_main.h"
#include "forms/panels.h"

namespace zv::forms {

FrmIndexing::FrmIndexing(FrmMain& frmMain, std::atomic<int16_t>& giInterrupt)
    : QDialog(&frmMain), frmMain_(frmMain), giInterrupt_(giInterrupt) {
  setObjectName(QStringLiteral("frmIndexing"));
  setWindowTitle(QStringLiteral("Indexing Record File"));
  setModal(false);

  auto* layout = new QVBoxLayout(this);
  auto* odometers = new QGridLayout;
  pnlLineOdom_ = SunkenPanel("pnlLineOdom", this, 22);
  pnlRecOdom_ = SunkenPanel("pnlRecOdom", this, 22);
  for (QLabel* odom : {pnlLineOdom_, pnlRecOdom_}) {
    odom->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    odom->setMinimumWidth(100);
  }
  odometers->addWidget(new QLabel(QStringLiteral("Scanning line number:"), this), 0, 0);
  odometers->addWidget(pnlLineOdom_, 0, 1);
  odometers->addWidget(new QLabel(QStringLiteral("Indexing record number:"), this), 1, 0);
  odometers->addWidget(pnlRecOdom_, 1, 1);
  layout->addLayout(odometers);

  auto* buttons = new QHBoxLayout;
  auto* cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
  cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
  buttons->addStretch();
  buttons->addWidget(cmdCancel);
  buttons->addStretch();
  layout->addLayout(buttons);
  connect(cmdCancel, &QPushButton::clicked, this, &FrmIndexing::cmdCancelClick);
}

void FrmIndexing::clearCounters() {
  pnlLineOdom_->clear();
  pnlRecOdom_->clear();
}

void FrmIndexing::showLine(int32_t lineNumber) { pnlLineOdom_->setText(FrmFilter::OdometerText(lineNumber)); }
void FrmIndexing::showRecord(int32_t recordNumber) { pnlRecOdom_->setText(FrmFilter::OdometerText(recordNumber)); }

void FrmIndexing::cmdCancelClick() {
  // The builder looks at the flag after the line in hand and removes what it made.
  giInterrupt_ = 1;
  frmMain_.ClearStatusPanels();
}

void FrmIndexing::reject() { cmdCancelClick(); }

}  // namespace zv::forms
