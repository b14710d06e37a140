// The version record, numbered from the project's version at build time.
#include "forms/version_record.h"

namespace zv::forms {

const VersionRecord& AppVersion() {
  static constexpr VersionRecord kRecord{
      ZV_VERSION_MAJOR,
      ZV_VERSION_MINOR,
      ZV_VERSION_PATCH,
      "Zorvanta",
      "Post-processor for text captured from searches of online databases",
      "Copyright (c) quidlane. All rights reserved.",
      "This program is provided as is, without warranty of any kind; check its output "
      "against the capture before you deliver it.",
  };
  return kRecord;
}

}  // namespace zv::forms
