// Tests of BaseName and ReplaceAll.
#include "core/brindle.h"

#include <gtest/gtest.h>

#include <string>

namespace zv {
namespace {

TEST(BaseNameTest, DropsFolderAndLastExtension) {
  EXPECT_EQ(BaseName("C:\\DIR\\A.B.LOG"), "A.B");
  EXPECT_EQ(BaseName("/home/u/caps/session.log"), "session");
  EXPECT_EQ(BaseName("C:SESSION.CAP"), "SESSION");
  EXPECT_EQ(BaseName(".LOG"), "");
  EXPECT_EQ(BaseName("NAME."), "NAME");
  // No dot anywhere: the name after the last stop.
  EXPECT_EQ(BaseName("/tmp/capture"), "capture");
  EXPECT_EQ(BaseName("CAPTURE"), "CAPTURE");
  EXPECT_EQ(BaseName("C:\\DIR\\"), "");
  // A dot only in a folder name: the walk stops before it and keeps nothing.
  EXPECT_EQ(BaseName("C:\\DIR.OLD\\CAPTURE"), "");
  EXPECT_EQ(BaseName("/tmp/x.d/capture"), "");
}

std::string replaced(std::string text, std::string_view find, std::string_view with) {
  ReplaceAll(text, find, with);
  return text;
}

TEST(ReplaceAllTest, ReplacesEveryOccurrenceLeftToRightAndEnds) {
  EXPECT_EQ(replaced("aaaa", "aa", "b"), "bb");
  EXPECT_EQ(replaced("Record Record", "Record", ""), " ");
  EXPECT_EQ(replaced("abc", "", "y"), "abc");
  EXPECT_EQ(replaced("aBc", "b", "X"), "aBc");
  // A replacement holding the sought text does not loop.
  EXPECT_EQ(replaced("xx", "x", "xxx"), "xxxxxx");
  EXPECT_EQ(replaced("ab", "b", "ab"), "aab");
}

}  // namespace
}  // namespace zv
