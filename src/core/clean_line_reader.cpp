// Blocks cleaned in place with their line ends listed; lines shown where they lie.
#include "core/clean_line_reader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "core/byte_scan.h"
#include "core/error.h"

namespace zv {

namespace {
constexpr std::size_t kChunk = 1 << 18;  // a read
constexpr std::size_t kPad = 64;         // zeros behind the bytes of a block, for the scan

bool within(std::string_view text, const char* block, std::size_t capacity) {
  return !text.empty() && text.data() >= block && text.data() < block + capacity + kPad;
}
}  // namespace

void CleanLineReader::reserve(std::unique_ptr<char[]>& block, std::size_t& capacity, std::size_t size) {
  if (capacity >= size && block) return;
  block.reset(new char[size + kPad]);
  capacity = size;
}

CleanLineReader::CleanLineReader(const std::string& path) : path_(path) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) ThrowSystemError(errno, path);
#ifdef POSIX_FADV_SEQUENTIAL
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
  reserve(block_, capacity_, kChunk);
}

CleanLineReader::CleanLineReader(std::string_view memory) : unscanned_(true) {
  reserve(block_, capacity_, memory.size());
  if (!memory.empty()) std::memcpy(block_.get(), memory.data(), memory.size());
  filled_ = memory.size();
}

CleanLineReader::~CleanLineReader() {
  if (fd_ >= 0) ::close(fd_);
}

void CleanLineReader::setPrevious(std::string_view before) {
  before_.assign(before);
  line_ = prev_ = before_;
}

void CleanLineReader::setMarked(std::string_view bytes, bool capitals) {
  marked_.assign(bytes.substr(0, 4));
  capitals_ = capitals;
  if (capitals_ && marked_.empty()) marked_ = "A";  // the scan takes a byte of its own
}

void CleanLineReader::scan(std::size_t from) {
  const std::size_t n = filled_ - from;
  if (endsCapacity_ < n + 4) {
    endsCapacity_ = std::max(n + 4, kChunk + 4);
    ends_.reset(new std::size_t[endsCapacity_]);
    if (!marked_.empty()) marks_.reset(new std::size_t[endsCapacity_]);
  }
  if (!marked_.empty() && !marks_) marks_.reset(new std::size_t[endsCapacity_]);
  std::memset(block_.get() + filled_, 0, kPad);
  const ScanCounts counts =
      CleanAndListLineEnds(block_.get() + from, n, from, ends_.get(), marked_, marks_.get(), capitals_);
  count_ = counts.ends;
  markCount_ = counts.marks;
  k_ = m_ = 0;
}

bool CleanLineReader::holdsMarkedSlow() const {
  if (marked_.empty()) return true;
  for (const char c : marked_)
    if (line_.find(c) != std::string_view::npos) return true;
  return capitals_ && std::any_of(line_.begin(), line_.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

void CleanLineReader::refill() {
  if (fd_ < 0) {
    eof_ = true;
    return;
  }
  // Every listed end was taken: what follows the last one is a line begun and not
  // ended, which goes to the front of the other block. A CR that was the last byte
  // read ended a line, and an LF at the start of the next read belongs to it.
  const std::size_t tail = filled_ - pos_;
  const bool crAtEnd = tail == 0 && filled_ > 0 && block_[filled_ - 1] == '\r';
  // The line shown lies in this block, which stays as it is; but when no line ended
  // in the last read, it lies in the other, about to be read over.
  if (within(line_, other_.get(), otherCapacity_)) {
    kept_.assign(line_);
    line_ = kept_;
    inBlock_ = false;
  }
  reserve(other_, otherCapacity_, std::max(kChunk, 2 * tail));
  if (tail != 0) std::memcpy(other_.get(), block_.get() + pos_, tail);
  std::swap(block_, other_);
  std::swap(capacity_, otherCapacity_);
  pos_ = 0;
  filled_ = tail;
  ssize_t n = 0;
  do {
    n = ::read(fd_, block_.get() + filled_, capacity_ - filled_);
  } while (n < 0 && errno == EINTR);
  if (n < 0) ThrowSystemError(errno, path_);
  if (n == 0) {
    ::close(fd_);
    fd_ = -1;
    eof_ = true;
  }
  filled_ += static_cast<std::size_t>(n);
  if (crAtEnd && filled_ != 0 && block_[0] == '\n') pos_ = 1;
  // The line begun in the last block is scanned again with the new bytes: it holds
  // no line end, and cleaning it twice changes nothing, but its marks are listed anew.
  scan(pos_);
}

bool CleanLineReader::nextSlow() {
  for (;;) {
    if (k_ < count_) {
      take();
      return true;
    }
    if (unscanned_) {  // a text given in memory, all of it in the block
      unscanned_ = false;
      eof_ = true;
      scan(0);
      continue;
    }
    if (eof_) {
      if (pos_ >= filled_) return false;
      // A last line without a line end.
      prev_ = line_;
      line_ = std::string_view(block_.get() + pos_, filled_ - pos_);
      inBlock_ = true;
      pos_ = filled_;
      return true;
    }
    refill();
  }
}

}  // namespace zv
