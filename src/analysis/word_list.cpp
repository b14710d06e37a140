// The digit sort of Diction's word keys.
#include "analysis/word_list.h"

#include <algorithm>
#include <array>

namespace zv {

namespace {

constexpr int kDigits = 12;  // eleven bytes and the length
constexpr std::size_t kSmall = 48;

unsigned digitOf(const WordKey& k, int d) {
  return static_cast<unsigned>((d < 8 ? k.k0 >> (56 - 8 * d) : k.k1 >> (56 - 8 * (d - 8))) & 0xFF);
}

void insertionSort(WordKey* keys, std::size_t n) {
  for (std::size_t i = 1; i < n; ++i) {
    const WordKey k = keys[i];
    std::size_t j = i;
    for (; j > 0 && k < keys[j - 1]; --j) keys[j] = keys[j - 1];
    keys[j] = k;
  }
}

// Keys that agree on their digits before `d`: by bucket of digit d into `scratch`, back,
// and each bucket by the digits after.
void sortFrom(WordKey* keys, WordKey* scratch, std::size_t n, int d) {
  for (;;) {
    if (n <= kSmall) {
      insertionSort(keys, n);
      return;
    }
    if (d == kDigits) return;
    std::array<std::size_t, 256> count{};
    for (std::size_t i = 0; i < n; ++i) ++count[digitOf(keys[i], d)];
    // One bucket for all: nothing to move, on to the next digit.
    if (count[digitOf(keys[0], d)] == n) {
      ++d;
      continue;
    }
    std::array<std::size_t, 256> next{};
    for (std::size_t b = 1; b < 256; ++b) next[b] = next[b - 1] + count[b - 1];
    const std::array<std::size_t, 256> start = next;
    for (std::size_t i = 0; i < n; ++i) scratch[next[digitOf(keys[i], d)]++] = keys[i];
    std::copy(scratch, scratch + n, keys);
    for (std::size_t b = 0; b < 256; ++b)
      if (count[b] > 1) sortFrom(keys + start[b], scratch + start[b], count[b], d + 1);
    return;
  }
}

}  // namespace

void SortWordKeys(WordKey* keys, WordKey* scratch, std::size_t n) { sortFrom(keys, scratch, n, 0); }

}  // namespace zv
