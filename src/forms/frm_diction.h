// frmDiction: the progress and result of Diction, and the command that starts it.
#pragma once

#include <QDialog>

#include "analysis/diction.h"
#include "core/dispatcher.h"
#include "forms/analysis_forms.h"

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace zv::forms {

class FrmMain;

class FrmDiction : public QDialog, public AnalysisProgress {
  Q_OBJECT

 public:
  static FrmDiction& Of(FrmMain& frmMain);
  // Command 2100: the open dialog, the omit list's check, then the job in this window.
  static void Run(FrmMain& frmMain, const Command& command);

  // Panels emptied, Cancel shown, Okay hidden, the window hidden.
  void ResetForm();

  void ClearStatusPanels() override;
  void jobStarted(const Start& start) override;
  void lineDone(int32_t line, int32_t totalLines) override;
  void uniqueWords(int32_t n) override { panels_.record(n); }
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;

 public slots:
  void reject() override;

 private:
  explicit FrmDiction(FrmMain& frmMain);
  void run(const DictionParams& params);
  void cmdCancelClick();
  void cmdOkayClick();

  FrmMain& frmMain_;
  JobPanels panels_;
  bool running_ = false;
  QCheckBox* chkNoLimits_ = nullptr;
  QLabel* pnlDicFile_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
};

}  // namespace zv::forms
