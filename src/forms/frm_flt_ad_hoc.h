// frmFltAdHoc: the record markers of the ad hoc filter, asked before its capture.
#pragma once

#include <QDialog>

#include "core/dispatcher.h"
#include "core/job_state.h"

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace zv::forms {

class FrmMain;

class FrmFltAdHoc final : public QDialog {
  Q_OBJECT

 public:
  FrmFltAdHoc(QWidget* parent, JobState& job);

  // The markers as typed or chosen, and whether records end at the ending marker.
  QString beginMarker() const;
  QString endMarker() const;
  bool bothMarkers() const;

  // The activation of each showing: the texts emptied, Beginning Marker Only chosen,
  // and the lists' items added again on top of those already there.
  void activate();

 public slots:
  // Cancel, Esc and the close box: the command ends here.
  void reject() override;

 private:
  void optionClicked();
  void cmdOkayClick();

  JobState& job_;
  QComboBox* cboBM_ = nullptr;
  QComboBox* cboEM_ = nullptr;
  QLabel* pnlEM_ = nullptr;
  QRadioButton* optBMandEM_ = nullptr;
  QRadioButton* optBMOnly_ = nullptr;
};

// Command 1: the markers (modal), then the capture, then the filter in frmFilter. A
// cancel of the markers ends the command with no file dialog and nothing written.
void RunFltAdHoc(FrmMain& frmMain, const Command& command);

}  // namespace zv::forms
