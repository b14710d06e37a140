// Line splitting over a large read buffer; CR LF, LF and CR all end a line.
#include "core/line_reader.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "core/byte_scan.h"
#include "core/error.h"

namespace zv {

namespace {
constexpr std::size_t kChunk = 1 << 18;
}

LineReader::LineReader(const std::string& path) : path_(path) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) ThrowSystemError(errno, path);
  buf_.resize(kChunk);
}

LineReader::LineReader(std::string_view memory) : data_(memory) {}

LineReader::~LineReader() {
  if (fd_ >= 0) ::close(fd_);
}

bool LineReader::refill() {
  if (fd_ < 0) return false;
  for (;;) {
    const ssize_t n = ::read(fd_, buf_.data(), buf_.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path_);
    }
    if (n == 0) {
      ::close(fd_);
      fd_ = -1;
      return false;
    }
    data_ = std::string_view(buf_.data(), static_cast<std::size_t>(n));
    return true;
  }
}

bool LineReader::readLine(std::string& line) {
  line.clear();
  bool any = false;  // whether this line has begun (a byte or its end was seen)
  for (;;) {
    if (data_.empty() && !refill()) return any;
    if (skipLf_) {
      skipLf_ = false;
      if (data_.front() == '\n') {
        data_.remove_prefix(1);
        continue;
      }
    }
    const char* begin = data_.data();
    const std::size_t n = data_.size();
    const std::size_t end = FindCrOrLf(data_);
    if (end == n) {  // no line end in the buffer: keep what there is and read on
      line.append(begin, n);
      data_ = {};
      any = true;
      continue;
    }
    line.append(begin, end);
    if (begin[end] == '\r') {
      if (end + 1 < n) {
        data_.remove_prefix(end + 1 + (begin[end + 1] == '\n' ? 1 : 0));
      } else {
        data_ = {};
        skipLf_ = true;
      }
    } else {
      data_.remove_prefix(end + 1);
    }
    return true;
  }
}

bool LineReader::readLine(std::string_view& line) {
  if (skipLf_ && !data_.empty()) {
    skipLf_ = false;
    if (data_.front() == '\n') data_.remove_prefix(1);
  }
  // The usual case: the whole line and its end lie in the buffer.
  if (!data_.empty()) {
    const char* begin = data_.data();
    const std::size_t n = data_.size();
    const std::size_t end = FindCrOrLf(data_);
    if (end + 1 < n || (end + 1 == n && begin[end] == '\n')) {
      line = std::string_view(begin, end);
      data_.remove_prefix(end + 1 + (begin[end] == '\r' && begin[end + 1] == '\n' ? 1 : 0));
      return true;
    }
  }
  // A line that runs to the end of the buffer (or a CR as its last byte): gathered.
  const bool any = readLine(carry_);
  line = carry_;
  return any;
}

}  // namespace zv
