// The program's version record: what the About box and the title bar say of it.
#pragma once

namespace zv::forms {

struct VersionRecord {
  int major;
  int minor;
  int revision;
  const char* title;            // the application title
  const char* fileDescription;
  const char* legalCopyright;   // with comments, the About box's disclaimer
  const char* comments;
};

// The one record; its numbers are the project's version.
const VersionRecord& AppVersion();

// "Zorvanta v3.0 Beta", frmMain's title.
inline constexpr const char* kMainTitle = "Zorvanta v3.0 Beta";

}  // namespace zv::forms
