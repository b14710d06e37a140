// Whole-line record blocks from large sequential reads of a .PRO.
#include "analysis/record_blocks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/error.h"

namespace zv {

RecordBlockReader::RecordBlockReader(const std::string& proFile, std::size_t firstBuffer, std::size_t limit)
    : path_(proFile), limit_(std::max(limit, firstBuffer)) {
  fd_ = ::open(proFile.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) ThrowSystemError(errno, proFile);
  struct stat st {};
  if (::fstat(fd_, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd_);
    fd_ = -1;
    throw ZvError(err::kPathFileAccess, ErrorText(err::kPathFileAccess), proFile);
  }
  size_ = static_cast<int64_t>(st.st_size);
#ifdef POSIX_FADV_SEQUENTIAL
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
  buf_.resize(std::max<std::size_t>(firstBuffer, 1) + kSlack);
}

RecordBlockReader::~RecordBlockReader() {
  if (fd_ >= 0) ::close(fd_);
}

bool RecordBlockReader::refill(int64_t offset, bool grow) {
  if (offset >= pos_ && offset <= pos_ + static_cast<int64_t>(len_)) {
    const auto drop = static_cast<std::size_t>(offset - pos_);
    if (drop > 0) std::memmove(buf_.data(), buf_.data() + drop, len_ - drop);
    len_ -= drop;
  } else {
    len_ = 0;
    eof_ = false;
  }
  pos_ = offset;
  std::size_t capacity = buf_.size() - kSlack;
  if (grow && len_ == capacity) {
    if (capacity >= limit_) return false;
    capacity = std::min(capacity * 2, limit_);
    buf_.resize(capacity + kSlack);
  }
  while (len_ < capacity && !eof_) {
    const ssize_t n = ::pread(fd_, buf_.data() + len_, capacity - len_, static_cast<off_t>(pos_ + static_cast<int64_t>(len_)));
    if (n < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path_);
    }
    if (n == 0) eof_ = true;
    len_ += static_cast<std::size_t>(n);
  }
  return true;
}

namespace {

// Bits of the CRs and LFs among the 64 bytes from `p`, those from `avail` on cleared.
// Reads 64 bytes: the buffer has that much to spare after its end.
inline uint64_t lineEndBits(const char* p, std::size_t avail) {
  uint64_t bits = 0;
#if defined(__SSE2__)
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i cr = _mm_set1_epi8('\r');
  for (int i = 0; i < 4; ++i) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i));
    const auto m = static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, lf), _mm_cmpeq_epi8(v, cr))));
    bits |= static_cast<uint64_t>(m) << (16 * i);
  }
#else
  for (int i = 0; i < 64; ++i)
    if (p[i] == '\n' || p[i] == '\r') bits |= uint64_t{1} << i;
#endif
  if (avail < 64) bits &= (uint64_t{1} << avail) - 1;
  return bits;
}

}  // namespace

bool RecordBlockReader::readRaw(int64_t offset, std::size_t count, std::string_view& bytes) {
  if (offset < 0) throw ZvError(err::kInvalidCall, ErrorText(err::kInvalidCall), path_);
  bool grow = false;
  while (offset < pos_ || offset + static_cast<int64_t>(count) > pos_ + static_cast<int64_t>(len_)) {
    if (eof_ && offset >= pos_ && offset <= pos_ + static_cast<int64_t>(len_)) return false;
    if (!refill(offset, grow)) return false;
    grow = true;
  }
  bytes = std::string_view(buf_.data() + (offset - pos_), count);
  return true;
}

bool RecordBlockReader::read(int64_t offset, int32_t lines, RecordBlock& block) {
  if (offset < 0) throw ZvError(err::kInvalidCall, ErrorText(err::kInvalidCall), path_);
  if (offset < pos_ || offset > pos_ + static_cast<int64_t>(len_)) {
    pos_ = offset;
    len_ = 0;
    eof_ = false;
  }
  bool grow = false;
  for (;;) {
    const char* start = buf_.data() + (offset - pos_);
    const std::size_t avail = len_ - static_cast<std::size_t>(offset - pos_);
    int32_t n = 0;
    bool crlf = true, more = false;
    std::size_t longest = 0, text = 0, lineStart = 0;
    block.spans.clear();
    // The line ends are found 64 bytes at a time, as bits.
    std::size_t chunk = 0;
    uint64_t bits = 0;
    auto seekTo = [&](std::size_t at) {
      chunk = at & ~std::size_t{63};
      bits = chunk < avail ? lineEndBits(start + chunk, avail - chunk) & (~uint64_t{0} << (at - chunk)) : 0;
    };
    seekTo(0);
    while (n < lines) {
      if (lineStart == avail) {
        more = !eof_;  // past the end of the file the lines are empty
        break;
      }
      while (bits == 0 && chunk + 64 < avail) {
        chunk += 64;
        bits = lineEndBits(start + chunk, avail - chunk);
      }
      std::size_t next = avail;
      std::size_t q = avail;
      if (bits == 0) {
        if (!eof_) {
          more = true;
          break;
        }
        crlf = false;  // a last line without its end
      } else {
        q = chunk + static_cast<std::size_t>(__builtin_ctzll(bits));
        if (start[q] == '\r') {
          if (q + 1 == avail && !eof_) {
            more = true;  // an LF may follow in the next read
            break;
          }
          if (q + 1 < avail && start[q + 1] == '\n') {
            next = q + 2;
          } else {
            next = q + 1;
            crlf = false;
          }
        } else {
          next = q + 1;
          crlf = false;
        }
      }
      const std::size_t k = q - lineStart;
      block.spans.push_back({static_cast<uint32_t>(lineStart), static_cast<uint32_t>(k)});
      ++n;
      text += k;
      longest = std::max(longest, k);
      lineStart = next;
      if (next - chunk < 64)
        bits &= ~uint64_t{0} << (next - chunk);
      else
        seekTo(next);
    }
    if (more) {
      // The buffer is made to begin at the record; when it already did, it grows.
      if (!refill(offset, grow)) return false;
      grow = true;
      continue;
    }
    block.bytes = std::string_view(start, lineStart);
    block.lines = lines;
    block.fileLines = n;
    block.crlf = crlf;
    block.longest = longest;
    block.text = text;
    return true;
  }
}

}  // namespace zv
