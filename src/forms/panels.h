// The sunken text panels that the windows show their values in.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace zv::forms {

// A sunken, single-line panel under `name` (its object name, for tests and styling).
QLabel* SunkenPanel(const char* name, QWidget* parent, int minHeight = 20);

// The centred "Okay" (default) and "Cancel" buttons at the foot of a small dialog.
struct OkayCancelRow {
  QHBoxLayout* row;
  QPushButton* cmdOkay;
  QPushButton* cmdCancel;
};
OkayCancelRow MakeOkayCancelRow(QWidget* dialog);

}  // namespace zv::forms
