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

std::size_t FindLineEnd(const char* p, const char* end) {
  const char* q = p;
#if defined(__SSE2__)
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i cr = _mm_set1_epi8('\r');
  for (; end - q >= 16; q += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(q));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, lf), _mm_cmpeq_epi8(v, cr))));
    if (mask != 0) return static_cast<std::size_t>(q - p) + static_cast<std::size_t>(__builtin_ctz(mask));
  }
#endif
  for (; q < end; ++q)
    if (*q == '\n' || *q == '\r') break;
  return static_cast<std::size_t>(q - p);
}

RecordBlockReader::RecordBlockReader(const std::string& proFile, std::size_t limit)
    : path_(proFile), limit_(std::max(limit, kFirstBuffer)) {
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
  buf_.resize(kFirstBuffer);
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
  if (grow && len_ == buf_.size()) {
    if (buf_.size() >= limit_) return false;
    buf_.resize(std::min(buf_.size() * 2, limit_));
  }
  while (len_ < buf_.size() && !eof_) {
    const ssize_t n = ::pread(fd_, buf_.data() + len_, buf_.size() - len_, static_cast<off_t>(pos_ + static_cast<int64_t>(len_)));
    if (n < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path_);
    }
    if (n == 0) eof_ = true;
    len_ += static_cast<std::size_t>(n);
  }
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
    const char* end = buf_.data() + len_;
    const char* p = start;
    int32_t n = 0;
    bool crlf = true, more = false;
    std::size_t longest = 0, text = 0;
    block.spans.clear();
    while (n < lines) {
      if (p == end) {
        more = !eof_;  // past the end of the file the lines are empty
        break;
      }
      const std::size_t k = FindLineEnd(p, end);
      const char* q = p + k;
      if (q == end) {
        if (!eof_) {
          more = true;
          break;
        }
        p = end;  // a last line without its end
        crlf = false;
      } else if (*q == '\r') {
        if (q + 1 == end && !eof_) {
          more = true;  // an LF may follow in the next read
          break;
        }
        if (q + 1 < end && q[1] == '\n') {
          p = q + 2;
        } else {
          p = q + 1;
          crlf = false;
        }
      } else {
        p = q + 1;
        crlf = false;
      }
      block.spans.push_back({static_cast<uint32_t>(q - k - start), static_cast<uint32_t>(k)});
      ++n;
      text += k;
      longest = std::max(longest, k);
    }
    if (more) {
      // The buffer is made to begin at the record; when it already did, it grows.
      if (!refill(offset, grow)) return false;
      grow = true;
      continue;
    }
    block.bytes = std::string_view(start, static_cast<std::size_t>(p - start));
    block.lines = lines;
    block.fileLines = n;
    block.crlf = crlf;
    block.longest = longest;
    block.text = text;
    return true;
  }
}

}  // namespace zv
