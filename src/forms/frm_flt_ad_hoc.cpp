// frmFltAdHoc: Select Ad Hoc Filter Record Markers, and command 1 around it.
#include "forms/frm_flt_ad_hoc.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/input_file.h"
#include "filters/adhoc.h"
#include "forms/center_form.h"
#include "forms/frm_filter.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

namespace {

// The one-character items of both lists: codes 1 to 254 but the blank, the digits and
// the letters.
QStringList characterItems() {
  QStringList items;
  for (int code = 1; code <= 254; ++code) {
    if (code == 32 || (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z'))
      continue;
    items << QString(QChar(static_cast<char16_t>(code)));
  }
  return items;
}

// Adds the items at indexes 0 on, above what the list holds already.
void addOnTop(QComboBox* list, const QStringList& items) {
  for (int i = 0; i < items.size(); ++i) list->insertItem(i, items[i]);
  list->setCurrentIndex(-1);
  list->clearEditText();
}

}  // namespace

FrmFltAdHoc::FrmFltAdHoc(QWidget* parent, JobState& job) : QDialog(parent), job_(job) {
  setObjectName(QStringLiteral("frmFltAdHoc"));
  setWindowTitle(QStringLiteral("Select Ad Hoc Filter Record Markers"));
  setModal(true);

  const QFont terminal = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  cboBM_ = new QComboBox(this);
  cboBM_->setObjectName(QStringLiteral("cboBM"));
  cboEM_ = new QComboBox(this);
  cboEM_->setObjectName(QStringLiteral("cboEM"));
  for (QComboBox* list : {cboBM_, cboEM_}) {
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setFont(terminal);
    list->setMinimumWidth(220);
    list->setMaxVisibleItems(16);
  }
  pnlEM_ = new QLabel(QStringLiteral("Ending Marker"), this);
  pnlEM_->setObjectName(QStringLiteral("pnlEM"));
  optBMandEM_ = new QRadioButton(QStringLiteral("Beginning and Ending Marker"), this);
  optBMandEM_->setObjectName(QStringLiteral("optBMandEM"));
  optBMOnly_ = new QRadioButton(QStringLiteral("Beginning Marker Only"), this);
  optBMOnly_->setObjectName(QStringLiteral("optBMOnly"));

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Beginning Marker"), this));
  layout->addWidget(cboBM_);
  layout->addWidget(pnlEM_);
  layout->addWidget(cboEM_);
  layout->addSpacing(6);
  layout->addWidget(optBMandEM_);
  layout->addWidget(optBMOnly_);
  QPushButton* okay = NamedButton("OK", "cmdOkay", this);
  okay->setDefault(true);
  QPushButton* cancel = NamedButton("Cancel", "cmdCancel", this);
  layout->addSpacing(6);
  layout->addLayout(CentredRow({okay, cancel}));

  connect(optBMandEM_, &QRadioButton::clicked, this, &FrmFltAdHoc::optionClicked);
  connect(optBMOnly_, &QRadioButton::clicked, this, &FrmFltAdHoc::optionClicked);
  connect(okay, &QPushButton::clicked, this, &FrmFltAdHoc::cmdOkayClick);
  connect(cancel, &QPushButton::clicked, this, &FrmFltAdHoc::reject);
}

QString FrmFltAdHoc::beginMarker() const { return cboBM_->currentText(); }
QString FrmFltAdHoc::endMarker() const { return cboEM_->currentText(); }
bool FrmFltAdHoc::bothMarkers() const { return optBMandEM_->isChecked(); }

void FrmFltAdHoc::activate() {
  const QStringList characters = characterItems();
  addOnTop(cboBM_, QStringList{QStringLiteral("-begin-"), QStringLiteral("-text-")} + characters);
  addOnTop(cboEM_, QStringList{QStringLiteral("-end-")} + characters);
  optBMOnly_->setChecked(true);
  optionClicked();
  cboBM_->setFocus();
}

void FrmFltAdHoc::optionClicked() {
  const bool both = optBMandEM_->isChecked();
  cboEM_->setEnabled(both);
  pnlEM_->setEnabled(both);
  if (!both) repaint();
}

void FrmFltAdHoc::cmdOkayClick() {
  // Nothing is tested: an empty marker is taken too. The lists keep their items.
  accept();
}

void FrmFltAdHoc::reject() {
  job_.giInterrupt = 1;
  cboBM_->clear();
  cboEM_->clear();
  cboBM_->clearEditText();
  cboEM_->clearEditText();
  QDialog::reject();
}

void RunFltAdHoc(FrmMain& frmMain, const Command& command) {
  auto* form = frmMain.findChild<FrmFltAdHoc*>(QStringLiteral("frmFltAdHoc"), Qt::FindDirectChildrenOnly);
  if (form == nullptr) form = new FrmFltAdHoc(&frmMain, frmMain.job());
  CenterForm(*form, frmMain);
  form->activate();
  ExecModal(*form);
  // Single-byte text, as the capture's lines are.
  const std::string begin = form->beginMarker().toLatin1().toStdString();
  const std::string end = form->endMarker().toLatin1().toStdString();
  JobState& job = frmMain.job();
  if (job.giInterrupt == 1) {
    // The markers were cancelled: no file dialog, no file, no message.
    job.giInterrupt = 0;
    return;
  }
  const std::optional<std::string> capture = frmMain.frmFilter().GetInputFile(job, kCaptureDialogFilter);
  if (!capture) return;
  frmMain.runFilterJob(command.number, AdHocParams{{*capture, {}}, begin, end, form->bothMarkers()}, *capture);
}

}  // namespace zv::forms
