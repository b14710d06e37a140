// frmFilter: the progress window of every filter job, and the job's host in the GUI.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QDialog>
#include <QElapsedTimer>
#include <QString>

#include "core/job.h"
#include "core/job_state.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace zv::forms {

class FrmMain;

// The line and record odometers, and the bar where there is one, of a job that reads a
// file line by line. The panels are repainted, and the interface served, at most every
// FrmFilter::kRepaintMs: the clock is read on every 256th line only, since reading it on
// every line would show on a large capture.
class LineOdometers {
 public:
  QLabel* lineOdom = nullptr;
  QLabel* recOdom = nullptr;
  QProgressBar* bar = nullptr;

  // The counts back to zero, the panels empty, the bar at 0.
  void reset();
  // True when the panels were shown and the interface served (the job's yield, where
  // Cancel's handler runs and raises giInterrupt).
  bool lineDone(int32_t line, int32_t totalLines);
  void recordDone(int32_t record) { record_ = record; }
  // Shows what is held now: an empty panel for a count of 0.
  void show();

 private:
  QElapsedTimer clock_;
  int32_t line_ = 0;
  int32_t record_ = 0;
  int percent_ = 0;
};

class FrmFilter : public QDialog, public JobProgress {
  Q_OBJECT

 public:
  FrmFilter(FrmMain& frmMain, JobState& job);

  // GetInputFile: the open dialog until a capture passes the checks (each refusal
  // shown under its title), then this window shown and the main window disabled.
  // Nothing when the dialog was cancelled (error 32755): no message, the main window
  // enabled and focused.
  std::optional<std::string> GetInputFile(JobState& job, std::string_view dialogFilter);
  // The same without showing this window: for the jobs whose own dialog takes its
  // place (the DIALOG types dialogs). A cancel leaves the main window enabled.
  std::optional<std::string> ChooseInputFile(JobState& job, std::string_view dialogFilter);

  // JobProgress: the title, the timing panels, the odometers and the bar.
  void ClearStatusPanels() override;
  void jobStarted(const Start& start) override;
  // The title while the capture's lines are counted: shown at once, and the windows
  // kept painting (and Cancel answered) every 30 ms or so while the count goes on.
  void caption(std::string_view text) override;
  void lineDone(int32_t line, int32_t totalLines) override;
  void recordDone(int32_t record) override;
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;

  // The end-of-job hand-over: the three names, each with one leading blank, and OK.
  void FinishFilter(std::string_view inFile, std::string_view proFile, std::string_view indexFile);

  // Back to the idle look: odometers and file panels empty, progress 0, Cancel shown.
  void ResetFilterForm();

  // Answers the open dialog instead of showing it: called with the dialog's filter,
  // returns the chosen path, or an empty text for a cancel.
  using FileChooser = std::function<QString(const QString& nameFilters)>;
  void setFileChooser(FileChooser chooser) { chooser_ = std::move(chooser); }

  // The dialog's filters from the pairs "text|pattern|...": "All Files (*.*)" first.
  static QStringList NameFilters(std::string_view dialogFilter);

  // The odometers, as a number with a blank on each side.
  static QString OdometerText(int32_t n);

  // At most this often the panels are repainted and the interface served while a job
  // runs; the interrupt flag is looked at after every line all the same.
  static constexpr int kRepaintMs = 30;

 public slots:
  void reject() override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString chooseFile(const QStringList& nameFilters);
  void cmdOkayClick();
  void cmdCancelClick();

  FrmMain& frmMain_;
  JobState& job_;
  FileChooser chooser_;
  QElapsedTimer captionClock_;
  LineOdometers odometers_;

  QLabel* pnlInFile_ = nullptr;
  QLabel* pnlProFile_ = nullptr;
  QLabel* pnlIndexFile_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
};

}  // namespace zv::forms
