// Output naming and clean-up of the shared job state.
#include "core/job_state.h"

#include <filesystem>

namespace zv {

std::string JobState::outputPath(const std::string& name) const {
  if (outDir.empty()) return name;
  // The folder stands for the current directory, so only the name's last component
  // goes into it: a stem that kept the capture's folders (a name without a dot,
  // absolute or relative) would otherwise lead out of it, or into folders that the
  // output folder does not have.
  return (std::filesystem::path(outDir) / std::filesystem::path(name).filename()).string();
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
