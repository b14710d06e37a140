// frmWriting: the progress window of Write Kept Records and Write Order; it has no button.
#pragma once

#include <cstdint>

#include <QDialog>
#include <QElapsedTimer>

#include "records/index_progress.h"

class QLabel;

namespace zv::forms {

class FrmWriting : public QDialog, public WritingProgress {
  Q_OBJECT

 public:
  explicit FrmWriting(QWidget* parent);

  // WritingProgress.
  void writingStarted(std::string_view caption) override;
  void writingRecord(int32_t n) override;
  void writingFile(std::string_view name) override;
  void writingLine(int32_t n) override;
  void writingEnded() override;

 public slots:
  // Nothing stops a write once it runs: the close box and Escape do nothing.
  void reject() override {}

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QElapsedTimer repaintClock_;
  int32_t lines_ = 0;
  QLabel* pnlRecord_ = nullptr;
  QLabel* pnlLine_ = nullptr;
  QLabel* pnlFile_ = nullptr;
};

}  // namespace zv::forms
