// Word matches of a search term in a block of lines.
#include "analysis/term_search.h"

#include <algorithm>

#if defined(__x86_64__)
#include <immintrin.h>
#define ZV_HAVE_AVX2_PATH 1
#endif

namespace zv {

namespace {

// The bytes that upper-case to `c`: itself and, for a capital, its small letter. A
// small letter has none (the lines are upper-cased), which the full test settles.
void casesOf(unsigned char c, unsigned char (&out)[2]) {
  out[0] = c;
  out[1] = (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c;
}

}  // namespace

TermFinder::TermFinder(const Term& term, const DelimiterSet& delims) : text_(term.text), truncated_(term.truncated) {
  for (int c = 0; c < 256; ++c) {
    upper_[static_cast<std::size_t>(c)] = static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    ends_[static_cast<std::size_t>(c)] = delims.has(static_cast<char>(c)) || c == '\r' || c == '\n';
  }
  active_ = !text_.empty();
  for (char c : text_)
    if (ends_[static_cast<unsigned char>(c)]) active_ = false;
  if (!active_) return;
  for (std::size_t j = 0; j < text_.size() && j < 16; ++j) {
    const auto c = static_cast<unsigned char>(text_[j]);
    const bool capital = c >= 'A' && c <= 'Z';
    fold_[j] = capital ? 0x20 : 0;
    folded_[j] = static_cast<unsigned char>(capital ? c | 0x20 : c);
  }
  // A small letter in the term meets no byte of an upper-cased line, which the
  // comparison of 16 at once cannot say: such a term is compared byte by byte.
  sixteen_ = text_.size() <= 16 && std::none_of(text_.begin(), text_.end(), [](char c) { return c >= 'a' && c <= 'z'; });
  casesOf(static_cast<unsigned char>(text_.front()), first_);
  casesOf(static_cast<unsigned char>(text_.back()), last_);
  casesOf(static_cast<unsigned char>(text_[text_.size() > 2 ? 1 : 0]), second_);
}

bool TermFinder::matchesAt(const unsigned char* s, std::size_t n, std::size_t at) const {
  const std::size_t m = text_.size();
#if defined(__SSE2__)
  if (sixteen_ && at + 16 <= n) {
    // Sixteen bytes at once: a capital of the term also takes its small letter, which
    // differs from it only in the bit 0x20; the bytes after the term do not count.
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + at));
    const __m128i folded = _mm_or_si128(v, _mm_loadu_si128(reinterpret_cast<const __m128i*>(fold_)));
    const auto same = static_cast<unsigned>(
        _mm_movemask_epi8(_mm_cmpeq_epi8(folded, _mm_loadu_si128(reinterpret_cast<const __m128i*>(folded_)))));
    const unsigned want = (1u << m) - 1;
    if ((same & want) != want) return false;
  } else
#endif
  {
    for (std::size_t j = 0; j < m; ++j)
      if (upper_[s[at + j]] != static_cast<unsigned char>(text_[j])) return false;
  }
  if (at > 0 && !ends_[s[at - 1]]) return false;
  return truncated_ || at + m == n || ends_[s[at + m]];
}

