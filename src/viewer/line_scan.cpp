// Line-end masks with SSE2 where the processor has it (every x86-64), bytewise elsewhere.
#include "viewer/line_scan.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zv::viewer {

namespace {

// Bits of the LFs and of the CRs among the 64 bytes at `p`.
struct CrLfBits {
  uint64_t lf = 0;
  uint64_t cr = 0;
};

CrLfBits crLfBits(const char* p) {
  CrLfBits b;
#if defined(__SSE2__)
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i cr = _mm_set1_epi8('\r');
  for (int j = 0; j < 4; ++j) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * j));
    b.lf |= static_cast<uint64_t>(static_cast<uint16_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, lf)))) << (16 * j);
    b.cr |= static_cast<uint64_t>(static_cast<uint16_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, cr)))) << (16 * j);
  }
#else
  for (int i = 0; i < 64; ++i) {
    b.lf |= static_cast<uint64_t>(p[i] == '\n') << i;
    b.cr |= static_cast<uint64_t>(p[i] == '\r') << i;
  }
#endif
  return b;
}

// The position of the k-th set bit (k from 1) of a mask that has at least k.
int nthBit(uint64_t mask, int64_t k) {
  for (int64_t i = 1; i < k; ++i) mask &= mask - 1;
  return __builtin_ctzll(mask);
}

}  // namespace

uint64_t LineEndMask64(const char* p, bool nextIsLf) {
  const CrLfBits b = crLfBits(p);
  // A CR ends a line only when no LF follows it; CR LF ends at the LF.
  const uint64_t lfBehind = (b.lf >> 1) | (static_cast<uint64_t>(nextIsLf) << 63);
  return b.lf | (b.cr & ~lfBehind);
}

uint64_t LineEndMaskTail(const char* p, std::size_t n, int next) {
  if (n == 0) return 0;
  char block[64] = {};
  std::memcpy(block, p, n);
  if (n < 64 && next != kNoByte) block[n] = static_cast<char>(next);
  const uint64_t mask = LineEndMask64(block, n == 64 && next == '\n');
  return n == 64 ? mask : mask & ((uint64_t{1} << n) - 1);
}

int64_t CountLineEnds(const char* p, std::size_t n, int next) {
  int64_t ends = 0;
  std::size_t i = 0;
  for (; i + 64 <= n; i += 64) {
    const bool nextIsLf = i + 64 < n ? p[i + 64] == '\n' : next == '\n';
    ends += __builtin_popcountll(LineEndMask64(p + i, nextIsLf));
  }
  return ends + __builtin_popcountll(LineEndMaskTail(p + i, n - i, next));
}

int64_t SkipLineEnds(const char* p, std::size_t n, int next, int64_t count) {
  std::size_t i = 0;
  for (; i < n; i += 64) {
    const std::size_t width = n - i < 64 ? n - i : 64;
    uint64_t mask;
    if (width == 64) {
      const bool nextIsLf = i + 64 < n ? p[i + 64] == '\n' : next == '\n';
      mask = LineEndMask64(p + i, nextIsLf);
    } else {
      mask = LineEndMaskTail(p + i, width, next);
    }
    const int ends = __builtin_popcountll(mask);
    if (ends >= count) return static_cast<int64_t>(i) + nthBit(mask, count) + 1;
    count -= ends;
  }
  return -1;
}

int64_t FindLineEnd(const char* p, std::size_t n) {
  std::size_t i = 0;
  for (; i + 64 <= n; i += 64) {
    const CrLfBits b = crLfBits(p + i);
    const uint64_t any = b.lf | b.cr;
    if (any != 0) return static_cast<int64_t>(i) + __builtin_ctzll(any);
  }
  for (; i < n; ++i)
    if (p[i] == '\n' || p[i] == '\r') return static_cast<int64_t>(i);
  return -1;
}

}  // namespace zv::viewer
