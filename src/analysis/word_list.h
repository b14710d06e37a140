// Ordering Diction's list without size limits: words by their bytes, as keys of
// sixteen bytes sorted by their digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zv {

// A word's place in byte order: its first eleven bytes from the high end of k0 on,
// then its length, or 0xFF for a word longer than eleven bytes, then zeros. Keys
// compare as the words do, except that two words longer than eleven bytes with the
// same first eleven have the same key.
struct WordKey {
  uint64_t k0 = 0, k1 = 0;

  friend bool operator<(const WordKey& x, const WordKey& y) { return x.k0 != y.k0 ? x.k0 < y.k0 : x.k1 < y.k1; }
  friend bool operator==(const WordKey& x, const WordKey& y) { return x.k0 == y.k0 && x.k1 == y.k1; }

  // The key of the `len` bytes of `word`.
  static WordKey of(const char* word, std::size_t len) {
    unsigned char b[12] = {};
    std::memcpy(b, word, len < 11 ? len : 11);
    uint64_t k0 = 0;
    for (int i = 0; i < 8; ++i) k0 = k0 << 8 | b[i];
    const uint64_t tail = uint64_t{b[8]} << 24 | uint64_t{b[9]} << 16 | uint64_t{b[10]} << 8 | (len > 11 ? 0xFF : len);
    return {k0, tail << 32};
  }
  // The word of a key of a word of at most eleven bytes, into `out` (which gets
  // sixteen bytes); its length.
  std::size_t spell(char* out) const {
    const uint64_t head = __builtin_bswap64(k0);
    const uint32_t tail = __builtin_bswap32(static_cast<uint32_t>(k1 >> 32));
    std::memcpy(out, &head, 8);
    std::memcpy(out + 8, &tail, 4);
    return static_cast<std::size_t>(k1 >> 32) & 0xFF;
  }
};
static_assert(sizeof(WordKey) == 16);

// Sorts n keys into ascending order, digit by digit from the first byte, with
// `scratch` room for n more.
void SortWordKeys(WordKey* keys, WordKey* scratch, std::size_t n);

}  // namespace zv
