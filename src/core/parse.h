// Splitting a line into fields at delimiter characters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

// The number of fields of `text`: for each character of `delimiters`, its occurrences
// in `text`, summed, plus 1. Adjacent delimiters each count.
int32_t CountTokens(std::string_view text, std::string_view delimiters);

// The result of ParseLine: `gvTokens[i - 1]` is element i, `glTokens` the count.
struct Tokens {
  std::vector<std::string> gvTokens;
  int32_t glTokens = 0;
};

// Trims `text` of blanks at both ends and splits it at every character found in
// `delimiters` (case-sensitive). Adjacent delimiters give empty elements, an empty
// text gives one empty element. Positions are 16-bit: a trimmed text longer than
// 32,767 characters raises error 6 (Overflow).
Tokens ParseLine(std::string_view text, std::string_view delimiters);

}  // namespace zv
