// frmBigLoad: the notice shown while a large file is made ready for viewing.
#pragma once

#include <QDialog>

namespace zv::forms {

class FrmMain;

class FrmBigLoad : public QDialog {
  Q_OBJECT

 public:
  explicit FrmBigLoad(FrmMain& frmMain);

  // Files over this many bytes get the notice.
  static constexpr int64_t kBigFileBytes = 200000;

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  FrmMain& frmMain_;
};

}  // namespace zv::forms
