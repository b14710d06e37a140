// Splitting a line into fields at delimiter characters.
#include "core/parse.h"

#include <limits>

#include "core/error.h"
#include "core/text.h"

namespace zv {

int32_t CountTokens(std::string_view text, std::string_view delimiters) {
  int32_t count = 1;
  // One InCount per delimiter character: a character named twice counts twice.
  for (char c : delimiters) count += InCount(text, std::string_view(&c, 1));
  return count;
}

Tokens ParseLine(std::string_view text, std::string_view delimiters) {
  const std::string trimmed = QPTrim(text);
  if (trimmed.size() > static_cast<std::size_t>(std::numeric_limits<int16_t>::max()))
    ThrowOverflow(LimitReason("a line split into fields (ParseLine)", std::numeric_limits<int16_t>::max()) +
                      " This one has " + std::to_string(trimmed.size()) + " characters.",
                  "ParseLine");

  Tokens result;
  result.glTokens = CountTokens(trimmed, delimiters);
  // Sized by the count, as the callers index it; a delimiter named twice in
  // `delimiters` leaves empty elements at the end.
  result.gvTokens.resize(static_cast<std::size_t>(result.glTokens));
  std::size_t element = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i < trimmed.size(); ++i) {
    if (delimiters.find(trimmed[i]) == std::string_view::npos) continue;
    result.gvTokens[element++] = trimmed.substr(start, i - start);
    start = i + 1;
  }
  result.gvTokens[element] = trimmed.substr(start);
  return result;
}

}  // namespace zv
