// zorvanta: the desktop program.
#include <QApplication>

#include "forms/frm_main.h"
#include "forms/frm_startup.h"
#include "forms/settings_store.h"

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  QApplication::setOrganizationName(QLatin1String(zv::forms::kAppSettingsName));
  QApplication::setApplicationName(QStringLiteral("Zorvanta"));
  zv::forms::SettingsStore store;
  const std::unique_ptr<zv::forms::FrmMain> frmMain = zv::forms::StartUp(store);
  return QApplication::exec();
}
