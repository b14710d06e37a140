// frmWriting: the progress window of Write Kept Records and Write Order; it has no button.
#pragma once

#include <cstdint>

#include <QDialog>

class QLabel;

namespace zv::forms {

inline constexpr const char* kWritingKeptCaption = "Writing Kept Records";
inline constexpr const char* kWritingOrderCaption = "Writing Reordered Records";

class FrmWriting : public QDialog {
  Q_OBJECT

 public:
  explicit FrmWriting(QWidget* parent);

  void showRecord(int32_t n);
  void showLine(int32_t n);
  void showFile(const QString& name);
  void clearPanels();

 public slots:
  // Nothing stops a write once it runs: the close box and Escape do nothing.
  void reject() override {}

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QLabel* pnlRecord_ = nullptr;
  QLabel* pnlLine_ = nullptr;
  QLabel* pnlFile_ = nullptr;
};

}  // namespace zv::forms
