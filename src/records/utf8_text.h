// Text of record files as UTF-8, for the formats that must be UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zv {

// Appends `text` to `out` as UTF-8. Valid UTF-8 goes as it is; any other byte above
// 127 is read as Windows-1252, the single-byte set of the captures' time, so no text
// is lost and nothing invalid comes out. Control characters (the NULs the filters
// leave where tabs stood) become blanks, but for line feeds when `keepLineFeeds`.
// Printable 7-bit text is copied in one step.
void AppendUtf8(std::string& out, std::string_view text, bool keepLineFeeds = false);

// Whether every byte is below 128.
bool IsAscii(std::string_view text);

// Whether every byte is printable 7-bit text (a blank to "~") and none is `a` or `b`:
// text that a format copies as it stands. Sixteen bytes at a time.
bool IsPlainAscii(std::string_view text, char a = '\0', char b = '\0');

// The next character of `text` from `at` (moved past it): a code point of valid UTF-8,
// else the byte read as Windows-1252.
char32_t NextChar(std::string_view text, std::size_t& at);

}  // namespace zv
