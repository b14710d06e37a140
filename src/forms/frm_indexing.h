// frmIndexing: the progress window of the index builder, with its Cancel.
#pragma once

#include <atomic>
#include <cstdint>

#include <QDialog>
#include <QElapsedTimer>

#include "core/job.h"

class QLabel;

namespace zv::forms {

class FrmMain;

class FrmIndexing : public QDialog, public JobProgress {
  Q_OBJECT

 public:
  FrmIndexing(FrmMain& frmMain, std::atomic<int16_t>& giInterrupt);

  // JobProgress of BuildIndex. The counters show a number with a blank on each side.
  void ClearStatusPanels() override;
  void jobStarted(const Start& start) override;
  void lineDone(int32_t lineNumber, int32_t totalLines) override;
  void recordDone(int32_t recordCount) override;
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;
  void jobEnded(JobOutcome outcome) override;

  void cmdCancelClick();

 public slots:
  void reject() override;

 private:
  void showCounters();

  FrmMain& frmMain_;
  std::atomic<int16_t>& giInterrupt_;
  QElapsedTimer repaintClock_;
  bool building_ = false;
  int32_t line_ = 0;
  int32_t record_ = 0;
  QLabel* pnlLineOdom_ = nullptr;
  QLabel* pnlRecOdom_ = nullptr;
};

}  // namespace zv::forms
