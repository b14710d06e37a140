// frmPikTypes: Specified Dialog Types to One File, from the choice of types to the result.
#include "forms/frm_pik_types.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
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
const char* const kTypeHint = "Up to ten characters specifying a Dialog online type, e.g. '3,AB'.";

QLabel* filePanel(const char* name, QWidget* parent) {
  QLabel* panel = SunkenPanel(name, parent, 22);
  panel->setTextInteractionFlags(Qt::TextSelectableByMouse);
  panel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  return panel;
}

}  // namespace

FrmPikTypes::FrmPikTypes(FrmMain& frmMain, JobState& job) : TypesDialog(frmMain, job, "frmPikTypes") {
  setWindowTitle(QStringLiteral("Specified Dialog Types to One File"));
  setMinimumWidth(480);
  buildFields(kRows, false);

  auto* layout = new QVBoxLayout(this);
  auto* number = new QHBoxLayout;
  number->addWidget(new QLabel(QStringLiteral("How many Types (1 to 5):"), this));
  number->addWidget(txtHowManyTypes_);
  number->addStretch();
  layout->addLayout(number);

  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(QStringLiteral("Records"), this), 0, 2, Qt::AlignCenter);
  for (std::size_t i = 0; i < kMaxTypes; ++i) {
    const int row = static_cast<int>(i) + 1;
    grid->addWidget(pnlType_[i], row, 0);
    grid->addWidget(txtType_[i], row, 1);
    grid->addWidget(pnlTypeOdom_[i], row, 2);
    hint(txtType_[i], QLatin1String(kTypeHint));
  }
  layout->addLayout(grid);

  pnlInFile_ = filePanel("pnlInFile", this);
  pnlProFile_ = filePanel("pnlProFile", this);
  pnlIndexFile_ = filePanel("pnlIndexFile", this);
  for (auto [caption, panel] : {std::pair{"Search file unaltered", pnlInFile_}, std::pair{"Records saved to", pnlProFile_},
                                std::pair{"Index saved to", pnlIndexFile_}}) {
    layout->addWidget(new QLabel(QLatin1String(caption), this));
    layout->addWidget(panel);
  }

  auto* odometers = new QGridLayout;
  odometers->addWidget(new QLabel(QStringLiteral("Processing Line  ........."), this), 0, 0);
  odometers->addWidget(pnlLineOdom_, 0, 1);
  odometers->addWidget(new QLabel(QStringLiteral("Processing Record  ...."), this), 1, 0);
  odometers->addWidget(pnlRecOdom_, 1, 1);
  odometers->setColumnStretch(2, 1);
  layout->addSpacing(6);
  layout->addLayout(odometers);
  layout->addWidget(pnlProgress_);

  cmdCancel0_ = new QPushButton(QStringLiteral("Cancel"), this);
  cmdCancel0_->setObjectName(QStringLiteral("cmdCancel_0"));
  cmdCancel1_ = new QPushButton(QStringLiteral("Cancel"), this);
  cmdCancel1_->setObjectName(QStringLiteral("cmdCancel_1"));
  cmdOkay_ = new QPushButton(QStringLiteral("Okay"), this);
  cmdOkay_->setObjectName(QStringLiteral("cmdOkay"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (QPushButton* b : {cmdBegin_, cmdCancel0_, cmdCancel1_, cmdOkay_}) buttons->addWidget(b);
  buttons->addStretch();
  layout->addLayout(buttons);
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
