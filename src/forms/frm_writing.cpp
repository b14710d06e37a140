// frmWriting: the record, line and file being written.
#include "forms/frm_writing.h"

#include <QGridLayout>
#include <QLabel>

#include "forms/center_form.h"
#include "forms/frm_filter.h"
#include "forms/panels.h"

namespace zv::forms {

FrmWriting::FrmWriting(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmWriting"));
  setWindowTitle(QLatin1String(kWritingKeptCaption));
  setModal(false);
  setWindowFlags(windowFlags() & ~Qt::WindowCloseButtonHint);

  auto* grid = new QGridLayout(this);
  pnlRecord_ = SunkenPanel("pnlRecord", this, 22);
  pnlLine_ = SunkenPanel("pnlLine", this, 22);
  pnlFile_ = SunkenPanel("pnlFile", this, 22);
  pnlRecord_->setMinimumWidth(90);
  pnlFile_->setMinimumWidth(240);
  grid->addWidget(new QLabel(QStringLiteral("Record ...."), this), 0, 0);
  grid->addWidget(pnlRecord_, 0, 1);
  grid->addWidget(new QLabel(QStringLiteral("Line ........."), this), 1, 0);
  grid->addWidget(pnlLine_, 1, 1);
  grid->addWidget(new QLabel(QStringLiteral("File:"), this), 2, 0);
  grid->addWidget(pnlFile_, 2, 1, 1, 2);
  grid->setColumnStretch(2, 1);
}

void FrmWriting::showRecord(int32_t n) { pnlRecord_->setText(FrmFilter::OdometerText(n)); }
void FrmWriting::showLine(int32_t n) { pnlLine_->setText(FrmFilter::OdometerText(n)); }
void FrmWriting::showFile(const QString& name) { pnlFile_->setText(name); }

void FrmWriting::clearPanels() {
  pnlRecord_->clear();
  pnlLine_->clear();
  pnlFile_->clear();
}

void FrmWriting::showEvent(QShowEvent* event) {
  adjustSize();
  CenterWindowOnScreen(*this);
  QDialog::showEvent(event);
}

}  // namespace zv::forms
