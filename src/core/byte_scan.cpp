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
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
#include <immintrin.h>
#define ZV_WIDE_SCANS 1
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

// The top bit of each lane, lane k as bit k.
uint32_t laneBits(Mask16 mask) {
#if defined(__SSE2__)
  return static_cast<uint32_t>(_mm_movemask_epi8(reinterpret_cast<__m128i>(mask)));
#else
  uint32_t bits = 0;
  for (std::size_t k = 0; k < kWidth; ++k) bits |= (mask[k] < 0 ? 1u : 0u) << k;
  return bits;
#endif
}

void store8(char* p, uint64_t v) { std::memcpy(p, &v, 8); }
void store4(char* p, uint32_t v) { std::memcpy(p, &v, 4); }

// The first `t` lanes of `v` (0 < t < 16) stored at p, and nothing past p + t: the
// mirror of loadTail, with overlapping stores.
void storeTail(char* p, Bytes16 v, std::size_t t) {
  using Words2 = uint64_t __attribute__((vector_size(16)));
  const auto words = reinterpret_cast<Words2>(v);
  const uint64_t low = words[0], high = words[1];
  if (t >= 8) {
    // Lanes t - 8 to t - 1: the 128 bits shifted down by t - 8 bytes.
    const std::size_t shift = 8 * (t - 8);
    store8(p + t - 8, shift == 0 ? low : (low >> shift) | (high << (64 - shift)));
    store8(p, low);
  } else if (t >= 4) {
    store4(p + t - 4, static_cast<uint32_t>(low >> (8 * (t - 4))));
    store4(p, static_cast<uint32_t>(low));
  } else {
    for (std::size_t k = 0; k < t; ++k) p[k] = static_cast<char>(low >> (8 * k));
  }
}

