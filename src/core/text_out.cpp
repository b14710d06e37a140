// Buffered CR LF line output with every write failure reported.
#include "core/text_out.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "core/error.h"

namespace zv {

namespace {
constexpr std::size_t kBufferSize = 1 << 16;
}

TextOut::TextOut(const std::string& path) { open(path); }

TextOut::~TextOut() { abandon(); }

void TextOut::open(const std::string& path) { openWith(path, O_TRUNC); }

void TextOut::append(const std::string& path) { openWith(path, O_APPEND); }

void TextOut::openWith(const std::string& path, int mode) {
  abandon();
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | mode | O_CLOEXEC, 0666);
  // A file being created is missing only when its folder is.
  if (fd < 0) ThrowSystemError(errno == ENOENT ? ENOTDIR : errno, path);
  fd_ = fd;
  path_ = path;
  buf_.clear();
  buf_.reserve(kBufferSize);
}

void TextOut::line(std::string_view text) {
  if (buf_.size() + text.size() + 2 > kBufferSize) {
    flush();
    if (text.size() + 2 > kBufferSize) {  // a huge line goes straight through
      buf_.append(text);
      buf_.append("\r\n");
      flush();
      return;
    }
  }
  buf_.append(text);
  buf_.append("\r\n");
}

void TextOut::raw(std::string_view bytes) {
  if (buf_.size() + bytes.size() > kBufferSize) {
    flush();
    if (bytes.size() >= kBufferSize) {  // a buffer's worth or more goes straight through
      if (const int e = writeAll(bytes.data(), bytes.size())) ThrowSystemError(e, path_);
      return;
    }
  }
  buf_.append(bytes);
  if (buf_.size() >= kBufferSize) flush();
}

void TextOut::flush() {
  if (fd_ < 0) throw ZvError(err::kBadFileNumber, ErrorText(err::kBadFileNumber), path_);
  const int e = writeAll(buf_.data(), buf_.size());
  buf_.clear();
  if (e != 0) ThrowSystemError(e, path_);
}

int TextOut::writeAll(const char* p, std::size_t n) {
  if (fd_ < 0) return EBADF;
  while (n > 0) {
    const ssize_t done = ::write(fd_, p, n);
    if (done < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    p += done;
    n -= static_cast<std::size_t>(done);
  }
  return 0;
}

void TextOut::close() {
  if (fd_ < 0) return;
  flush();
  const int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0 && errno != EINTR) ThrowSystemError(errno, path_);
}

void TextOut::abandon() noexcept {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  buf_.clear();
}

}  // namespace zv
