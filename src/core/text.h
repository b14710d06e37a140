// String primitives on single-byte text: tests, counts, in-place changes and time.
//
// Positions count from 1, a search that finds nothing gives 0, and a true result is
// -1. Routines marked "in place" change the characters of their argument and keep
// its length.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/byte_scan.h"

namespace zv {

// Count of the text's leading blanks; an all-blank text gives its length.
int32_t Blanks(std::string_view text);

// Occurrences of `sought` in `text`, case-sensitive, not overlapping.
int32_t InCount(std::string_view text, std::string_view sought);

// Number of characters of `text` that occur in `table`. An empty text gives 0.
int32_t InCountTbl(std::string_view text, std::string_view table);

// Position of the first character at or after `start` that occurs in `table`; 0 if none.
int32_t InstrTbl(int32_t start, std::string_view text, std::string_view table);

// A copy of the text without leading and trailing blanks.
std::string QPTrim(std::string_view text);

// The next token of `text` from `position` on; a token ends at any one character of
// `delimiters`. `position` moves to the start of the next token and becomes 0 when
// the text is used up: callers loop while it is not 0, starting from 1. Delimiters in
// a row give empty tokens, which callers skip by their length.
std::string ParseString(int32_t& position, std::string_view text, std::string_view delimiters);

// In place: clears the high bit of every character.
void LowAscii(std::string& text);

// In place: every control character (code below 32) becomes `replacement`'s first
// character, or character 0 if `replacement` is empty. The filters pass character 0,
// which then stands in the line: no recognition test looks for it, so every test
// gives the result it would have given with the control character itself.
void RemCtrl(std::string& text, std::string_view replacement);

// In place: every `oldChar` becomes `newChar` (first characters of each).
void ReplaceChar(std::string& text, std::string_view oldChar, std::string_view newChar);

// Seconds since midnight of a text "hh:mm:ss". Missing or non-numeric fields count 0;
// a leading "-" (as Num2Time writes it) gives the negative count. A total beyond
// 32 bits raises error 6 (Overflow).
int32_t Time2Num(std::string_view text);

// The text "hh:mm:ss" of a count of seconds. A negative count (a job that crossed
// midnight) gives the same text behind a "-".
std::string Num2Time(int32_t seconds);

// Upper-case copy of 7-bit text (for the tests that bring both sides to upper case).
std::string UCase(std::string_view text);

// Whether `part` occurs in `text` (a case-sensitive search).
inline bool Holds(std::string_view text, std::string_view part) { return HoldsText(text, part); }

// `text` without the blanks (0x20 only) at either end, as a view of it.
inline std::string_view TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace zv
