// frmRecordJob: odometers, a bar and Cancel while records are exported or compared.
#include "forms/frm_record_job.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QLineEdit>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

FrmRecordJob::FrmRecordJob(FrmMain& frmMain, JobState& job) : QDialog(&frmMain), frmMain_(frmMain), job_(job) {
  setObjectName(QStringLiteral("frmRecordJob"));
  setModal(false);
  setMinimumWidth(420);
  auto* layout = new QVBoxLayout(this);
  lblStep_ = new QLabel(QStringLiteral("Reading Records"), this);
  lblStep_->setObjectName(QStringLiteral("lblStep"));
  layout->addWidget(lblStep_);
  auto* odometers = new QGridLayout;
  pnlLineOdom_ = OdometerPanel("pnlLineOdom", this, 22);
  pnlRecOdom_ = OdometerPanel("pnlRecOdom", this, 22);
  odometers->addWidget(new QLabel(QStringLiteral("Processing Line:"), this), 0, 0);
  odometers->addWidget(pnlLineOdom_, 0, 1);
  odometers->addWidget(new QLabel(QStringLiteral("Processing Record:"), this), 0, 2);
  odometers->addWidget(pnlRecOdom_, 0, 3);
  layout->addLayout(odometers);
  pnlProgress_ = PercentBar(this);
  layout->addWidget(pnlProgress_);
  cmdCancel_ = NamedButton("Cancel", "cmdCancel", this);
  layout->addLayout(CentredRow({cmdCancel_}));
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmRecordJob::cmdCancelClick);
}

void FrmRecordJob::ClearStatusPanels() { frmMain_.ClearStatusPanels(); }

void FrmRecordJob::jobStarted(const Start& start) {
  setWindowTitle(Q(start.title));
  line_ = record_ = 0;
  totalLines_ = start.totalLines;
  totalRecords_ = start.totalRecords;
  lblStep_->setText(QStringLiteral("Reading Records"));
  frmMain_.showJobStart(QString::number(start.fileSize), Q(start.startTime), QString::number(start.totalLines));
  repaintClock_.invalidate();
  yield();
}

void FrmRecordJob::caption(std::string_view text) {
  lblStep_->setText(Q(text));
  repaintClock_.invalidate();
  yield();
}

void FrmRecordJob::lineDone(int32_t line, int32_t totalLines) {
  line_ = line;
  totalLines_ = totalLines;
  yield();
}

void FrmRecordJob::recordDone(int32_t record) {
  record_ = record;
  yield();
}

void FrmRecordJob::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

// The job's yield: the panels at most every kRepaintMs, and Cancel's click served.
void FrmRecordJob::yield() {
  if (repaintClock_.isValid() && repaintClock_.elapsed() < kRepaintMs) return;
  repaintClock_.start();
  pnlLineOdom_->setText(QLatin1Char(' ') + QString::number(line_) + QLatin1Char(' '));
  pnlRecOdom_->setText(QLatin1Char(' ') + QString::number(record_) + QLatin1Char(' '));
  const int64_t done = totalLines_ > 0 ? line_ : record_;
  const int64_t total = totalLines_ > 0 ? totalLines_ : totalRecords_;
  pnlProgress_->setValue(total > 0 ? static_cast<int>(std::min<int64_t>(100, done * 100 / total)) : 0);
  QCoreApplication::processEvents();
}

void FrmRecordJob::cmdCancelClick() {
  job_.giInterrupt = 1;
  ClearStatusPanels();
}

void FrmRecordJob::reject() { cmdCancelClick(); }

std::string ToPath(const QString& path) { return QFile::encodeName(path).toStdString(); }

QString FromPath(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }

void PlaceNameRow(QGridLayout& grid, int row, const QString& caption, QLineEdit* field, QPushButton* browse) {
  grid.addWidget(new QLabel(caption, grid.parentWidget()), row, 0, 1, 2);
  grid.addWidget(field, row + 1, 0);
  grid.addWidget(browse, row + 1, 1);
}

QStringList BrowseRecordFiles(QWidget* parent, bool several) {
  const QString title = QStringLiteral("Open");
  const QString filter = QStringLiteral("Record Files (*.PRO *.pro *.NDX *.ndx);;All Files (*)");
  QStringList paths;
  if (several) {
    paths = QFileDialog::getOpenFileNames(parent, title, QDir::currentPath(), filter);
  } else if (const QString path = QFileDialog::getOpenFileName(parent, title, QDir::currentPath(), filter);
             !path.isEmpty()) {
    paths.push_back(path);
  }
  if (!paths.isEmpty()) QDir::setCurrent(QFileInfo(paths.front()).absolutePath());
  return paths;
}

void BrowseSaveName(QWidget* parent, QLineEdit* field) {
  const QString path = QFileDialog::getSaveFileName(parent, QStringLiteral("Save As"), field->text());
  if (!path.isEmpty()) field->setText(path);
}

bool ExecChoices(QDialog& dialog, FrmMain& frmMain) {
  CenterForm(dialog, frmMain);
  // A dialog answered by a test's runner tells by its result whether Okay let it go.
  return ExecModal(dialog) == QDialog::Accepted && dialog.result() == QDialog::Accepted;
}

JobResult RunRecordJob(FrmMain& frmMain, int32_t commandNumber, std::any params) {
  FrmRecordJob progress(frmMain, frmMain.job());
  CenterForm(progress, frmMain);
  progress.show();
  frmMain.EnableMain(false);
  JobResult result = frmMain.runJob(commandNumber, std::move(params), progress);
  progress.hide();
  frmMain.EnableMain(true);
  if ((result.outcome == JobOutcome::Refused || result.outcome == JobOutcome::ZeroRecords) && result.message)
    ShowMessage(&frmMain, MsgIcon::Warning, result.message->title, result.message->text);
  return result;
}

}  // namespace zv::forms