// Set bits of a word, without the library call the compiler makes for it when the
// processor may lack an instruction of its own.
std::size_t popCount(uint64_t v) {
  v = v - ((v >> 1) & 0x5555555555555555ULL);
  v = (v & 0x3333333333333333ULL) + ((v >> 2) & 0x3333333333333333ULL);
  v = (v + (v >> 4)) & 0x0F0F0F0F0F0F0F0FULL;
  return static_cast<std::size_t>((v * 0x0101010101010101ULL) >> 56);
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

uint64_t BytesInRange64(const char* p, std::size_t n, char lo, char hi, char also) {
  const Bytes16 low = splat(lo);
  const Bytes16 span = splat(static_cast<char>(hi - lo));
  const Bytes16 other = splat(also);
  // In the range when the distance above `lo` is no more than the range's width.
  const auto hits = [&](Bytes16 v) { return static_cast<uint64_t>(laneBits(((v - low) <= span) | (v == other))); };
  n = std::min<std::size_t>(n, 64);
  uint64_t bits = 0;
  std::size_t i = 0;
  for (; i + kWidth <= n; i += kWidth) bits |= hits(load(p + i)) << i;
  if (i < n) bits |= (hits(loadTail(p + i, n - i)) & ((uint64_t{1} << (n - i)) - 1)) << i;
  return bits;
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

#if defined(ZV_WIDE_SCANS)
namespace {

bool wideAvailable() {
  __builtin_cpu_init();  // the processor's features may not be known yet while statics are made
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("popcnt") && __builtin_cpu_supports("bmi");
}

// Whether the 32-byte ways below are taken.
bool gWideScans = wideAvailable();

int64_t countLineEndsWide(std::string_view text);

}  // namespace
#endif

int64_t CountLineEnds(std::string_view text) {
#if defined(ZV_WIDE_SCANS)
  if (gWideScans) return countLineEndsWide(text);
#endif
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

namespace {

// The offsets of the set bits of `bits` to `out` (the word's first byte at `from`):
// `fixed` entries written whether there are so many set bits or not (a missing one
// writes a stray entry that the next word overwrites), a loop for the rest. Returns
// how many there were.
template <int fixed>
std::size_t listBits(uint64_t bits, std::size_t from, std::size_t* out) {
  const std::size_t found = popCount(bits);
  for (int k = 0; k < fixed; ++k) {
    out[k] = from + static_cast<std::size_t>(bits ? __builtin_ctzll(bits) : 0);
    bits &= bits - 1;
  }
  for (std::size_t k = fixed; k < found; ++k) {
    out[k] = from + static_cast<std::size_t>(__builtin_ctzll(bits));
    bits &= bits - 1;
  }
  return found;
}

// Sixty-four bytes to a word of line-end bits, in four blocks; `carry` is a CR in the
// last byte of the word before, whose LF in the first byte of this one ends nothing.
// A word holds a line end or two, more in a run of empty lines; a marked byte is rarer.
template <bool withMarks, bool withCapitals = false>
ScanCounts cleanAndList(char* text, std::size_t n, std::size_t base, std::size_t* ends, std::string_view marked,
                        std::size_t* marks) {
  constexpr std::size_t kWord = 64;
  const Bytes16 crs = splat('\r');
  const Bytes16 lfs = splat('\n');
  Bytes16 m[4] = {};
  if constexpr (withMarks)
    for (std::size_t k = 0; k < 4; ++k) m[k] = splat(marked[k < marked.size() ? k : 0]);
  ScanCounts counts;
  uint64_t carry = 0;
  for (std::size_t at = 0; at < n; at += kWord) {
    uint64_t cr = 0, lf = 0, hits = 0;
    for (std::size_t b = 0; b < kWord / kWidth; ++b) {
      char* p = text + at + b * kWidth;
      const Bytes16 v = load(p);
      const Mask16 isCr = v == crs;
      const Mask16 isLf = v == lfs;
      cr |= static_cast<uint64_t>(laneBits(isCr)) << (b * kWidth);
      lf |= static_cast<uint64_t>(laneBits(isLf)) << (b * kWidth);
      const Bytes16 cleaned = cleanBlock(v) | (v & reinterpret_cast<Bytes16>(isCr | isLf));
      std::memcpy(p, &cleaned, kWidth);
      if constexpr (withMarks) {
        Mask16 hit = (cleaned == m[0]) | (cleaned == m[1]) | (cleaned == m[2]) | (cleaned == m[3]);
        if constexpr (withCapitals) hit |= (cleaned - splat('A')) <= splat('Z' - 'A');
        hits |= static_cast<uint64_t>(laneBits(hit)) << (b * kWidth);
      }
    }
    const uint64_t bits = cr | (lf & ~((cr << 1) | carry));
    carry = cr >> 63;
    counts.ends += listBits<4>(bits, base + at, ends + counts.ends);
    if constexpr (withMarks)
      if (hits) counts.marks += listBits<1>(hits, base + at, marks + counts.marks);
  }
  return counts;
}

#if defined(ZV_WIDE_SCANS)

// The same with the 32-byte instructions of processors that have them, chosen when
// the program runs: two blocks to a word, and the bit counts in one instruction.
#define ZV_WIDE __attribute__((target("avx2,popcnt,bmi")))

template <int fixed>
ZV_WIDE inline std::size_t listBitsWide(uint64_t bits, std::size_t from, std::size_t* out) {
  const auto found = static_cast<std::size_t>(__builtin_popcountll(bits));
  for (int k = 0; k < fixed; ++k) {
    out[k] = from + static_cast<std::size_t>(__builtin_ia32_tzcnt_u64(bits));  // 64 for no bit: a stray entry
    bits &= bits - 1;
  }
  for (std::size_t k = fixed; k < found; ++k) {
    out[k] = from + static_cast<std::size_t>(__builtin_ctzll(bits));
    bits &= bits - 1;
  }
  return found;
}

template <bool withMarks, bool withCapitals = false>
ZV_WIDE ScanCounts cleanAndListWide(char* text, std::size_t n, std::size_t base, std::size_t* ends,
                                    std::string_view marked, std::size_t* marks) {
  using Bytes32 = unsigned char __attribute__((vector_size(32)));
  using Mask32 = signed char __attribute__((vector_size(32)));
  constexpr std::size_t kWord = 64;
  constexpr std::size_t kWide = 32;
  const Bytes32 crs = Bytes32{} + static_cast<unsigned char>('\r');
  const Bytes32 lfs = Bytes32{} + static_cast<unsigned char>('\n');
  const Bytes32 low7 = Bytes32{} + static_cast<unsigned char>(0x7f);
  const Bytes32 blanks = Bytes32{} + static_cast<unsigned char>(' ');
  Bytes32 m[4] = {};
  if constexpr (withMarks)
    for (std::size_t k = 0; k < 4; ++k) m[k] = Bytes32{} + static_cast<unsigned char>(marked[k < marked.size() ? k : 0]);
  const auto bitsOf = [](Mask32 mask) __attribute__((target("avx2"))) {
    return static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(reinterpret_cast<__m256i>(mask))));
  };
  ScanCounts counts;
  uint64_t carry = 0;
  for (std::size_t at = 0; at < n; at += kWord) {
    uint64_t cr = 0, lf = 0, hits = 0;
    for (std::size_t b = 0; b < kWord / kWide; ++b) {
      char* p = text + at + b * kWide;
      Bytes32 v;
      std::memcpy(&v, p, kWide);
      const Mask32 isCr = v == crs;
      const Mask32 isLf = v == lfs;
      cr |= bitsOf(isCr) << (b * kWide);
      lf |= bitsOf(isLf) << (b * kWide);
      const Bytes32 low = v & low7;
      const Bytes32 cleaned = (low & reinterpret_cast<Bytes32>(low >= blanks)) | (v & reinterpret_cast<Bytes32>(isCr | isLf));
      std::memcpy(p, &cleaned, kWide);
      if constexpr (withMarks) {
        Mask32 hit = (cleaned == m[0]) | (cleaned == m[1]) | (cleaned == m[2]) | (cleaned == m[3]);
        if constexpr (withCapitals)
          hit |= (cleaned - (Bytes32{} + static_cast<unsigned char>('A'))) <= (Bytes32{} + static_cast<unsigned char>('Z' - 'A'));
        hits |= bitsOf(hit) << (b * kWide);
      }
    }
    const uint64_t bits = cr | (lf & ~((cr << 1) | carry));
    carry = cr >> 63;
    counts.ends += listBitsWide<4>(bits, base + at, ends + counts.ends);
    if constexpr (withMarks)
      if (hits) counts.marks += listBitsWide<1>(hits, base + at, marks + counts.marks);
  }
  return counts;
}

// Line ends 64 bytes at a time, as the list above finds them: every CR, and every LF
// that does not follow a CR within the text; the last bytes one at a time.
ZV_WIDE int64_t countLineEndsWide(std::string_view text) {
  using Bytes32 = unsigned char __attribute__((vector_size(32)));
  using Mask32 = signed char __attribute__((vector_size(32)));
  constexpr std::size_t kWord = 64;
  const char* p = text.data();
  const std::size_t n = text.size();
  const Bytes32 crs = Bytes32{} + static_cast<unsigned char>('\r');
  const Bytes32 lfs = Bytes32{} + static_cast<unsigned char>('\n');
  const auto bitsOf = [](Mask32 mask) __attribute__((target("avx2"))) {
    return static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(reinterpret_cast<__m256i>(mask))));
  };
  int64_t ends = 0;
  uint64_t carry = 0;
  std::size_t i = 0;
  for (; i + kWord <= n; i += kWord) {
    Bytes32 a, b;
    std::memcpy(&a, p + i, 32);
    std::memcpy(&b, p + i + 32, 32);
    const uint64_t cr = bitsOf(a == crs) | (bitsOf(b == crs) << 32);
    const uint64_t lf = bitsOf(a == lfs) | (bitsOf(b == lfs) << 32);
    ends += __builtin_popcountll(cr | (lf & ~((cr << 1) | carry)));
    carry = cr >> 63;
  }
  for (; i < n; ++i) {
    if (p[i] == '\r') ++ends;
    if (p[i] == '\n' && !(i > 0 && p[i - 1] == '\r')) ++ends;
  }
  return ends;
}



