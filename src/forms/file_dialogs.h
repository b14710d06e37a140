// The open and save dialogs of every tool: one place that makes them, so that the
// program's own checks of the name chosen (and their messages) are the ones the user sees.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include <QString>
#include <QStringList>

class QFileDialog;
class QWidget;

namespace zv::forms {

enum class FileDialogMode { Open, Save };

// What a tool asks of the file dialog.
struct FileDialogRequest {
  FileDialogMode mode = FileDialogMode::Open;
  QString title;            // "Open" when empty for an open dialog, "Save As" for a save dialog
  QStringList nameFilters;  // as DialogNameFilters gives them
  QString directory;        // the current directory when empty
};

// The dialog's filters from the pairs "text|pattern|...|": "All Files (*.*)" first.
// A text keeps no pattern of its own in brackets, "*.*" lists every file (also those
// without an extension), and an upper-case pattern also finds the lower-case names.
QStringList DialogNameFilters(std::string_view dialogFilter);

// The dialog as the tools show it. It takes any name typed, whether the file is
// there or not, and asks nothing about replacing one: "File not found." and the
// like are the tool's to say, in its own words. Not the platform's native dialog,
// which checks names itself.
std::unique_ptr<QFileDialog> MakeFileDialog(QWidget* parent, const FileDialogRequest& request);

// Shows the dialog modally and returns the full path chosen, or an empty text for a
// cancel (the system's error 32755, which is never reported). The caller checks the
// name. With an answer set, the answer is called instead and nothing is shown.
QString ChooseFileName(QWidget* parent, const FileDialogRequest& request);

// The same for a tool's filter text, "All Files (*.*)|*.*|.PRO Files|*.PRO|".
QString GetOpenFileName(QWidget* parent, std::string_view dialogFilter, const QString& title = QString());
QString GetSaveFileName(QWidget* parent, std::string_view dialogFilter, const QString& title = QString());

// Answers every file dialog instead of the user: called with the request, returns
// the path or an empty text. An empty answer restores real dialogs.
using FileDialogAnswer = std::function<QString(const FileDialogRequest&)>;
void SetFileDialogAnswer(FileDialogAnswer answer);

}  // namespace zv::forms
