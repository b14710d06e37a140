// Reading the desktop program's settings file without its toolkit.
#include <gtest/gtest.h>

#include <cstdlib>

#include "core/settings_file.h"
#include "support/test_support.h"

namespace zv {
namespace {

TEST(SettingsFile, ReadsSectionsKeysAndValuesAsTheToolkitWritesThem) {
  // Written by the toolkit for the section "Header/Cover" and "Window Position".
  const SettingsFile f = SettingsFile::FromText(
      "[General]\r\n"
      "Top=1\r\n"
      "[Header]\r\n"
      "Cover\\From_1=@@at\r\n"
      "Cover\\Memo=\"line one, two\\r\\nline \\\"three\\\" \\\\ back; semi=eq\"\r\n"
      "Cover\\Subject=caf\xC3\xA9 #x\r\n"
      "Cover\\To=\"  lead\"\r\n"
      "Cover\\ToRequester=True\r\n"
      "Cover\\Tab=a\\tb\\x41\r\n"
      "Cover\\List=a, b\r\n"
      "\r\n"
      "[Window%20Position]\r\n"
      "Left = 100\r\n");
  struct Case {
    std::string section, key, value;
  } cases[] = {
      {"Header/Cover", "From_1", "@at"},
      {"Header/Cover", "Memo", "line one, two\r\nline \"three\" \\ back; semi=eq"},
      {"Header/Cover", "Subject", "caf\xC3\xA9 #x"},
      {"Header/Cover", "To", "  lead"},
      {"Header/Cover", "ToRequester", "True"},
      {"Header/Cover", "Tab", "a\tbA"},
      {"Header/Cover", "List", "a, b"},
      {"Window Position", "Left", "100"},
  };
  for (const Case& c : cases) EXPECT_EQ(f.value(c.section, c.key).value_or("(none)"), c.value) << c.key;
  EXPECT_FALSE(f.value("Header/Cover", "JobNo"));
  EXPECT_FALSE(f.value("Header", "Cover"));
  EXPECT_EQ(f.value("", "Top").value_or(""), "1");
}

TEST(SettingsFile, AMissingFileHoldsNothingAndTheDefaultPathFollowsTheEnvironment) {
  EXPECT_FALSE(SettingsFile("/nonexistent/quidlane.ini").value("Header/Cover", "To"));
  setenv("ZORVANTA_SETTINGS", "/tmp/trial.ini", 1);
  EXPECT_EQ(SettingsFile::DefaultPath(), "/tmp/trial.ini");
  unsetenv("ZORVANTA_SETTINGS");
  setenv("XDG_CONFIG_HOME", "/cfg", 1);
  EXPECT_EQ(SettingsFile::DefaultPath(), "/cfg/quidlane/quidlane.ini");
  unsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace zv
