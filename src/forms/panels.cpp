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

QHBoxLayout* CentredRow(std::initializer_list<QPushButton*> buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (QPushButton* b : buttons) row->addWidget(b);
  row->addStretch();
  return row;
}

OkayCancelRow MakeOkayCancelRow(QWidget* dialog) {
  OkayCancelRow r{new QHBoxLayout, new QPushButton(QStringLiteral("Okay"), dialog),
                  new QPushButton(QStringLiteral("Cancel"), dialog)};
  r.cmdOkay->setObjectName(QStringLiteral("cmdOkay"));
  r.cmdOkay->setDefault(true);
  r.cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
  r.row->addStretch();
  r.row->addWidget(r.cmdOkay);
  r.row->addWidget(r.cmdCancel);
  r.row->addStretch();
  return r;
}

}  // namespace zv::forms