#if defined(ZV_HAVE_AVX2_PATH)
namespace {

// The same search 32 places at a time, on processors that have AVX2. Returns where the
// caller goes on with the rest; `stop` is set when onMatch asked to stop.
template <class Matches, class OnMatch>
__attribute__((target("avx2"))) std::size_t wideSearch(const unsigned char* s, std::size_t n, std::size_t m,
                                                      const unsigned char (&first)[2], const unsigned char (&second)[2],
                                                      const unsigned char (&last)[2], Matches&& matches,
                                                      OnMatch&& onMatch, bool& stop) {
  // Each byte is compared with the bit 0x20 set on both sides: a capital and its small
  // letter then look alike, and so do a few pairs of other bytes, which the full test
  // tells apart; no byte that can stand in the term is missed.
  const std::size_t at2 = m > 2 ? 1 : 0;
  const __m256i bit = _mm256_set1_epi8(0x20);
  const __m256i f = _mm256_set1_epi8(static_cast<char>(first[0] | 0x20));
  const __m256i t = _mm256_set1_epi8(static_cast<char>(second[0] | 0x20));
  const __m256i l = _mm256_set1_epi8(static_cast<char>(last[0] | 0x20));
  std::size_t i = 0;
  for (; i + m - 1 + 32 <= n; i += 32) {
    const __m256i a = _mm256_or_si256(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + i)), bit);
    const __m256i b = _mm256_or_si256(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + i + at2)), bit);
    const __m256i c = _mm256_or_si256(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + i + m - 1)), bit);
    const __m256i fa = _mm256_cmpeq_epi8(a, f);
    const __m256i sb = _mm256_cmpeq_epi8(b, t);
    const __m256i lc = _mm256_cmpeq_epi8(c, l);
    auto mask = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_and_si256(_mm256_and_si256(fa, sb), lc)));
    while (mask != 0) {
      const std::size_t at = i + static_cast<std::size_t>(__builtin_ctz(mask));
      if (matches(at) && onMatch()) {
        stop = true;
        return i;
      }
      mask &= mask - 1;
    }
  }
  return i;
}

bool HasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}

}  // namespace
#endif

template <class OnMatch>
void TermFinder::forEach(std::string_view text, OnMatch&& onMatch) const {
  if (!active_) return;
  const auto* s = reinterpret_cast<const unsigned char*>(text.data());
  const std::size_t n = text.size(), m = text_.size();
  if (m > n) return;
  std::size_t i = 0;
#if defined(ZV_HAVE_AVX2_PATH)
  if (HasAvx2()) {
    bool stop = false;
    i = wideSearch(s, n, m, first_, second_, last_, [&](std::size_t at) { return matchesAt(s, n, at); }, onMatch, stop);
    if (stop) return;
  }
#endif
#if defined(__SSE2__)
  // Sixteen places at a time: those whose first, second and last bytes can be the
  // term's, in either case, get the full test. (A term of one or two characters tests
  // its first one twice.)
  const std::size_t second = m > 2 ? 1 : 0;
  const __m128i f0 = _mm_set1_epi8(static_cast<char>(first_[0])), f1 = _mm_set1_epi8(static_cast<char>(first_[1]));
  const __m128i s0 = _mm_set1_epi8(static_cast<char>(second_[0])), s1 = _mm_set1_epi8(static_cast<char>(second_[1]));
  const __m128i l0 = _mm_set1_epi8(static_cast<char>(last_[0])), l1 = _mm_set1_epi8(static_cast<char>(last_[1]));
  for (; i + m - 1 + 16 <= n; i += 16) {
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i + second));
    const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i + m - 1));
    const __m128i fa = _mm_or_si128(_mm_cmpeq_epi8(a, f0), _mm_cmpeq_epi8(a, f1));
    const __m128i sb = _mm_or_si128(_mm_cmpeq_epi8(b, s0), _mm_cmpeq_epi8(b, s1));
    const __m128i lc = _mm_or_si128(_mm_cmpeq_epi8(c, l0), _mm_cmpeq_epi8(c, l1));
    auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(_mm_and_si128(fa, sb), lc)));
    while (mask != 0) {
      const std::size_t at = i + static_cast<std::size_t>(__builtin_ctz(mask));
      if (matchesAt(s, n, at) && onMatch()) return;
      mask &= mask - 1;
    }
  }
#endif
  for (; i + m <= n; ++i)
    if (matchesAt(s, n, i) && onMatch()) return;
}

bool TermFinder::any(std::string_view text) const {
  bool found = false;
  forEach(text, [&] { return found = true; });
  return found;
}

int64_t TermFinder::count(std::string_view text) const {
  int64_t n = 0;
  forEach(text, [&] {
    ++n;
    return false;
  });
  return n;
}

}  // namespace zv
