// frmRank: six terms with their weights, their key rules, and Rank's progress.
#pragma once

#include <array>

#include "analysis/rank.h"
#include "core/dispatcher.h"
#include "forms/frm_record_tool.h"

class QLineEdit;

namespace zv::forms {

class FrmRank : public FrmRecordTool {
  Q_OBJECT

 public:
  static FrmRank& Of(FrmMain& frmMain);
  // Command 1800: the form reset, SelectRecordFile, then the form shown.
  static void Open(FrmMain& frmMain, const Command& command);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  std::optional<std::any> gather() override;
  void setInputsEnabled(bool enabled) override;
  void clearInputs() override;
  int32_t runNumber() const override { return kRunRank; }

 private:
  explicit FrmRank(FrmMain& frmMain);

  std::array<QLineEdit*, kRankSlots> txtRankTerm_{};
  std::array<QLineEdit*, kRankSlots> txtRankWt_{};
};

}  // namespace zv::forms
