// What frmRank and frmSort share: the operation, odometers and bar of a job that reads a
// record file, the names of what it wrote, and the Begin/Cancel/Help, Cancel and Okay.
#pragma once

#include <any>
#include <optional>
#include <cstdint>
#include <string>
#include <vector>

#include <QDialog>

#include "analysis/select_record_file.h"
#include "forms/analysis_forms.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QProgressBar;

namespace zv::forms {

class FrmMain;

class FrmRecordTool : public AnalysisJobDialog {
  Q_OBJECT

 public:
  // Begin: the form's checks, then the job.
  void cmdBeginClick();
  // Back to the look of a form just opened, emptied and hidden.
  void ResetForm() override;

  // AnalysisProgress: pnlOperation, the odometers and the bar.
  void caption(std::string_view text) override;
  void lineDone(int32_t line, int32_t totalLines) override { panels_.lineDone(line, totalLines); }
  void recordDone(int32_t record) override { panels_.record(record); }
  void recordLine(int32_t n) override { panels_.line(n); }
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;

 protected:
  struct Layout {
    const char* name;             // frmRank
    const char* title;            // "Rank"
    const char* helpPage;         // rank.html
    const char* recordCaption;    // beside pnlRecOdom
    const char* lineCaption;      // beside pnlLineOdom
    std::vector<std::pair<const char*, const char*>> outputs;  // the file name panels and their captions
  };
  FrmRecordTool(FrmMain& frmMain, const Layout& layout);

  // Where a tool puts its own boxes, above the panels.
  QBoxLayout* inputs() const { return inputs_; }
  // The form's own checks and parameters; nothing when Begin is refused (the tool
  // has said why).
  virtual std::optional<std::any> gather() = 0;
  virtual void setInputsEnabled(bool enabled) = 0;
  virtual void clearInputs() = 0;
  virtual int32_t runNumber() const = 0;
  // The record file the opening chose, and the opening itself.
  void opened(const RecordFileChoice& choice);
  const RecordFileChoice& choice() const { return choice_; }
  QCheckBox* chkNoLimits() const { return chkNoLimits_; }
  FrmMain& frmMain() const { return frmMain_; }

 private:
  void cmdOkayClick() override;

  RecordFileChoice choice_;
  JobPanels panels_;
  QBoxLayout* inputs_ = nullptr;
  QCheckBox* chkNoLimits_ = nullptr;
  QLabel* pnlOperation_ = nullptr;
  std::vector<QLabel*> outputPanels_;
  QProgressBar* pnlProgress_ = nullptr;
};

}  // namespace zv::forms
