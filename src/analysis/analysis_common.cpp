// Words, terms, 16-bit limits and report lines of the content tools.
#include "analysis/analysis_common.h"

#include <limits>

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

// Calls `onWord` for each word of the trimmed line, in order, until it returns true.
template <class OnWord>
void forEachWord(std::string_view line, const DelimiterSet& delims, bool exactLimits, OnWord&& onWord) {
  const std::string_view trimmed = TrimBlanks(line);
  if (exactLimits && trimmed.size() > static_cast<std::size_t>(std::numeric_limits<int16_t>::max()))
    ThrowOverflow();
  std::size_t start = 0;
  for (std::size_t i = 0; i < trimmed.size(); ++i) {
    if (!delims.has(trimmed[i])) continue;
    if (onWord(trimmed.substr(start, i - start))) return;
    start = i + 1;
  }
  onWord(trimmed.substr(start));
}

}  // namespace

bool FirstMatch(std::string_view line, const Term& term, const DelimiterSet& delims, bool exactLimits) {
  bool found = false;
  forEachWord(line, delims, exactLimits, [&](std::string_view word) { return found = WordMatches(word, term); });
  return found;
}

int32_t CountMatches(std::string_view line, const Term& term, const DelimiterSet& delims, bool exactLimits) {
  int32_t n = 0;
  forEachWord(line, delims, exactLimits, [&](std::string_view word) {
    if (WordMatches(word, term)) ++n;
    return false;
  });
  return n;
}

void ThrowOverflow() { throw ZvError(err::kOverflow, ErrorText(err::kOverflow)); }

int16_t Narrow16(int64_t value) {
  if (value > std::numeric_limits<int16_t>::max() || value < std::numeric_limits<int16_t>::min()) ThrowOverflow();
  return static_cast<int16_t>(value);
}

int32_t RecordLines(int64_t startLine, int64_t endLine, bool large) {
  const int64_t n = endLine - startLine + 1;
  return large ? static_cast<int32_t>(n) : Narrow16(n);
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
