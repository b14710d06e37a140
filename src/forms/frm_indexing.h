// frmIndexing: the progress window of the index builder, with its Cancel.
#pragma once

#include <atomic>
#include <cstdint>

#include <QDialog>
#include <QElapsedTimer>

#include "core/job.h"
#include "forms/frm_filter.h"

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
  FrmMain& frmMain_;
  std::atomic<int16_t>& giInterrupt_;
  bool building_ = false;
  LineOdometers odometers_;
};

}  // namespace zv::forms
