// What the windows of Query by Form, Rank, Sort and Diction share: their file dialogs,
// the opening of a record file, the panels a job fills, and the status-line hints.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <QDialog>
#include <QElapsedTimer>
#include <QString>

#include "analysis/analysis_common.h"

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QWidget;

namespace zv::forms {

class FrmMain;

// The open or save dialog of a content tool (file_dialogs.h, which tests answer): the
// chosen path, its folder becoming the current directory as the system's dialog
// leaves it, or "" when cancelled.
enum class FileDialogKind { Open, Save };
std::string ChooseAnalysisFile(QWidget* parent, FileDialogKind kind, std::string_view dialogFilter);

// SelectRecordFile with the dialog: the open dialog until a name passes the checks
// (each refusal shown as a warning; a name that is not there, "File not found."), then command `openNumber` (1700, 1800, 1900)
// indexes a chosen .PRO in frmIndexing. False when the user cancelled the dialog or
// the indexing, when the record file has fewer than two labels (the stop message is
// shown), or on an error (frmError); the job state then holds no names.
bool SelectRecordFileDialog(FrmMain& frmMain, int32_t openNumber);

// A job's odometers and bar, repainted and the interface served at most every 30 ms.
class JobPanels {
 public:
  QLabel* recOdom = nullptr;   // the record number
  QLabel* lineOdom = nullptr;  // the line (of the record, or of the file)
  QProgressBar* bar = nullptr;

  void reset();
  // The bar at line / total, capped at 100. Returns true when the panels were shown
  // and the interface served (the yield where a Cancel gets through).
  bool lineDone(int32_t line, int32_t total);
  void record(int32_t n) { record_ = n; }
  void line(int32_t n) { line_ = n; }
  // Shows what is held now.
  void show();

 private:
  QElapsedTimer clock_;
  int32_t record_ = 0;
  int32_t line_ = 0;
  int percent_ = 0;
  int32_t calls_ = 0;
};

// Puts `hint` in the status line while the mouse is over `widget`.
void SetStatusHint(QWidget* widget, FrmMain& frmMain, const QString& hint);

// The check box "No size limits" of Rank, Sort and Diction, off until ticked.
QCheckBox* NoLimitsCheckBox(QWidget* parent);

// The foot of Query by Form, Rank and Sort, in a centred row: the button that begins
// (Submit or Begin), Cancel, Help (the tool's page), the Cancel that interrupts, and
// Okay, which takes its place once the job is done. None is a default button.
struct JobButtons {
  QHBoxLayout* row = nullptr;
  QPushButton* cmdBegin = nullptr;
  QPushButton* cmdCancel = nullptr;
  QPushButton* cmdHelp = nullptr;
  QPushButton* cmdCancel2 = nullptr;
  QPushButton* cmdOkay = nullptr;

  // Filling the form: the first three enabled, the interrupting Cancel in view but
  // disabled, Okay hidden.
  void idle();
  // The job running: of the five, only the interrupting Cancel works.
  void running();
  // The job done: Okay in place of the interrupting Cancel, with the focus.
  void done();
};
JobButtons MakeJobButtons(QWidget* parent, const char* beginName, const char* beginCaption, const QString& helpPage);

// What the windows of Query by Form, Rank and Sort share around their job: shown without
// modality over the disabled main window, the foot of job buttons, Cancel before the
// job, the interrupt while it runs, the close box and Escape, the timing panels.
class AnalysisJobDialog : public QDialog, public AnalysisProgress {
  Q_OBJECT

 public:
  // Back to the look of a form just opened, emptied and hidden.
  virtual void ResetForm() = 0;

  // AnalysisProgress: the main window's timing panels.
  void ClearStatusPanels() override;
  void jobStarted(const Start& start) override;

 public slots:
  // The close box and Escape do what the button in view does.
  void reject() override;

 protected:
  AnalysisJobDialog(FrmMain& frmMain, const char* name, const char* title);

  // The foot made by MakeJobButtons, its Cancel, interrupting Cancel and Okay connected.
  void setButtons(const JobButtons& buttons);
  // Cancel before the job: the form reset and the main window back.
  void cmdCancelClick();
  // The interrupt: the job looks at the flag at the end of the record in hand.
  void cmdCancel2Click();
  // Okay once the job is done.
  virtual void cmdOkayClick() = 0;

  FrmMain& frmMain_;
  JobButtons buttons_;
};

}  // namespace zv::forms
