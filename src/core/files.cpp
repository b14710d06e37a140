// File primitives: tests by name, a fast line count, and byte-exact access by handle.
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

std::size_t preadSome(int fd, char* buf, std::size_t size, int64_t offset, const std::string& path) {
  for (;;) {
    const ssize_t n = ::pread(fd, buf, size, static_cast<off_t>(offset));
    if (n >= 0) return static_cast<std::size_t>(n);
    if (errno != EINTR) ThrowSystemError(errno, path);
  }
}

[[noreturn]] void throwError(int32_t number, const std::string& detail) {
  throw ZvError(number, ErrorText(number), detail);
}

// The handle table. A handle is its slot's index plus 1; a closed slot has fd -1 and
// is handed out again. The position is kept here rather than in the descriptor, so
// FLInput can read ahead and still leave the position just behind the line it read.
struct OpenFile {
  int fd = -1;
  bool writable = false;
  int64_t position = 0;
  std::string path;
};

std::vector<OpenFile>& handleTable() {
  static std::vector<OpenFile> table;
  return table;
}

OpenFile& openFile(int32_t handle) {
  auto& table = handleTable();
  if (handle < 1 || static_cast<std::size_t>(handle) > table.size() || table[handle - 1].fd < 0)
    throwError(err::kBadFileNumber, "handle " + std::to_string(handle));
  return table[handle - 1];
}

constexpr std::size_t kLineCountChunk = 1 << 20;
constexpr std::size_t kLineInputChunk = 4096;

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
    if (afterEachBlock) afterEachBlock();
  }
  const int64_t lines = lineEnds + (last != '\n' && last != '\r' ? 1 : 0);
  if (lines > std::numeric_limits<int32_t>::max())
    ThrowOverflow(LimitReason("the lines of a file (LineCount)", std::numeric_limits<int32_t>::max()) + " This one has " +
                      std::to_string(lines) + ".",
                  fileName);
  return static_cast<int32_t>(lines);
}

void FCreate(const std::string& fileName) {
  const int fd = ::open(fileName.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) ThrowSystemError(errno, fileName);
  if (::close(fd) != 0 && errno != EINTR) ThrowSystemError(errno, fileName);
}

int32_t CSFOpen(const std::string& fileName) {
  bool writable = true;
  int fd = ::open(fileName.c_str(), O_RDWR | O_CLOEXEC);
  // A record file on read-only media is still to be read; a write to it fails later.
  if (fd < 0 && (errno == EACCES || errno == EROFS)) {
    writable = false;
    fd = ::open(fileName.c_str(), O_RDONLY | O_CLOEXEC);
  }
  if (fd < 0) ThrowSystemError(errno, fileName);
  struct stat st {};
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd);
    throwError(err::kPathFileAccess, fileName);
  }
  auto& table = handleTable();
  std::size_t slot = 0;
  while (slot < table.size() && table[slot].fd >= 0) ++slot;
  if (slot == table.size()) table.emplace_back();
  table[slot] = OpenFile{fd, writable, 0, fileName};
  return static_cast<int32_t>(slot + 1);
}

void FClose(int32_t handle) {
  OpenFile& f = openFile(handle);
  const int fd = f.fd;
  const std::string path = f.path;
  f = OpenFile{};
  if (::close(fd) != 0 && errno != EINTR) ThrowSystemError(errno, path);
}

void FSeek(int32_t handle, int64_t offset) {
  OpenFile& f = openFile(handle);
  if (offset < 0) throwError(err::kInvalidCall, f.path);
  f.position = offset;
}

void FGet(int32_t handle, std::string& buffer) {
  OpenFile& f = openFile(handle);
  std::size_t got = 0;
  while (got < buffer.size()) {
    const std::size_t n = preadSome(f.fd, buffer.data() + got, buffer.size() - got, f.position + got, f.path);
    if (n == 0) throwError(err::kPastEnd, f.path);
    got += n;
  }
  f.position += static_cast<int64_t>(got);
}

void FPut(int32_t handle, std::string_view text) {
  OpenFile& f = openFile(handle);
  if (!f.writable) throwError(err::kPermissionDenied, f.path);
  std::size_t put = 0;
  while (put < text.size()) {
    const ssize_t n = ::pwrite(f.fd, text.data() + put, text.size() - put, static_cast<off_t>(f.position + put));
    if (n < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, f.path);
    }
    put += static_cast<std::size_t>(n);
  }
  f.position += static_cast<int64_t>(put);
}

std::string FLInput(int32_t handle) {
  OpenFile& f = openFile(handle);
  std::string line;
  char chunk[kLineInputChunk];
  int64_t at = f.position;
  for (;;) {
    const std::size_t n = preadSome(f.fd, chunk, sizeof chunk, at, f.path);
    if (n == 0) {
      // The end of the file: a last line without a line end is still a line.
      if (at == f.position) throwError(err::kPastEnd, f.path);
      f.position = at;
      return line;
    }
    const char* end = static_cast<const char*>(std::memchr(chunk, '\n', n));
    const std::size_t lf = end ? static_cast<std::size_t>(end - chunk) : n;
    const char* cr = static_cast<const char*>(std::memchr(chunk, '\r', lf));
    const std::size_t stop = cr ? static_cast<std::size_t>(cr - chunk) : lf;
    line.append(chunk, stop);
    at += static_cast<int64_t>(stop);
    if (stop == n) continue;  // no line end yet
    ++at;                     // past the CR or LF
    if (chunk[stop] == '\r') {
      // The LF of a CR LF may lie in the next chunk.
      char next = 0;
      if (stop + 1 < n) {
        next = chunk[stop + 1];
      } else if (preadSome(f.fd, &next, 1, at, f.path) == 0) {
        next = 0;
      }
      if (next == '\n') ++at;
    }
    f.position = at;
    return line;
  }
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return std::filesystem::equivalent(a, b, ec) && !ec;
}

}  // namespace zv
