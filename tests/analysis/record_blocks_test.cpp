// Record blocks and the term search on them, against the line-by-line readings they
// replace: RecordReader's lines, and FirstMatch and CountMatches on upper-cased lines.
#include "analysis/record_blocks.h"

#include <gtest/gtest.h>

#include <random>

#include "analysis/term_search.h"
#include "analysis_test_support.h"
#include "records/record_file.h"

namespace zv {
namespace {

using test::TempDir;
using test::WriteFile;

// Text of `size` bytes with every kind of line end, empty lines, blanks and letters.
std::string MixedText(std::mt19937& random, std::size_t size) {
  static const std::string pieces[] = {"a", "Bc", " ", "\r\n", "\n", "\r", "\r\n\r\n", "word ", "\t"};
  std::string text;
  while (text.size() < size) text += pieces[random() % std::size(pieces)];
  text.resize(size);
  return text;
}

struct BufferSizes {
  const char* name;
  std::size_t first, limit;
};

class RecordBlocks : public ::testing::TestWithParam<BufferSizes> {};

TEST_P(RecordBlocks, GiveTheLinesRecordReaderGivesWithTheirBytesAndSizes) {
  std::mt19937 random(7);
  for (int file = 0; file < 40; ++file) {
    TempDir dir;
    const std::string path = dir.file("r.PRO");
    const std::string text = MixedText(random, random() % 700);
    WriteFile(path, text);
    RecordReader reader(path);
    RecordBlockReader blocks(path, GetParam().first, GetParam().limit);
    RecordBlockReader raw(path, GetParam().first, GetParam().limit);
    RecordBlock block;
    int64_t offset = 0;
    for (int record = 0; record < 60; ++record) {
      // Mostly onward, as records are read, now and then anywhere, past the end too.
      if (random() % 5 == 0) offset = random() % (text.size() + 10);
      const auto lines = static_cast<int32_t>(random() % 9);
      std::vector<std::string> expected(static_cast<std::size_t>(lines));
      reader.seek(offset);
      for (std::string& line : expected) reader.readLine(line);
      if (!blocks.read(offset, lines, block)) {
        std::size_t textBytes = 0;
        for (const std::string& line : expected) textBytes += line.size() + 1;
        EXPECT_GT(textBytes, GetParam().limit / 2) << "refused a record that fits";
        continue;
      }
      std::vector<std::string> got;
      ForEachBlockLine(block, [&](int32_t n, std::string_view line) {
        EXPECT_EQ(n, static_cast<int32_t>(got.size()) + 1);
        got.emplace_back(line);
      });
      ASSERT_EQ(got, expected) << "file " << file << " offset " << offset << " lines " << lines;
      std::size_t textBytes = 0, longest = 0;
      std::string asCrLf;
      for (int32_t n = 1; n <= block.fileLines; ++n) {
        textBytes += block.line(n).size();
        longest = std::max(longest, block.line(n).size());
        asCrLf += std::string(block.line(n)) + "\r\n";
      }
      EXPECT_EQ(block.text, textBytes);
      EXPECT_EQ(block.longest, longest);
      EXPECT_EQ(block.bytes, std::string_view(text).substr(std::min<std::size_t>(offset, text.size()), block.bytes.size()));
      EXPECT_EQ(block.crlf, block.bytes == asCrLf);
      EXPECT_EQ(block.asItStands(), block.crlf && block.fileLines == lines);
      // The same bytes again by their extent alone, as the ordered writer takes them.
      std::string_view again;
      ASSERT_TRUE(raw.readRaw(offset, block.bytes.size(), again));
      EXPECT_EQ(again, block.bytes);
      // Bytes past the end of the file are no extent.
      EXPECT_FALSE(raw.readRaw(offset, text.size() + 1 - std::min<std::size_t>(offset, text.size()), again));
      std::string written;
      AppendBlockLines(written, block);
      EXPECT_EQ(static_cast<int64_t>(written.size()), block.writtenBytes());
      EXPECT_EQ(written, test::CrLf(expected));
      offset += static_cast<int64_t>(block.bytes.size());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Buffers, RecordBlocks,
                         ::testing::Values(BufferSizes{"Default", RecordBlockReader::kFirstBuffer, RecordBlockReader::kLimit},
                                           BufferSizes{"Tiny", 1, 4096}, BufferSizes{"Small", 17, 64},
                                           BufferSizes{"OneLimit", 32, 32}),
                         [](const ::testing::TestParamInfo<BufferSizes>& p) { return std::string(p.param.name); });

TEST(RecordBlocksLimit, ARecordLargerThanTheLimitIsRefusedAndTheNextOneRead) {
  TempDir dir;
  const std::string path = dir.file("r.PRO");
  WriteFile(path, std::string(100, 'x') + "\r\nshort\r\n");
  RecordBlockReader blocks(path, 16, 64);
  RecordBlock block;
  EXPECT_FALSE(blocks.read(0, 1, block));
  ASSERT_TRUE(blocks.read(102, 1, block));
  EXPECT_EQ(block.line(1), "short");
  EXPECT_THROW(blocks.read(-1, 1, block), ZvError);
}

// Lines of words, delimiters and cases, for the term search.
std::vector<std::string> WordyLines(std::mt19937& random, int count) {
  static const std::string pieces[] = {"cost", "COSTS", "Cost-effective", "price", "cd-rom", "why?", " ", "  ",
                                       ".", ",", "(", ")", "\t", "-", "coSt", "x", "costcost", "\"", "*"};
  std::vector<std::string> lines(static_cast<std::size_t>(count));
  for (std::string& line : lines)
    for (int i = 0, n = static_cast<int>(random() % 12); i < n; ++i) line += pieces[random() % std::size(pieces)];
  return lines;
}

TEST(TermFinderAgainstLines, FindsAndCountsWhatTheWordsOfTheUpperCasedLinesMeet) {
  const DelimiterSet delims(kSearchDelims);
  const char* typed[] = {"cost", "cost*", "COSTS", "cost-effective", "cd-rom*", "why?", "why", "x", "x*",
                         "c", "costcost", "cost.x", " cost", "*", "", "price*", "t", "costcostcostcostcost*"};
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    const std::vector<std::string> lines = WordyLines(random, 1 + static_cast<int>(random() % 6));
    // Any line end, and now and then none after the last line.
    static const char* ends[] = {"\r\n", "\n", "\r", ""};
    std::string block;
    for (std::size_t i = 0; i < lines.size(); ++i) block += lines[i] + ends[random() % (i + 1 < lines.size() ? 3 : 4)];
    for (const char* t : typed) {
      const Term term = PrepareTerm(t);
      bool any = false;
      int64_t count = 0;
      for (std::string line : lines) {
        UpperInPlace(line);
        if (term.empty() || !LineHolds(line, term.text)) continue;
        any = any || FirstMatch(line, term, delims, false);
        count += CountMatches(line, term, delims, false);
      }
      const TermFinder finder(term, delims);
      EXPECT_EQ(finder.any(block), any) << "term " << t << " in\n" << block;
      EXPECT_EQ(finder.count(block), count) << "term " << t << " in\n" << block;
    }
  }
}

}  // namespace
}  // namespace zv
