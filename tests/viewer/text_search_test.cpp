// The viewer's search against std::string_view::find, around its sixteen-place steps.
#include "viewer/text_search.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zv {
namespace {

TEST(FindText, AgreesWithFindOnRandomTextFromEveryStart) {
  std::mt19937 rng(5);
  const char alphabet[] = {'R', 'e', 'c', 'o', 'r', 'd', ' ', '-', '\r', '\n'};
  for (std::size_t size : {0, 1, 15, 16, 17, 40, 100, 333}) {
    std::string hay(size, 'x');
    for (char& c : hay) c = alphabet[rng() % sizeof alphabet];
    for (std::size_t m = 1; m <= 12; ++m) {
      // A needle cut out of the haystack where it can be, so that it is found.
      std::string needle(m, 'R');
      if (size >= m) needle = hay.substr(rng() % (size - m + 1), m);
      for (std::size_t from = 0; from <= size; ++from) {
        const std::size_t expected = std::string_view(hay).find(needle, from);
        const int64_t want = expected == std::string_view::npos ? -1 : static_cast<int64_t>(expected);
        ASSERT_EQ(FindText(hay, needle, static_cast<int64_t>(from)), want)
            << "size " << size << " needle " << m << " from " << from;
      }
    }
  }
}

TEST(FindText, FindsAtTheVeryEndAndNotPastIt) {
  const std::string hay = std::string(1000, 'a') + "Record - ";
  EXPECT_EQ(FindText(hay, "Record - ", 0), 1000);
  EXPECT_EQ(FindText(hay, "Record - ", 1000), 1000);
  EXPECT_EQ(FindText(hay, "Record - ", 1001), -1);
  EXPECT_EQ(FindText(hay, "", 0), -1);
  EXPECT_EQ(FindText(hay, "a", -1), -1);
}

TEST(FindText, IsCaseSensitive) {
  EXPECT_EQ(FindText("record - 1\r\nRecord - 2", "Record - ", 0), 12);
  EXPECT_EQ(FindText("RECORD - 1", "Record - ", 0), -1);
}

}  // namespace
}  // namespace zv