#endif

}  // namespace

ScanCounts CleanAndListLineEnds(char* text, std::size_t n, std::size_t base, std::size_t* ends,
                                std::string_view marked, std::size_t* marks, bool capitals) {
#if defined(ZV_WIDE_SCANS)
  if (gWideScans)
    return capitals        ? cleanAndListWide<true, true>(text, n, base, ends, marked, marks)
           : marked.empty() ? cleanAndListWide<false>(text, n, base, ends, marked, marks)
                            : cleanAndListWide<true>(text, n, base, ends, marked, marks);
#endif
  return capitals        ? cleanAndList<true, true>(text, n, base, ends, marked, marks)
         : marked.empty() ? cleanAndList<false>(text, n, base, ends, marked, marks)
                          : cleanAndList<true>(text, n, base, ends, marked, marks);
}

bool UseWideScans(bool use) {
#if defined(ZV_WIDE_SCANS)
  const bool before = gWideScans;
  gWideScans = use && wideAvailable();
  return before;
#else
  (void)use;
  return false;
#endif
}

bool HoldsText(std::string_view text, std::string_view part) {
  const std::size_t n = text.size();
  const std::size_t m = part.size();
  if (m == 0) return true;
  if (m > n) return false;
  const char* p = text.data();
  if (m == 1) return std::memchr(p, part[0], n) != nullptr;
  const Bytes16 first = splat(part[0]);
  const Bytes16 last = splat(part[m - 1]);
  // The places a match may begin: 0 to n - m.
  const std::size_t places = n - m + 1;
  const auto matchesAt = [&](std::size_t at, uint32_t candidates) {
    for (; candidates != 0; candidates &= candidates - 1) {
      const std::size_t k = at + static_cast<std::size_t>(__builtin_ctz(candidates));
      if (std::memcmp(p + k + 1, part.data() + 1, m - 2) == 0) return true;
    }
    return false;
  };
  if (places < kWidth) {
    // Fewer places than a block: the first and last characters of each, loaded
    // without reading past the text, and only the lanes that are places.
    const Bytes16 heads = loadTail(p, places);
    const Bytes16 tails = loadTail(p + m - 1, places);
    const uint32_t candidates = laneBits((heads == first) & (tails == last)) & ((1u << places) - 1);
    return matchesAt(0, candidates);
  }
  std::size_t at = 0;
  for (; at + kWidth <= places; at += kWidth) {
    const uint32_t candidates = laneBits((load(p + at) == first) & (load(p + at + m - 1) == last));
    if (candidates != 0 && matchesAt(at, candidates)) return true;
  }
  if (at == places) return false;
  // The last places, as a block that ends with the last place (it overlaps places
  // already tried, which cannot have matched).
  at = places - kWidth;
  return matchesAt(at, laneBits((load(p + at) == first) & (load(p + at + m - 1) == last)));
}

