// The words of a block of lines that meet a search term, found without upper-casing
// or splitting the lines.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/analysis_common.h"

namespace zv {

// Finds the words that meet `term` in text of several lines (CR and LF end lines),
// exactly as FirstMatch and CountMatches find them line by line in the upper-cased
// lines: a word meets the term where the term stands, compared as upper case, between
// a delimiter or a line's start and, untruncated, a delimiter or a line's end. A term
// holding a delimiter, a CR or an LF meets no word.
class TermFinder {
 public:
  TermFinder() = default;
  TermFinder(const Term& term, const DelimiterSet& delims);

  // False for a term that meets no word anywhere (empty, or holding a delimiter).
  bool active() const { return active_; }
  // Whether some word of `text` meets the term.
  bool any(std::string_view text) const;
  // How many words of `text` meet it.
  int64_t count(std::string_view text) const;

 private:
  template <class OnMatch>
  void forEach(std::string_view text, OnMatch&& onMatch) const;
  bool matchesAt(const unsigned char* s, std::size_t n, std::size_t at) const;

  std::string text_;  // upper case
  bool truncated_ = false;
  bool active_ = false;
  unsigned char first_[2] = {0, 0};  // the bytes whose upper case is the term's first
  unsigned char second_[2] = {0, 0}; // its second (its first when shorter than three)
  unsigned char last_[2] = {0, 0};   // and its last character
  std::array<bool, 256> ends_{};     // the delimiters, CR and LF
  // The term's first 16 bytes for the comparison of 16 at once: a text byte OR fold_
  // equals folded_ exactly where its upper case is the term's byte.
  unsigned char fold_[16] = {};
  unsigned char folded_[16] = {};
  bool sixteen_ = false;
  std::array<unsigned char, 256> upper_{};
};

}  // namespace zv
