// Sixteen candidate places at a time: a place is tried only where both the text's first
// and its last byte stand at the right distance, which is rare in any real text, so the
// search runs near the speed of reading the bytes.
#include "viewer/text_search.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zv {

int64_t FindText(std::string_view bytes, std::string_view text, int64_t from) {
  const auto size = static_cast<int64_t>(bytes.size());
  const auto m = static_cast<int64_t>(text.size());
  if (m == 0 || from < 0 || from > size - m) return -1;
  const char* p = bytes.data();
  if (m == 1) {
    const void* hit = std::memchr(p + from, text[0], static_cast<std::size_t>(size - from));
    return hit == nullptr ? -1 : static_cast<const char*>(hit) - p;
  }
  int64_t i = from;
#if defined(__SSE2__)
  const __m128i first = _mm_set1_epi8(text[0]);
  const __m128i last = _mm_set1_epi8(text[static_cast<std::size_t>(m - 1)]);
  const char* middle = text.data() + 1;
  const auto middleLength = static_cast<std::size_t>(m - 2);
  // Places i to i + 15 are tried while the last byte of the last of them is in range.
  for (; i + 16 + m - 1 <= size; i += 16) {
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i + m - 1));
    auto mask = static_cast<uint32_t>(_mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi8(a, first), _mm_cmpeq_epi8(b, last))));
    while (mask != 0) {
      const int bit = __builtin_ctz(mask);
      if (std::memcmp(p + i + bit + 1, middle, middleLength) == 0) return i + bit;
      mask &= mask - 1;
    }
  }
#endif
  const std::size_t hit = bytes.find(text, static_cast<std::size_t>(i));
  return hit == std::string_view::npos ? -1 : static_cast<int64_t>(hit);
}

}  // namespace zv
