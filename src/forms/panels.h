// The sunken text panels that the windows show their values in.
#pragma once

#include <initializer_list>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

class QProgressBar;

namespace zv::forms {

// A sunken, single-line panel under `name` (its object name, for tests and styling).
QLabel* SunkenPanel(const char* name, QWidget* parent, int minHeight = 20);

// A sunken panel for a file name, 22 high, whose text can be selected and copied.
QLabel* NamePanel(const char* name, QWidget* parent);

// A sunken odometer panel: its count to the right, room for nine digits.
QLabel* OdometerPanel(const char* name, QWidget* parent, int minHeight = 20);

// The job's progress bar "pnlProgress", 0 to 100, with its percentage in the middle
// (or where the style puts it, without `centred`).
QProgressBar* PercentBar(QWidget* parent, bool centred = true);

// The buttons side by side in the middle of a row.
QHBoxLayout* CentredRow(std::initializer_list<QPushButton*> buttons);

// A push button under `name` (its object name).
QPushButton* NamedButton(const char* caption, const char* name, QWidget* parent);

// The centred "Okay" (default) and "Cancel" buttons at the foot of a small dialog.
struct OkayCancelRow {
  QHBoxLayout* row;
  QPushButton* cmdOkay;
  QPushButton* cmdCancel;
};
OkayCancelRow MakeOkayCancelRow(QWidget* dialog);

}  // namespace zv::forms
