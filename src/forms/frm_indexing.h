// frmIndexing: the progress window of the index builder, with its Cancel.
#pragma once

#include <atomic>
#include <cstdint>

#include <QDialog>
#include <QElapsedTimer>

#include "records/index_progress.h"

class QLabel;

namespace zv::forms {

class FrmMain;

class FrmIndexing : public QDialog, public IndexProgress {
  Q_OBJECT

 public:
  FrmIndexing(FrmMain& frmMain, std::atomic<int16_t>& giInterrupt);

  // IndexProgress. The counters show a number with a blank on each side.
  void indexingStarted(std::string_view fileSize, std::string_view startTime) override;
  void indexLine(int32_t lineNumber) override;
  void indexRecord(int32_t recordCount) override;
  void indexingFinished(std::string_view finishTime, std::string_view elapsed) override;
  void indexingClosed() override;

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
