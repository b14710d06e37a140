// The sunken text panels that the windows show their values in.
#pragma once

#include <QLabel>

namespace zv::forms {

// A sunken, single-line panel under `name` (its object name, for tests and styling).
QLabel* SunkenPanel(const char* name, QWidget* parent, int minHeight = 20);

}  // namespace zv::forms
