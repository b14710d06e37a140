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

// Keys that agree on their digits before `d`, at `keys`, or at `scratch` when `inScratch`:
// by bucket of digit d into the other of the two, and each bucket by the digits after;
// they end in `keys`.
void sortFrom(WordKey* keys, WordKey* scratch, std::size_t n, int d, bool inScratch) {
  WordKey* from = inScratch ? scratch : keys;
  for (;;) {
    if (n <= kSmall || d == kDigits) {
      insertionSort(from, n);
      if (inScratch) std::copy(scratch, scratch + n, keys);
      return;
    }
    std::array<std::size_t, 256> count{};
    for (std::size_t i = 0; i < n; ++i) ++count[digitOf(from[i], d)];
    // One bucket for all: nothing to move, on to the next digit.
    if (count[digitOf(from[0], d)] == n) {
      ++d;
      continue;
    }
    std::array<std::size_t, 256> next{};
    for (std::size_t b = 1; b < 256; ++b) next[b] = next[b - 1] + count[b - 1];
    const std::array<std::size_t, 256> start = next;
    WordKey* to = inScratch ? keys : scratch;
    for (std::size_t i = 0; i < n; ++i) to[next[digitOf(from[i], d)]++] = from[i];
    for (std::size_t b = 0; b < 256; ++b) {
      if (count[b] > 1)
        sortFrom(keys + start[b], scratch + start[b], count[b], d + 1, !inScratch);
      else if (count[b] == 1 && !inScratch)
        keys[start[b]] = scratch[start[b]];
    }
    return;
  }
}

}  // namespace

void SortWordKeys(WordKey* keys, WordKey* scratch, std::size_t n) { sortFrom(keys, scratch, n, 0, false); }

}  // namespace zv
