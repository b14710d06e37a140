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

// The bytes of p[0, min(n, 64)) that lie in [lo, hi] (as unsigned bytes, lo <= hi) or
// are `also`, byte k as bit k.
uint64_t BytesInRange64(const char* p, std::size_t n, char lo, char hi, char also);

// Calls `visit(offset)` for each byte of `text` that lies in [lo, hi] or is `also`, in
// order, until it returns false.
template <class Visit>
void ForEachByteInRange(std::string_view text, char lo, char hi, char also, Visit&& visit) {
  for (std::size_t at = 0; at < text.size(); at += 64)
    for (uint64_t bits = BytesInRange64(text.data() + at, text.size() - at, lo, hi, also); bits != 0;
         bits &= bits - 1)
      if (!visit(at + static_cast<std::size_t>(__builtin_ctzll(bits)))) return;
}

// How often each of four bytes occurs in `text`, in one pass. A filter learns from it
// which of its searches can find anything at all.
std::array<uint32_t, 4> CountBytes(std::string_view text, std::array<char, 4> bytes);

// Line ends in `text`: every LF and every CR, less each CR LF pair that lies within it
// (a pair astride the end of `text` is the caller's to settle).
int64_t CountLineEnds(std::string_view text);

// One pass over a block of input: cleans `text[0, n)` in place as CleanLine does, but
// for the CR and LF bytes, which stay as they are, and lists the line ends in it, in
// order, as offsets from `text` plus `base`: every CR, and every LF that does not
// follow a CR. The 64 bytes behind `text + n` must be there and 0 (they are cleaned
// too, which leaves them 0), and `ends` must have room for n + 4 entries.
//
// With `marked` (one to four bytes, none of them CR, LF or NUL) it also lists in `marks`,
// the same way, where the cleaned text holds any of them (room for n + 4 entries);
// with `capitals` too, where it holds a capital letter A to Z (then `marked` must not
// be empty: a capital of its own will do).
struct ScanCounts {
  std::size_t ends = 0;
  std::size_t marks = 0;
};
ScanCounts CleanAndListLineEnds(char* text, std::size_t n, std::size_t base, std::size_t* ends,
                                std::string_view marked = {}, std::size_t* marks = nullptr, bool capitals = false);

// Whether the scans use the processor's 32-byte instructions where it has them (the
// default): false makes them take the 16-byte way, so that a test can try both.
// Returns the setting before.
bool UseWideScans(bool use);

// Whether `part` occurs in `text`, as text.find(part) != npos: sixteen places at a
// time are tried by their first and last character, and only a place where both match
// is compared in full. (A library search stops at every occurrence of the first
// character, which in a line of capitals is most of them.)
bool HoldsText(std::string_view text, std::string_view part);

// In place: clears the high bit of every byte, then turns every control character
// (below 32) into character 0. The same as LowAscii followed by RemCtrl with
// character 0, in one pass.
void CleanLine(std::string& text);
// The same, from `raw` into `out` in one pass (out's old text is replaced).
void CleanLineInto(std::string& out, std::string_view raw);

}  // namespace zv
