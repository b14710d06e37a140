// frmFilter: the progress window of every filter job, and the job's host in the GUI.
#pragma once

#include <functional>

#include <QDialog>
#include <QElapsedTimer>
#include <QString>

#include "core/job_host.h"
#include "core/job_state.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace zv::forms {

class FrmMain;

class FrmFilter : public QDialog, public JobHost {
  Q_OBJECT

 public:
  FrmFilter(FrmMain& frmMain, JobState& job);

  // JobHost.
  void GetInputFile(JobState& job, std::string_view dialogFilter) override;
  void setFilterTitle(std::string_view title) override;
  void ClearStatusPanels() override;
  void jobStarted(std::string_view fileSize, std::string_view startTime, std::string_view fileLines) override;
  void lineRead(int32_t lInLine, int32_t glLineCount) override;
  void recordLabelled(int32_t glRecNum) override;
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;
  void FinishFilter(std::string_view pnlInFile, std::string_view pnlProFile, std::string_view pnlIndexFile) override;

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
  void showPanels();
  void cmdOkayClick();
  void cmdCancelClick();

  FrmMain& frmMain_;
  JobState& job_;
  FileChooser chooser_;
  QElapsedTimer repaintClock_;
  int32_t lineOdom_ = 0;
  int32_t recOdom_ = 0;
  int percent_ = 0;

  QLabel* pnlInFile_ = nullptr;
  QLabel* pnlProFile_ = nullptr;
  QLabel* pnlIndexFile_ = nullptr;
  QLabel* pnlLineOdom_ = nullptr;
  QLabel* pnlRecOdom_ = nullptr;
  QProgressBar* pnlProgress_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
};

}  // namespace zv::forms
