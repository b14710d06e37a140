// frmDedup: the choices of Find Duplicates, and the run of its job.
#include "forms/frm_dedup.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_main.h"
#include "forms/frm_record_job.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

FrmDedup::FrmDedup(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmDedup"));
  setWindowTitle(QLatin1String(kDedupDialogTitle));
  setModal(true);
  setProperty("helpContext", kFindDuplicates);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Record files, in the order their records count as first:"), this));
  auto* list = new QGridLayout;
  lstFiles_ = new QListWidget(this);
  lstFiles_->setObjectName(QStringLiteral("lstFiles"));
  lstFiles_->setMinimumWidth(380);
  lstFiles_->setMinimumHeight(110);
  auto* cmdAdd = new QPushButton(QStringLiteral("&Add..."), this);
  cmdAdd->setObjectName(QStringLiteral("cmdAdd"));
  auto* cmdRemove = new QPushButton(QStringLiteral("&Remove"), this);
  cmdRemove->setObjectName(QStringLiteral("cmdRemove"));
  list->addWidget(lstFiles_, 0, 0, 3, 1);
  list->addWidget(cmdAdd, 0, 1);
  list->addWidget(cmdRemove, 1, 1);
  layout->addLayout(list);

  auto* outputs = new QGridLayout;
  txtOutput_ = new QLineEdit(this);
  txtOutput_->setObjectName(QStringLiteral("txtOutput"));
  txtReport_ = new QLineEdit(this);
  txtReport_->setObjectName(QStringLiteral("txtReport"));
  auto* cmdOutput = new QPushButton(QStringLiteral("Browse..."), this);
  cmdOutput->setObjectName(QStringLiteral("cmdOutput"));
  auto* cmdReport = new QPushButton(QStringLiteral("Browse..."), this);
  cmdReport->setObjectName(QStringLiteral("cmdReport"));
  PlaceNameRow(*outputs, 0, QStringLiteral("Write the records kept to:"), txtOutput_, cmdOutput);
  PlaceNameRow(*outputs, 2, QStringLiteral("Write the report of the groups to (empty: no report):"), txtReport_, cmdReport);
  layout->addLayout(outputs);

  const OkayCancelRow buttons = MakeOkayCancelRow(this);
  layout->addLayout(buttons.row);
  connect(buttons.cmdOkay, &QPushButton::clicked, this, &FrmDedup::cmdOkayClick);
  connect(buttons.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(cmdAdd, &QPushButton::clicked, this, &FrmDedup::browseRecordFiles);
  connect(cmdRemove, &QPushButton::clicked, this, &FrmDedup::removeRecordFile);
  connect(cmdOutput, &QPushButton::clicked, this, [this] { BrowseSaveName(this, txtOutput_); });
  connect(cmdReport, &QPushButton::clicked, this, [this] { BrowseSaveName(this, txtReport_); });
}

DedupParams FrmDedup::params() const {
  DedupParams p;
  for (int i = 0; i < lstFiles_->count(); ++i) p.inputs.push_back(ToPath(lstFiles_->item(i)->text()));
  p.output = ToPath(txtOutput_->text().trimmed());
  p.report = ToPath(txtReport_->text().trimmed());
  return p;
}

void FrmDedup::addRecordFile(const QString& path) {
  lstFiles_->addItem(path);
  if (lstFiles_->count() != 1) return;
  const QDir folder = QFileInfo(path).dir();
  if (txtOutput_->text().isEmpty()) txtOutput_->setText(folder.filePath(QStringLiteral("DEDUP.PRO")));
  if (txtReport_->text().isEmpty()) txtReport_->setText(folder.filePath(QStringLiteral("DEDUP.TXT")));
}

void FrmDedup::browseRecordFiles() {
  for (const QString& p : BrowseRecordFiles(this, true)) addRecordFile(p);
}

void FrmDedup::removeRecordFile() { delete lstFiles_->takeItem(lstFiles_->currentRow()); }

void FrmDedup::cmdOkayClick() {
  if (lstFiles_->count() == 0) {
    ShowMessage(this, MsgIcon::Warning, QLatin1String(kDedupDialogTitle), QStringLiteral("Add the record files to compare."));
    return;
  }
  if (txtOutput_->text().trimmed().isEmpty()) {
    ShowMessage(this, MsgIcon::Warning, QLatin1String(kDedupDialogTitle), QStringLiteral("Name the file to write the records kept to."));
    return;
  }
  accept();
}

void RunFindDuplicates(FrmMain& frmMain, const Command& command) {
  FrmDedup dialog(&frmMain);
  if (!ExecChoices(dialog, frmMain)) return;
  DedupSummary summary;
  DedupParams params = dialog.params();
  params.summary = &summary;
  const JobResult result = RunRecordJob(frmMain, command.number, params);
  if (result.outcome == JobOutcome::Done) {
    QString text = QString::number(summary.records) + QStringLiteral(" records read, ") +
                   QString::number(summary.groups) + QStringLiteral(" groups of one work, ") +
                   QString::number(summary.removed) + QStringLiteral(" records left out.\n\n") +
                   QString::number(result.records) + QStringLiteral(" records kept in\n") + FromPath(params.output);
    if (!params.report.empty()) text += QStringLiteral("\n\nReport:\n") + FromPath(params.report);
    ShowMessage(&frmMain, MsgIcon::Information, QLatin1String(kDedupDialogTitle), text);
  }
}

}  // namespace zv::forms
