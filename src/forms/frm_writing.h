// frmWriting: the progress window of Write Kept Records and Write Order; it has no button.
#pragma once

#include <cstdint>

#include <QDialog>
#include <QElapsedTimer>

#include "core/job.h"

class QLabel;

namespace zv::forms {

class FrmWriting : public QDialog, public JobProgress {
  Q_OBJECT

 public:
  explicit FrmWriting(QWidget* parent);

  // JobProgress of the two writers: the job's title is the caption, the record count
  // or number goes to pnlRecord, the file written (the caption of a step) to pnlFile,
  // each line to pnlLine. When the job ends the form is hidden, its caption back to
  // "Writing Kept Records", the normal pointer restored.
  void jobStarted(const Start& start) override;
  void recordDone(int32_t n) override;
  void caption(std::string_view name) override;
  void lineDone(int32_t n, int32_t totalLines) override;
  void jobEnded(JobOutcome outcome) override;

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
