// The gap-halving exchange sort of Rank, Sort and Diction, and the stable sort that
// replaces it when size limits are lifted.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "analysis/analysis_common.h"

namespace zv {

// Sorts elements 1 to `count` of `a` (element 0 is not touched). The method is the one
// the tools have always used, and its exact sequence of exchanges decides the order of
// elements that compare equal, so it is followed to the letter:
//   gap = count / 2; while gap > 0: limit = count - gap; repeat { last = 0; for i in
//   1..limit: if outOfOrder(a[i], a[i + gap]) exchange them and last = i; limit = last }
//   until last = 0; gap = gap / 2.
// Elements are exchanged whole. With `last16`, `last` is a 16-bit number and an
// exchange at a position above 32,767 is the overflow error.
template <class T, class OutOfOrder>
void GapExchangeSort(std::vector<T>& a, int32_t count, OutOfOrder&& outOfOrder, bool last16 = false) {
  for (int32_t gap = count / 2; gap > 0; gap /= 2) {
    int32_t limit = count - gap;
    int32_t last = 0;
    do {
      last = 0;
      for (int32_t i = 1; i <= limit; ++i) {
        T& left = a[static_cast<std::size_t>(i)];
        T& right = a[static_cast<std::size_t>(i + gap)];
        if (!outOfOrder(left, right)) continue;
        std::swap(left, right);
        if (last16 && i > std::numeric_limits<int16_t>::max())
          ThrowOverflow(LimitReason("the place of the last exchange (last)", std::numeric_limits<int16_t>::max()) +
                        " An exchange came at " + std::to_string(i) + ".");
        last = i;
      }
      limit = last;
    } while (last != 0);
  }
}

// Elements 1 to `count` in n log n, with `before(x, y)` true when x goes first; elements
// that compare equal keep their order.
template <class T, class Before>
void StableSortFrom1(std::vector<T>& a, int32_t count, Before&& before) {
  std::stable_sort(a.begin() + 1, a.begin() + 1 + count, std::forward<Before>(before));
}

}  // namespace zv
