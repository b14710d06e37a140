// The open and save dialogs of the polishing tools: any name typed is taken, so that
// "File not found." and the other refusals are the tool's own, in its words.
#pragma once

#include <functional>
#include <string_view>

#include <QString>

class QWidget;

namespace zv::forms {

enum class PolishDialog { Open, Save };

// Shows the dialog with the tool's filter ("All Files (*.*)|*.*|.PRO Files|*.PRO")
// and returns the full path chosen, or an empty text for a cancel (error 32755, never
// reported).
QString ChoosePolishFile(QWidget* parent, PolishDialog kind, std::string_view dialogFilter);

// Answers the dialogs instead of the user while set: called with the kind and the
// filter, returns the path or an empty text. An empty answer restores real dialogs.
using PolishFileAnswer = std::function<QString(PolishDialog kind, std::string_view dialogFilter)>;
void SetPolishFileAnswer(PolishFileAnswer answer);

}  // namespace zv::forms
