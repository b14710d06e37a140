// frmDedup: Content > Find Duplicates..., the record files, the file of kept records and the report.
#pragma once

#include <QDialog>

#include "core/dispatcher.h"
#include "records/find_duplicates.h"

class QLineEdit;
class QListWidget;

namespace zv::forms {

class FrmMain;

class FrmDedup : public QDialog {
  Q_OBJECT

 public:
  explicit FrmDedup(QWidget* parent);

  // What the job is given: the files in the list's order, the two names.
  DedupParams params() const;

  // Adds a record file to the list; the first one names the outputs beside it
  // (DEDUP.PRO and DEDUP.TXT) until the user names their own.
  void addRecordFile(const QString& path);

  void cmdOkayClick();

 private:
  void browseRecordFiles();
  void removeRecordFile();

  QListWidget* lstFiles_ = nullptr;
  QLineEdit* txtOutput_ = nullptr;
  QLineEdit* txtReport_ = nullptr;
};

// The command's start: the dialog, the job with frmRecordJob, the outcome's message.
void RunFindDuplicates(FrmMain& frmMain, const Command& command);

inline constexpr const char* kDedupDialogTitle = "Find Duplicates";

}  // namespace zv::forms
