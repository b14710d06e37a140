// Text made UTF-8 for the export formats, and the test that lets plain text through
// uncopied: a byte of every kind at every place of texts around the vector widths.
#include "records/utf8_text.h"

#include <gtest/gtest.h>

#include <string>

namespace zv {
namespace {

TEST(Utf8Text, PlainTextIsToldByEveryByteAtEveryPlace) {
  struct Byte {
    char c;
    bool plain;  // with the special characters ',' and '"'
    std::string utf8;
  } bytes[] = {
      {'a', true, "a"},       {' ', true, " "},           {'~', true, "~"},      {',', false, ","},
      {'"', false, "\""},     {'\x01', false, " "},       {'\x1f', false, " "},  {'\x7f', false, " "},
      {'\0', false, " "},     {'\xe9', false, "\xc3\xa9"}, {'\x80', false, "\xe2\x82\xac"},
  };
  for (std::size_t n = 1; n <= 72; ++n) {
    for (std::size_t at = 0; at < n; ++at) {
      for (const Byte& b : bytes) {
        std::string text(n, 'x');
        text[at] = b.c;
        EXPECT_EQ(IsPlainAscii(text, ',', '"'), b.plain) << n << " " << at << " " << int(b.c);
        EXPECT_EQ(IsPlainAscii(text), b.plain || b.c == ',' || b.c == '"') << n << " " << at << " " << int(b.c);
        std::string out = "<";
        AppendUtf8(out, text);
        EXPECT_EQ(out, "<" + std::string(at, 'x') + b.utf8 + std::string(n - at - 1, 'x')) << n << " " << at;
      }
    }
  }
  EXPECT_TRUE(IsPlainAscii(""));
}

TEST(Utf8Text, ValidUtf8StaysAndOtherHighBytesAreWindows1252) {
  std::string out;
  AppendUtf8(out, "caf\xc3\xa9 \x93quoted\x94 \xed\xa0\x80 line\nfeed");
  EXPECT_EQ(out, "caf\xc3\xa9 \xe2\x80\x9cquoted\xe2\x80\x9d \xc3\xad\xc2\xa0\xe2\x82\xac line feed");
  out.clear();
  AppendUtf8(out, "line\nfeed", true);
  EXPECT_EQ(out, "line\nfeed");
}

}  // namespace
}  // namespace zv
