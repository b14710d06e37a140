// The job half of frmRank and frmSort: running the tool, its panels and its buttons.
#include "forms/frm_record_tool.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_main.h"
#include "forms/help_window.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

FrmRecordTool::FrmRecordTool(FrmMain& frmMain, const Layout& l) : AnalysisJobDialog(frmMain, l.name, l.title) {

  auto* layout = new QVBoxLayout(this);
  inputs_ = new QVBoxLayout;
  layout->addLayout(inputs_);
  chkNoLimits_ = NoLimitsCheckBox(this);
  layout->addWidget(chkNoLimits_);

  pnlOperation_ = SunkenPanel("pnlOperation", this, 22);
  pnlOperation_->setAlignment(Qt::AlignCenter);
  layout->addWidget(pnlOperation_);
  auto* odometers = new QGridLayout;
  panels_.recOdom = OdometerPanel("pnlRecOdom", this, 22);
  panels_.lineOdom = OdometerPanel("pnlLineOdom", this, 22);
  odometers->addWidget(new QLabel(QLatin1String(l.recordCaption), this), 0, 0);
  odometers->addWidget(panels_.recOdom, 0, 1);
  odometers->addWidget(new QLabel(QLatin1String(l.lineCaption), this), 1, 0);
  odometers->addWidget(panels_.lineOdom, 1, 1);
  odometers->setColumnStretch(2, 1);
  layout->addLayout(odometers);
  pnlProgress_ = PercentBar(this);
  panels_.bar = pnlProgress_;
  layout->addWidget(pnlProgress_);
  for (const auto& [name, text] : l.outputs) {
    layout->addWidget(new QLabel(QLatin1String(text), this));
    QLabel* panel = NamePanel(name, this);
    outputPanels_.push_back(panel);
    layout->addWidget(panel);
  }

  setButtons(MakeJobButtons(this, "cmdBegin", "Begin", QLatin1String(l.helpPage)));
  layout->addLayout(buttons_.row);
  connect(buttons_.cmdBegin, &QPushButton::clicked, this, &FrmRecordTool::cmdBeginClick);
}

void FrmRecordTool::opened(const RecordFileChoice& choice) {
  choice_ = choice;
  CenterForm(*this, frmMain_);
  show();
  raise();
  activateWindow();
  frmMain_.EnableMain(false);
}

void FrmRecordTool::ResetForm() {
  clearInputs();
  setInputsEnabled(true);
  chkNoLimits_->setEnabled(true);
  buttons_.idle();
  pnlOperation_->clear();
  for (QLabel* p : outputPanels_) p->clear();
  panels_.reset();
  choice_ = {};
  hide();
}

void FrmRecordTool::cmdBeginClick() {
  const std::optional<std::any> params = gather();
  if (!params) return;
  buttons_.running();
  setInputsEnabled(false);
  chkNoLimits_->setEnabled(false);
  QCoreApplication::processEvents();

  const JobResult result = frmMain_.runJob(runNumber(), *params, *this);
  if (result.outcome != JobOutcome::Done) {
    // Interrupted while reading (nothing was written), or failed (frmError has said
    // so, and what was written stays).
    ResetForm();
    frmMain_.EnableMain(true);
    frmMain_.activateWindow();
    return;
  }
  // The input, unaltered, and what the tool wrote, in the order it wrote them.
  std::vector<std::string> names{choice_.proFile};
  names.insert(names.end(), result.files.begin(), result.files.end());
  for (std::size_t i = 0; i < outputPanels_.size() && i < names.size(); ++i)
    outputPanels_[i]->setText(QLatin1Char(' ') + Q(names[i]));
  panels_.show();
  pnlProgress_->setValue(100);
  buttons_.cmdHelp->setEnabled(true);
  buttons_.done();
}

void FrmRecordTool::cmdOkayClick() {
  ResetForm();
  frmMain_.EnableMain(true);
  frmMain_.activateWindow();
}

void FrmRecordTool::caption(std::string_view text) {
  pnlOperation_->setText(Q(text));
  pnlOperation_->repaint();
  if (text.starts_with("Writing")) {
    // The writing cannot be interrupted.
    buttons_.cmdCancel2->setEnabled(false);
  }
  panels_.line(0);
}

void FrmRecordTool::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  panels_.show();
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

}  // namespace zv::forms
