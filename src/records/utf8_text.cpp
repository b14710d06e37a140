// UTF-8 out of text that may be UTF-8 already or a single-byte set.
#include "records/utf8_text.h"

#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zv {

namespace {

// Windows-1252 at 0x80 to 0x9F; the five codes it leaves undefined become U+FFFD.
constexpr char32_t kCp1252High[32] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};

void put(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// The length of a valid UTF-8 sequence at `at`, 0 when there is none.
std::size_t validSequence(std::string_view text, std::size_t at, char32_t& c) {
  const auto b0 = static_cast<unsigned char>(text[at]);
  std::size_t len = 0;
  char32_t min = 0;
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    len = 2;
    c = b0 & 0x1F;
    min = 0x80;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    len = 3;
    c = b0 & 0x0F;
    min = 0x800;
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    len = 4;
    c = b0 & 0x07;
    min = 0x10000;
  } else {
    return 0;
  }
  if (at + len > text.size()) return 0;
  for (std::size_t i = 1; i < len; ++i) {
    const auto b = static_cast<unsigned char>(text[at + i]);
    if ((b & 0xC0) != 0x80) return 0;
    c = (c << 6) | (b & 0x3F);
  }
  if (c < min || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return 0;
  return len;
}

}  // namespace

bool IsAscii(std::string_view text) {
  for (char ch : text)
    if (static_cast<unsigned char>(ch) >= 0x80) return false;
  return true;
}

namespace {

constexpr uint64_t kOnes8 = 0x0101010101010101ULL, kHigh8 = 0x8080808080808080ULL;

// Eight bytes that hold a byte outside a blank to "~", or `a` or `b`: their high bits.
inline uint64_t badBytes8(const char* p, char a, char b) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  const uint64_t below20 = (v - kOnes8 * 0x20) & ~v;  // a byte under 0x20 (or 0x80 up)
  const uint64_t del = v ^ (kOnes8 * 0x7F), xa = v ^ (kOnes8 * static_cast<unsigned char>(a)),
                 xb = v ^ (kOnes8 * static_cast<unsigned char>(b));
  const uint64_t zero = ((del - kOnes8) & ~del) | ((xa - kOnes8) & ~xa) | ((xb - kOnes8) & ~xb);
  return (v | below20 | zero) & kHigh8;
}

}  // namespace

bool IsPlainAscii(std::string_view text, char a, char b) {
  const char* p = text.data();
  const std::size_t n = text.size();
  if (n < 8) {
    for (std::size_t i = 0; i < n; ++i)
      if (static_cast<unsigned char>(p[i] - 0x20) >= 0x5F || p[i] == a || p[i] == b) return false;
    return true;
  }
  if (n < 16) return (badBytes8(p, a, b) | badBytes8(p + n - 8, a, b)) == 0;  // two that may overlap
  std::size_t i = 0;
#if defined(__SSE2__)
  const __m128i below = _mm_set1_epi8(0x1F), above = _mm_set1_epi8(0x7F);
  const __m128i va = _mm_set1_epi8(a), vb = _mm_set1_epi8(b);
  // The bytes of sixteen that pass, all ones where each does.
  auto pass16 = [&](const char* at) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    // Bytes from 0x80 up are negative here, and fail the first test.
    const __m128i ok = _mm_and_si128(_mm_cmpgt_epi8(v, below), _mm_cmplt_epi8(v, above));
    const __m128i special = _mm_or_si128(_mm_cmpeq_epi8(v, va), _mm_cmpeq_epi8(v, vb));
    return _mm_andnot_si128(special, ok);
  };
  auto ok16 = [&](const char* at) { return _mm_movemask_epi8(pass16(at)) == 0xFFFF; };
  // Thirty-two bytes a turn, one test of both halves.
  for (; i + 32 <= n; i += 32)
    if (_mm_movemask_epi8(_mm_and_si128(pass16(p + i), pass16(p + i + 16))) != 0xFFFF) return false;
  for (; i + 16 <= n; i += 16)
    if (!ok16(p + i)) return false;
  return i == n || ok16(p + n - 16);  // the tail, as the last sixteen bytes
#else
  for (; i + 8 <= n; i += 8)
    if (badBytes8(p + i, a, b) != 0) return false;
  return i == n || badBytes8(p + n - 8, a, b) == 0;
#endif
}

char32_t NextChar(std::string_view text, std::size_t& at) {
  const auto b = static_cast<unsigned char>(text[at]);
  if (b < 0x80) {
    ++at;
    return b;
  }
  char32_t c = 0;
  if (const std::size_t len = validSequence(text, at, c)) {
    at += len;
    return c;
  }
  ++at;
  return b < 0xA0 ? kCp1252High[b - 0x80] : static_cast<char32_t>(b);
}

void AppendUtf8(std::string& out, std::string_view text, bool keepLineFeeds) {
  if (IsPlainAscii(text)) {  // the commonest case, in one look
    out += text;
    return;
  }
  std::size_t i = 0;
  while (i < text.size()) {
    // Runs of printable 7-bit text go in one piece, found sixteen or eight bytes at a time.
    std::size_t run = i;
#if defined(__SSE2__)
    const __m128i below = _mm_set1_epi8(0x1F), above = _mm_set1_epi8(0x7F);
    while (run + 16 <= text.size()) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + run));
      // Bytes from 0x80 up are negative here, and fail the first test.
      const __m128i ok = _mm_and_si128(_mm_cmpgt_epi8(v, below), _mm_cmplt_epi8(v, above));
      if (_mm_movemask_epi8(ok) != 0xFFFF) break;
      run += 16;
    }
#endif
    while (run + 8 <= text.size()) {
      uint64_t v;
      std::memcpy(&v, text.data() + run, 8);
      constexpr uint64_t kHigh = 0x8080808080808080ULL, kOnes = 0x0101010101010101ULL;
      const uint64_t below20 = (v - kOnes * 0x20) & ~v & kHigh;  // a byte under 0x20 (or 0x80 up)
      const uint64_t x = v ^ (kOnes * 0x7F);
      const uint64_t del = (x - kOnes) & ~x & kHigh;  // a DEL
      if (((v & kHigh) | below20 | del) != 0) break;
      run += 8;
    }
    while (run < text.size() && static_cast<unsigned char>(text[run] - 0x20) < 0x5F) ++run;
    out.append(text.data() + i, run - i);
    if (run == text.size()) return;
    i = run;
    if (static_cast<unsigned char>(text[i]) < 0x20 || text[i] == 0x7F) {
      out += keepLineFeeds && text[i] == '\n' ? '\n' : ' ';
      ++i;
      continue;
    }
    const std::size_t from = i;
    const char32_t c = NextChar(text, i);
    if (i - from > 1)
      out.append(text.data() + from, i - from);  // valid UTF-8, as it stood
    else
      put(out, c);
  }
}

}  // namespace zv
