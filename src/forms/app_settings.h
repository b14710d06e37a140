// The shell's settings: the window position and the working directory at start and stop.
#pragma once

#include <optional>

#include <QString>

#include "core/error.h"

class QWidget;

namespace zv::forms {

class SettingsStore;

inline const QString kWindowSection = QStringLiteral("Window Position");
inline const QString kWorkDirSection = QStringLiteral("Working Directory");

// "Window Position", in twips; the defaults are those of a first start.
struct WindowPosition {
  int windowState = 0;  // 0 normal, 1 minimized, 2 maximized
  int height = 5000;
  int left = 500;
  int top = 1500;
  int width = 6500;
};

// "Working Directory".
struct WorkingDirectory {
  QString lastWorkDir;
  QString userWorkDir;
  bool userOverride = false;
};

// Reads the keys; a key that is missing or does not read as a number gives the default.
WindowPosition ReadWindowPosition(const SettingsStore& store);
WorkingDirectory ReadWorkingDirectory(const SettingsStore& store);

// "True" as the settings dialog stores it; "-1" and other non-zero numbers count too.
bool SettingIsTrue(const QString& text);
QString SettingBoolText(bool value);

// The folder to start in: "UserWorkDir" when it is set and "UserOverride" is true,
// else "LastWorkDir"; empty to stay where the program was started.
QString StartupDirectory(const WorkingDirectory& dirs);

// Places frmMain as the store says. A maximized window takes only its state, so that
// its normal size stays the form's own.
void ApplyWindowPosition(const WindowPosition& pos, QWidget& frmMain);

// The settings load of start-up: the window position, then the change to the startup
// folder. A folder that no longer exists is error 76, which ends the load there; the
// caller reports it. On success `userOverride` is what frmSettings should show.
std::optional<ZvError> LoadSettings(const SettingsStore& store, QWidget& frmMain, bool& userOverride);

// The window's state and its height, left, top and width in twips, as shutdown saves
// them. Twips of a large screen pass the 16-bit range the store has always used; they
// are held at its ends rather than lost to an overflow at exit.
WindowPosition CurrentWindowPosition(const QWidget& frmMain);

// Shutdown's save: "WindowState", "Height", "Left", "Top", "Width", then "LastWorkDir"
// (the current directory).
void SaveWindowPosition(SettingsStore& store, const QWidget& frmMain);

}  // namespace zv::forms
