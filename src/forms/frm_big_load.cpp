// frmBigLoad: "Loading", two lines, and a word on the main window's status line.
#include "forms/frm_big_load.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

#include "forms/center_form.h"
#include "forms/frm_main.h"

namespace zv::forms {

FrmBigLoad::FrmBigLoad(FrmMain& frmMain) : QDialog(&frmMain), frmMain_(frmMain) {
  setObjectName(QStringLiteral("frmBigLoad"));
  setWindowTitle(QStringLiteral("Loading"));
  setModal(false);
  setWindowFlags(windowFlags() & ~Qt::WindowCloseButtonHint);
  setMouseTracking(true);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(24, 16, 24, 16);
  for (const char* line : {"Loading a large file.", "This will take a moment."}) {
    auto* label = new QLabel(QLatin1String(line), this);
    label->setAlignment(Qt::AlignCenter);
    label->setMouseTracking(true);
    label->installEventFilter(this);
    rows->addWidget(label);
  }
  installEventFilter(this);
}

void FrmBigLoad::showEvent(QShowEvent* event) {
  adjustSize();
  CenterWindowOnScreen(*this);
  QDialog::showEvent(event);
}

bool FrmBigLoad::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseMove) frmMain_.setStatusMsg(QStringLiteral("A large amount of data is being loaded."));
  return QDialog::eventFilter(watched, event);
}

}  // namespace zv::forms
