// File primitives: tests by name and a fast line count.
#include "core/files.h"

#include <filesystem>
#include <system_error>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "core/byte_scan.h"
#include "core/error.h"

namespace zv {

namespace {

// Closes a descriptor on every way out of LineCount.
class FdGuard {
 public:
  explicit FdGuard(int fd) : fd_(fd) {}
  ~FdGuard() {
    if (fd_ >= 0) ::close(fd_);
  }
  FdGuard(const FdGuard&) = delete;
  FdGuard& operator=(const FdGuard&) = delete;

 private:
  int fd_;
};

// A read that retries on interruption; returns the byte count, 0 at the end.
std::size_t readSome(int fd, char* buf, std::size_t size, const std::string& path) {
  for (;;) {
    const ssize_t n = ::read(fd, buf, size);
    if (n >= 0) return static_cast<std::size_t>(n);
    if (errno != EINTR) ThrowSystemError(errno, path);
  }
}


constexpr std::size_t kLineCountChunk = 1 << 20;

}  // namespace

int32_t Exist(const std::string& fileName) {
  struct stat st {};
  if (fileName.empty() || ::stat(fileName.c_str(), &st) != 0) return 0;
  return S_ISREG(st.st_mode) ? -1 : 0;
}

int64_t FileSize(const std::string& fileName) {
  struct stat st {};
  if (::stat(fileName.c_str(), &st) != 0) return 0;
  return static_cast<int64_t>(st.st_size);
}

// Lines = line ends + a last line without one, where a line end is an LF, a CR, or a
// CR LF pair counted once (CountLineEnds, sixteen bytes at a time); a CR at the end of
// one read is carried over to an LF at the start of the next.
int32_t LineCount(const std::string& fileName, const std::function<void()>& afterEachBlock) {
  const int fd = ::open(fileName.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) ThrowSystemError(errno, fileName);
  FdGuard guard(fd);
#ifdef POSIX_FADV_SEQUENTIAL
  ::posix_fadvise(fd, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
  std::vector<unsigned char> buf(kLineCountChunk);
  int64_t lineEnds = 0;
  unsigned char last = '\n';  // as if just behind a line end: an empty file has no open line
  for (;;) {
    const std::size_t n = readSome(fd, reinterpret_cast<char*>(buf.data()), buf.size(), fileName);
    if (n == 0) break;
    const unsigned char* p = buf.data();
    if (last == '\r' && p[0] == '\n') --lineEnds;
    lineEnds += CountLineEnds(std::string_view(reinterpret_cast<const char*>(p), n));
    last = p[n - 1];
    if (afterEachBlock) afterEachBlock();
  }
  const int64_t lines = lineEnds + (last != '\n' && last != '\r' ? 1 : 0);
  if (lines > std::numeric_limits<int32_t>::max())
    ThrowOverflow(LimitReason("the lines of a file (LineCount)", std::numeric_limits<int32_t>::max()) + " This one has " +
                      std::to_string(lines) + ".",
                  fileName);
  return static_cast<int32_t>(lines);
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return std::filesystem::equivalent(a, b, ec) && !ec;
}

}  // namespace zv
