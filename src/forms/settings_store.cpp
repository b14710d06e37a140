// GetSetting and SaveSetting on QSettings.
#include "forms/settings_store.h"

#include <QSettings>

namespace zv::forms {

namespace {

QString keyPath(const QString& section, const QString& key) { return section + QLatin1Char('/') + key; }

}  // namespace

SettingsStore::SettingsStore() {
  const QString path = qEnvironmentVariable("ZORVANTA_SETTINGS");
  if (!path.isEmpty())
    settings_ = std::make_unique<QSettings>(path, QSettings::IniFormat);
  else
    settings_ = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                            QLatin1String(kAppSettingsName), QLatin1String(kAppSettingsName));
}

SettingsStore::SettingsStore(const QString& iniPath)
    : settings_(std::make_unique<QSettings>(iniPath, QSettings::IniFormat)) {}

SettingsStore::~SettingsStore() = default;

QString SettingsStore::GetSetting(const QString& section, const QString& key, const QString& defaultValue) const {
  const QVariant v = settings_->value(keyPath(section, key));
  return v.isValid() ? v.toString() : defaultValue;
}

void SettingsStore::SaveSetting(const QString& section, const QString& key, const QString& value) {
  settings_->setValue(keyPath(section, key), value);
}

void SettingsStore::sync() { settings_->sync(); }

QString SettingsStore::fileName() const { return settings_->fileName(); }

}  // namespace zv::forms
