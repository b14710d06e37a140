// frmFilter: the open dialog of a job, its progress panels, OK and the interrupt.
#include "forms/frm_filter.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/input_file.h"
#include "forms/center_form.h"
#include "forms/file_dialogs.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

FrmFilter::FrmFilter(FrmMain& frmMain, JobState& job) : QDialog(&frmMain), frmMain_(frmMain), job_(job) {
  setObjectName(QStringLiteral("frmFilter"));
  setWindowTitle(QStringLiteral("Filtering"));
  setModal(false);
  setMouseTracking(true);
  setMinimumWidth(480);

  auto* layout = new QVBoxLayout(this);
  pnlInFile_ = NamePanel("pnlInFile", this);
  pnlProFile_ = NamePanel("pnlProFile", this);
  pnlIndexFile_ = NamePanel("pnlIndexFile", this);
  layout->addWidget(new QLabel(QStringLiteral("Search File Unaltered:"), this));
  layout->addWidget(pnlInFile_);
  layout->addWidget(new QLabel(QStringLiteral("Records Saved To:"), this));
  layout->addWidget(pnlProFile_);
  layout->addWidget(new QLabel(QStringLiteral("Index Saved To:"), this));
  layout->addWidget(pnlIndexFile_);

  auto* odometers = new QGridLayout;
  odometers_.lineOdom = OdometerPanel("pnlLineOdom", this, 22);
  odometers_.recOdom = OdometerPanel("pnlRecOdom", this, 22);
  for (QLabel* odom : {odometers_.lineOdom, odometers_.recOdom}) odom->setTextInteractionFlags(Qt::TextSelectableByMouse);
  odometers->addWidget(new QLabel(QStringLiteral("Processing Line:"), this), 0, 0);
  odometers->addWidget(odometers_.lineOdom, 0, 1);
  odometers->addWidget(new QLabel(QStringLiteral("Processing Record:"), this), 0, 2);
  odometers->addWidget(odometers_.recOdom, 0, 3);
  odometers->setColumnStretch(4, 1);
  layout->addSpacing(6);
  layout->addLayout(odometers);

  odometers_.bar = PercentBar(this);
  layout->addWidget(odometers_.bar);

  cmdOkay_ = NamedButton("OK", "cmdOkay", this);
  cmdCancel_ = NamedButton("Cancel", "cmdCancel", this);
  cmdCancel_->installEventFilter(this);
  layout->addLayout(CentredRow({cmdOkay_, cmdCancel_}));

  connect(cmdOkay_, &QPushButton::clicked, this, &FrmFilter::cmdOkayClick);
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmFilter::cmdCancelClick);
  ResetFilterForm();
}

QStringList FrmFilter::NameFilters(std::string_view dialogFilter) { return DialogNameFilters(dialogFilter); }

QString FrmFilter::OdometerText(int32_t n) { return QLatin1Char(' ') + QString::number(n) + QLatin1Char(' '); }

QString FrmFilter::chooseFile(const QStringList& nameFilters) {
  if (chooser_) return chooser_(nameFilters.join(QStringLiteral(";;")));
  return ChooseFileName(&frmMain_, {FileDialogMode::Open, QString(), nameFilters, QString()});
}

std::optional<std::string> FrmFilter::GetInputFile(JobState& job, std::string_view dialogFilter) {
  std::optional<std::string> chosen = ChooseInputFile(job, dialogFilter);
  if (!chosen) return chosen;
  CenterForm(*this, frmMain_);
  show();
  raise();
  frmMain_.EnableMain(false);
  repaint();
  return chosen;
}

std::optional<std::string> FrmFilter::ChooseInputFile(JobState& job, std::string_view dialogFilter) {
  const QStringList filters = NameFilters(dialogFilter);
  std::string chosen;
  for (;;) {
    const QString path = chooseFile(filters);
    if (path.isEmpty()) {
      // The dialog's cancel, error 32755: no file, no message.
      QApplication::restoreOverrideCursor();
      frmMain_.EnableMain(true);
      frmMain_.activateWindow();
      return std::nullopt;
    }
    // The system's dialog moves the current directory to the file's folder, and the
    // outputs, named from the stem alone, are written there.
    const QFileInfo info(path);
    if (info.exists()) QDir::setCurrent(info.absolutePath());
    chosen = QFile::encodeName(path).toStdString();
    Message refusal;
    JobState probe;
    probe.outDir = job.outDir;
    if (CheckInputFile(probe, chosen, refusal)) break;
    ShowMessage(&frmMain_, MsgIcon::Warning, refusal.title, refusal.text);
  }
  return chosen;
}

