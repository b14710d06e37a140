// Message boxes and modal dialogs, with the seams the form tests use.
#include "forms/messages.h"

#include <optional>

#include <QApplication>
#include <QDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QInputDialog>

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

int TitleBarWidth(const QString& title) {
  // The window manager draws the title, commonly in a bold face of the desktop's
  // font, beside the window's icon and its buttons.
  QFont font = QApplication::font();
  font.setBold(true);
  return QFontMetrics(font).horizontalAdvance(title) * 11 / 10 + 120;
}

std::unique_ptr<QMessageBox> MakeMessageBox(QWidget* parent, MsgIcon icon, const QString& title,
                                            const QString& text, QMessageBox::StandardButtons buttons) {
  auto box = std::make_unique<QMessageBox>(boxIcon(icon), title, DisplayText(text), buttons, parent);
  // A box is as wide as its text asks, which for a short text cuts the title: a row
  // under everything holds it open to the title's width.
  if (auto* grid = qobject_cast<QGridLayout*>(box->layout()))
    grid->addItem(new QSpacerItem(TitleBarWidth(title), 0, QSizePolicy::Minimum, QSizePolicy::Minimum),
                  grid->rowCount(), 0, 1, grid->columnCount());
  return box;
}

std::unique_ptr<QInputDialog> MakeInputBox(QWidget* parent, const QString& prompt, const QString& title) {
  auto box = std::make_unique<QInputDialog>(parent);
  box->setWindowTitle(title);
  box->setLabelText(DisplayText(prompt));
  box->setInputMode(QInputDialog::TextInput);
  // The dialog's layout, made when it is first measured, fixes its size to what the
  // rows ask: the title's width goes in as a row of its own.
  box->minimumSizeHint();
  if (QLayout* rows = box->layout())
    rows->addItem(new QSpacerItem(TitleBarWidth(title), 0, QSizePolicy::Minimum, QSizePolicy::Minimum));
  return box;
}

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
  MakeMessageBox(parent, icon, title, text, QMessageBox::Ok)->exec();
}

void ShowMessage(QWidget* parent, MsgIcon icon, std::string_view title, std::string_view text) {
  ShowMessage(parent, icon, Q(title), Q(text));
}

void SetMessageSink(MessageSink s) { sink() = std::move(s); }

bool AskYesNo(QWidget* parent, MsgIcon icon, const QString& title, const QString& text) {
  if (const auto answer = answeredBySinks(ShownMessage{icon, title, text, MsgKind::YesNo}))
    return *answer == QLatin1String("Yes");
  return MakeMessageBox(parent, icon, title, text, QMessageBox::Yes | QMessageBox::No)->exec() == QMessageBox::Yes;
}

QString InputBox(QWidget* parent, const QString& prompt, const QString& title) {
  if (const auto answer = answeredBySinks(ShownMessage{MsgIcon::None, title, prompt, MsgKind::Input})) return *answer;
  const std::unique_ptr<QInputDialog> box = MakeInputBox(parent, prompt, title);
  return box->exec() == QDialog::Accepted ? box->textValue() : QString();
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
