// frmExport: File > Export Records..., the record file, the format and the file to write.
#pragma once

#include <QDialog>

#include "core/dispatcher.h"
#include "records/export_records.h"

class QLineEdit;
class QRadioButton;

namespace zv::forms {

class FrmMain;

class FrmExport : public QDialog {
  Q_OBJECT

 public:
  explicit FrmExport(QWidget* parent);

  // What the job is given: the fields as they stand.
  ExportParams params() const;

  // The record file; the file to write follows it (its name with the format's
  // extension) until the user names one of their own.
  void setRecordFile(const QString& path);

  void cmdOkayClick();

 private:
  void browseRecordFile();
  void suggestOutput();
  ExportFormat format() const;

  QLineEdit* txtRecordFile_ = nullptr;
  QLineEdit* txtOutput_ = nullptr;
  QRadioButton* optRis_ = nullptr;
  QRadioButton* optCslJson_ = nullptr;
  QRadioButton* optCsv_ = nullptr;
  QString suggested_;  // the name last put in txtOutput by suggestOutput
};

// The command's start: the dialog, the job with frmRecordJob, the outcome's message.
void RunExportRecords(FrmMain& frmMain, const Command& command);

inline constexpr const char* kExportDialogTitle = "Export Records";

}  // namespace zv::forms
