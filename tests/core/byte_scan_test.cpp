// The sixteen-byte scans against plain loops, on every length around their blocks.
#include "core/byte_scan.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <tuple>

#include "core/text.h"

namespace zv {
namespace {

// Random text over a small alphabet that holds every byte the scans look for, a NUL
// and high bytes, at every length up to past the 31-block sums.
std::vector<std::string> samples() {
  std::mt19937 rng(7);
  const char alphabet[] = {'a', '?', '>', 'L', '/', '\r', '\n', '\0', '\x1f', ' ', '\x80', '\xbf', '\xff',
                           '@', 'A', 'Z', '[', '\xc1'};
  std::vector<std::string> out;
  for (std::size_t len : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 14, 15, 16, 17, 20, 24, 31, 32, 33, 37, 63, 64, 65, 128, 495, 496, 497, 5000}) {
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
  // Both ways where the processor has the wider one (on others both runs take the narrow).
  for (const bool wide : {false, true}) {
    SCOPED_TRACE(wide ? "32-byte scans" : "16-byte scans");
    const bool before = UseWideScans(wide);
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

      // Cleaned in place with CR and LF kept, and the line ends listed.
      std::vector<std::size_t> lineEnds;
      std::string kept = s;
      for (std::size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '\r' || (s[i] == '\n' && (i == 0 || s[i - 1] != '\r'))) lineEnds.push_back(100 + i);
        if (s[i] != '\r' && s[i] != '\n') {
          const auto c = static_cast<unsigned char>(s[i] & 0x7f);
          kept[i] = static_cast<char>(c < 32 ? 0 : c);
        }
      }
      // Without marked bytes, and with one to four of them: the marks are looked for in
      // the cleaned text ("?" also stands for a high "\xbf" there).
      for (const auto& [marked, capitals] :
           {std::pair{std::string_view(), false}, {std::string_view("?"), false}, {std::string_view("L/"), false},
            {std::string_view("?>L/"), false}, {std::string_view("a?"), false}, {std::string_view("?"), true},
            {std::string_view("/>"), true}}) {
        std::string block = s + std::string(64, '\0');
        std::vector<std::size_t> listed(s.size() + 4), marks(s.size() + 4);
        const ScanCounts counts = CleanAndListLineEnds(block.data(), s.size(), 100, listed.data(), marked,
                                                       marked.empty() ? nullptr : marks.data(), capitals);
        listed.resize(counts.ends);
        marks.resize(counts.marks);
        std::vector<std::size_t> expectedMarks;
        for (std::size_t i = 0; i < s.size() && !marked.empty(); ++i)
          if (marked.find(kept[i]) != std::string_view::npos || (capitals && kept[i] >= 'A' && kept[i] <= 'Z'))
            expectedMarks.push_back(100 + i);
        EXPECT_EQ(listed, lineEnds) << s.size();
        EXPECT_EQ(marks, expectedMarks) << s.size() << ' ' << marked;
        EXPECT_EQ(block, kept + std::string(64, '\0')) << s.size();
      }

      std::string cleaned = s, reference = s;
      CleanLine(cleaned);
      LowAscii(reference);
      RemCtrl(reference, std::string(1, '\0'));
      EXPECT_EQ(cleaned, reference) << s.size();
      std::string into = "an older, longer line than some of the samples";
      CleanLineInto(into, s);
      EXPECT_EQ(into, reference) << s.size();
    }
    UseWideScans(before);
  }
}

// The range scan against a plain loop, the visits in order and stopped when asked.
TEST(ByteScan, ForEachByteInRangeAgreesWithAPlainLoop) {
  for (const std::string& s : samples()) {
    for (const auto& [lo, hi, also] : {std::tuple<char, char, char>{'>', 'L', '/'}, {'\0', '\x1f', '?'},
                                       {'\x80', '\xff', 'a'}, {'a', 'a', 'a'}}) {
      std::vector<std::size_t> expected;
      for (std::size_t i = 0; i < s.size(); ++i) {
        const auto c = static_cast<unsigned char>(s[i]);
        if ((c >= static_cast<unsigned char>(lo) && c <= static_cast<unsigned char>(hi)) || s[i] == also)
          expected.push_back(i);
      }
      std::vector<std::size_t> visited;
      ForEachByteInRange(s, lo, hi, also, [&](std::size_t at) {
        visited.push_back(at);
        return true;
      });
      EXPECT_EQ(visited, expected) << s.size() << ' ' << int(lo);
      // Stopped after the third.
      visited.clear();
      ForEachByteInRange(s, lo, hi, also, [&](std::size_t at) {
        visited.push_back(at);
        return visited.size() < 3;
      });
      expected.resize(std::min<std::size_t>(expected.size(), 3));
      EXPECT_EQ(visited, expected) << s.size() << ' ' << int(lo);
    }
  }
}

// The block search against the library's, on texts of every length around a block
// and parts as long as the text, longer, empty, cut from it and near misses of it.
TEST(ByteScan, HoldsTextAgreesWithFind) {
  std::mt19937 rng(11);
  const char alphabet[] = {'A', 'B', ' ', 'E', '\0', '\xff'};
  std::size_t tried = 0, found = 0;
  for (std::size_t len = 0; len <= 70; ++len) {
    for (int round = 0; round < 40; ++round) {
      std::string text(len, 'A');
      for (char& c : text) c = alphabet[rng() % 3];  // mostly A, B and blanks: many near misses
      if (round % 5 == 0 && len > 0) text[rng() % len] = alphabet[3 + rng() % 3];
      std::vector<std::string> parts = {"", "A", "AB", "ABA", "A B", "E", std::string(len, 'A'), text + "A"};
      for (int k = 0; k < 6 && len > 0; ++k) {
        const std::size_t from = rng() % len;
        std::string part = text.substr(from, 1 + rng() % (len - from));
        parts.push_back(part);
        // The same with its last or middle character changed: found only by chance.
        part.back() = part.back() == 'A' ? 'B' : 'A';
        parts.push_back(part);
        if (part.size() > 2) {
          part[part.size() / 2] = 'E';
          parts.push_back(part);
        }
      }
      for (const std::string& part : parts) {
        // The text in a buffer that ends where it does, so that a read past it shows.
        const std::unique_ptr<char[]> exact(new char[len + 1]);
        std::memcpy(exact.get(), text.data(), len);
        const std::string_view view(exact.get(), len);
        const bool expected = text.find(part) != std::string::npos;
        EXPECT_EQ(HoldsText(view, part), expected) << '"' << text << "\" / \"" << part << '"';
        ++tried;
        found += expected;
      }
    }
  }
  // Both answers were tried often.
  EXPECT_GT(found, tried / 4);
  EXPECT_LT(found, tried * 3 / 4);
}

}  // namespace
}  // namespace zv
