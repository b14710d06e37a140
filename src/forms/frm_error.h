// frmError: the last report of a command's error, "Zorvanta Error Recovery".
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace zv::forms {

class FrmMain;

class FrmError : public QDialog {
  Q_OBJECT

 public:
  explicit FrmError(FrmMain& frmMain);

  // pnlErrorMsg, as RunCommand fills it.
  void setMessage(const QString& text);
  QString message() const;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void cmdOkayClick();

  FrmMain& frmMain_;
  QLabel* pnlErrorMsg_ = nullptr;
};

}  // namespace zv::forms