void CleanLineInto(std::string& out, std::string_view raw) {
  const std::size_t n = raw.size();
  out.resize(n);
  const char* from = raw.data();
  char* to = out.data();
  if (n < kWidth) {
    // Most lines of a capture are short: loaded and stored with a few overlapping
    // words rather than byte by byte.
    if (n != 0) storeTail(to, cleanBlock(loadTail(from, n)), n);
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

ScanCounts CleanAndListLineEnds(char* text, std::size_t n, std::size_t base, std::size_t* ends,
                                std::string_view marked, std::size_t* marks, bool capitals) {
  ScanCounts counts;
  for (std::size_t i = 0; i < n; ++i) {
    const char c = text[i];
    if (c == '\r' || (c == '\n' && !(i > 0 && text[i - 1] == '\r'))) ends[counts.ends++] = base + i;
    if (c == '\r' || c == '\n') continue;
    const auto low = static_cast<unsigned char>(c & 0x7f);
    text[i] = static_cast<char>(low < 32 ? 0 : low);
    if ((!marked.empty() && marked.find(text[i]) != std::string_view::npos) ||
        (capitals && text[i] >= 'A' && text[i] <= 'Z'))
      marks[counts.marks++] = base + i;
  }
  return counts;
}

bool HoldsText(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

uint64_t BytesInRange64(const char* p, std::size_t n, char lo, char hi, char also) {
  uint64_t bits = 0;
  for (std::size_t i = 0; i < n && i < 64; ++i) {
    const auto c = static_cast<unsigned char>(p[i]);
    if ((c >= static_cast<unsigned char>(lo) && c <= static_cast<unsigned char>(hi)) || p[i] == also)
      bits |= uint64_t{1} << i;
  }
  return bits;
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
