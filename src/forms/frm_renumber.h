// frmRenumber: the progress window of the polishing tools, with the captions and
// panels each tool sets for its run.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QString>

#include "core/job.h"
#include "core/job_state.h"
#include "forms/frm_filter.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace zv::forms {

class FrmMain;

class FrmRenumber : public QDialog, public JobProgress {
  Q_OBJECT

 public:
  FrmRenumber(FrmMain& frmMain, JobState& job);

  // ResetRenumberForm: odometers and names blank, Okay disabled, Cancel enabled, the
  // caption "Renumber Record File", the record panels shown, the captions of the two
  // names "Renumbered File" and "Record File Unaltered", the bar at 0.
  void ResetRenumberForm();

  // A tool's run: the caption over the output's name ("Reformatted File:"), the
  // window centred and shown, the main window disabled.
  void showForRun(const QString& outputCaption);
  // The names of the output and of the input left unaltered; a null text keeps what
  // the panel shows.
  void setNames(const QString& outputName, const QString& unalteredName);
  // The end of a run: Cancel hidden, Okay enabled.
  void showFinished();
  // The abandoning of a run: reset, hidden, the main window enabled and active.
  void abandon();

  // JobProgress: the title and the main window's timing panels, the odometers and
  // the bar, and (the caption) the file being written.
  void ClearStatusPanels() override;
  void jobStarted(const Start& start) override;
  void lineDone(int32_t line, int32_t totalLines) override;
  void recordDone(int32_t record) override;
  void caption(std::string_view text) override;
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;

 public slots:
  void reject() override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void cmdOkayClick();
  void cmdCancelClick();

  FrmMain& frmMain_;
  JobState& job_;
  LineOdometers odometers_;

  QLabel* pnlRenumRecsProc_ = nullptr;
  QLabel* pnlRenumFile_ = nullptr;
  QLabel* pnlFileName_ = nullptr;
  QLabel* pnlRenumFileUnaltered_ = nullptr;
  QLabel* pnlUnalteredFileName_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
};

// The one frmRenumber of the main window, made on first use.
FrmRenumber& RenumberForm(FrmMain& frmMain);

}  // namespace zv::forms
