// frmExport: the choices of Export Records, and the run of its job.
#include "forms/frm_export.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_main.h"
#include "forms/frm_record_job.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

FrmExport::FrmExport(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmExport"));
  setWindowTitle(QLatin1String(kExportDialogTitle));
  setModal(true);
  setProperty("helpContext", kExportRecords);
  auto* layout = new QVBoxLayout(this);
  auto* files = new QGridLayout;
  txtRecordFile_ = new QLineEdit(this);
  txtRecordFile_->setObjectName(QStringLiteral("txtRecordFile"));
  txtRecordFile_->setMinimumWidth(360);
  auto* cmdRecordFile = new QPushButton(QStringLiteral("Browse..."), this);
  cmdRecordFile->setObjectName(QStringLiteral("cmdRecordFile"));
  txtOutput_ = new QLineEdit(this);
  txtOutput_->setObjectName(QStringLiteral("txtOutput"));
  auto* cmdOutput = new QPushButton(QStringLiteral("Browse..."), this);
  cmdOutput->setObjectName(QStringLiteral("cmdOutput"));
  PlaceNameRow(*files, 0, QStringLiteral("Record file (.PRO, its .NDX, or any file of records):"), txtRecordFile_,
               cmdRecordFile);
  PlaceNameRow(*files, 3, QStringLiteral("Write the references to:"), txtOutput_, cmdOutput);

  auto* formats = new QGroupBox(QStringLiteral("Format"), this);
  auto* formatRows = new QVBoxLayout(formats);
  optRis_ = new QRadioButton(QStringLiteral("&RIS: read by nearly every reference manager (.ris)"), formats);
  optRis_->setObjectName(QStringLiteral("optRis"));
  optCslJson_ = new QRadioButton(QStringLiteral("CSL &JSON: reference managers and citation processors (.json)"), formats);
  optCslJson_->setObjectName(QStringLiteral("optCslJson"));
  optCsv_ = new QRadioButton(QStringLiteral("&CSV: spreadsheets, one row a record (.csv)"), formats);
  optCsv_->setObjectName(QStringLiteral("optCsv"));
  optRis_->setChecked(true);
  for (QRadioButton* o : {optRis_, optCslJson_, optCsv_}) {
    formatRows->addWidget(o);
    connect(o, &QRadioButton::toggled, this, [this](bool on) {
      if (on) suggestOutput();
    });
  }
  layout->addLayout(files);
  layout->addWidget(formats);
  const OkayCancelRow buttons = MakeOkayCancelRow(this);
  layout->addLayout(buttons.row);
  connect(buttons.cmdOkay, &QPushButton::clicked, this, &FrmExport::cmdOkayClick);
  connect(buttons.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(cmdRecordFile, &QPushButton::clicked, this, &FrmExport::browseRecordFile);
  connect(cmdOutput, &QPushButton::clicked, this, [this] { BrowseSaveName(this, txtOutput_); });
  connect(txtRecordFile_, &QLineEdit::textChanged, this, &FrmExport::suggestOutput);
}

ExportFormat FrmExport::format() const {
  if (optCslJson_->isChecked()) return ExportFormat::CslJson;
  if (optCsv_->isChecked()) return ExportFormat::Csv;
  return ExportFormat::Ris;
}

ExportParams FrmExport::params() const {
  return ExportParams{ToPath(txtRecordFile_->text().trimmed()), format(), ToPath(txtOutput_->text().trimmed())};
}

void FrmExport::setRecordFile(const QString& path) { txtRecordFile_->setText(path); }

void FrmExport::suggestOutput() {
  const QString input = txtRecordFile_->text().trimmed();
  if (input.isEmpty() || (!txtOutput_->text().isEmpty() && txtOutput_->text() != suggested_)) return;
  const QFileInfo info(input);
  suggested_ = info.dir().filePath(info.completeBaseName() + Q(FormatExtension(format())));
  txtOutput_->setText(suggested_);
}

void FrmExport::browseRecordFile() {
  const QStringList paths = BrowseRecordFiles(this, false);
  if (!paths.isEmpty()) txtRecordFile_->setText(paths.front());
}

void FrmExport::cmdOkayClick() {
  if (txtRecordFile_->text().trimmed().isEmpty()) {
    ShowMessage(this, MsgIcon::Warning, QLatin1String(kExportDialogTitle), QStringLiteral("Choose the record file to export."));
    return;
  }
  if (txtOutput_->text().trimmed().isEmpty()) {
    ShowMessage(this, MsgIcon::Warning, QLatin1String(kExportDialogTitle), QStringLiteral("Name the file to write."));
    return;
  }
  accept();
}

void RunExportRecords(FrmMain& frmMain, const Command& command) {
  FrmExport dialog(&frmMain);
  if (!ExecChoices(dialog, frmMain)) return;
  const ExportParams params = dialog.params();
  const JobResult result = RunRecordJob(frmMain, command.number, params);
  if (result.outcome == JobOutcome::Done)
    ShowMessage(&frmMain, MsgIcon::Information, QLatin1String(kExportDialogTitle),
                QString::number(result.records) + QStringLiteral(" records exported to\n") + FromPath(params.output));
}

}  // namespace zv::forms
