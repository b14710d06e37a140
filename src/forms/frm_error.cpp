// frmError: the error text of RunCommand and an OK that gives the main window back.
#include "forms/frm_error.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_main.h"

namespace zv::forms {

FrmError::FrmError(FrmMain& frmMain) : QDialog(&frmMain), frmMain_(frmMain) {
  setObjectName(QStringLiteral("frmError"));
  setWindowTitle(QStringLiteral("Zorvanta Error Recovery"));
  setModal(true);
  setMinimumWidth(380);
  auto* layout = new QVBoxLayout(this);
  pnlErrorMsg_ = new QLabel(this);
  pnlErrorMsg_->setObjectName(QStringLiteral("pnlErrorMsg"));
  pnlErrorMsg_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  pnlErrorMsg_->setMinimumHeight(70);
  pnlErrorMsg_->setWordWrap(true);
  pnlErrorMsg_->setAlignment(Qt::AlignCenter);
  pnlErrorMsg_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(pnlErrorMsg_);
  auto* buttons = new QHBoxLayout;
  auto* cmdOkay = new QPushButton(QStringLiteral("OK"), this);
  cmdOkay->setObjectName(QStringLiteral("cmdOkay"));
  cmdOkay->setDefault(true);
  // cmdDummy takes the focus of the old form and does nothing; it stays out of sight.
  auto* cmdDummy = new QPushButton(this);
  cmdDummy->setObjectName(QStringLiteral("cmdDummy"));
  cmdDummy->hide();
  buttons->addStretch();
  buttons->addWidget(cmdOkay);
  buttons->addStretch();
  layout->addLayout(buttons);
  connect(cmdOkay, &QPushButton::clicked, this, &FrmError::cmdOkayClick);
}

void FrmError::setMessage(const QString& text) { pnlErrorMsg_->setText(text); }
QString FrmError::message() const { return pnlErrorMsg_->text(); }

void FrmError::showEvent(QShowEvent* event) {
  adjustSize();
  CenterWindowOnScreen(*this);
  QDialog::showEvent(event);
}

void FrmError::cmdOkayClick() {
  pnlErrorMsg_->clear();
  frmMain_.EnableMain(true);
  accept();
}

}  // namespace zv::forms
