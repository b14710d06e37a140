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

[[noreturn]] void throwError(int32_t number, const std::string& detail) {
  throw ZvError(number, ErrorText(number), detail);
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
// CR LF pair counted once: so every LF and every CR, less each CR LF pair. The counts
// are plain comparisons summed over each block, which the compiler turns into vector
// code; a CR at the end of one read is carried over to an LF at the start of the next.
int32_t LineCount(const std::string& fileName) {
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
    for (std::size_t done = 0; done < n;) {
      // Byte-wide partial sums cannot overflow within 255 bytes.
      const std::size_t block = std::min<std::size_t>(255, n - done);
      const unsigned char* q = p + done;
      unsigned char ends = 0;
      for (std::size_t i = 0; i < block; ++i) ends = static_cast<unsigned char>(ends + (q[i] == '\n') + (q[i] == '\r'));
      unsigned char pairs = 0;
      const std::size_t pairBlock = done + block < n ? block : block - 1;
      for (std::size_t i = 0; i < pairBlock; ++i)
        pairs = static_cast<unsigned char>(pairs + ((q[i] == '\r') & (q[i + 1] == '\n')));
      lineEnds += static_cast<int64_t>(ends) - pairs;
      done += block;
    }
    last = p[n - 1];
  }
  const int64_t lines = lineEnds + (last != '\n' && last != '\r' ? 1 : 0);
  if (lines > std::numeric_limits<int32_t>::max()) throwError(err::kOverflow, fileName);
  return static_cast<int32_t>(lines);
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return std::filesystem::equivalent(a, b, ec) && !ec;
}

}  // namespace zv
