// CleanLineReader: the lines LineReader gives, cleaned, from memory and from files
// whose line ends and long lines fall across the block's edge.
#include "core/clean_line_reader.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <random>

#include "core/error.h"
#include "core/line_reader.h"
#include "core/text.h"
#include "support/test_support.h"

namespace zv {
namespace {

using Lines = std::vector<std::string>;

// The lines read, each checked against the line before it, which stays in view, and
// for whether it holds any of the marked bytes (asked of every line but each third,
// so that the marks of lines not asked about are passed over too).
Lines cleanLinesOf(CleanLineReader& r, std::string_view marked = "zA\x7f", bool capitals = false) {
  Lines out;
  std::size_t listed = 0;  // lines whose marks the reader listed
  r.setPrevious("before the first");
  r.setMarked(marked, capitals);
  const auto isMarked = [&](char c) { return marked.find(c) != std::string_view::npos || (capitals && c >= 'A' && c <= 'Z'); };
  while (r.next()) {
    EXPECT_EQ(r.previous(), out.empty() ? std::string("before the first") : out.back()) << out.size();
    out.emplace_back(r.line());
    if (out.size() % 3 != 0) {
      const bool holds = std::any_of(out.back().begin(), out.back().end(), isMarked);
      EXPECT_EQ(r.holdsMarked(), holds) << out.size();
      EXPECT_EQ(r.holdsMarked(), holds) << out.size() << " asked again";
      // Where they stand, when the reader listed them.
      const std::size_t *first = nullptr, *last = nullptr;
      std::size_t base = 0;
      if (r.markPlaces(first, last, base)) {
        std::vector<std::size_t> places, expected;
        for (; first != last; ++first) places.push_back(*first - base);
        for (std::size_t i = 0; i < out.back().size(); ++i)
          if (isMarked(out.back()[i])) expected.push_back(i);
        EXPECT_EQ(places, expected) << out.size();
        ++listed;
      }
    }
  }
  EXPECT_EQ(r.line(), out.empty() ? std::string("before the first") : out.back());
  // Only a line kept aside from the blocks (longer than a block) goes unlisted.
  EXPECT_GE(listed + 2, out.size() - out.size() / 3) << "lines asked about whose marks were listed";
  return out;
}

// What the frame made of the text before: LineReader's lines, then LowAscii and
// RemCtrl with character 0.
Lines expectedOf(std::string_view text) {
  LineReader r(text);
  Lines out;
  std::string line;
  while (r.readLine(line)) {
    LowAscii(line);
    RemCtrl(line, std::string(1, '\0'));
    out.push_back(line);
  }
  return out;
}

Lines cleanLinesOf(std::string_view text) {
  CleanLineReader r(text);
  return cleanLinesOf(r);
}

TEST(CleanLineReaderMemory, EndsAndCleaningAsLineReaderAndTheCleanersGive) {
  EXPECT_EQ(cleanLinesOf("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
  EXPECT_EQ(cleanLinesOf("a\r\n\r\n"), (Lines{"a", ""}));
  EXPECT_EQ(cleanLinesOf("\r\r\n"), (Lines{"", ""}));
  EXPECT_EQ(cleanLinesOf("a\n\rb"), (Lines{"a", "", "b"}));
  EXPECT_EQ(cleanLinesOf("x\r"), (Lines{"x"}));
  EXPECT_TRUE(cleanLinesOf("").empty());
  // A high CR or LF (0x8D, 0x8A) ends no line; cleaned, it is character 0.
  EXPECT_EQ(cleanLinesOf("a\x8D\x8A" "b\tc\xC1\r\n"), (Lines{std::string("a\0\0b\0cA", 7)}));
}

TEST(CleanLineReaderMemory, WithoutMarkedBytesEveryLineMayHoldThem) {
  CleanLineReader r(std::string_view("one\r\n\r\nthree"));
  int lines = 0;
  while (r.next()) {
    EXPECT_TRUE(r.holdsMarked()) << lines;
    ++lines;
  }
  EXPECT_EQ(lines, 3);
}

TEST(CleanLineReaderMemory, RandomTextOfEveryLengthAroundTheWords) {
  std::mt19937 rng(11);
  const char alphabet[] = {'a', ' ', '\r', '\n', '\0', '\x1f', '\x7f', '\x80', '\x8a', '\x8d', '\xff', 'Q', '@', '\xda'};
  for (std::size_t len : {1, 2, 15, 16, 17, 63, 64, 65, 127, 128, 129, 1000, 4099}) {
    for (int round = 0; round < 20; ++round) {
      std::string s(len, 'a');
      for (char& c : s) c = alphabet[rng() % sizeof alphabet];
      EXPECT_EQ(cleanLinesOf(s), expectedOf(s)) << len << ' ' << round;
      CleanLineReader capitals{std::string_view(s)};
      EXPECT_EQ(cleanLinesOf(capitals, " ", true), expectedOf(s)) << len << ' ' << round << " capitals";
    }
  }
}

TEST(CleanLineReaderFile, LinesAcrossTheBlockEdgeReadAsFromMemory) {
  test::TempDir dir;
  // A CR LF pair, a lone CR and a long line right across the 256 KiB block edge, and
  // a line longer than two blocks, which makes the block grow.
  for (std::size_t pad : {262143u, 262142u, 262144u, 262141u, 100u}) {
    std::string text(pad, 'x');
    text += "\r\nnext\rthird\n\x8D\x81";
    text += std::string(600000, 'y');
    text += "\r";
    text += std::string(pad / 3, 'z');
    test::WriteFile(dir.file("f"), text);
    CleanLineReader file(dir.file("f"));
    EXPECT_EQ(cleanLinesOf(file), expectedOf(text)) << pad;
    EXPECT_EQ(expectedOf(text).size(), 5u);
  }
}

TEST(CleanLineReaderFile, ManyShortLinesOverManyBlocks) {
  test::TempDir dir;
  std::mt19937 rng(5);
  std::string text;
  while (text.size() < 1100000) {
    text.append(rng() % 90, static_cast<char>('A' + rng() % 26));
    const unsigned end = rng() % 8;
    text += end < 5 ? "\r\n" : end < 7 ? "\n" : "\r";
  }
  test::WriteFile(dir.file("f"), text);
  CleanLineReader file(dir.file("f"));
  EXPECT_EQ(cleanLinesOf(file), expectedOf(text));
  // With the capitals marked too (a line of one capital, or none when it is empty).
  CleanLineReader again(dir.file("f"));
  EXPECT_EQ(cleanLinesOf(again, "*", true), expectedOf(text));
}

TEST(CleanLineReaderFile, AMissingFileIsError53WithItsName) {
  try {
    CleanLineReader r(std::string("/no/such/capture.log"));
    FAIL();
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kFileNotFound);
    EXPECT_EQ(e.detail(), "/no/such/capture.log");
  }
}

}  // namespace
}  // namespace zv
