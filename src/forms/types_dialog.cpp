// The fields, key rules and odometers that frmPikTypes and frmSepTypes share.
#include "forms/types_dialog.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QRegularExpression>
#include <QPushButton>
#include <QValidator>
#include <QVBoxLayout>

#include "core/input_file.h"
#include "forms/center_form.h"
#include "forms/frm_filter.h"
#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

namespace {

// Every key typed in a type field is brought to upper case.
class UpperCase final : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int& /*pos*/) const override {
    input = input.toUpper();
    return Acceptable;
  }
};

}  // namespace

TypesDialog::TypesDialog(FrmMain& frmMain, JobState& job, const char* name)
    : QDialog(&frmMain), frmMain_(frmMain), job_(job) {
  setObjectName(QLatin1String(name));
  setModal(false);
  setMouseTracking(true);
}

void TypesDialog::buildFields(const std::array<const char*, kMaxTypes>& rowCaptions, bool fileFields) {
  txtHowManyTypes_ = new QLineEdit(this);
  txtHowManyTypes_->setObjectName(QStringLiteral("txtHowManyTypes"));
  txtHowManyTypes_->setMaxLength(1);
  txtHowManyTypes_->setFixedWidth(40);
  txtHowManyTypes_->installEventFilter(this);
  connect(txtHowManyTypes_, &QLineEdit::textEdited, this, &TypesDialog::howManyEdited);
  for (int k = 0; k < kMaxTypes; ++k) {
    const QString ordinal = QLatin1String(kOrdinals[static_cast<std::size_t>(k)]);
    const auto i = static_cast<std::size_t>(k);
    pnlType_[i] = new QLabel(QLatin1String(rowCaptions[i]), this);
    pnlType_[i]->setObjectName(QStringLiteral("pnl%1Type").arg(ordinal));
    txtType_[i] = new QLineEdit(this);
    txtType_[i]->setObjectName(QStringLiteral("txt%1Type").arg(ordinal));
    txtType_[i]->setMaxLength(static_cast<int>(kMaxTypeLength));
    txtType_[i]->setValidator(new UpperCase(txtType_[i]));
    txtType_[i]->installEventFilter(this);
    pnlTypeOdom_[i] = SunkenPanel(qPrintable(QStringLiteral("pnl%1TypeOdom").arg(ordinal)), this);
    pnlTypeOdom_[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    pnlTypeOdom_[i]->setMinimumWidth(70);
    if (fileFields) {
      txtFile_[i] = new QLineEdit(this);
      txtFile_[i]->setObjectName(QStringLiteral("txt%1File").arg(ordinal));
      txtFile_[i]->installEventFilter(this);
    }
  }
  odometers_.lineOdom = OdometerPanel("pnlLineOdom", this);
  odometers_.recOdom = OdometerPanel("pnlRecOdom", this);
  odometers_.bar = PercentBar(this);
  cmdBegin_ = NamedButton("Begin", "cmdBegin", this);
}

QVBoxLayout* TypesDialog::layOutFields(std::initializer_list<const char*> columnCaptions) {
  auto* layout = new QVBoxLayout(this);
  auto* number = new QHBoxLayout;
  number->addWidget(new QLabel(QStringLiteral("How many Types (1 to 5):"), this));
  number->addWidget(txtHowManyTypes_);
  number->addStretch();
  layout->addLayout(number);

  auto* grid = new QGridLayout;
  int column = 1;
  for (const char* caption : columnCaptions) {
    if (caption != nullptr) grid->addWidget(new QLabel(QLatin1String(caption), this), 0, column, Qt::AlignCenter);
    ++column;
  }
  const bool fileFields = txtFile_[0] != nullptr;
  for (std::size_t i = 0; i < kMaxTypes; ++i) {
    const int row = static_cast<int>(i) + 1;
    grid->addWidget(pnlType_[i], row, 0);
    grid->addWidget(txtType_[i], row, 1);
    if (fileFields) grid->addWidget(txtFile_[i], row, 2);
    grid->addWidget(pnlTypeOdom_[i], row, fileFields ? 3 : 2);
    hint(txtType_[i], QStringLiteral("Up to ten characters specifying a Dialog online type, e.g. '3,AB'."));
  }
  if (fileFields) grid->setColumnStretch(2, 2);
  layout->addLayout(grid);
  return layout;
}

QLabel* TypesDialog::addFilePanel(QVBoxLayout* layout, const char* caption, const char* name) {
  QLabel* panel = NamePanel(name, this);
  panel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  layout->addWidget(new QLabel(QLatin1String(caption), this));
  layout->addWidget(panel);
  return panel;
}

void TypesDialog::addOdometers(QVBoxLayout* layout, const char* lineCaption, const char* recordCaption) {
  auto* odometers = new QGridLayout;
  odometers->addWidget(new QLabel(QLatin1String(lineCaption), this), 0, 0);
  odometers->addWidget(odometers_.lineOdom, 0, 1);
  odometers->addWidget(new QLabel(QLatin1String(recordCaption), this), 1, 0);
  odometers->addWidget(odometers_.recOdom, 1, 1);
  odometers->setColumnStretch(2, 1);
  layout->addSpacing(6);
  layout->addLayout(odometers);
  layout->addWidget(odometers_.bar);
}

void TypesDialog::addButtons(QVBoxLayout* layout, std::initializer_list<QPushButton*> buttons) {
  layout->addLayout(CentredRow(buttons));
}

void TypesDialog::hint(QWidget* w, const QString& text) {
  hints_.insert(w, text);
  w->installEventFilter(this);
}

void TypesDialog::open(const std::string& capture) {
  capture_ = capture;
  reset();
  CenterForm(*this, frmMain_);
  show();
  raise();
  activateWindow();
  frmMain_.EnableMain(false);
  txtHowManyTypes_->setFocus();
  repaint();
}

int TypesDialog::howMany() const { return txtHowManyTypes_->text().toInt(); }

void TypesDialog::howManyEdited() {
  const QString text = txtHowManyTypes_->text();
  if (text.isEmpty()) return;
  if (!text.contains(QRegularExpression(QStringLiteral("[1-9]")))) {
    ShowMessage(this, MsgIcon::Warning, QStringLiteral("Zero or Non-numeric Input Error"),
                QStringLiteral("Please choose a number from 1 to 5."));
    txtHowManyTypes_->clear();
    return;
  }
  const int n = howMany();
  if (n > kMaxTypes) {
    ShowMessage(this, MsgIcon::Warning, kTypeCountTitle, kTypeCountText);
    txtHowManyTypes_->clear();
    return;
  }
  if (n >= 1) showTypes(n);
}

void TypesDialog::showTypes(int n) {
  for (int k = 0; k < kMaxTypes; ++k) {
    const auto i = static_cast<std::size_t>(k);
    const bool on = k < n;
    for (QWidget* w : {static_cast<QWidget*>(pnlType_[i]), static_cast<QWidget*>(txtType_[i]),
                       static_cast<QWidget*>(pnlTypeOdom_[i]), static_cast<QWidget*>(txtFile_[i])}) {
      if (w == nullptr) continue;
      w->setVisible(on);
      w->setEnabled(on);
    }
  }
}

void TypesDialog::resetFields() {
  txtHowManyTypes_->clear();
  txtHowManyTypes_->setEnabled(true);
  txtHowManyTypes_->setFocusPolicy(Qt::StrongFocus);
  for (int k = 0; k < kMaxTypes; ++k) {
    const auto i = static_cast<std::size_t>(k);
    for (QLineEdit* field : {txtType_[i], txtFile_[i]}) {
      if (field == nullptr) continue;
      field->clear();
      field->setFocusPolicy(Qt::StrongFocus);
    }
    pnlTypeOdom_[i]->clear();
  }
  showTypes(kMaxTypes);
  odometers_.reset();
  txtHowManyTypes_->setFocus();
}

void TypesDialog::leaveTabOrder() {
  txtHowManyTypes_->setFocusPolicy(Qt::ClickFocus);
  for (std::size_t i = 0; i < kMaxTypes; ++i) {
    txtType_[i]->setFocusPolicy(Qt::ClickFocus);
    if (txtFile_[i] != nullptr) txtFile_[i]->setFocusPolicy(Qt::ClickFocus);
  }
}

int TypesDialog::firstBlank(const std::array<QLineEdit*, kMaxTypes>& fields, int n) const {
  QString map;
  for (QLineEdit* field : fields) map += field->text().isEmpty() ? QLatin1Char('0') : QLatin1Char('1');
  const int blank = static_cast<int>(map.left(n).indexOf(QLatin1Char('0')));
  return blank < 0 ? 0 : blank + 1;
}

std::array<std::string, kMaxTypes> TypesDialog::typeTexts() const {
  std::array<std::string, kMaxTypes> types;
  for (std::size_t i = 0; i < kMaxTypes; ++i) types[i] = txtType_[i]->text().toLatin1().toStdString();
  return types;
}

bool TypesDialog::eventFilter(QObject* watched, QEvent* e) {
  auto* field = qobject_cast<QLineEdit*>(watched);
  const bool typeField = field != nullptr && std::find(txtType_.begin(), txtType_.end(), field) != txtType_.end();
  const bool fileField = field != nullptr && std::find(txtFile_.begin(), txtFile_.end(), field) != txtFile_.end();
  switch (e->type()) {
    case QEvent::KeyPress: {
      auto* key = static_cast<QKeyEvent*>(e);
      if (field != nullptr && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
        ShowTabWarning(this);
        return true;
      }
      if (fileField && fileFieldKey(field, key)) return true;
      break;
    }
    case QEvent::FocusIn:
      if ((typeField || fileField) && txtHowManyTypes_->text().isEmpty()) {
        // The focus goes back first, so that the message box gives it back there.
        txtHowManyTypes_->setFocus();
        ShowMessage(this, MsgIcon::Warning, QStringLiteral("Sequence Error"),
                    typeField ? QStringLiteral("It is necessary to specify the number of types \r\n"
                                               "before going on to which types they are.")
                              : QStringLiteral(
                                    "It is necessary to specify the number of types before naming files for them."));
        txtHowManyTypes_->setFocus();
        return false;
      }
      if (typeField)
        frmMain_.setStatusMsg(QStringLiteral(" Up to ten characters specifying a Dialog online type, e.g. '3,AB'."));
      if (fileField) fileFieldEntered(field);
      break;
    case QEvent::Enter:
      if (hints_.contains(watched)) frmMain_.setStatusMsg(hints_.value(watched));
      break;
    default:
      break;
  }
  return QDialog::eventFilter(watched, e);
}

void TypesDialog::ClearStatusPanels() { frmMain_.ClearStatusPanels(); }

void TypesDialog::jobStarted(const Start& start) {
  frmMain_.showJobStart(QString::number(start.fileSize), Q(start.startTime), QString::number(start.totalLines));
  showRunning();
}

void TypesDialog::lineDone(int32_t lInLine, int32_t glLineCount) { odometers_.lineDone(lInLine, glLineCount); }

void TypesDialog::recordDone(int32_t record) { odometers_.recordDone(record); }

void TypesDialog::typeRecordDone(int type, int32_t count) {
  if (type >= 1 && type <= kMaxTypes) pnlTypeOdom_[static_cast<std::size_t>(type - 1)]->setText(FrmFilter::OdometerText(count));
}

void TypesDialog::showPanels() { odometers_.show(); }

void TypesDialog::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  showPanels();
  frmMain_.showJobFinish(Q(finishTime), Q(elapsed));
}

namespace {

void openTypes(FrmMain& frmMain, TypesDialog& dialog) {
  const std::optional<std::string> capture = frmMain.frmFilter().ChooseInputFile(frmMain.job(), kCaptureDialogFilter);
  if (capture) dialog.open(*capture);
}

}  // namespace

void OpenPikTypes(FrmMain& frmMain, const Command&) { openTypes(frmMain, PikTypesForm(frmMain)); }
void OpenSepTypes(FrmMain& frmMain, const Command&) { openTypes(frmMain, SepTypesForm(frmMain)); }

void BeginTypesJob(FrmMain& frmMain, const Command& command) {
  (command.number == 201 ? PikTypesForm(frmMain) : SepTypesForm(frmMain)).runBegun(command.number);
}

void ResetTypesDialogs(FrmMain& frmMain) {
  for (TypesDialog* dialog : frmMain.findChildren<TypesDialog*>(Qt::FindDirectChildrenOnly)) dialog->reset();
}

}  // namespace zv::forms
