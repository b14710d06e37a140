// Sixteen-byte scans with the compiler's generic vector types; plain loops elsewhere.
//
// A library search per character costs more than the search itself on the short lines
// of a capture, and a line is searched several times. These scans compare sixteen
// bytes at once without depending on any one processor's instruction set.
#include "core/byte_scan.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zv {

#if defined(__GNUC__) && defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__

namespace {

using Bytes16 = unsigned char __attribute__((vector_size(16)));
using Mask16 = signed char __attribute__((vector_size(16)));
constexpr std::size_t kWidth = 16;

Bytes16 load(const char* p) {
  Bytes16 v;
  std::memcpy(&v, p, kWidth);
  return v;
}

uint64_t load8(const char* p) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  return v;
}

uint32_t load4(const char* p) {
  uint32_t v;
  std::memcpy(&v, p, 4);
  return v;
}

// The `t` bytes at p (0 < t < 16) in the low lanes, character 0 in the others: built
// from overlapping loads inside the text, without copying the bytes to memory first
// (a copy and a wide load of it stall the processor longer than the whole count).
Bytes16 loadTail(const char* p, std::size_t t) {
  uint64_t low = 0, high = 0;
  if (t >= 8) {
    low = load8(p);
    high = t == 8 ? 0 : load8(p + t - 8) >> (8 * (16 - t));
  } else if (t >= 4) {
    low = load4(p) | ((static_cast<uint64_t>(load4(p + t - 4)) >> (8 * (8 - t))) << 32);
  } else {
    for (std::size_t k = 0; k < t; ++k) low |= static_cast<uint64_t>(static_cast<unsigned char>(p[k])) << (8 * k);
  }
  // Put together in registers: two 8-byte stores read back as one 16-byte load would
  // stall as well.
  using Words2 = uint64_t __attribute__((vector_size(16)));
  return reinterpret_cast<Bytes16>(Words2{low, high});
}

Bytes16 splat(char c) { return Bytes16{} + static_cast<unsigned char>(c); }

// Offset of the first set lane of a comparison mask, or kWidth. On x86-64 the lanes'
// top bits come out as one number in one instruction.
std::size_t firstSet(Mask16 mask) {
#if defined(__SSE2__)
  const int bits = _mm_movemask_epi8(reinterpret_cast<__m128i>(mask));
  return bits == 0 ? kWidth : static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(bits)));
#else
  uint64_t half[2];
  std::memcpy(half, &mask, kWidth);
  if (half[0] != 0) return static_cast<std::size_t>(__builtin_ctzll(half[0]) / 8);
  if (half[1] != 0) return 8 + static_cast<std::size_t>(__builtin_ctzll(half[1]) / 8);
  return kWidth;
#endif
}

// Sum of the lanes of a per-lane count whose every half sums to at most 255: a
// multiplication adds the eight bytes of each half into its top byte.
uint32_t laneSum(Bytes16 v) {
  constexpr uint64_t kOnes = 0x0101010101010101ULL;
  uint64_t half[2];
  std::memcpy(half, &v, kWidth);
  return static_cast<uint32_t>((half[0] * kOnes) >> 56) + static_cast<uint32_t>((half[1] * kOnes) >> 56);
}

}  // namespace

std::size_t FindCrOrLf(std::string_view text) {
  const char* p = text.data();
  const std::size_t n = text.size();
  const Bytes16 cr = splat('\r');
  const Bytes16 lf = splat('\n');
  std::size_t i = 0;
  for (; i + kWidth <= n; i += kWidth) {
    const Bytes16 v = load(p + i);
    const std::size_t at = firstSet((v == cr) | (v == lf));
    if (at != kWidth) return i + at;
  }
  for (; i < n; ++i)
    if (p[i] == '\r' || p[i] == '\n') return i;
  return n;
}

std::array<uint32_t, 4> CountBytes(std::string_view text, std::array<char, 4> bytes) {
  // Lane counts go up by one per block, and are summed and emptied every 31 blocks,
  // before the eight lanes of a half could sum past 255. (Written out, without
  // helpers taking the counts by reference, so that they stay in registers.)
  constexpr std::size_t kBlocksPerSum = 31;
  const char* p = text.data();
  const std::size_t n = text.size();
  const Bytes16 b0 = splat(bytes[0]), b1 = splat(bytes[1]), b2 = splat(bytes[2]), b3 = splat(bytes[3]);
  std::array<uint32_t, 4> counts{};
  std::size_t i = 0;
  while (i + kWidth <= n) {
    Bytes16 c0{}, c1{}, c2{}, c3{};
    const std::size_t stop = std::min(n - kWidth + 1, i + kBlocksPerSum * kWidth);
    for (; i < stop; i += kWidth) {
      const Bytes16 v = load(p + i);
      c0 -= reinterpret_cast<Bytes16>(v == b0);  // a hit is -1 in its lane
      c1 -= reinterpret_cast<Bytes16>(v == b1);
      c2 -= reinterpret_cast<Bytes16>(v == b2);
      c3 -= reinterpret_cast<Bytes16>(v == b3);
    }
    counts[0] += laneSum(c0);
    counts[1] += laneSum(c1);
    counts[2] += laneSum(c2);
    counts[3] += laneSum(c3);
  }
  if (i < n) {
    // The tail, padded with character 0; a sought character 0 is corrected below.
    const Bytes16 v = loadTail(p + i, n - i);
    const auto padding = static_cast<uint32_t>(kWidth - (n - i));
    counts[0] += laneSum(-reinterpret_cast<Bytes16>(v == b0)) - (bytes[0] == '\0' ? padding : 0u);
    counts[1] += laneSum(-reinterpret_cast<Bytes16>(v == b1)) - (bytes[1] == '\0' ? padding : 0u);
    counts[2] += laneSum(-reinterpret_cast<Bytes16>(v == b2)) - (bytes[2] == '\0' ? padding : 0u);
    counts[3] += laneSum(-reinterpret_cast<Bytes16>(v == b3)) - (bytes[3] == '\0' ? padding : 0u);
  }
  return counts;
}

