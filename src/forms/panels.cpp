// Sunken value panels shared by the main window and frmFilter.
#include "forms/panels.h"

namespace zv::forms {

QLabel* SunkenPanel(const char* name, QWidget* parent, int minHeight) {
  auto* panel = new QLabel(parent);
  panel->setObjectName(QLatin1String(name));
  panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  panel->setMinimumHeight(minHeight);
  return panel;
}

}  // namespace zv::forms
