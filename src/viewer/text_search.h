// The viewer's search: a plain text, case-sensitive, anywhere in a file of any size.
#pragma once

#include <cstdint>
#include <string_view>

namespace zv {

// The offset of the first occurrence of `text` in `bytes` at or after `from`, or -1.
// An empty text is found nowhere.
int64_t FindText(std::string_view bytes, std::string_view text, int64_t from);

}  // namespace zv
