// Small scanning helpers of the record reader's parts: 7-bit character classes, and
// the words and parts of a text, visited without copies.
#pragma once

#include <cstddef>
#include <string_view>

#include "records/citation_parts.h"

namespace zv::scan {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isLower(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isAlpha(char c) { return isUpper(c) || isLower(c); }
constexpr char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

template <class Visit>
inline void forWords(std::string_view text, Visit&& visit) {
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && IsBlank(text[i])) ++i;
    std::size_t e = i;
    while (e < text.size() && !IsBlank(text[e])) ++e;
    if (e > i) visit(text.substr(i, e - i));
    i = e;
  }
}

inline std::size_t wordCount(std::string_view text) {
  std::size_t n = 0;
  forWords(text, [&](std::string_view) { ++n; });
  return n;
}

// Splits at `sep` (one character, or a run of two blanks when sep is 0).
template <class Visit>
inline void forParts(std::string_view text, char sep, Visit&& visit) {
  std::size_t i = 0;
  while (i <= text.size()) {
    std::size_t e = sep != 0 ? text.find(sep, i) : text.find("  ", i);
    if (e == std::string_view::npos) e = text.size();
    visit(text.substr(i, e - i));
    i = e + 1;
    if (sep == 0)
      while (i < text.size() && text[i] == ' ') ++i;
  }
}

}  // namespace zv::scan
