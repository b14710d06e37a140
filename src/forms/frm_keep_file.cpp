// frmKeepFile: a keep file's bare name, with the characters a file name cannot hold refused as typed.
#include "forms/frm_keep_file.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/messages.h"
#include "forms/panels.h"
#include "forms/sift_tables.h"
#include "forms/version_record.h"

namespace zv::forms {

FrmKeepFile::FrmKeepFile(QWidget* parent, std::atomic<int16_t>& giInterrupt)
    : QDialog(parent), giInterrupt_(giInterrupt) {
  setObjectName(QStringLiteral("frmKeepFile"));
  setWindowTitle(QStringLiteral("Specify Keep File"));
  setModal(true);
  setProperty("helpContext", kSiftKeepContext);

  auto* layout = new QVBoxLayout(this);
  txtKeepFile_ = new QLineEdit(this);
  txtKeepFile_->setObjectName(QStringLiteral("txtKeepFile"));
  txtKeepFile_->setMinimumWidth(300);
  txtKeepFile_->installEventFilter(this);
  layout->addWidget(txtKeepFile_);

  auto* note = new QLabel(QStringLiteral("Specify just a file name without a drive or path.\n"
                                         "Example:  search.kep\n"
                                         "Not:          C:\\logs\\search.kep"),
                          this);
  note->setObjectName(QStringLiteral("lblKeepFileNote"));
  layout->addWidget(note);

  const OkayCancelRow buttons = MakeOkayCancelRow(this);
  layout->addLayout(buttons.row);

  connect(buttons.cmdOkay, &QPushButton::clicked, this, &FrmKeepFile::cmdOkayClick);
  connect(buttons.cmdCancel, &QPushButton::clicked, this, &FrmKeepFile::cmdCancelClick);
  connect(txtKeepFile_, &QLineEdit::textChanged, this, &FrmKeepFile::textChanged);
}

QString FrmKeepFile::keepFileText() const { return txtKeepFile_->text(); }

QString FrmKeepFile::RefusalOfKey(QChar c) {
  const char16_t code = c.unicode();
  static const QString kBadInName = QStringLiteral("\"*/:<>?\\|");
  const bool control = code <= 7 || (code >= 9 && code <= 21);
  if (!control && !kBadInName.contains(c)) return {};
  return QString(c) + QStringLiteral(" is not a valid character in a file name");
}

bool FrmKeepFile::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtKeepFile_ && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    // Enter and Escape belong to the dialog's buttons, as they do on every form.
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Escape)
      return QDialog::eventFilter(watched, event);
    const QString typed = key->text();
    if (typed.size() == 1) {
      const QString refusal = RefusalOfKey(typed.front());
      if (!refusal.isEmpty()) {
        ShowMessage(this, MsgIcon::None, QLatin1String(AppVersion().title), refusal);
        return true;  // the key is dropped
      }
    }
  }
  return QDialog::eventFilter(watched, event);
}

void FrmKeepFile::textChanged() {
  if (txtKeepFile_->text().size() <= kMaxNameLength) return;
  ShowMessage(this, MsgIcon::None, QStringLiteral("File Specification Error"),
              QStringLiteral("Your file name now has over 250 characters."));
  txtKeepFile_->setText(txtKeepFile_->text().left(kMaxNameLength));
}

void FrmKeepFile::showEvent(QShowEvent* event) {
  adjustSize();
  CenterWindowOnScreen(*this);
  txtKeepFile_->setFocus();
  QDialog::showEvent(event);
}

void FrmKeepFile::cmdOkayClick() { accept(); }

void FrmKeepFile::cmdCancelClick() {
  giInterrupt_ = 1;
  QDialog::reject();
}

void FrmKeepFile::reject() { cmdCancelClick(); }

}  // namespace zv::forms
