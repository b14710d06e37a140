// Tests of WordWrap: break positions, margins, the unprinted last character, errors.
#include "core/word_wrap.h"

#include <gtest/gtest.h>

#include <string>

#include "core/error.h"
#include "core/text_out.h"
#include "support/test_support.h"

namespace zv {
namespace {

// Runs WordWrap into a file and gives back what it printed.
std::string wrapped(std::string_view text, int16_t width, int16_t margin) {
  test::TempDir dir;
  const std::string path = dir.file("out.txt");
  TextOut out(path);
  WordWrap(text, width, margin, out);
  out.close();
  return test::ReadFile(path);
}

int32_t wrapError(std::string_view text, int16_t width, std::string* detail = nullptr) {
  test::TempDir dir;
  TextOut out(dir.file("out.txt"));
  try {
    WordWrap(text, width, 0, out);
  } catch (const ZvError& e) {
    if (detail) *detail = e.detail();
    return e.number();
  }
  return 0;
}

TEST(WordWrapTest, BreaksAtTheLastBlankWithinWidth) {
  EXPECT_EQ(wrapped("the quick brown fox", 10, 0), "the quick\r\nbrown fox\r\n");
  EXPECT_EQ(wrapped("the quick brown fox", 10, 3), "   the quick\r\n   brown fox\r\n");
  // A blank just past the width still breaks: the line holds width characters.
  EXPECT_EQ(wrapped("abcde fgh", 5, 0), "abcde\r\nfgh\r\n");
  // The break is the last blank in reach, so blanks before it stay on the line;
  // those after it are stepped over.
  EXPECT_EQ(wrapped("aaa    bbb", 4, 0), "aaa \r\nbbb\r\n");
  EXPECT_EQ(wrapped("short", 40, 2), "  short\r\n");
  EXPECT_EQ(wrapped("abcdefghij", 10, 0), "abcdefghij\r\n");  // exactly the width, no blank
  EXPECT_EQ(wrapped(" abcd", 4, 0), "\r\nabcd\r\n");         // a leading blank: an empty first line
}

TEST(WordWrapTest, SingleCharacterRemainderIsNotPrinted) {
  EXPECT_EQ(wrapped("abc d", 3, 0), "abc\r\n");
  EXPECT_EQ(wrapped("abc de", 3, 0), "abc\r\nde\r\n");
  // Trailing blanks are stepped over and end the text.
  EXPECT_EQ(wrapped("abc   ", 3, 0), "abc\r\n");
  // A text of one character is the first pass, not a remainder: it prints.
  EXPECT_EQ(wrapped("a", 3, 1), " a\r\n");
  // An empty text prints the margin alone once.
  EXPECT_EQ(wrapped("", 3, 2), "  \r\n");
}

TEST(WordWrapTest, WordWiderThanWidthRaisesInsteadOfLooping) {
  std::string word;
  EXPECT_EQ(wrapError("ok toolongword end", 5, &word), err::kInvalidCall);
  EXPECT_EQ(word, "toolongword");
  EXPECT_EQ(wrapError("abcdefghijk", 10, &word), err::kInvalidCall);
  EXPECT_EQ(word, "abcdefghijk");
  EXPECT_EQ(wrapError("abc", 0), err::kInvalidCall);
  EXPECT_EQ(wrapError("abc", -3), err::kInvalidCall);

  // The lines before the too wide word are printed.
  test::TempDir dir;
  const std::string path = dir.file("out.txt");
  TextOut out(path);
  EXPECT_THROW(WordWrap("ab cd efghijkl", 5, 1, out), ZvError);
  out.close();
  EXPECT_EQ(test::ReadFile(path), " ab cd\r\n");
}

}  // namespace
}  // namespace zv
