// Output naming and clean-up of the shared job state.
#include "core/job_state.h"

#include <filesystem>

namespace zv {

std::string JobState::outputPath(const std::string& name) const {
  if (outDir.empty()) return name;
  // An absolute name replaces the folder, as a change of directory would leave it.
  return (std::filesystem::path(outDir) / name).string();
}

void JobState::CleanUp() {
  gsInFile.clear();
  gsProFile.clear();
  gsIndexFile.clear();
  gsFscFile.clear();
  gsBaseName.clear();
  gsLine.clear();
  gsPrevLine.clear();
}

}  // namespace zv
