// frmRecordJob: the progress window of Export Records and Find Duplicates.
#pragma once

#include <any>
#include <string>

#include <QDialog>
#include <QElapsedTimer>
#include <QStringList>

#include "core/job.h"
#include "core/job_state.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace zv::forms {

class FrmMain;

class FrmRecordJob : public QDialog, public JobProgress {
  Q_OBJECT

 public:
  FrmRecordJob(FrmMain& frmMain, JobState& job);

  // JobProgress: the title, the step, the odometers, the bar and the timing panels.
  void ClearStatusPanels() override;
  void jobStarted(const Start& start) override;
  void caption(std::string_view text) override;
  void lineDone(int32_t line, int32_t totalLines) override;
  void recordDone(int32_t record) override;
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;

  // At most this often the window is repainted and the interface served.
  static constexpr int kRepaintMs = 30;

 public slots:
  void reject() override;  // Escape and the close box interrupt, as Cancel does

 private:
  void yield();
  void cmdCancelClick();

  FrmMain& frmMain_;
  JobState& job_;
  QElapsedTimer repaintClock_;
  int32_t line_ = 0, totalLines_ = 0, record_ = 0, totalRecords_ = 0;
  QLabel* lblStep_ = nullptr;
  QLabel* pnlLineOdom_ = nullptr;
  QLabel* pnlRecOdom_ = nullptr;
  QProgressBar* pnlProgress_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
};

// What Export Records and Find Duplicates share around the window.

// A file name as the jobs take it, and back as the messages show it.
std::string ToPath(const QString& path);
QString FromPath(const std::string& path);

// Rows `row` and `row + 1` of `grid`: the caption across, then the name's field and
// its Browse... button.
void PlaceNameRow(QGridLayout& grid, int row, const QString& caption, QLineEdit* field, QPushButton* browse);

// The Open dialog for record files (one, or `several`); the folder of the first one
// chosen becomes the current one. Empty when cancelled.
QStringList BrowseRecordFiles(QWidget* parent, bool several);
// The Save As dialog from the name in `field`, the name chosen put in it.
void BrowseSaveName(QWidget* parent, QLineEdit* field);

// The dialog shown modally over frmMain, centred; true when Okay let it go.
bool ExecChoices(QDialog& dialog, FrmMain& frmMain);

// The job under frmRecordJob while frmMain is disabled. A refusal or zero records is
// told in a message box; the caller tells how a job that is done went; an interrupt
// says nothing and a failure has been shown in frmError.
JobResult RunRecordJob(FrmMain& frmMain, int32_t commandNumber, std::any params);

}  // namespace zv::forms
