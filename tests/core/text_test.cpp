// Tests of the string primitives: counts, searches, in-place changes and time texts.
#include "core/text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/error.h"

namespace zv {
namespace {

TEST(TextCounts, BlanksAndInCount) {
  EXPECT_EQ(Blanks("  x  y"), 2);
  EXPECT_EQ(Blanks("  "), 2);
  EXPECT_EQ(Blanks("\t x"), 0);  // a tab is no blank
  // InCount is case-sensitive and does not overlap.
  EXPECT_EQ(InCount("aAa", "a"), 2);
  EXPECT_EQ(InCount("aaaa", "aa"), 2);
  EXPECT_EQ(InCount("abc", ""), 0);
}

TEST(TextCounts, InCountTblAsAllDigitsAndAllCapitalsTest) {
  const std::string digits = "0123456789";
  EXPECT_EQ(InCountTbl("12a45", digits), 4);
  EXPECT_EQ(InCountTbl("ABSTRACT", "ABCDEFGHIJKLMNOPQRSTUVWXYZ"), 8);
  EXPECT_EQ(InCountTbl("Abstract", "ABCDEFGHIJKLMNOPQRSTUVWXYZ"), 1);
  // An empty text passes the "all digits" test: its count equals its length.
  EXPECT_EQ(InCountTbl("", digits), 0);
  // 8-bit characters are looked up like any other.
  EXPECT_EQ(InCountTbl("\xE9x\xE9", "\xE9"), 2);
}

TEST(TextSearch, InstrTblFindsFirstTableCharacterFromStart) {
  EXPECT_EQ(InstrTbl(1, "AN 12345", "0123456789"), 4);
  EXPECT_EQ(InstrTbl(1, "AN 0012", "123456789"), 6);
  EXPECT_EQ(InstrTbl(6, "1 2 3", "0123456789"), 0);
  EXPECT_EQ(InstrTbl(1, "", "0123456789"), 0);
}

TEST(TextSearch, QPTrimTrimsBlanksOnly) {
  EXPECT_EQ(QPTrim("  a b  "), "a b");
  EXPECT_EQ(QPTrim("    "), "");
  EXPECT_EQ(QPTrim("\ta\t"), "\ta\t");
}

std::vector<std::string> allTokens(std::string_view text, std::string_view delimiters) {
  std::vector<std::string> out;
  int32_t position = 1;
  int guard = 0;
  while (position != 0 && ++guard < 100) out.push_back(ParseString(position, text, delimiters));
  return out;
}

TEST(TextSearch, ParseStringWalksTokensUntilPositionIsZero) {
  EXPECT_EQ(allTokens("alpha beta,gamma", " ,"), (std::vector<std::string>{"alpha", "beta", "gamma"}));
  // Delimiters in a row give empty tokens, which callers skip by length.
  EXPECT_EQ(allTokens("a  b", " "), (std::vector<std::string>{"a", "", "b"}));
  // A delimiter at the end uses the text up.
  EXPECT_EQ(allTokens("a b ", " "), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(allTokens("", " "), (std::vector<std::string>{""}));

  int32_t position = 3;
  EXPECT_EQ(ParseString(position, "ab cd ef", " "), "");
  EXPECT_EQ(position, 4);
  EXPECT_EQ(ParseString(position, "ab cd ef", " "), "cd");
  EXPECT_EQ(position, 7);
}

TEST(TextChanges, InPlaceChangesKeepTheLength) {
  std::string low = "A\xC1\x80z\xFF";
  LowAscii(low);  // clears the high bit
  EXPECT_EQ(low, std::string("AA\0z\x7F", 5));

  // RemCtrl replaces codes below 32 only.
  std::string s = "a\tb\x1B[c\x7F\x80";
  RemCtrl(s, std::string(1, '\0'));
  // 8-bit characters are no control characters, with or without LowAscii before.
  EXPECT_EQ(s, std::string("a\0b\0[c\x7F\x80", 8));
  std::string t = "x\r\ny";
  RemCtrl(t, " ");
  EXPECT_EQ(t, "x  y");
  std::string u = "\x01\x1F";
  RemCtrl(u, "");
  EXPECT_EQ(u, std::string(2, '\0'));

  std::string r = "a^b|c^";
  ReplaceChar(r, "^", " ");
  ReplaceChar(r, "|", " ");
  EXPECT_EQ(r, "a b c ");
  EXPECT_EQ(UCase("Record - 1: abz{\xE9"), "RECORD - 1: ABZ{\xE9");
}

TEST(TextTime, Time2NumReadsHoursMinutesSeconds) {
  EXPECT_EQ(Time2Num("01:02:03"), 3723);
  EXPECT_EQ(Time2Num("10:xx:05"), 36005);
  EXPECT_EQ(Time2Num("10:30"), 37800);
  EXPECT_EQ(Time2Num(""), 0);
  EXPECT_EQ(Time2Num("-00:01:05"), -65);
  try {
    Time2Num("999999999:00:00");
    FAIL() << "no overflow";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kOverflow);
  }
}

TEST(TextTime, Num2TimeWritesTwoDigitFieldsAndNegativesBehindMinus) {
  EXPECT_EQ(Num2Time(3723), "01:02:03");
  EXPECT_EQ(Num2Time(100 * 3600), "100:00:00");
  EXPECT_EQ(Num2Time(-65), "-00:01:05");
  EXPECT_EQ(Num2Time(INT32_MIN), "-596523:14:08");
  for (int32_t s : {0, 59, 60, 3599, 86399, -86399})
    EXPECT_EQ(Time2Num(Num2Time(s)), s) << s;
}

}  // namespace
}  // namespace zv
