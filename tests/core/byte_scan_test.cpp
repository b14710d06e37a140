// The sixteen-byte scans against plain loops, on every length around their blocks.
#include "core/byte_scan.h"

#include <gtest/gtest.h>

#include <random>

#include "core/text.h"

namespace zv {
namespace {

// Random text over a small alphabet that holds every byte the scans look for, a NUL
// and high bytes, at every length up to past the 31-block sums.
std::vector<std::string> samples() {
  std::mt19937 rng(7);
  const char alphabet[] = {'a', '?', '>', 'L', '/', '\r', '\n', '\0', '\x1f', ' ', '\x80', '\xbf', '\xff'};
  std::vector<std::string> out;
  for (std::size_t len : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 14, 15, 16, 17, 20, 24, 31, 32, 33, 37, 495, 496, 497, 5000}) {
    for (int round = 0; round < 8; ++round) {
      std::string s(len, 'a');
      for (char& c : s) c = alphabet[rng() % sizeof alphabet];
      out.push_back(s);
    }
  }
  out.push_back(std::string(5000, '/'));  // every lane full in every block
  std::string pairs;
  for (int i = 0; i < 2500; ++i) pairs += "\r\n";
  out.push_back(pairs);                      // a pair in every lane, and astride every block
  out.push_back(std::string(5000, '\r'));
  return out;
}

TEST(ByteScan, AgreesWithPlainLoops) {
  for (const std::string& s : samples()) {
    const auto at = s.find_first_of(std::string_view("\r\n", 2));
    EXPECT_EQ(FindCrOrLf(s), at == std::string::npos ? s.size() : at) << s.size();

    for (const std::array<char, 4> sought : {std::array<char, 4>{'?', '>', 'L', '/'},
                                             std::array<char, 4>{'\0', '\xff', '\r', 'a'}}) {
      const auto counts = CountBytes(s, sought);
      for (std::size_t k = 0; k < 4; ++k)
        EXPECT_EQ(counts[k], static_cast<uint32_t>(std::count(s.begin(), s.end(), sought[k]))) << s.size() << ' ' << k;
    }

    int64_t ends = 0;
    for (std::size_t i = 0; i < s.size(); ++i)
      ends += s[i] == '\n' || (s[i] == '\r' && (i + 1 == s.size() || s[i + 1] != '\n'));
    EXPECT_EQ(CountLineEnds(s), ends) << s.size();

    std::string cleaned = s, reference = s;
    CleanLine(cleaned);
    LowAscii(reference);
    RemCtrl(reference, std::string(1, '\0'));
    EXPECT_EQ(cleaned, reference) << s.size();
    std::string into = "an older, longer line than some of the samples";
    CleanLineInto(into, s);
    EXPECT_EQ(into, reference) << s.size();
  }
}

}  // namespace
}  // namespace zv
