// frmStartup: the splash shown while the settings load, and the start-up order.
#pragma once

#include <memory>

#include <QString>
#include <QWidget>

namespace zv::forms {

class FrmMain;
class SettingsStore;

class FrmStartup : public QWidget {
  Q_OBJECT

 public:
  FrmStartup();
};

// gsAppPath: the program's own folder, set at start-up.
const QString& AppPath();

// Start-up: the splash (hourglass, gsAppPath, centred, painted), the settings load,
// frmMain shown and enabled, the splash gone. An error of the settings load is shown
// in frmError once the main window stands.
std::unique_ptr<FrmMain> StartUp(SettingsStore& store);

}  // namespace zv::forms
