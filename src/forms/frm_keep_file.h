// frmKeepFile: asks for the name of the file that Keep marks the record for.
#pragma once

#include <atomic>
#include <cstdint>

#include <QDialog>

class QLineEdit;

namespace zv::forms {

class FrmKeepFile : public QDialog {
  Q_OBJECT

 public:
  // Cancel raises `giInterrupt` for the caller to see and lower.
  FrmKeepFile(QWidget* parent, std::atomic<int16_t>& giInterrupt);

  QString keepFileText() const;
  QLineEdit* txtKeepFile() const { return txtKeepFile_; }

  // Why a typed character is refused, or empty when it may stand in a file name.
  static QString RefusalOfKey(QChar c);
  static constexpr int kMaxNameLength = 250;

  void cmdOkayClick();
  void cmdCancelClick();

 public slots:
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void textChanged();

  std::atomic<int16_t>& giInterrupt_;
  QLineEdit* txtKeepFile_ = nullptr;
};

}  // namespace zv::forms
