// LineReader: every kind of line end, from memory and across the file buffer's edge.
#include "core/line_reader.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "support/test_support.h"

namespace zv {
namespace {

std::vector<std::string> linesOf(LineReader& r) {
  std::vector<std::string> out;
  std::string line;
  while (r.readLine(line)) out.push_back(line);
  return out;
}

// The same lines through the form that shows them in place.
std::vector<std::string> viewsOf(LineReader& r) {
  std::vector<std::string> out;
  std::string_view line;
  while (r.readLine(line)) out.emplace_back(line);
  return out;
}

std::vector<std::string> linesOf(std::string_view text) {
  LineReader r(text), again(text);
  std::vector<std::string> lines = linesOf(r);
  EXPECT_EQ(viewsOf(again), lines) << testing::PrintToString(std::string(text));
  return lines;
}

using Lines = std::vector<std::string>;

TEST(LineReaderEnds, CrLfLfAndCrAllEndALine) {
  EXPECT_EQ(linesOf("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
  EXPECT_EQ(linesOf("a\r\n\r\n"), (Lines{"a", ""}));
  EXPECT_EQ(linesOf("\n\n"), (Lines{"", ""}));
  EXPECT_EQ(linesOf("\r\r\n"), (Lines{"", ""}));  // CR, then CR LF
  EXPECT_EQ(linesOf("a\n\rb"), (Lines{"a", "", "b"}));  // LF CR is two ends
  // An empty input has no lines; an unended last line counts.
  EXPECT_TRUE(linesOf("").empty());
  EXPECT_EQ(linesOf("only"), (Lines{"only"}));
  EXPECT_EQ(linesOf(std::string("\0x\0", 3)), (Lines{std::string("\0x\0", 3)}));
}

TEST(LineReaderFile, LinesAcrossTheBufferEdgeReadAsFromMemory) {
  test::TempDir dir;
  // Put a CR LF pair, a lone CR and a long line right across the 256 KiB chunk edge.
  for (std::size_t pad : {262143u, 262142u, 262144u}) {
    std::string text(pad, 'x');
    text += "\r\nnext\rthird\n";
    text += std::string(300000, 'y');
    text += "\r";
    test::WriteFile(dir.file("f"), text);
    LineReader file(dir.file("f")), again(dir.file("f"));
    EXPECT_EQ(linesOf(file), linesOf(text)) << pad;
    EXPECT_EQ(viewsOf(again), linesOf(text)) << pad;
    EXPECT_EQ(linesOf(text).size(), 4u);
  }
}

TEST(LineReaderFile, AMissingFileIsError53WithItsName) {
  try {
    LineReader r(std::string("/no/such/capture.log"));
    FAIL();
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kFileNotFound);
    EXPECT_EQ(e.detail(), "/no/such/capture.log");
  }
}

}  // namespace
}  // namespace zv
