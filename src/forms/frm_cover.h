// frmCover: the header and cover page's fields, its save options and its settings.
#pragma once

#include <array>

#include <QDialog>

#include "core/job.h"
#include "polish/cover.h"

class QButtonGroup;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace zv::forms {

class FrmMain;

class FrmCover : public QDialog, public JobProgress {
  Q_OBJECT

 public:
  explicit FrmCover(FrmMain& frmMain);

  // What the form holds: the choices, and the boxes' texts (several lines with CR LF).
  CoverFields fields() const;
  // Sets the choices (a group may be left with none) and the stored texts; the date
  // stays as it is.
  void setFields(const CoverFields& fields);

  // The reset: the nine boxes emptied, Save, Cancel, Help and Save Settings shown,
  // Okay hidden, the bar at 0 and hidden, the focus in the To box. The choices stay.
  void ResetCoverForm();
  // Saving has begun: the four buttons hidden.
  void savingStarted();
  // Saving is done: Okay shown.
  void savingDone();
  // A cancelled dialog or an error: reset, the main window enabled, the form gone.
  void quit();

  // JobProgress: the bar while the file is copied behind the page.
  void jobStarted(const Start& start) override;
  void lineDone(int32_t line, int32_t totalLines) override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void cmdSaveClick();

  FrmMain& frmMain_;
  QButtonGroup* toGroup_ = nullptr;
  QButtonGroup* fromGroup_ = nullptr;
  QButtonGroup* saveGroup_ = nullptr;
  QLineEdit* txtTo_ = nullptr;
  std::array<QLineEdit*, 3> txtFrom_{};
  QLineEdit* txtSubject_ = nullptr;
  QLineEdit* txtDate_ = nullptr;
  QLineEdit* txtJobNo_ = nullptr;
  QPlainTextEdit* txtDatabase_ = nullptr;
  QPlainTextEdit* txtMemo_ = nullptr;
  QProgressBar* pnlProgress_ = nullptr;
  QPushButton* cmdSave_ = nullptr;
  QPushButton* cmdSaveIni_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
  QPushButton* cmdHelp_ = nullptr;
  QWidget* pnl3DSaveOptions_ = nullptr;
};

// The one frmCover of the main window, made on first use.
FrmCover& CoverForm(FrmMain& frmMain);

}  // namespace zv::forms
