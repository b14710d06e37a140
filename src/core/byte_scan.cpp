// Sixteen-byte scans with the compiler's generic vector types; plain loops elsewhere.
//
// A library search per character costs more than the search itself on the short lines
// of a capture, and a line is searched several times. These scans compare sixteen
// bytes at once without depending on any one processor's instruction set.
#include "core/byte_scan.h"

#include <cstring>

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

Bytes16 splat(char c) { return Bytes16{} + static_cast<unsigned char>(c); }

// Offset of the first set lane of a comparison mask, or kWidth.
std::size_t firstSet(Mask16 mask) {
  uint64_t half[2];
  std::memcpy(half, &mask, kWidth);
  if (half[0] != 0) return static_cast<std::size_t>(__builtin_ctzll(half[0]) / 8);
  if (half[1] != 0) return 8 + static_cast<std::size_t>(__builtin_ctzll(half[1]) / 8);
  return kWidth;
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
  // before the eight lanes of a half could sum past 255.
  constexpr int kBlocksPerSum = 31;
  const char* p = text.data();
  const std::size_t n = text.size();
  const Bytes16 b0 = splat(bytes[0]), b1 = splat(bytes[1]), b2 = splat(bytes[2]), b3 = splat(bytes[3]);
  std::array<uint32_t, 4> counts{};
  Bytes16 c0{}, c1{}, c2{}, c3{};
  int blocks = 0;
  auto add = [&](Bytes16 v) {
    c0 -= reinterpret_cast<Bytes16>(v == b0);  // a hit is -1 in its lane
    c1 -= reinterpret_cast<Bytes16>(v == b1);
    c2 -= reinterpret_cast<Bytes16>(v == b2);
    c3 -= reinterpret_cast<Bytes16>(v == b3);
  };
  auto sum = [&] {
    counts[0] += laneSum(c0);
    counts[1] += laneSum(c1);
    counts[2] += laneSum(c2);
    counts[3] += laneSum(c3);
    c0 = c1 = c2 = c3 = Bytes16{};
    blocks = 0;
  };
  std::size_t i = 0;
  for (; i + kWidth <= n; i += kWidth) {
    add(load(p + i));
    if (++blocks == kBlocksPerSum) sum();
  }
  if (i < n) {
    // The tail, padded with character 0; a sought character 0 is corrected below.
    char tail[kWidth] = {};
    std::memcpy(tail, p + i, n - i);
    add(load(tail));
  }
  sum();
  for (std::size_t k = 0; k < 4; ++k)
    if (bytes[k] == '\0' && i < n) counts[k] -= static_cast<uint32_t>(kWidth - (n - i));
  return counts;
}

void CleanLine(std::string& text) {
  char* p = text.data();
  const std::size_t n = text.size();
  const Bytes16 high = splat('\x7f');
  const Bytes16 space = splat(' ');
  std::size_t i = 0;
  for (; i + kWidth <= n; i += kWidth) {
    Bytes16 v = load(p + i) & high;
    v &= reinterpret_cast<Bytes16>(v >= space);  // a control character becomes 0
    std::memcpy(p + i, &v, kWidth);
  }
  for (; i < n; ++i) {
    const auto c = static_cast<unsigned char>(p[i] & 0x7f);
    p[i] = static_cast<char>(c < 32 ? 0 : c);
  }
}

#else

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
