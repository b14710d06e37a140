// frmIndexing: the progress window of the index builder, with its Cancel.
#pragma once

#include <atomic>
#include <cstdint>

#include <QDialog>

class QLabel;

namespace zv::forms {

class FrmMain;

class FrmIndexing : public QDialog {
  Q_OBJECT

 public:
  FrmIndexing(FrmMain& frmMain, std::atomic<int16_t>& giInterrupt);

  // Both counters blank, as at the start of a build.
  void clearCounters();
  // pnlLineOdom and pnlRecOdom, a number with a blank on each side.
  void showLine(int32_t lineNumber);
  void showRecord(int32_t recordNumber);

  void cmdCancelClick();

 public slots:
  void reject() override;

 private:
  FrmMain& frmMain_;
  std::atomic<int16_t>& giInterrupt_;
  QLabel* pnlLineOdom_ = nullptr;
  QLabel* pnlRecOdom_ = nullptr;
};

}  // namespace zv::forms
