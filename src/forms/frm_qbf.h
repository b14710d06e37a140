// frmQBF: the nine boxes of Query by Form, its implied statement, and the query's progress.
#pragma once

#include <array>

#include <QDialog>

#include "analysis/qbf.h"
#include "core/dispatcher.h"
#include "forms/analysis_forms.h"

class QLabel;
class QLineEdit;
class QProgressBar;

namespace zv::forms {

class FrmMain;

class FrmQBF final : public AnalysisJobDialog {
  Q_OBJECT

 public:
  // The window of `frmMain`, made on first use.
  static FrmQBF& Of(FrmMain& frmMain);
  // Command 1700: SelectRecordFile, then the form shown and the main window disabled.
  static void Open(FrmMain& frmMain, const Command& command);

  // The boxes' texts, txt11 to txt33.
  QbfBoxes boxes() const;
  // Submit: the first term's check, the save dialog and its checks, then command 1701.
  void cmdSubmitClick();
  // Back to the filling state with everything emptied, and hidden.
  void ResetForm() override;

  // AnalysisProgress: the searching and hit panels, the bar.
  void lineDone(int32_t line, int32_t totalLines) override;
  void recordDone(int32_t record) override { searching_.record(record); }
  void recordLine(int32_t n) override { searching_.line(n); }
  void hitRecord(int32_t hits) override { hits_.record(hits); }
  void hitLine(int32_t n) override { hits_.line(n); }
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit FrmQBF(FrmMain& frmMain);
  void showStatement();
  void runQuery(const std::string& queryFile);
  void cmdOkayClick() override;

  RecordFileChoice choice_;
  bool checkingFirstTerm_ = false;
  JobPanels searching_, hits_;

  std::array<QLineEdit*, 9> txt_{};
  QLabel* pnlISS_ = nullptr;
  QLabel* pnlQueryFile_ = nullptr;
  QLabel* pnlQueriedFile_ = nullptr;
  QProgressBar* pnlProgress_ = nullptr;
};

}  // namespace zv::forms
