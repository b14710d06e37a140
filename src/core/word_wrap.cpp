// Printing a text as wrapped lines behind a margin.
#include "core/word_wrap.h"

#include <string>

#include "core/error.h"
#include "core/text_out.h"

namespace zv {

namespace {

[[noreturn]] void refuse(std::string detail) {
  throw ZvError(err::kInvalidCall, ErrorText(err::kInvalidCall), std::move(detail));
}

}  // namespace

// Positions here count from 1: a break position p holds a
// blank or is n + 1, and the line printed is start .. p - 1. The first pass runs
// before the test, so an empty text prints one line of margin alone; later passes run
// only while start < n, which leaves a last single character unprinted.
void WordWrap(std::string_view text, int16_t width, int16_t margin, TextOut& out) {
  if (width < 1) refuse("WordWrap width " + std::to_string(width));
  if (margin < 0) refuse("WordWrap margin " + std::to_string(margin));
  const int64_t n = static_cast<int64_t>(text.size());
  const auto at = [&](int64_t pos) { return text[static_cast<std::size_t>(pos - 1)]; };
  const std::string indent(static_cast<std::size_t>(margin), ' ');

  int64_t start = 1;
  do {
    int64_t brk = 0;
    for (int64_t p = start + width; p >= start; --p) {
      if (p == n + 1 || (p <= n && at(p) == ' ')) {
        brk = p;
        break;
      }
    }
    if (brk == 0) {
      // No blank within reach: the word at start is wider than the line.
      const std::size_t from = static_cast<std::size_t>(start - 1);
      const std::size_t blank = text.find(' ', from);
      refuse(std::string(text.substr(from, blank == std::string_view::npos ? std::string_view::npos : blank - from)));
    }
    out.line(indent + std::string(text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(brk - start))));
    start = brk + 1;
    while (start <= n && at(start) == ' ') ++start;
  } while (start < n);
}

}  // namespace zv
