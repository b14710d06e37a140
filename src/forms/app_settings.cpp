// The settings load of start-up and the save of shutdown.
#include "forms/app_settings.h"

#include <algorithm>
#include <cmath>

#include <QDir>
#include <QWidget>

#include "forms/settings_store.h"

namespace zv::forms {

namespace {

int readInt(const SettingsStore& store, const QString& key, int defaultValue) {
  bool ok = false;
  const int v = store.GetSetting(kWindowSection, key).trimmed().toInt(&ok);
  return ok ? v : defaultValue;
}

int toInt16(double value) {
  return static_cast<int>(std::clamp(std::round(value), -32768.0, 32767.0));
}

}  // namespace

WindowPosition ReadWindowPosition(const SettingsStore& store) {
  WindowPosition p;
  p.windowState = readInt(store, QStringLiteral("WindowState"), p.windowState);
  p.height = readInt(store, QStringLiteral("Height"), p.height);
  p.left = readInt(store, QStringLiteral("Left"), p.left);
  p.top = readInt(store, QStringLiteral("Top"), p.top);
  p.width = readInt(store, QStringLiteral("Width"), p.width);
  return p;
}

bool SettingIsTrue(const QString& text) {
  const QString t = text.trimmed();
  if (t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) return true;
  bool ok = false;
  const int n = t.toInt(&ok);
  return ok && n != 0;
}

QString SettingBoolText(bool value) { return value ? QStringLiteral("True") : QStringLiteral("False"); }

WorkingDirectory ReadWorkingDirectory(const SettingsStore& store) {
  WorkingDirectory d;
  d.lastWorkDir = store.GetSetting(kWorkDirSection, QStringLiteral("LastWorkDir"));
  d.userWorkDir = store.GetSetting(kWorkDirSection, QStringLiteral("UserWorkDir"));
  d.userOverride = SettingIsTrue(store.GetSetting(kWorkDirSection, QStringLiteral("UserOverride"), SettingBoolText(false)));
  return d;
}

QString StartupDirectory(const WorkingDirectory& dirs) {
  if (!dirs.userWorkDir.isEmpty() && dirs.userOverride) return dirs.userWorkDir;
  return dirs.lastWorkDir;
}

void ApplyWindowPosition(const WindowPosition& pos, QWidget& frmMain) {
  if (pos.windowState == 2) {
    frmMain.setWindowState(Qt::WindowMaximized);
    return;
  }
  frmMain.setWindowState(pos.windowState == 1 ? Qt::WindowMinimized : Qt::WindowNoState);
  frmMain.resize(TwipsToPixels(pos.width), TwipsToPixels(pos.height));
  frmMain.move(TwipsToPixels(pos.left), TwipsToPixels(pos.top));
}

std::optional<ZvError> LoadSettings(const SettingsStore& store, QWidget& frmMain, bool& userOverride) {
  ApplyWindowPosition(ReadWindowPosition(store), frmMain);
  const WorkingDirectory dirs = ReadWorkingDirectory(store);
  const QString dir = StartupDirectory(dirs);
  if (!dir.isEmpty() && !QDir::setCurrent(dir))
    return ZvError(err::kPathNotFound, ErrorText(err::kPathNotFound), dir.toStdString());
  userOverride = dirs.userOverride;
  return std::nullopt;
}

WindowPosition CurrentWindowPosition(const QWidget& frmMain) {
  WindowPosition p;
  const Qt::WindowStates s = frmMain.windowState();
  p.windowState = s.testFlag(Qt::WindowMaximized) ? 2 : s.testFlag(Qt::WindowMinimized) ? 1 : 0;
  // pos() is where move() puts the frame and size() what resize() sets, so a saved
  // window comes back where it was.
  p.height = toInt16(PixelsToTwips(frmMain.height()));
  p.left = toInt16(PixelsToTwips(frmMain.x()));
  p.top = toInt16(PixelsToTwips(frmMain.y()));
  p.width = toInt16(PixelsToTwips(frmMain.width()));
  return p;
}

void SaveWindowPosition(SettingsStore& store, const QWidget& frmMain) {
  const WindowPosition p = CurrentWindowPosition(frmMain);
  store.SaveSetting(kWindowSection, QStringLiteral("WindowState"), QString::number(p.windowState));
  store.SaveSetting(kWindowSection, QStringLiteral("Height"), QString::number(p.height));
  store.SaveSetting(kWindowSection, QStringLiteral("Left"), QString::number(p.left));
  store.SaveSetting(kWindowSection, QStringLiteral("Top"), QString::number(p.top));
  store.SaveSetting(kWindowSection, QStringLiteral("Width"), QString::number(p.width));
  store.SaveSetting(kWorkDirSection, QStringLiteral("LastWorkDir"), QDir::currentPath());
  store.sync();
}

}  // namespace zv::forms
