// Sunken value panels and the Okay/Cancel row shared by the windows and dialogs.
#include "forms/panels.h"

namespace zv::forms {

QLabel* SunkenPanel(const char* name, QWidget* parent, int minHeight) {
  auto* panel = new QLabel(parent);
  panel->setObjectName(QLatin1String(name));
  panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  panel->setMinimumHeight(minHeight);
  return panel;
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
