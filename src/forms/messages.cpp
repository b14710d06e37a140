// Message boxes and modal dialogs, with the seams the form tests use.
#include "forms/messages.h"

#include <optional>

#include <QDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace zv::forms {

namespace {

MessageSink& sink() {
  static MessageSink s;
  return s;
}

AnswerSink& answers() {
  static AnswerSink a;
  return a;
}

// A question goes to the recording sink, then to the answering one; nullopt when
// neither is set and a real box is to be shown.
std::optional<QString> answeredBySinks(const ShownMessage& asked) {
  if (!sink() && !answers()) return std::nullopt;
  if (sink()) sink()(asked);
  return answers() ? answers()(asked) : QString();
}

ModalRunner& runner() {
  static ModalRunner r;
  return r;
}

QMessageBox::Icon boxIcon(MsgIcon icon) {
  switch (icon) {
    case MsgIcon::Information: return QMessageBox::Information;
    case MsgIcon::Warning: return QMessageBox::Warning;
    case MsgIcon::Critical: return QMessageBox::Critical;
    case MsgIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

QString DisplayText(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return text;
}

void ShowMessage(QWidget* parent, MsgIcon icon, const QString& title, const QString& text) {
  if (sink()) {
    sink()(ShownMessage{icon, title, text});
    return;
  }
  QMessageBox box(boxIcon(icon), title, DisplayText(text), QMessageBox::Ok, parent);
  box.exec();
}

void ShowMessage(QWidget* parent, MsgIcon icon, std::string_view title, std::string_view text) {
  ShowMessage(parent, icon, Q(title), Q(text));
}

void SetMessageSink(MessageSink s) { sink() = std::move(s); }

bool AskYesNo(QWidget* parent, MsgIcon icon, const QString& title, const QString& text) {
  if (const auto answer = answeredBySinks(ShownMessage{icon, title, text, MsgKind::YesNo}))
    return *answer == QLatin1String("Yes");
  QMessageBox box(boxIcon(icon), title, DisplayText(text), QMessageBox::Yes | QMessageBox::No, parent);
  return box.exec() == QMessageBox::Yes;
}

QString InputBox(QWidget* parent, const QString& prompt, const QString& title) {
  if (const auto answer = answeredBySinks(ShownMessage{MsgIcon::None, title, prompt, MsgKind::Input})) return *answer;
  QInputDialog box(parent);
  box.setWindowTitle(title);
  box.setLabelText(DisplayText(prompt));
  box.setInputMode(QInputDialog::TextInput);
  return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

void SetAnswerSink(AnswerSink a) { answers() = std::move(a); }

int ExecModal(QDialog& dialog) {
  if (runner()) return runner()(dialog);
  return dialog.exec();
}

void SetModalRunner(ModalRunner r) { runner() = std::move(r); }

void ShowTabWarning(QWidget* parent) {
  ShowMessage(parent, MsgIcon::Warning, QStringLiteral("Field Navigation Error"),
              QStringLiteral("Use TAB key to advance from this field."));
}

}  // namespace zv::forms
