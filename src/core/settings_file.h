// The settings store's file read without the desktop's toolkit: the command line takes
// the defaults of its options from what the desktop program saved.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace zv {

// The INI file the desktop program keeps its settings in, under the name "quidlane":
// sections in brackets, keys below them, values as that toolkit writes them (a path
// "Header/Cover/To" stands as the key "Cover\To" of the section "[Header]"; names
// are percent-encoded, values quoted with C escapes when they need it).
class SettingsFile {
 public:
  // ZORVANTA_SETTINGS when it is set; otherwise quidlane/quidlane.ini in
  // $XDG_CONFIG_HOME, or in ~/.config.
  static std::string DefaultPath();

  SettingsFile() = default;
  // Reads `path`; a file that is missing or cannot be read holds no settings.
  explicit SettingsFile(const std::string& path);
  // Reads settings from INI text.
  static SettingsFile FromText(std::string_view text);

  // The value of `key` in `section` ("Header/Cover", "To"), or nothing.
  std::optional<std::string> value(std::string_view section, std::string_view key) const;

 private:
  void parse(std::string_view text);

  std::map<std::string, std::string> values_;  // by "section/key"
};

}  // namespace zv
