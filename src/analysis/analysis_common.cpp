// Words, terms, 16-bit limits and report lines of the content tools.
#include "analysis/analysis_common.h"

#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/error.h"
#include "core/text.h"

namespace zv {

DelimiterSet::DelimiterSet(std::string_view delimiters) {
  for (char c : delimiters) is_[static_cast<unsigned char>(c)] = true;
}

Term PrepareTerm(std::string_view typed) {
  Term term;
  if (!typed.empty() && typed.back() == '*') {
    typed.remove_suffix(1);
    term.truncated = true;
  }
  term.text = UCase(typed);
  return term;
}

namespace {

// The words of the line that meet the term, found from the term's occurrences rather
// than by cutting the line up: a word equals the term, or begins with it, exactly
// where the term stands at a word's start (and, untruncated, up to its end). A term
// holding a delimiter is in no word. Calls `onMatch` for each until it returns true.
template <class OnMatch>
void forEachMatch(std::string_view line, const Term& term, const DelimiterSet& delims, bool exactLimits,
                  OnMatch&& onMatch) {
  const std::string_view trimmed = TrimBlanks(line);
  if (exactLimits && trimmed.size() > static_cast<std::size_t>(std::numeric_limits<int16_t>::max()))
    ThrowOverflow(LimitReason("the length of a line searched for a term", std::numeric_limits<int16_t>::max()) +
                  " This one has " + std::to_string(trimmed.size()) + " characters.");
  const std::string_view t = term.text;
  for (char c : t)
    if (delims.has(c)) return;
  for (std::size_t at = trimmed.find(t); at != std::string_view::npos; at = trimmed.find(t, at + 1)) {
    if (at > 0 && !delims.has(trimmed[at - 1])) continue;
    const std::size_t end = at + t.size();
    if (!term.truncated && end < trimmed.size() && !delims.has(trimmed[end])) continue;
    if (onMatch()) return;
  }
}

}  // namespace

bool FirstMatch(std::string_view line, const Term& term, const DelimiterSet& delims, bool exactLimits) {
  bool found = false;
  forEachMatch(line, term, delims, exactLimits, [&] { return found = true; });
  return found;
}

int32_t CountMatches(std::string_view line, const Term& term, const DelimiterSet& delims, bool exactLimits) {
  int32_t n = 0;
  forEachMatch(line, term, delims, exactLimits, [&] {
    ++n;
    return false;
  });
  return n;
}

bool LineHolds(std::string_view text, std::string_view part) {
  const std::size_t n = text.size(), m = part.size();
  if (m == 0) return true;
  if (m > n) return false;
  const char* t = text.data();
  const char* p = part.data();
  if (m == 1) return std::memchr(t, p[0], n) != nullptr;
  std::size_t i = 0;
#if defined(__SSE2__)
  // Sixteen places at a time: those whose first and last characters both match the
  // term's are compared in full. Lines are short and terms few, so a search with no
  // set-up cost wins over memmem and over a scan for the first character alone.
  const __m128i first = _mm_set1_epi8(p[0]);
  const __m128i last = _mm_set1_epi8(p[m - 1]);
  for (; i + m - 1 + 16 <= n; i += 16) {
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(t + i));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(t + i + m - 1));
    auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi8(a, first), _mm_cmpeq_epi8(b, last))));
    while (mask != 0) {
      const auto bit = static_cast<std::size_t>(__builtin_ctz(mask));
      if (std::memcmp(t + i + bit + 1, p + 1, m - 2) == 0) return true;
      mask &= mask - 1;
    }
  }
#endif
  for (; i + m <= n; ++i)
    if (t[i] == p[0] && t[i + m - 1] == p[m - 1] && std::memcmp(t + i + 1, p + 1, m - 2) == 0) return true;
  return false;
}

int16_t Narrow16(int64_t value, std::string_view what, LimitAt where) {
  constexpr int64_t kMax = std::numeric_limits<int16_t>::max();
  constexpr int64_t kMin = std::numeric_limits<int16_t>::min();
  if (value > kMax) ThrowOverflow(LimitReason(what, kMax, where) + " It came to " + std::to_string(value) + ".");
  if (value < kMin)
    ThrowOverflow("Limit reached: " + std::string(what) + " can be no less than " + std::to_string(kMin) +
                  "; it came to " + std::to_string(value) + ".");
  return static_cast<int16_t>(value);
}

int32_t RecordLines(int64_t startLine, int64_t endLine, bool large) {
  const int64_t n = endLine - startLine + 1;
  if (large) return static_cast<int32_t>(n);
  return Narrow16(n, "the lines of a record", {"the record starting at line", startLine});
}

std::string ReportDateLine(std::optional<std::time_t> when) {
  const std::time_t t = when ? *when : std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  char buf[64];
  const std::size_t n = std::strftime(buf, sizeof buf, "%m/%d/%Y   %H:%M:%S", &local);
  return std::string(buf, n);
}

PrintLine& PrintLine::number(int64_t n) {
  str(n);
  line_ += ' ';
  return *this;
}

PrintLine& PrintLine::str(int64_t n) {
  if (n >= 0) line_ += ' ';
  line_ += std::to_string(n);
  return *this;
}

PrintLine& PrintLine::text(std::string_view s) {
  line_ += s;
  return *this;
}

PrintLine& PrintLine::tab(int32_t column) {
  const std::size_t at = line_.size() - lineStart_ + 1;  // the column printed next
  const auto want = static_cast<std::size_t>(column);
  if (at > want) {
    if (!wrap_) return *this;
    line_ += "\r\n";
    lineStart_ = line_.size();
    line_.append(want - 1, ' ');
  } else {
    line_.append(want - at, ' ');
  }
  return *this;
}

void PrintLine::writeTo(TextOut& out) {
  out.line(line_);
  line_.clear();
  lineStart_ = 0;
}

AnalysisProgress& PanelsOf(JobProgress& progress) {
  static AnalysisProgress none;
  auto* panels = dynamic_cast<AnalysisProgress*>(&progress);
  return panels != nullptr ? *panels : none;
}

}  // namespace zv