void FrmFilter::ClearStatusPanels() { frmMain_.ClearStatusPanels(); }

void FrmFilter::jobStarted(const Start& start) {
  setWindowTitle(Q(start.title));
  frmMain_.showJobStart(QString::number(start.fileSize), Q(start.startTime), QString::number(start.totalLines));
}

void FrmFilter::caption(std::string_view text) {
  const QString title = Q(text);
  const bool changed = windowTitle() != title;
  if (changed) setWindowTitle(title);
  if (!changed && captionClock_.isValid() && captionClock_.elapsed() < kRepaintMs) return;
  captionClock_.start();
  // What the file dialog covered is painted again, this window with its title first.
  repaint();
  QCoreApplication::processEvents();
}

void LineOdometers::reset() {
  line_ = record_ = percent_ = 0;
  clock_.invalidate();
  lineOdom->clear();
  recOdom->clear();
  if (bar != nullptr) bar->setValue(0);
}

bool LineOdometers::lineDone(int32_t line, int32_t totalLines) {
  line_ = line;
  percent_ = totalLines > 0 ? static_cast<int>(static_cast<int64_t>(line) * 100 / totalLines) : 100;
  if (clock_.isValid() && ((line & 255) != 1 || clock_.elapsed() < FrmFilter::kRepaintMs)) return false;
  show();
  clock_.start();
  QCoreApplication::processEvents();
  return true;
}

void LineOdometers::show() {
  lineOdom->setText(line_ > 0 ? FrmFilter::OdometerText(line_) : QString());
  recOdom->setText(record_ > 0 ? FrmFilter::OdometerText(record_) : QString());
  if (bar != nullptr) bar->setValue(std::min(percent_, 100));
}

void FrmFilter::lineDone(int32_t lInLine, int32_t glLineCount) { odometers_.lineDone(lInLine, glLineCount); }

void FrmFilter::recordDone(int32_t record) { odometers_.recordDone(record); }

void FrmFilter::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  odometers_.show();
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

void FrmFilter::FinishFilter(std::string_view inFile, std::string_view proFile, std::string_view indexFile) {
  odometers_.show();
  pnlInFile_->setText(QLatin1Char(' ') + Q(inFile));
  pnlProFile_->setText(QLatin1Char(' ') + Q(proFile));
  pnlIndexFile_->setText(QLatin1Char(' ') + Q(indexFile));
  cmdOkay_->show();
  cmdOkay_->setEnabled(true);
  cmdCancel_->hide();
  cmdOkay_->setFocus();
}

void FrmFilter::ResetFilterForm() {
  odometers_.reset();
  captionClock_.invalidate();
  odometers_.lineOdom->repaint();
  odometers_.recOdom->repaint();
  pnlInFile_->clear();
  pnlProFile_->clear();
  pnlIndexFile_->clear();
  cmdCancel_->show();
  cmdCancel_->setEnabled(true);
  cmdOkay_->hide();
  cmdOkay_->setEnabled(false);
}

void FrmFilter::cmdOkayClick() {
  job_.giInterrupt = 0;
  ResetFilterForm();
  frmMain_.EnableMain(true);
  hide();
  frmMain_.activateWindow();
}

void FrmFilter::cmdCancelClick() {
  // Cancel on a window whose job has ended (the zero-record path leaves it up) closes
  // it: an interrupt raised now would belong to no job.
  if (!frmMain_.jobRunning()) {
    ResetFilterForm();
    hide();
    frmMain_.EnableMain(true);
    frmMain_.activateWindow();
    return;
  }
  // The job sees the flag after the line in hand and removes its outputs itself.
  job_.giInterrupt = 1;
  ClearStatusPanels();
}

void FrmFilter::reject() {
  // The close box and Escape do what the visible button does.
  if (cmdOkay_->isVisible())
    cmdOkayClick();
  else if (frmMain_.jobRunning())
    cmdCancelClick();
  else
    QDialog::reject();
}

bool FrmFilter::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate)
    frmMain_.setStatusMsg(QStringLiteral(" Zorvanta is cleaning up a search."));
  else if (e->type() == QEvent::MouseMove)
    frmMain_.setStatusMsg(QStringLiteral("Zorvanta is filtering a search."));
  return QDialog::event(e);
}

bool FrmFilter::eventFilter(QObject* watched, QEvent* e) {
  if (watched == cmdCancel_ && e->type() == QEvent::Enter)
    frmMain_.setStatusMsg(QStringLiteral("Interrupt and quit this filtering."));
  return QDialog::eventFilter(watched, e);
}

}  // namespace zv::forms
