// Printing a text as wrapped lines behind a margin.
#pragma once

#include <cstdint>
#include <string_view>

namespace zv {

class TextOut;

// Prints `text` to `out` as lines of at most `width` characters, each behind
// `margin` blanks. A break falls at a blank, or just past the text's end. A remainder
// of exactly one character at the end is not printed.
//
// A word wider than `width` leaves no break position. Rather than loop for ever on
// it, WordWrap stops and raises error 5 ("Invalid procedure call or argument") with
// the word in the detail; the lines before it have been printed. A width below 1 is
// refused the same way.
void WordWrap(std::string_view text, int16_t width, int16_t margin, TextOut& out);

}  // namespace zv
