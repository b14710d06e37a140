// Tests of CountTokens and ParseLine.
#include "core/parse.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/error.h"

namespace zv {
namespace {

using Fields = std::vector<std::string>;

TEST(CountTokensTest, SumsEachDelimiterCharacterPlusOne) {
  EXPECT_EQ(CountTokens("a,,b;c", ",;"), 4);  // side by side, each counts
  EXPECT_EQ(CountTokens("", ","), 1);
  EXPECT_EQ(CountTokens("a,b", ""), 1);
  EXPECT_EQ(CountTokens("a,b", ",,"), 3);  // a delimiter named twice counts twice
}

TEST(ParseLineTest, SplitsTrimmedTextAtEveryDelimiter) {
  Tokens t = ParseLine("  TI=word;AU=name  ", ";=");
  EXPECT_EQ(t.glTokens, 4);
  EXPECT_EQ(t.gvTokens, (Fields{"TI", "word", "AU", "name"}));

  // Blanks inside are kept; only the ends are trimmed.
  t = ParseLine(" a b , c ", ",");
  EXPECT_EQ(t.gvTokens, (Fields{"a b ", " c"}));

  EXPECT_EQ(ParseLine("aXbxc", "x").gvTokens, (Fields{"aXb", "c"}));  // case-sensitive
  // A delimiter named twice leaves an empty trailing element.
  t = ParseLine("a,b", ",,");
  EXPECT_EQ(t.glTokens, 3);
  EXPECT_EQ(t.gvTokens, (Fields{"a", "b", ""}));
}

TEST(ParseLineTest, EmptyElements) {
  Tokens t = ParseLine("", ",");
  EXPECT_EQ(t.glTokens, 1);
  EXPECT_EQ(t.gvTokens, (Fields{""}));

  t = ParseLine("a,b,", ",");
  EXPECT_EQ(t.glTokens, 3);
  EXPECT_EQ(t.gvTokens, (Fields{"a", "b", ""}));

  t = ParseLine(",a,,b", ",");
  EXPECT_EQ(t.gvTokens, (Fields{"", "a", "", "b"}));

  t = ParseLine("   ", ",");
  EXPECT_EQ(t.gvTokens, (Fields{""}));
}

TEST(ParseLineTest, TextBeyond16BitPositionsOverflows) {
  const std::string fits(32767, 'a');
  EXPECT_EQ(ParseLine("  " + fits + "  ", ",").gvTokens, (Fields{fits}));
  try {
    ParseLine(fits + "a", ",");
    FAIL() << "no overflow";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kOverflow);
    EXPECT_EQ(e.text(), "Overflow");
  }
}

}  // namespace
}  // namespace zv
