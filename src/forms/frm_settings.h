// frmSettings: the folder the program starts in next time.
#pragma once

#include <QDialog>

class QFileSystemModel;
class QLineEdit;
class QRadioButton;
class QTreeView;

namespace zv::forms {

class FrmMain;
class SettingsStore;

class FrmSettings : public QDialog {
  Q_OBJECT

 public:
  FrmSettings(FrmMain& frmMain, SettingsStore& store);

  // optUserOverride as the settings load found "UserOverride".
  void setUserOverride(bool on);

  // Writes "LastWorkDir", "UserWorkDir" and "UserOverride"; the choice takes effect at
  // the next start, the current directory stays.
  void cmdSaveClick();
  // Leaves the store as it was.
  void cmdCancelClick();

 public slots:
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void showDirectory(const QString& path);
  void scrollToShownDirectory();

  FrmMain& frmMain_;
  SettingsStore& store_;
  QString shownDir_;  // the folder the list was opened at
  QFileSystemModel* dirModel_ = nullptr;
  QTreeView* dir1_ = nullptr;
  QLineEdit* txtWorkingDir_ = nullptr;
  QRadioButton* optUserOverride_ = nullptr;
  QRadioButton* optLastDir_ = nullptr;
};

}  // namespace zv::forms
