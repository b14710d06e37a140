// One pass over a piece of text as Diction without limits cuts it: which bytes end
// words and lines, where a hyphen may begin "--" or "Record - ", and a copy of the
// text with its capitals made small; sixty-four bytes at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zv {

// A set of bytes, and the tables that find its bytes many at a time.
class ByteSetMasks {
 public:
  explicit ByteSetMasks(const std::array<bool, 256>& in);

  // The set as two 16-entry tables, by the low and the high half of a byte, whose
  // AND is not zero exactly for the bytes in the set; possible when the high halves
  // fall into at most eight classes of the same low halves.
  bool nibbles() const { return nibbles_; }
  const unsigned char* lowTable() const { return low_; }
  const unsigned char* highTable() const { return high_; }
  bool has(unsigned char c) const { return in_[c]; }

 private:
  std::array<bool, 256> in_{};
  bool nibbles_ = false;
  alignas(16) unsigned char low_[16] = {};
  alignas(16) unsigned char high_[16] = {};
};

// What ScanText finds in a piece of n bytes; one mask for each 64 bytes, bit i of mask
// k for byte 64k + i. The vectors keep their room from one piece to the next.
struct TextScan {
  std::vector<uint64_t> ends;      // the byte ends a word: a delimiter, CR or LF; set past the end
  std::vector<uint64_t> lineEnds;  // CR or LF
  std::vector<std::size_t> hyphens;  // each hyphen followed, within the piece, by a hyphen or a blank
  std::vector<char> lower;         // the piece with A to Z made small, and 64 bytes more
  std::size_t size = 0;
  std::size_t lines = 0;  // a CR LF pair one line end, and a last line without its end a line
};

// Diction's delimiters with CR and LF: the bytes that end a word.
const ByteSetMasks& DictionWordEnds();

// Scans `n` bytes of `text`, which must have 64 readable bytes after them. `ends` has a
// mask more than the piece needs, all set, so that a word can be followed to its end
// without a test for the last mask.
void ScanText(const char* text, std::size_t n, TextScan& out);
// ScanText a byte at a time, as on a processor without AVX2.
void ScanTextBytewise(const char* text, std::size_t n, TextScan& out);

}  // namespace zv
