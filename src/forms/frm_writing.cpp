// frmWriting: the record, line and file being written.
#include "forms/frm_writing.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>

#include "forms/center_form.h"
#include "forms/frm_filter.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "records/record_writers.h"

namespace zv::forms {

FrmWriting::FrmWriting(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmWriting"));
  setWindowTitle(Q(kWritingKeptCaption));
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

void FrmWriting::jobStarted(const Start& start) {
  setWindowTitle(Q(start.title));
  pnlRecord_->clear();
  pnlLine_->clear();
  pnlFile_->clear();
  repaintClock_.invalidate();
  show();
  raise();
  repaint();
}

void FrmWriting::recordDone(int32_t n) { pnlRecord_->setText(FrmFilter::OdometerText(n)); }

void FrmWriting::caption(std::string_view name) { pnlFile_->setText(Q(name)); }

void FrmWriting::lineDone(int32_t n, int32_t /*totalLines*/) {
  // The writers' yield. Serving the interface after every line would cost more than
  // the writing: the panels are repainted, and events served, every 30 ms or so.
  lines_ = n;
  if (repaintClock_.isValid() && repaintClock_.elapsed() < FrmFilter::kRepaintMs) return;
  pnlLine_->setText(FrmFilter::OdometerText(n));
  repaintClock_.start();
  QCoreApplication::processEvents();
}

void FrmWriting::jobEnded(JobOutcome /*outcome*/) {
  if (lines_ > 0) pnlLine_->setText(FrmFilter::OdometerText(lines_));
  lines_ = 0;
  hide();
  setWindowTitle(Q(kWritingKeptCaption));
  QApplication::restoreOverrideCursor();
}

void FrmWriting::showEvent(QShowEvent* event) {
  adjustSize();
  CenterWindowOnScreen(*this);
  QDialog::showEvent(event);
}

}  // namespace zv::forms
