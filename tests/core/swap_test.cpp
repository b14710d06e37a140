// Tests of Swap: the leading bytes of two records change places, the rest stays.
#include "core/swap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace zv {
namespace {

struct Entry {
  char word[8];
  int32_t count;
  int32_t rank;
};

Entry make(const char* word, int32_t count, int32_t rank) {
  Entry e{};
  std::strncpy(e.word, word, sizeof e.word);
  e.count = count;
  e.rank = rank;
  return e;
}

TEST(SwapTest, PartialSizeLeavesTheTailInPlace) {
  Entry a = make("alpha", 1, 10);
  Entry b = make("beta", 2, 20);
  Swap(a, b, offsetof(Entry, rank));
  EXPECT_STREQ(a.word, "beta");
  EXPECT_EQ(a.count, 2);
  EXPECT_EQ(a.rank, 10);
  EXPECT_STREQ(b.word, "alpha");
  EXPECT_EQ(b.count, 1);
  EXPECT_EQ(b.rank, 20);
}

}  // namespace
}  // namespace zv
