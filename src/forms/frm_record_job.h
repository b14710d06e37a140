// frmRecordJob: the progress window of Export Records and Find Duplicates.
#pragma once

#include <QDialog>
#include <QElapsedTimer>

#include "core/job.h"
#include "core/job_state.h"

class QLabel;
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

}  // namespace zv::forms
