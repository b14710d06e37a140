// frmSepTypes: Specified DIALOG Types to Separate Files, from the choice of types and files to the result.
#include "forms/frm_sep_types.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "filters/dialog_separate.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "forms/version_record.h"

namespace zv::forms {

namespace {

constexpr int32_t kRunSepTypes = 301;
constexpr std::array<const char*, kMaxTypes> kRows = {"First  ........", "Second  ..", "Third  ......",
                                                      "Fourth  ...", "Fifth  ......."};
const char* const kFileHint = "The gsBaseName (up to 8 characters) of the file for the adjacent type.";

}  // namespace

FrmSepTypes::FrmSepTypes(FrmMain& frmMain, JobState& job) : TypesDialog(frmMain, job, "frmSepTypes") {
  setWindowTitle(QStringLiteral("Specified DIALOG Types to Separate Files"));
  setMinimumWidth(520);
  buildFields(kRows, true);

  QVBoxLayout* layout = layOutFields({"Types", "Separate Files", "Records"});
  hint(txtHowManyTypes_, QStringLiteral("Choose to recognize from 1 to 5 Dialog online types."));
  for (QLineEdit* field : txtFile_) {
    hint(field, QLatin1String(kFileHint));
    connect(field, &QLineEdit::textEdited, this, [this, field] { fileEdited(field); });
  }
  pnlUnalteredFileName_ = addFilePanel(layout, "Search file unaltered", "pnlUnalteredFileName");
  addOdometers(layout, "Processing line  ............", "Processing record  .......");
  cmdCancel_ = NamedButton("Cancel", "cmdCancel", this);
  cmdCancel2_ = NamedButton("Cancel", "cmdCancel2", this);
  cmdOkay_ = NamedButton("Okay", "cmdOkay", this);
  addButtons(layout, {cmdBegin_, cmdCancel_, cmdCancel2_, cmdOkay_});
  hint(cmdBegin_, QStringLiteral("When all of the specified number of types and files are filled in, begin this filtering."));
  hint(cmdCancel_, QStringLiteral("Abandon this filtering."));
  hint(cmdCancel2_, QStringLiteral("Interrupt and abandon this filtering."));

  connect(cmdBegin_, &QPushButton::clicked, this, &FrmSepTypes::cmdBeginClick);
  connect(cmdOkay_, &QPushButton::clicked, this, &FrmSepTypes::cmdOkayClick);
  connect(cmdCancel_, &QPushButton::clicked, this, &FrmSepTypes::cmdCancelClick);
  connect(cmdCancel2_, &QPushButton::clicked, this, &FrmSepTypes::cmdCancel2Click);
  reset();
}

void FrmSepTypes::fileFieldEntered(QLineEdit* /*field*/) { frmMain_.setStatusMsg(QLatin1String(kFileHint)); }

bool FrmSepTypes::fileFieldKey(QLineEdit* /*field*/, QKeyEvent* key) {
  // Moving on with Tab is not a character of the name.
  if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) return false;
  const QString text = key->text();
  if (text.size() != 1 || text[0].unicode() > 127 || !RefusedInFileName(static_cast<char>(text[0].unicode())))
    return false;
  // A plain message: no title of its own, no icon.
  ShowMessage(this, MsgIcon::None, QLatin1String(AppVersion().title),
              Q(RefusedCharacterText(static_cast<char>(text[0].unicode()))));
  return true;
}

void FrmSepTypes::fileEdited(QLineEdit* field) {
  if (field->text().size() > static_cast<qsizetype>(kMaxFileNameLength)) {
    ShowMessage(this, MsgIcon::Warning, kFileNameTooLongTitle, kFileNameTooLongText);
    field->setText(field->text().left(static_cast<qsizetype>(kMaxFileNameLength)));
  }
  frmMain_.setStatusMsg(QStringLiteral("The base file name of the file for the adjacent type."));
}

void FrmSepTypes::reset() {
  resetFields();
  cmdBegin_->setEnabled(true);
  cmdCancel_->setEnabled(true);
  cmdCancel2_->setEnabled(false);
  cmdCancel2_->show();
  cmdOkay_->hide();
  cmdOkay_->setEnabled(false);
  pnlUnalteredFileName_->clear();
  hide();
}

