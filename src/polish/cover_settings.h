// The header and cover form's settings: the keys under "Header/Cover", their defaults,
// loading (command 3230) and saving (command 3220).
#pragma once

#include <string>
#include <string_view>

#include "core/job.h"
#include "core/job_state.h"
#include "polish/cover.h"

namespace zv {

// The settings store as these commands use it: text values by section and key. The
// desktop program's store and the command line's reader of the same file are the two.
class SettingsAccess {
 public:
  virtual ~SettingsAccess() = default;
  virtual std::string GetSetting(std::string_view section, std::string_view key,
                                 std::string_view defaultValue) const = 0;
  virtual void SaveSetting(std::string_view section, std::string_view key, std::string_view value) = 0;
};

inline constexpr std::string_view kCoverSection = "Header/Cover";

// Loading: the eight choices in the table's order, each "True" setting its option and
// each "False" clearing it, then the seven texts (the date is not stored). A truth
// value that is neither "True" nor "False" (nor a number) is error 13.
void LoadCoverSettings(const SettingsAccess& store, CoverFields& fields);
// Saving: the same keys in the same order, choices as "True" or "False", texts trimmed.
void SaveCoverSettings(SettingsAccess& store, const CoverFields& fields);

// The parameters of commands 3220 and 3230: the store and the form's fields.
struct CoverSettingsParams {
  SettingsAccess* store = nullptr;
  CoverFields* fields = nullptr;
};

}  // namespace zv
