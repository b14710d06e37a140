// frmAbout: the version record and a way to the system's information program.
#pragma once

#include <QDialog>

namespace zv::forms {

class FrmAbout : public QDialog {
  Q_OBJECT

 public:
  explicit FrmAbout(QWidget* parent);

  // What "&System Info..." does: starts the system information program, or says
  // that there is none.
  void cmdSysInfoClick();

  static QString VersionText();     // "Version 3.0.0"
  static QString DisclaimerText();  // the two remaining texts of the record
};

inline constexpr const char* kNoSysInfoText = "System Information Is Unavailable At This Time";

}  // namespace zv::forms
