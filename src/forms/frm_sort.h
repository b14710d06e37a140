// frmSort: the tag to sort on, its worked example, and Sort's progress.
#pragma once

#include "analysis/sort.h"
#include "core/dispatcher.h"
#include "forms/frm_record_tool.h"

class QLineEdit;

namespace zv::forms {

class FrmSort : public FrmRecordTool {
  Q_OBJECT

 public:
  static FrmSort& Of(FrmMain& frmMain);
  // Command 1900: the form reset, SelectRecordFile, then the form shown.
  static void Open(FrmMain& frmMain, const Command& command);

 protected:
  bool event(QEvent* event) override;
  std::optional<std::any> gather() override;
  void setInputsEnabled(bool enabled) override;
  void clearInputs() override;
  int32_t runNumber() const override { return kSort; }

 private:
  explicit FrmSort(FrmMain& frmMain);

  QLineEdit* txtSortFieldTag_ = nullptr;
};

}  // namespace zv::forms
