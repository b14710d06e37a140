// frmReplaceLabels: Single, Double or Surround, and the texts each mode reads.
#include "forms/frm_replace_labels.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "forms/help_window.h"

namespace zv::forms {

namespace {

// A captioned text field in a panel of its own, so that it shows and hides whole.
QWidget* fieldPanel(const char* panelName, const QString& text, QLineEdit*& field, const char* fieldName,
                    QWidget* parent) {
  auto* panel = new QWidget(parent);
  panel->setObjectName(QLatin1String(panelName));
  auto* layout = new QVBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new QLabel(text, panel));
  field = new QLineEdit(panel);
  field->setObjectName(QLatin1String(fieldName));
  field->setMinimumWidth(320);
  layout->addWidget(field);
  return panel;
}

}  // namespace

FrmReplaceLabels::FrmReplaceLabels(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmReplaceLabels"));
  setWindowTitle(QStringLiteral("Replace Record Labels"));
  setModal(true);

  auto* layout = new QVBoxLayout(this);
  auto* frame = new QGroupBox(QStringLiteral(" Replacement Mode "), this);
  auto* options = new QVBoxLayout(frame);
  optSingle_ = new QRadioButton(QStringLiteral("Single Replacement"), frame);
  optSingle_->setObjectName(QStringLiteral("optSingle"));
  optDouble_ = new QRadioButton(QStringLiteral("Double Replacement"), frame);
  optDouble_->setObjectName(QStringLiteral("optDouble"));
  optSurround_ = new QRadioButton(QStringLiteral("Surround Record Label"), frame);
  optSurround_->setObjectName(QStringLiteral("optSurround"));
  for (QRadioButton* o : {optSingle_, optDouble_, optSurround_}) {
    options->addWidget(o);
    connect(o, &QRadioButton::clicked, this, &FrmReplaceLabels::chooseMode);
  }
  layout->addWidget(frame);

  pnlSingleReplacement_ = fieldPanel("pnlSingleReplacement", QStringLiteral("Replace \"Record - \" with:"),
                                     txtSingleReplacement_, "txtSingleReplacement", this);
  pnlBeginningMarker_ = fieldPanel("pnlBeginningMarker", QStringLiteral("Beginning record marker:"),
                                   txtBeginningMarker_, "txtBeginningMarker", this);
  pnlEndingMarker_ = fieldPanel("pnlEndingMarker", QStringLiteral("Ending record marker:"), txtEndingMarker_,
                                "txtEndingMarker", this);
  for (QWidget* p : {pnlSingleReplacement_, pnlBeginningMarker_, pnlEndingMarker_}) layout->addWidget(p);
  for (QLineEdit* f : {txtSingleReplacement_, txtBeginningMarker_, txtEndingMarker_}) f->installEventFilter(this);

  auto* buttons = new QHBoxLayout;
  auto* cmdReplace = new QPushButton(QStringLiteral("Replace"), this);
  cmdReplace->setObjectName(QStringLiteral("cmdReplace"));
  auto* cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
  cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
  auto* cmdHelp = new QPushButton(QStringLiteral("Help"), this);
  cmdHelp->setObjectName(QStringLiteral("cmdHelp"));
  for (QPushButton* b : {cmdReplace, cmdCancel, cmdHelp}) {
    b->setAutoDefault(false);  // Return belongs to the fields
    buttons->addWidget(b);
  }
  layout->addLayout(buttons);
  connect(cmdReplace, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(cmdHelp, &QPushButton::clicked, this, [this] { ShowHelp(this, QStringLiteral("replace_labels.html")); });
  ResetReplaceForm();
}

void FrmReplaceLabels::ResetReplaceForm() {
  optSingle_->setChecked(true);
  txtSingleReplacement_->setEnabled(true);
  pnlSingleReplacement_->show();
  for (QWidget* p : {pnlBeginningMarker_, pnlEndingMarker_}) p->hide();
  for (QLineEdit* f : {txtBeginningMarker_, txtEndingMarker_}) f->setEnabled(false);
  for (QLineEdit* f : {txtSingleReplacement_, txtBeginningMarker_, txtEndingMarker_}) f->clear();
  txtSingleReplacement_->setFocus();
}

void FrmReplaceLabels::chooseMode() {
  const bool single = optSingle_->isChecked();
  pnlSingleReplacement_->setVisible(single);
  txtSingleReplacement_->setEnabled(single);
  for (QWidget* p : {pnlBeginningMarker_, pnlEndingMarker_}) p->setVisible(!single);
  for (QLineEdit* f : {txtBeginningMarker_, txtEndingMarker_}) f->setEnabled(!single);
  (single ? txtSingleReplacement_ : txtBeginningMarker_)->setFocus();
}

ReplaceMode FrmReplaceLabels::mode() const {
  if (optDouble_->isChecked()) return ReplaceMode::Double;
  if (optSurround_->isChecked()) return ReplaceMode::Surround;
  return ReplaceMode::Single;
}

ReplaceLabelsParams FrmReplaceLabels::params(const PolishFiles& files) const {
  ReplaceLabelsParams p{files, mode(), {}, {}, {}};
  if (p.mode == ReplaceMode::Single) {
    p.replacement = txtSingleReplacement_->text().toStdString();
  } else {
    p.beginMarker = txtBeginningMarker_->text().toStdString();
    p.endMarker = txtEndingMarker_->text().toStdString();
  }
  return p;
}

bool FrmReplaceLabels::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      // Return in the single field or the ending marker is the Replace button; in the
      // beginning marker it does nothing. The key goes no further.
      if (watched == txtSingleReplacement_ || watched == txtEndingMarker_) accept();
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace zv::forms
