// frmReplaceLabels: the replacement mode and its texts, for Replace Labels.
#pragma once

#include <QDialog>

#include "polish/replace_labels.h"

class QLineEdit;
class QRadioButton;
class QWidget;

namespace zv::forms {

class FrmReplaceLabels : public QDialog {
  Q_OBJECT

 public:
  explicit FrmReplaceLabels(QWidget* parent);

  // ResetReplaceForm: Single on, its field shown and enabled, the marker panels
  // hidden and their fields disabled, all three fields empty, the focus in the single
  // field. Run each time the dialog comes up.
  void ResetReplaceForm();

  // The mode chosen and its texts (those of the other modes are not read).
  ReplaceMode mode() const;
  ReplaceLabelsParams params(const PolishFiles& files) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void chooseMode();

  QRadioButton* optSingle_ = nullptr;
  QRadioButton* optDouble_ = nullptr;
  QRadioButton* optSurround_ = nullptr;
  QWidget* pnlSingleReplacement_ = nullptr;
  QWidget* pnlBeginningMarker_ = nullptr;
  QWidget* pnlEndingMarker_ = nullptr;
  QLineEdit* txtSingleReplacement_ = nullptr;
  QLineEdit* txtBeginningMarker_ = nullptr;
  QLineEdit* txtEndingMarker_ = nullptr;
};

}  // namespace zv::forms
