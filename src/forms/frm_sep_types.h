// frmSepTypes: the types of a DIALOG job and a file for each, then its progress.
#pragma once

#include "filters/dialog_separate.h"
#include "forms/types_dialog.h"

namespace zv::forms {

class FrmSepTypes final : public TypesDialog {
  Q_OBJECT

 public:
  FrmSepTypes(FrmMain& frmMain, JobState& job);

  void reset() override;  // ResetSepTypes: the fields as they were, the form hidden
  void runBegun(int32_t commandNumber) override;
  void showRunning() override;

 public slots:
  void reject() override;

 protected:
  bool event(QEvent* event) override;
  void fileFieldEntered(QLineEdit* field) override;
  bool fileFieldKey(QLineEdit* field, QKeyEvent* key) override;

 private:
  void cmdBeginClick();
  void cmdOkayClick();
  void cmdCancelClick();
  void cmdCancel2Click();
  void fileEdited(QLineEdit* field);
  void closeForm();

  SepTypesParams params_;  // what Begin gathered for the job
  QLabel* pnlUnalteredFileName_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QPushButton* cmdCancel2_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
};

}  // namespace zv::forms
