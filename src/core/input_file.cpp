// GetInputFile's checks of a chosen capture.
#include "core/input_file.h"

#include "core/brindle.h"
#include "core/files.h"

namespace zv {

bool CheckInputFile(JobState& job, const std::string& path, Message& message) {
  if (!Exist(path)) {
    message = {std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)};
    return false;
  }
  // A case-sensitive search of the whole path: a.pro passes, a folder X.PROJ fails.
  if (path.find(".PRO") != std::string::npos) {
    message = {std::string(kProInputTitle), std::string(kProInputText)};
    return false;
  }
  const std::string base = path.find('.') != std::string::npos ? BaseName(path) : path;
  const std::string pro = job.outputPath(base + ".PRO");
  const std::string ndx = job.outputPath(base + ".NDX");
  for (const char* ext : {".PRO", ".NDX", ".FSC", ".WRK"}) {
    if (SameFile(path, job.outputPath(base + ext))) {
      message = {std::string(kProInputTitle), std::string(kInputIsOutputText)};
      return false;
    }
  }
  job.gsInFile = path;
  job.gsBaseName = base;
  job.gsProFile = pro;
  job.gsIndexFile = ndx;
  return true;
}

}  // namespace zv
