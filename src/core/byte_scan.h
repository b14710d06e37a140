// Scans of a line sixteen bytes at a time, for the loops that run once per line.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zv {

// Offset of the first CR or LF in `text`, or text.size() when there is none.
std::size_t FindCrOrLf(std::string_view text);

// How often each of four bytes occurs in `text`, in one pass. A filter learns from it
// which of its searches can find anything at all.
std::array<uint32_t, 4> CountBytes(std::string_view text, std::array<char, 4> bytes);

// Line ends in `text`: every LF and every CR, less each CR LF pair that lies within it
// (a pair astride the end of `text` is the caller's to settle).
int64_t CountLineEnds(std::string_view text);

// Marks the line ends of `text` in `words`, one bit a byte (bit i of words[i / 64]
// for byte i), for (text.size() + 63) / 64 words; the bits past the text's end are 0.
// A line end is a CR, or an LF that does not follow a CR: a CR LF pair is marked at
// its CR. A pair astride the end of `text` is the caller's to settle (its LF would be
// the first byte of the next text, and marked there).
void MarkLineEnds(std::string_view text, uint64_t* words);

// In place: clears the high bit of every byte, then turns every control character
// (below 32) into character 0. The same as LowAscii followed by RemCtrl with
// character 0, in one pass.
void CleanLine(std::string& text);
// The same, from `raw` into `out` in one pass (out's old text is replaced).
void CleanLineInto(std::string& out, std::string_view raw);

}  // namespace zv
