// Sunken value panels and the Okay/Cancel row shared by the windows and dialogs.
#include "forms/panels.h"

#include <QProgressBar>

namespace zv::forms {

QLabel* SunkenPanel(const char* name, QWidget* parent, int minHeight) {
  auto* panel = new QLabel(parent);
  panel->setObjectName(QLatin1String(name));
  panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  panel->setMinimumHeight(minHeight);
  return panel;
}

QLabel* NamePanel(const char* name, QWidget* parent) {
  QLabel* panel = SunkenPanel(name, parent, 22);
  panel->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return panel;
}

QLabel* OdometerPanel(const char* name, QWidget* parent, int minHeight) {
  QLabel* panel = SunkenPanel(name, parent, minHeight);
  panel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  panel->setMinimumWidth(90);
  return panel;
}

QProgressBar* PercentBar(QWidget* parent, bool centred) {
  auto* bar = new QProgressBar(parent);
  bar->setObjectName(QStringLiteral("pnlProgress"));
  bar->setRange(0, 100);
  if (centred) bar->setAlignment(Qt::AlignCenter);
  return bar;
}

QPushButton* NamedButton(const char* caption, const char* name, QWidget* parent) {
  auto* button = new QPushButton(QLatin1String(caption), parent);
  button->setObjectName(QLatin1String(name));
  return button;
}

QHBoxLayout* CentredRow(std::initializer_list<QPushButton*> buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (QPushButton* b : buttons) row->addWidget(b);
  row->addStretch();
  return row;
}

OkayCancelRow MakeOkayCancelRow(QWidget* dialog) {
  QPushButton* okay = NamedButton("Okay", "cmdOkay", dialog);
  okay->setDefault(true);
  QPushButton* cancel = NamedButton("Cancel", "cmdCancel", dialog);
  return OkayCancelRow{CentredRow({okay, cancel}), okay, cancel};
}

}  // namespace zv::forms
