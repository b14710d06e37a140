// Line splitting by a bit map of the line ends of each block, and cleaning on the way out.
#include "core/clean_line_reader.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "core/error.h"

namespace zv {

namespace {
constexpr std::size_t kChunk = 1 << 18;  // a read
}  // namespace

CleanLineReader::CleanLineReader(const std::string& path) : path_(path), buf_(kChunk), ends_(kChunk / 64 + 1) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) ThrowSystemError(errno, path);
#ifdef POSIX_FADV_SEQUENTIAL
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
}

CleanLineReader::CleanLineReader(std::string_view memory)
    : buf_(memory.begin(), memory.end()), filled_(memory.size()), eof_(true) {
  mark();
}

CleanLineReader::~CleanLineReader() {
  if (fd_ >= 0) ::close(fd_);
}

void CleanLineReader::mark() {
  const std::size_t words = filled_ / 64 + 1;
  if (ends_.size() < words) ends_.resize(words);
  MarkLineEnds(std::string_view(buf_.data(), filled_), ends_.data());
  // The word behind the last one marked (and the rest of a part-filled one) stays 0,
  // so that a search for the next end stops at filled_.
  if (filled_ % 64 == 0) ends_[filled_ / 64] = 0;
}

void CleanLineReader::refill() {
  if (fd_ < 0) {
    eof_ = true;
    return;
  }
  // The unread part is a line begun and not ended: it goes to the front, and when it
  // fills more than half the block (a long line), the block doubles.
  const std::size_t tail = filled_ - pos_;
  if (tail != 0 && pos_ != 0) std::memmove(buf_.data(), buf_.data() + pos_, tail);
  pos_ = 0;
  filled_ = tail;
  if (tail > buf_.size() / 2) buf_.resize(buf_.size() * 2);
  for (;;) {
    const ssize_t n = ::read(fd_, buf_.data() + filled_, buf_.size() - filled_);
    if (n < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path_);
    }
    if (n == 0) {
      ::close(fd_);
      fd_ = -1;
      eof_ = true;
    }
    filled_ += static_cast<std::size_t>(n);
    break;
  }
  mark();
}

bool CleanLineReader::readLineSlow(std::string& line) {
  for (;;) {
    // The next marked end at or after pos_, in the bytes there are.
    std::size_t word = pos_ >> 6;
    uint64_t bits = ends_[word] & (~uint64_t{0} << (pos_ & 63));
    const std::size_t lastWord = filled_ >> 6;
    while (bits == 0 && word < lastWord) bits = ends_[++word];
    if (bits != 0) {
      const std::size_t end = (word << 6) + static_cast<std::size_t>(__builtin_ctzll(bits));
      // A CR as the last byte read waits for the next read, which may begin with its LF.
      if (buf_[end] == '\n' || end + 1 < filled_ || eof_) {
        take(line, end);
        return true;
      }
    }
    if (eof_) {
      if (pos_ == filled_) return false;
      // A last line without a line end.
      CleanLineInto(line, std::string_view(buf_.data() + pos_, filled_ - pos_));
      pos_ = filled_;
      return true;
    }
    refill();
  }
}

}  // namespace zv