int64_t CountLineEnds(std::string_view text) {
  // As in CountBytes: lane counts summed and emptied every 31 blocks. A block is also
  // compared one byte further on, so that a CR with its LF behind it is seen as a pair.
  constexpr int kBlocksPerSum = 31;
  const char* p = text.data();
  const std::size_t n = text.size();
  const Bytes16 cr = splat('\r');
  const Bytes16 lf = splat('\n');
  int64_t ends = 0;
  Bytes16 endLanes{}, pairLanes{};
  int blocks = 0;
  std::size_t i = 0;
  for (; i + kWidth + 1 <= n; i += kWidth) {
    const Bytes16 v = load(p + i);
    const Bytes16 next = load(p + i + 1);
    const auto isCr = reinterpret_cast<Bytes16>(v == cr);
    endLanes -= isCr | reinterpret_cast<Bytes16>(v == lf);
    pairLanes -= isCr & reinterpret_cast<Bytes16>(next == lf);
    if (++blocks == kBlocksPerSum) {
      ends += static_cast<int64_t>(laneSum(endLanes)) - laneSum(pairLanes);
      endLanes = pairLanes = Bytes16{};
      blocks = 0;
    }
  }
  ends += static_cast<int64_t>(laneSum(endLanes)) - laneSum(pairLanes);
  for (; i < n; ++i) {
    if (p[i] == '\n') ++ends;
    if (p[i] == '\r') ends += i + 1 < n && p[i + 1] == '\n' ? 0 : 1;
  }
  return ends;
}

// One block cleaned: high bit off, control characters to 0.
Bytes16 cleanBlock(Bytes16 v) {
  v &= splat('\x7f');
  return v & reinterpret_cast<Bytes16>(v >= splat(' '));
}

void CleanLineInto(std::string& out, std::string_view raw) {
  const std::size_t n = raw.size();
  out.resize(n);
  const char* from = raw.data();
  char* to = out.data();
  if (n < kWidth) {
    for (std::size_t i = 0; i < n; ++i) {
      const auto c = static_cast<unsigned char>(from[i] & 0x7f);
      to[i] = static_cast<char>(c < 32 ? 0 : c);
    }
    return;
  }
  for (std::size_t i = 0; i + kWidth <= n; i += kWidth) {
    const Bytes16 v = cleanBlock(load(from + i));
    std::memcpy(to + i, &v, kWidth);
  }
  // The tail as the last sixteen bytes, which may overlap the block before: cleaning
  // a byte gives the same whichever block does it.
  const Bytes16 v = cleanBlock(load(from + n - kWidth));
  std::memcpy(to + n - kWidth, &v, kWidth);
}

void CleanLine(std::string& text) {
  char* p = text.data();
  const std::size_t n = text.size();
  if (n < kWidth) {
    for (std::size_t i = 0; i < n; ++i) {
      const auto c = static_cast<unsigned char>(p[i] & 0x7f);
      p[i] = static_cast<char>(c < 32 ? 0 : c);
    }
    return;
  }
  for (std::size_t i = 0; i + kWidth <= n; i += kWidth) {
    const Bytes16 v = cleanBlock(load(p + i));
    std::memcpy(p + i, &v, kWidth);
  }
  const Bytes16 v = cleanBlock(load(p + n - kWidth));  // cleaning twice changes nothing
  std::memcpy(p + n - kWidth, &v, kWidth);
}

#else

void CleanLineInto(std::string& out, std::string_view raw) {
  out.assign(raw);
  CleanLine(out);
}

int64_t CountLineEnds(std::string_view text) {
  int64_t ends = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') ++ends;
    if (text[i] == '\r') ends += i + 1 < text.size() && text[i + 1] == '\n' ? 0 : 1;
  }
  return ends;
}

void CleanLine(std::string& text) {
  for (char& ch : text) {
    const auto c = static_cast<unsigned char>(ch & 0x7f);
    ch = static_cast<char>(c < 32 ? 0 : c);
  }
}

std::size_t FindCrOrLf(std::string_view text) {
  const std::size_t at = text.find_first_of("\r\n");
  return at == std::string_view::npos ? text.size() : at;
}

std::array<uint32_t, 4> CountBytes(std::string_view text, std::array<char, 4> bytes) {
  std::array<uint32_t, 4> counts{};
  for (const char c : text)
    for (std::size_t k = 0; k < 4; ++k) counts[k] += c == bytes[k];
  return counts;
}

#endif

}  // namespace zv