void FrmSepTypes::cmdBeginClick() {
  frmMain_.setStatusMsg(QStringLiteral("Zorvanta is filtering a search."));
  if (txtHowManyTypes_->text().isEmpty()) {
    ShowMessage(this, MsgIcon::Warning, QStringLiteral("Sequence Error"),
                QStringLiteral("It is necessary to specify the number of types before attempting this filtering process."));
    txtHowManyTypes_->setFocus();
    return;
  }
  const int n = howMany();
  if (firstBlank(txtType_, n) != 0) {
    ShowMessage(this, MsgIcon::Warning, kNotAllFilledTitle, kTypeLeftBlankText);
    return;
  }
  if (firstBlank(txtFile_, n) != 0) {
    ShowMessage(this, MsgIcon::Warning, kNotAllFilledTitle, kFileLeftBlankText);
    return;
  }
  // A name pasted in past the key rules, and two types naming one file, are refused
  // here, before a file is touched.
  SepTypesParams& params = params_;
  params = SepTypesParams{{capture_, {}}, {}};
  const std::array<std::string, kMaxTypes> types = typeTexts();
  for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
    params.outputs.push_back({types[i], txtFile_[i]->text().toLocal8Bit().toStdString()});
  Message refusal;
  if (!CheckSepOutputs(job_, params, refusal)) {
    ShowMessage(this, refusal.title.empty() ? MsgIcon::None : MsgIcon::Warning,
                refusal.title.empty() ? QString::fromLatin1(AppVersion().title) : Q(refusal.title), Q(refusal.text));
    return;
  }
  for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
    txtFile_[i]->setText(txtFile_[i]->text() + QStringLiteral(".PRO"));
  leaveTabOrder();
  cmdBegin_->setEnabled(false);
  cmdCancel_->setEnabled(false);
  frmMain_.RunCommand(kRunSepTypes);
}

void FrmSepTypes::showRunning() { cmdCancel2_->setEnabled(true); }

void FrmSepTypes::runBegun(int32_t commandNumber) {
  // The outputs as Begin took them, before it put ".PRO" into the fields.
  const JobResult result = frmMain_.runJob(commandNumber, params_, *this);
  switch (result.outcome) {
    case JobOutcome::Done:
      // The result waits here for Okay.
      showPanels();
      pnlUnalteredFileName_->setText(QLatin1Char(' ') + Q(capture_));
      cmdCancel2_->hide();
      cmdOkay_->show();
      cmdOkay_->setEnabled(true);
      cmdOkay_->setFocus();
      break;
    case JobOutcome::ZeroRecords:
    case JobOutcome::Refused:
      if (result.message) ShowMessage(this, MsgIcon::Warning, result.message->title, result.message->text);
      closeForm();
      break;
    case JobOutcome::Interrupted:
    case JobOutcome::Failed:  // frmError has been shown
    case JobOutcome::Cancelled:
    case JobOutcome::NoCommand:
      closeForm();
      break;
  }
}

void FrmSepTypes::closeForm() {
  reset();
  frmMain_.EnableMain(true);
  frmMain_.activateWindow();
}

void FrmSepTypes::cmdOkayClick() { closeForm(); }

void FrmSepTypes::cmdCancelClick() {
  frmMain_.ClearStatusPanels();
  closeForm();
}

void FrmSepTypes::cmdCancel2Click() {
  job_.giInterrupt = 1;
  frmMain_.ClearStatusPanels();
}

void FrmSepTypes::reject() {
  if (cmdOkay_->isVisible())
    cmdOkayClick();
  else if (frmMain_.jobRunning())
    cmdCancel2Click();
  else if (cmdCancel_->isEnabled())
    cmdCancelClick();
}

bool FrmSepTypes::event(QEvent* e) {
  if (e->type() == QEvent::MouseMove) frmMain_.setStatusMsg(QString());
  return TypesDialog::event(e);
}

TypesDialog& SepTypesForm(FrmMain& frmMain) {
  if (auto* form = frmMain.findChild<FrmSepTypes*>(QStringLiteral("frmSepTypes"), Qt::FindDirectChildrenOnly))
    return *form;
  return *new FrmSepTypes(frmMain, frmMain.job());
}

}  // namespace zv::forms
