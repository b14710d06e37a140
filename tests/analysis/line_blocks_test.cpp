// Blocks of whole lines against LineReader: the same lines, however the blocks fall.
#include "analysis/line_blocks.h"

#include <gtest/gtest.h>

#include <random>

#include "analysis_test_support.h"
#include "core/line_reader.h"

namespace zv {
namespace {

using test::TempDir;
using test::WriteFile;

std::vector<std::string> ReaderLines(const std::string& path) {
  LineReader in(path);
  std::vector<std::string> lines;
  std::string line;
  while (in.readLine(line)) lines.push_back(line);
  return lines;
}

// The lines of a block as LineReader would split it.
std::vector<std::string> Split(std::string_view block) {
  LineReader in(block);
  std::vector<std::string> lines;
  std::string line;
  while (in.readLine(line)) lines.push_back(line);
  return lines;
}

TEST(LineBlocks, HoldWholeLinesWhateverTheirEndsAndTheBufferSize) {
  std::mt19937 random(13);
  static const std::string pieces[] = {"a", "word ", "\r\n", "\n", "\r", "\r\n\r\n", "\n\r", ""};
  for (int round = 0; round < 200; ++round) {
    TempDir dir;
    std::string text;
    for (int i = 0, n = static_cast<int>(random() % 60); i < n; ++i) text += pieces[random() % std::size(pieces)];
    WriteFile(dir.file("t.txt"), text);
    const std::vector<std::string> expected = ReaderLines(dir.file("t.txt"));
    for (std::size_t size : {std::size_t{1}, std::size_t{2}, std::size_t{7}, LineBlocks::kBlock}) {
      LineBlocks blocks(dir.file("t.txt"), size);
      std::vector<std::string> got;
      std::string joined;
      std::size_t counted = 0;
      for (std::string_view block = blocks.next(); !block.empty(); block = blocks.next()) {
        joined.append(block);
        const std::vector<std::string> lines = Split(block);
        got.insert(got.end(), lines.begin(), lines.end());
        std::size_t cut = 0;
        EXPECT_EQ(LinesIn(block, block.size() + 1, cut), lines.size());
        EXPECT_EQ(cut, block.size());
        counted += lines.size();
      }
      EXPECT_EQ(joined, text) << "size " << size;
      EXPECT_EQ(got, expected) << "size " << size << " text " << ::testing::PrintToString(text);
      EXPECT_EQ(counted, expected.size());
    }
  }
}

TEST(LinesIn, CutsAfterTheLinesAskedFor) {
  struct Case {
    std::string text;
    std::size_t most, lines, cut;
  } cases[] = {
      {"a\r\nb\r\nc", 2, 2, 6},   // the first two, CR LF and all
      {"a\r\nb\r\nc", 5, 3, 7},   // all three, the last without its end
      {"\r\r\n\n", 2, 2, 3},      // CR, then CR LF
      {"\r\r\n\n", 9, 3, 4},
      {"", 1, 0, 0},
  };
  for (const Case& c : cases) {
    std::size_t cut = 99;
    EXPECT_EQ(LinesIn(c.text, c.most, cut), c.lines) << ::testing::PrintToString(c.text);
    EXPECT_EQ(cut, c.cut) << ::testing::PrintToString(c.text);
  }
  // Long enough for the vector count: every kind of end across the 16-byte steps.
  std::string text;
  for (int i = 0; i < 300; ++i) text += i % 3 == 0 ? "xy\r\n" : i % 3 == 1 ? "z\r" : "\n";
  std::size_t cut = 0;
  EXPECT_EQ(LinesIn(text, text.size(), cut), Split(text).size());
}

}  // namespace
}  // namespace zv
