// Large blocks of whole lines from a text file.
#include "analysis/line_blocks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/error.h"

namespace zv {

LineBlocks::LineBlocks(const std::string& path, std::size_t block)
    : path_(path), buf_(std::max<std::size_t>(block, 1) + kSlack) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) ThrowSystemError(errno, path);
#ifdef POSIX_FADV_SEQUENTIAL
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
}

LineBlocks::~LineBlocks() {
  if (fd_ >= 0) ::close(fd_);
}

std::string_view LineBlocks::next() {
  if (used_ > 0) {
    std::memmove(buf_.data(), buf_.data() + used_, held_ - used_);
    held_ -= used_;
    used_ = 0;
  }
  for (;;) {
    while (held_ < capacity() && !eof_) {
      const ssize_t n = ::read(fd_, buf_.data() + held_, capacity() - held_);
      if (n < 0) {
        if (errno == EINTR) continue;
        ThrowSystemError(errno, path_);
      }
      if (n == 0) eof_ = true;
      held_ += static_cast<std::size_t>(n);
    }
    // Up to the last line end; a CR at the very end waits for a possible LF.
    std::size_t end = held_;
    if (!eof_) {
      std::size_t i = held_;
      if (i > 0 && buf_[i - 1] == '\r') --i;
      while (i > 0 && buf_[i - 1] != '\n' && buf_[i - 1] != '\r') --i;
      end = i;
    }
    if (end > 0 || held_ == 0) {
      used_ = end;
      return std::string_view(buf_.data(), end);
    }
    buf_.resize(capacity() * 2 + kSlack);  // one line fills the buffer
  }
}

std::size_t LinesIn(std::string_view text, std::size_t most, std::size_t& cut) {
  const char* p = text.data();
  const std::size_t n = text.size();
  std::size_t ends = 0, i = 0;
#if defined(__SSE2__)
  // Each byte lane counts its line ends, a CR LF pair once, and is emptied into the
  // total before it can pass 255.
  const __m128i lf = _mm_set1_epi8('\n'), cr = _mm_set1_epi8('\r'), zero = _mm_setzero_si128();
  __m128i lanes = zero;
  int rounds = 0;
  auto empty = [&] {
    const __m128i sums = _mm_sad_epu8(lanes, zero);
    ends += static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_add_epi64(sums, _mm_srli_si128(sums, 8))));
    lanes = zero;
    rounds = 0;
  };
  for (; i + 17 <= n; i += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    const __m128i after = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i + 1));
    const __m128i isCr = _mm_cmpeq_epi8(v, cr);
    const __m128i all = _mm_or_si128(_mm_cmpeq_epi8(v, lf), isCr);
    const __m128i pairs = _mm_and_si128(isCr, _mm_cmpeq_epi8(after, lf));
    lanes = _mm_add_epi8(_mm_sub_epi8(lanes, all), pairs);
    if (++rounds == 255) empty();
  }
  empty();
#endif
  for (; i < n; ++i)
    if (p[i] == '\n' || (p[i] == '\r' && !(i + 1 < n && p[i + 1] == '\n'))) ++ends;
  const std::size_t lines = ends + (n > 0 && p[n - 1] != '\n' && p[n - 1] != '\r' ? 1 : 0);
  cut = n;
  if (lines <= most) return lines;
  std::size_t count = 0;
  for (i = 0; i < n && count < most; ++count) {
    while (i < n && p[i] != '\n' && p[i] != '\r') ++i;
    if (i < n && p[i++] == '\r' && i < n && p[i] == '\n') ++i;
  }
  cut = i;
  return count;
}

}  // namespace zv
