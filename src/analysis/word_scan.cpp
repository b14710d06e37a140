// Diction's pass over a piece of text: word and line ends, hyphens, the lowered copy.
#include "analysis/word_scan.h"

#include <algorithm>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "analysis/analysis_common.h"

namespace zv {

namespace {

#if defined(__x86_64__)
bool hasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}

// The masks of 32 bytes at p, and their lowered copy at `lower`.
struct Masks32 {
  uint32_t ends, lineEnds, hyphens, hyphenThen, crLf;
};

__attribute__((target("avx2"), always_inline)) inline Masks32 scan32(const char* p, char* lower, __m256i lo, __m256i hi) {
  const __m256i nibble = _mm256_set1_epi8(0x0F);
  const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  // A to Z: v - 'A' at most 25, unsigned.
  const __m256i t = _mm256_sub_epi8(v, _mm256_set1_epi8('A'));
  const __m256i upper = _mm256_cmpeq_epi8(_mm256_min_epu8(t, _mm256_set1_epi8(25)), t);
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(lower), _mm256_add_epi8(v, _mm256_and_si256(upper, _mm256_set1_epi8(0x20))));
  const __m256i l = _mm256_and_si256(v, nibble);
  const __m256i h = _mm256_and_si256(_mm256_srli_epi16(v, 4), nibble);
  const __m256i both = _mm256_and_si256(_mm256_shuffle_epi8(lo, l), _mm256_shuffle_epi8(hi, h));
  const __m256i hyphen = _mm256_set1_epi8('-');
  const __m256i next = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 1));
  Masks32 m;
  m.ends = ~static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(both, _mm256_setzero_si256())));
  m.lineEnds = static_cast<uint32_t>(_mm256_movemask_epi8(
      _mm256_or_si256(_mm256_cmpeq_epi8(v, _mm256_set1_epi8('\r')), _mm256_cmpeq_epi8(v, _mm256_set1_epi8('\n')))));
  m.hyphens = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(v, hyphen)));
  m.hyphenThen = static_cast<uint32_t>(_mm256_movemask_epi8(
      _mm256_or_si256(_mm256_cmpeq_epi8(next, hyphen), _mm256_cmpeq_epi8(next, _mm256_set1_epi8(' ')))));
  m.crLf = static_cast<uint32_t>(_mm256_movemask_epi8(
      _mm256_and_si256(_mm256_cmpeq_epi8(v, _mm256_set1_epi8('\r')), _mm256_cmpeq_epi8(next, _mm256_set1_epi8('\n')))));
  return m;
}

__attribute__((target("avx2"))) void scanAvx2(const char* text, std::size_t n, const ByteSetMasks& set, TextScan& out) {
  const __m256i lo = _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(set.lowTable())));
  const __m256i hi = _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(set.highTable())));
  const std::size_t chunks = (n + 63) / 64;
  std::size_t lineEnds = 0;
  for (std::size_t c = 0; c < chunks; ++c) {
    const Masks32 a = scan32(text + 64 * c, out.lower.data() + 64 * c, lo, hi);
    const Masks32 b = scan32(text + 64 * c + 32, out.lower.data() + 64 * c + 32, lo, hi);
    out.ends[c] = a.ends | static_cast<uint64_t>(b.ends) << 32;
    uint64_t ends = a.lineEnds | static_cast<uint64_t>(b.lineEnds) << 32;
    uint64_t crLf = a.crLf | static_cast<uint64_t>(b.crLf) << 32;
    uint64_t pairs = (a.hyphens & a.hyphenThen) | static_cast<uint64_t>(b.hyphens & b.hyphenThen) << 32;
    if (c + 1 == chunks) {
      // Nothing past the piece, and the last byte's follower is not in it.
      const std::size_t left = n - 64 * c;
      const uint64_t in = left == 64 ? ~uint64_t{0} : (uint64_t{1} << left) - 1;
      ends &= in;
      crLf &= in >> 1;
      pairs &= in >> 1;
    }
    out.lineEnds[c] = ends;
    lineEnds += static_cast<std::size_t>(__builtin_popcountll(ends) - __builtin_popcountll(crLf));
    for (; pairs != 0; pairs &= pairs - 1) out.hyphens.push_back(64 * c + static_cast<std::size_t>(__builtin_ctzll(pairs)));
  }
  out.lines = lineEnds;
}
#endif

