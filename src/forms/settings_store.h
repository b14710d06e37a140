// The settings store: text values by section and key under the name "quidlane".
#pragma once

#include <memory>

#include <QString>

class QSettings;

namespace zv::forms {

// Window geometry is kept in twips, as it always was. One pixel is 15 twips: 1440
// twips to the inch on a screen of 96 pixels to the inch. Every conversion between
// the store and Qt's pixels goes through these two.
inline constexpr int kTwipsPerPixel = 15;
inline int TwipsToPixels(int twips) { return twips / kTwipsPerPixel; }
inline int PixelsToTwips(int pixels) { return pixels * kTwipsPerPixel; }

// GetSetting and SaveSetting: the program's only access to its stored settings.
// Values are text; a key never written reads as the caller's default.
class SettingsStore {
 public:
  // The user's store: QSettings of organization and application "quidlane"
  // (~/.config/quidlane/quidlane.ini), or the file named by ZORVANTA_SETTINGS
  // when that variable is set, so that a trial run leaves the user's store alone.
  SettingsStore();
  // A store in one INI file of the caller's, as the tests use.
  explicit SettingsStore(const QString& iniPath);
  ~SettingsStore();
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  QString GetSetting(const QString& section, const QString& key, const QString& defaultValue = {}) const;
  void SaveSetting(const QString& section, const QString& key, const QString& value);
  // Writes what is pending to the disk.
  void sync();
  QString fileName() const;

 private:
  std::unique_ptr<QSettings> settings_;
};

inline constexpr const char* kAppSettingsName = "quidlane";

}  // namespace zv::forms
