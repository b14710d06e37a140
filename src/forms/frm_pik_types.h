// frmPikTypes: the types of a DIALOG job whose records go to one file, then its progress.
#pragma once

#include "forms/types_dialog.h"

namespace zv::forms {

class FrmPikTypes final : public TypesDialog {
  Q_OBJECT

 public:
  FrmPikTypes(FrmMain& frmMain, JobState& job);

  void reset() override;  // ResetPikTypes
  void runBegun(int32_t commandNumber) override;
  void showRunning() override;

 public slots:
  void reject() override;

 protected:
  bool event(QEvent* event) override;

 private:
  void cmdBeginClick();
  void cmdOkayClick();
  void cmdCancel0Click();
  void cmdCancel1Click();
  void closeForm();

  int16_t giPikBegun_ = 0;
  QLabel* pnlInFile_ = nullptr;
  QLabel* pnlProFile_ = nullptr;
  QLabel* pnlIndexFile_ = nullptr;
  QPushButton* cmdCancel0_ = nullptr;
  QPushButton* cmdCancel1_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
};

}  // namespace zv::forms
