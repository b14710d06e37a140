// frmPikTypes: Specified Dialog Types to One File, from the choice of types to the result.
#include "forms/frm_pik_types.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "filters/dialog_pick.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

namespace {

constexpr int32_t kRunPikTypes = 201;
constexpr std::array<const char*, kMaxTypes> kRows = {"First Type  .........", "Second Type  ...",
                                                      "Third Type  .......", "Fourth Type  .....",
                                                      "Fifth Type  ........."};

}  // namespace

FrmPikTypes::FrmPikTypes(FrmMain& frmMain, JobState& job) : TypesDialog(frmMain, job, "frmPikTypes") {
  setWindowTitle(QStringLiteral("Specified Dialog Types to One File"));
  setMinimumWidth(480);
  buildFields(kRows, false);

  QVBoxLayout* layout = layOutFields({nullptr, "Records"});
  pnlInFile_ = addFilePanel(layout, "Search file unaltered", "pnlInFile");
  pnlProFile_ = addFilePanel(layout, "Records saved to", "pnlProFile");
  pnlIndexFile_ = addFilePanel(layout, "Index saved to", "pnlIndexFile");
  addOdometers(layout, "Processing Line  .........", "Processing Record  ....");
  cmdCancel0_ = NamedButton("Cancel", "cmdCancel_0", this);
  cmdCancel1_ = NamedButton("Cancel", "cmdCancel_1", this);
  cmdOkay_ = NamedButton("Okay", "cmdOkay", this);
  addButtons(layout, {cmdBegin_, cmdCancel0_, cmdCancel1_, cmdOkay_});
  hint(cmdBegin_, QStringLiteral("When number of types specified filled in, begin filtering."));
  hint(cmdCancel0_, QStringLiteral("Abandon this filtering."));

  connect(cmdBegin_, &QPushButton::clicked, this, &FrmPikTypes::cmdBeginClick);
  connect(cmdOkay_, &QPushButton::clicked, this, &FrmPikTypes::cmdOkayClick);
  connect(cmdCancel0_, &QPushButton::clicked, this, &FrmPikTypes::cmdCancel0Click);
  connect(cmdCancel1_, &QPushButton::clicked, this, &FrmPikTypes::cmdCancel1Click);
  reset();
}

void FrmPikTypes::reset() {
  resetFields();
  cmdBegin_->setEnabled(true);
  cmdCancel0_->setEnabled(true);
  cmdCancel1_->setEnabled(false);
  cmdOkay_->setEnabled(false);
  for (QLabel* panel : {pnlInFile_, pnlProFile_, pnlIndexFile_}) panel->clear();
  txtHowManyTypes_->setFocus();
}

void FrmPikTypes::cmdBeginClick() {
  frmMain_.setStatusMsg(QStringLiteral(" Zorvanta is filtering a search."));
  giPikBegun_ = 1;
  if (txtHowManyTypes_->text().isEmpty()) {
    ShowMessage(this, MsgIcon::Warning, QStringLiteral("Sequence Error"),
                QStringLiteral("It is necessary to specify the number of types before beginning filtering."));
    txtHowManyTypes_->setFocus();
    return;
  }
  if (firstBlank(txtType_, howMany()) != 0) {
    ShowMessage(this, MsgIcon::Warning, kNotAllFilledTitle, kTypeLeftBlankText);
    return;
  }
  leaveTabOrder();
  cmdBegin_->setEnabled(false);
  cmdCancel0_->setEnabled(false);
  cmdCancel1_->setEnabled(false);
  frmMain_.RunCommand(kRunPikTypes);
}

void FrmPikTypes::showRunning() { cmdCancel1_->setEnabled(true); }

void FrmPikTypes::runBegun(int32_t commandNumber) {
  // Every field is read, the hidden ones too.
  const JobResult result = frmMain_.runJob(commandNumber, PikTypesParams{{capture_, {}}, typeTexts()}, *this);
  switch (result.outcome) {
    case JobOutcome::Done:
      // The result waits here for Okay.
      showPanels();
      pnlProFile_->setText(QLatin1Char(' ') + Q(result.files.size() > 0 ? result.files[0] : std::string()));
      pnlIndexFile_->setText(QLatin1Char(' ') + Q(result.files.size() > 1 ? result.files[1] : std::string()));
      pnlInFile_->setText(QLatin1Char(' ') + Q(capture_));
      cmdOkay_->setEnabled(true);
      cmdCancel1_->setEnabled(false);
      cmdOkay_->setFocus();
      break;
    case JobOutcome::ZeroRecords:
    case JobOutcome::Refused:
      // The dialog stays on the screen, reset.
      reset();
      if (result.message) ShowMessage(this, MsgIcon::Warning, result.message->title, result.message->text);
      giPikBegun_ = 0;
      frmMain_.EnableMain(true);
      frmMain_.activateWindow();
      break;
    case JobOutcome::Interrupted:
    case JobOutcome::Failed:  // frmError has been shown
    case JobOutcome::Cancelled:
    case JobOutcome::NoCommand:
      closeForm();
      break;
  }
}

void FrmPikTypes::closeForm() {
  reset();
  giPikBegun_ = 0;
  frmMain_.EnableMain(true);
  hide();
  frmMain_.activateWindow();
}

void FrmPikTypes::cmdOkayClick() { closeForm(); }

void FrmPikTypes::cmdCancel0Click() { closeForm(); }

void FrmPikTypes::cmdCancel1Click() {
  if (frmMain_.jobRunning()) {
    // The job sees the flag after the line in hand and removes its outputs.
    job_.giInterrupt = 1;
    frmMain_.ClearStatusPanels();
    return;
  }
  frmMain_.ClearStatusPanels();
  job_.CleanUp();
  closeForm();
}

void FrmPikTypes::reject() {
  // The close box and Escape do what the button within reach does.
  if (cmdOkay_->isEnabled())
    cmdOkayClick();
  else if (frmMain_.jobRunning())
    cmdCancel1Click();
  else if (cmdCancel0_->isEnabled())
    cmdCancel0Click();
}

bool FrmPikTypes::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate)
    frmMain_.setStatusMsg(QStringLiteral(" Choose which Dialog online TYPES to include in a cleaned-up file."));
  return TypesDialog::event(e);
}

TypesDialog& PikTypesForm(FrmMain& frmMain) {
  if (auto* form = frmMain.findChild<FrmPikTypes*>(QStringLiteral("frmPikTypes"), Qt::FindDirectChildrenOnly))
    return *form;
  return *new FrmPikTypes(frmMain, frmMain.job());
}

}  // namespace zv::forms
