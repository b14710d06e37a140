// GetInputFile's checks of a chosen capture, and the timing panel texts.
#include "core/job_host.h"

#include <ctime>
#include <filesystem>
#include <system_error>

#include "core/brindle.h"
#include "core/files.h"
#include "core/text.h"

namespace zv {

namespace {

bool sameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return std::filesystem::equivalent(a, b, ec) && !ec;
}

}  // namespace

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
    if (sameFile(path, job.outputPath(base + ext))) {
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

std::string TimeOfDayText() {
  const std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  return Num2Time(tm.tm_hour * 3600 + tm.tm_min * 60 + tm.tm_sec);
}

std::string ShowElapsed(std::string_view pnlStartTime, std::string_view pnlFinishTime) {
  return Num2Time(Time2Num(pnlFinishTime) - Time2Num(pnlStartTime));
}

}  // namespace zv
