// GetInputFile's checks of a chosen capture.
#include "core/input_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "core/brindle.h"
#include "core/files.h"

namespace zv {

namespace {

// Why a name that Exist does not accept cannot be the input.
std::string_view notAFileText(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) return kFileNotFoundText;
  if (S_ISDIR(st.st_mode)) return kInputIsDirectoryText;
  return kInputNotRegularText;
}

// The system's words for why the file cannot be read, or empty when its first byte
// can be: a file that opens but cannot be read fails here, not halfway through a job.
std::string unreadableCause(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return std::strerror(errno);
  char byte = 0;
  ssize_t n = 0;
  do {
    n = ::pread(fd, &byte, 1, 0);
  } while (n < 0 && errno == EINTR);
  const int readErrno = errno;
  ::close(fd);
  return n < 0 ? std::strerror(readErrno) : std::string();
}

// The longest file name the folder of `output` takes (255 where it cannot be asked).
long nameMax(const std::string& output) {
  const std::string folder = std::filesystem::path(output).parent_path().string();
  const long n = ::pathconf(folder.empty() ? "." : folder.c_str(), _PC_NAME_MAX);
  return n > 0 ? n : 255;
}

}  // namespace

bool CheckInputFile(JobState& job, const std::string& path, Message& message) {
  if (!Exist(path)) {
    message = {std::string(kFileNotFoundTitle), std::string(notAFileText(path))};
    return false;
  }
  // A case-sensitive search of the whole path: a.pro passes, a folder X.PROJ fails.
  if (path.find(".PRO") != std::string::npos) {
    message = {std::string(kProInputTitle), std::string(kProInputText)};
    return false;
  }
  if (const std::string cause = unreadableCause(path); !cause.empty()) {
    message = {std::string(kFileNotFoundTitle), std::string(kInputUnreadableText) + " (" + cause + ")."};
    return false;
  }
  const std::string base = path.find('.') != std::string::npos ? BaseName(path) : path;
  const std::string pro = job.outputPath(base + ".PRO");
  const std::string ndx = job.outputPath(base + ".NDX");
  for (const char* ext : {".PRO", ".NDX", ".FSC", ".WRK"}) {
    const std::string output = job.outputPath(base + ext);
    if (SameFile(path, output)) {
      message = {std::string(kProInputTitle), std::string(kInputIsOutputText)};
      return false;
    }
    const std::string name = std::filesystem::path(output).filename().string();
    if (static_cast<long>(name.size()) > nameMax(output)) {
      message = {std::string(kProInputTitle), std::string(kOutputNameTooLongText) + name};
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