void scanBytes(const char* text, std::size_t n, const ByteSetMasks& set, TextScan& out) {
  out.lines = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const uint64_t bit = uint64_t{1} << (i % 64);
    if (set.has(c)) out.ends[i / 64] |= bit;
    if (c == '\r' || c == '\n') {
      out.lineEnds[i / 64] |= bit;
      if (!(c == '\r' && i + 1 < n && text[i + 1] == '\n')) ++out.lines;
    }
    if (c == '-' && i + 1 < n && (text[i + 1] == '-' || text[i + 1] == ' ')) out.hyphens.push_back(i);
    out.lower[i] = static_cast<char>(static_cast<unsigned>(c - 'A') < 26u ? c + 32 : c);
  }
}

std::array<bool, 256> wordEnds() {
  std::array<bool, 256> in{};
  const DelimiterSet delims(kDicDelims);
  for (int c = 0; c < 256; ++c) in[static_cast<std::size_t>(c)] = delims.has(static_cast<char>(c)) || c == '\r' || c == '\n';
  return in;
}

}  // namespace

ByteSetMasks::ByteSetMasks(const std::array<bool, 256>& in) : in_(in) {
  // The low halves of the bytes in the set, for each high half.
  std::array<uint16_t, 16> lows{};
  for (int b = 0; b < 256; ++b)
    if (in[static_cast<std::size_t>(b)]) lows[static_cast<std::size_t>(b >> 4)] |= static_cast<uint16_t>(1u << (b & 15));
  std::vector<uint16_t> classes;
  for (int h = 0; h < 16; ++h) {
    const uint16_t set = lows[static_cast<std::size_t>(h)];
    if (set == 0) continue;
    auto at = std::find(classes.begin(), classes.end(), set);
    if (at == classes.end()) {
      if (classes.size() == 8) return;  // more than eight: byte by byte
      classes.push_back(set);
      at = classes.end() - 1;
    }
    const auto bit = static_cast<unsigned char>(1u << (at - classes.begin()));
    high_[h] = bit;
    for (int l = 0; l < 16; ++l)
      if (set & (1u << l)) low_[l] = static_cast<unsigned char>(low_[l] | bit);
  }
  nibbles_ = true;
}

const ByteSetMasks& DictionWordEnds() {
  static const ByteSetMasks ends(wordEnds());
  return ends;
}

namespace {

void scanText(const char* text, std::size_t n, TextScan& out, [[maybe_unused]] bool wide) {
  const std::size_t chunks = (n + 63) / 64;
  out.size = n;
  if (out.ends.size() < chunks + 1) {
    out.ends.resize(chunks + 1);
    out.lineEnds.resize(chunks + 1);
  }
  if (out.lower.size() < 64 * chunks + 64) out.lower.resize(64 * chunks + 64);
  out.hyphens.clear();
  const ByteSetMasks& set = DictionWordEnds();
#if defined(__x86_64__)
  if (wide && set.nibbles() && hasAvx2()) {
    scanAvx2(text, n, set, out);
  } else
#endif
  {
    std::fill(out.ends.begin(), out.ends.begin() + static_cast<std::ptrdiff_t>(chunks), 0);
    std::fill(out.lineEnds.begin(), out.lineEnds.begin() + static_cast<std::ptrdiff_t>(chunks), 0);
    scanBytes(text, n, set, out);
  }
  // The bytes after the piece end words; so does the mask after the last.
  if (n % 64 != 0) out.ends[chunks - 1] |= ~uint64_t{0} << (n % 64);
  if (n > 0 && text[n - 1] != '\n' && text[n - 1] != '\r') ++out.lines;
  out.ends[chunks] = ~uint64_t{0};
  out.lineEnds[chunks] = 0;
}

}  // namespace

void ScanText(const char* text, std::size_t n, TextScan& out) { scanText(text, n, out, true); }

void ScanTextBytewise(const char* text, std::size_t n, TextScan& out) { scanText(text, n, out, false); }

}  // namespace zv
