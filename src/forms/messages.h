// Message boxes and modal dialogs of the forms, routed so that tests can answer them.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include <QMessageBox>
#include <QString>

class QDialog;
class QInputDialog;
class QWidget;

namespace zv::forms {

enum class MsgIcon { None, Information, Warning, Critical };

// A message as the program asked for it: the text as the system words it, with its
// CR LF or CR line ends still in it.
// `kind` tells a plain message from a question and from an input box.
enum class MsgKind { Ok, YesNo, Input };

struct ShownMessage {
  MsgIcon icon = MsgIcon::None;
  QString title;
  QString text;
  MsgKind kind = MsgKind::Ok;
};

// A modal box with an OK button. With a sink set, the message goes to the sink and
// nothing is shown.
void ShowMessage(QWidget* parent, MsgIcon icon, const QString& title, const QString& text);
void ShowMessage(QWidget* parent, MsgIcon icon, std::string_view title, std::string_view text);

using MessageSink = std::function<void(const ShownMessage&)>;
// Replaces the showing of message boxes; an empty sink restores real boxes.
void SetMessageSink(MessageSink sink);

// A question with Yes and No; true for Yes. With a sink set the question goes to it
// too, and the answer comes from the answer sink ("Yes" or anything else), or is No.
bool AskYesNo(QWidget* parent, MsgIcon icon, const QString& title, const QString& text);

// InputBox: the prompt under a title and a line to type in. Returns the text typed, or
// an empty text for Cancel, as the system's input box does. With a sink set the prompt
// goes to it, and the answer comes from the answer sink, or is empty.
QString InputBox(QWidget* parent, const QString& prompt, const QString& title);

// Answers AskYesNo and InputBox instead of the user; an empty sink restores real boxes.
using AnswerSink = std::function<QString(const ShownMessage&)>;
void SetAnswerSink(AnswerSink sink);

// Runs `dialog` modally and returns its result. With a runner set, the runner is
// called instead of QDialog::exec: it may look at the dialog and close it.
int ExecModal(QDialog& dialog);
using ModalRunner = std::function<int(QDialog&)>;
void SetModalRunner(ModalRunner runner);

// The width a window needs for its whole title to show in the title bar.
int TitleBarWidth(const QString& title);

// The message box and the input box as ShowMessage, AskYesNo and InputBox show them:
// never narrower than their title.
std::unique_ptr<QMessageBox> MakeMessageBox(QWidget* parent, MsgIcon icon, const QString& title,
                                            const QString& text, QMessageBox::StandardButtons buttons);
std::unique_ptr<QInputDialog> MakeInputBox(QWidget* parent, const QString& prompt, const QString& title);

// The system's texts end their lines in CR LF (or CR in message boxes); a label
// wants LF.
QString DisplayText(QString text);

// Text of the core, which is UTF-8 or plain ASCII.
inline QString Q(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// ShowTabWarning: what a dialog shows when Enter is pressed in one of its fields.
void ShowTabWarning(QWidget* parent);

}  // namespace zv::forms
