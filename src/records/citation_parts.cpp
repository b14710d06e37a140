// Source lines, dates and identifiers in a citation's text, without regular
// expressions: the reader runs on every record of files of millions.
#include "records/citation_parts.h"

#include "records/text_scan.h"

#include <array>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zv {

namespace {

using namespace scan;

int32_t number(std::string_view digits) {
  int32_t n = 0;
  for (char c : digits) {
    if (!isDigit(c) || n > 100000000) return -1;
    n = n * 10 + (c - '0');
  }
  return digits.empty() ? -1 : n;
}

// The tokens of a text: runs of letters and digits, with where each lies. Plain data,
// so that an array of them costs nothing until filled.
struct Token {
  std::string_view text;
  std::size_t at;
};
struct TokenSlot {
  const char* p;
  std::size_t len, at;
  Token get() const { return {std::string_view(p, len), at}; }
};

// Whether each byte is a 7-bit letter or digit, by table: one look per byte.
struct TokenBytes {
  std::array<bool, 256> in{};
  constexpr TokenBytes() {
    for (int c = 0; c < 256; ++c) in[static_cast<std::size_t>(c)] = isDigit(static_cast<char>(c)) || isAlpha(static_cast<char>(c));
  }
  bool operator()(char c) const { return in[static_cast<unsigned char>(c)]; }
};
constexpr TokenBytes kTokenByte;

template <class Visit>
void forTokens(std::string_view text, Visit&& visit) {
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && !kTokenByte(text[i])) ++i;
    std::size_t e = i;
    while (e < text.size() && kTokenByte(text[e])) ++e;
    if (e > i && !visit(Token{text.substr(i, e - i), i})) return;
    i = e;
  }
}

bool allDigits(std::string_view t) {
  if (t.empty()) return false;
  for (char c : t)
    if (!isDigit(c)) return false;
  return true;
}

bool allAlpha(std::string_view t) {
  if (t.empty()) return false;
  for (char c : t)
    if (!isAlpha(c)) return false;
  return true;
}

constexpr std::array<std::string_view, 12> kMonths{"january", "february", "march",     "april",   "may",      "june",
                                                   "july",    "august",   "september", "october", "november", "december"};

// 1 to 12 for a month's name or its abbreviation of three letters or more.
int32_t monthOf(std::string_view token) {
  if (token.size() < 3 || token.size() > 9) return 0;
  switch (lower(token[0])) {  // the first letters of the months' names
    case 'j': case 'f': case 'm': case 'a': case 's': case 'o': case 'n': case 'd': break;
    default: return 0;
  }
  if (!allAlpha(token)) return 0;
  for (std::size_t m = 0; m < kMonths.size(); ++m) {
    const std::string_view name = kMonths[m];
    if (token.size() > name.size()) continue;
    bool same = true;
    for (std::size_t i = 0; i < token.size() && same; ++i) same = lower(token[i]) == name[i];
    if (same) return static_cast<int32_t>(m + 1);
  }
  return 0;
}

bool yearValue(int32_t n) { return n >= 1800 && n <= 2099; }

// A year token that stands on its own: not joined by a hyphen or colon to another
// number (a page range), unless it heads an ISO date.
bool standaloneYear(std::string_view text, const Token& t) {
  if (t.text.size() != 4 || !allDigits(t.text) || !yearValue(number(t.text))) return false;
  const char before = t.at > 0 ? text[t.at - 1] : ' ';
  const std::size_t end = t.at + 4;
  const char after = end < text.size() ? text[end] : ' ';
  if (before == '-' || before == ':' || (t.at > 0 && isAlpha(before))) return false;
  if (after == '-') return end + 3 < text.size() && isDigit(text[end + 1]) && isDigit(text[end + 2]) && text[end + 3] == '-';
  return true;
}

// "88-104", "1123-9", "77": the first page, and the last written out in full.
void takePages(std::string_view text, std::size_t& i, SourceParts& out) {
  const std::size_t a = i;
  while (i < text.size() && isDigit(text[i])) ++i;
  if (i == a) return;
  out.firstPage = text.substr(a, i - a);
  if (i + 1 < text.size() && text[i] == '-' && isDigit(text[i + 1])) {
    const std::size_t b = ++i;
    while (i < text.size() && isDigit(text[i])) ++i;
    const std::string_view last = text.substr(b, i - b);
    if (last.size() < out.firstPage.size()) {
      out.lastPage.assign(out.firstPage.substr(0, out.firstPage.size() - last.size()));
      out.lastPage += last;
    } else {
      out.lastPage.assign(last);
    }
  }
}

std::size_t skipBlanks(std::string_view text, std::size_t i) {
  while (i < text.size() && IsBlank(text[i])) ++i;
  return i;
}

// "v 31", "V38", "vol. 3", "n 2", "No. 4", "p 44-59", "pp. 1-10", "p88-104", "P77":
// the letters, then an optional dot and blanks, then the number. 0 when none.
std::size_t afterMarker(std::string_view text, std::size_t i, std::initializer_list<std::string_view> markers) {
  const char c = text[i];
  if (c != 'v' && c != 'V' && c != 'n' && c != 'N' && c != 'p' && c != 'P') return 0;
  if (i > 0 && (isAlpha(text[i - 1]) || isDigit(text[i - 1]))) return 0;
  for (std::string_view m : markers) {
    if (text.substr(i, m.size()) != m) continue;
    std::size_t j = i + m.size();
    if (j < text.size() && text[j] == '.') ++j;
    j = skipBlanks(text, j);
    if (j < text.size() && isDigit(text[j])) return j;
  }
  return 0;
}

}  // namespace

int32_t FindYear(std::string_view text) {
  int32_t year = 0;
  forTokens(text, [&](const Token& t) {
    if (!standaloneYear(text, t)) return true;
    year = number(t.text);
    return false;
  });
  return year;
}

DateParts ParseDate(std::string_view text) {
  DateParts d;
  TokenSlot slots[48];
  std::size_t n = 0, yearAt = 0;
  forTokens(text, [&](const Token& t) {
    // Tokens up to two past the year are all that is looked at.
    if (n == std::size(slots) || (d.year != 0 && n > yearAt + 2)) return false;
    slots[n] = {t.text.data(), t.text.size(), t.at};
    if (d.year == 0) {
      if (standaloneYear(text, t)) {
        d.year = number(t.text);
        yearAt = n;
      } else if (t.text.size() == 8 && allDigits(t.text)) {  // 20231219
        const int32_t v = number(t.text);
        if (yearValue(v / 10000) && v / 100 % 100 >= 1 && v / 100 % 100 <= 12 && v % 100 <= 31) {
          d = {v / 10000, v / 100 % 100, v % 100};
          return false;
        }
      }
    }
    ++n;
    return true;
  });
  auto tokens = [&](std::size_t i) { return slots[i].get(); };
  if (d.year == 0 || d.month != 0) return d;
  // ISO: 2024-03-04 or 2024/03/04.
  const std::size_t yEnd = tokens(yearAt).at + 4;
  if (yEnd < text.size() && (text[yEnd] == '-' || text[yEnd] == '/') && yearAt + 1 < n) {
    const int32_t m = number(tokens(yearAt + 1).text);
    if (m >= 1 && m <= 12 && tokens(yearAt + 1).at == yEnd + 1) {
      d.month = m;
      if (yearAt + 2 < n) {
        const int32_t day = number(tokens(yearAt + 2).text);
        if (day >= 1 && day <= 31) d.day = day;
      }
      return d;
    }
  }
  // A month's name within two tokens of the year, and a day beside the month.
  const std::size_t from = yearAt >= 2 ? yearAt - 2 : 0;
  for (std::size_t i = from; i < n && i <= yearAt + 2; ++i) {
    const int32_t m = monthOf(tokens(i).text);
    if (m == 0) continue;
    d.month = m;
    for (std::size_t k : {i + 1, i - 1}) {
      if (k >= n || k == yearAt || tokens(k).text.size() > 2) continue;
      // Only blanks (and an abbreviation's dot) between month and day: "Jan;19(1)" has none.
      const Token a = k < i ? tokens(k) : tokens(i);
      const Token b = k < i ? tokens(i) : tokens(k);
      const std::string_view gap = text.substr(a.at + a.text.size(), b.at - a.at - a.text.size());
      if (gap.empty() || gap.find_first_not_of(" .") != std::string_view::npos) continue;
      const int32_t day = number(tokens(k).text);
      if (day >= 1 && day <= 31) {
        d.day = day;
        break;
      }
    }
    break;
  }
  return d;
}

bool LooksLikeDate(std::string_view text) {
  text = TrimText(text);
  if (text.empty() || text.size() > 40) return false;
  for (char c : text)
    if (!(isDigit(c) || isAlpha(c) || IsBlank(c) || c == ',' || c == '-' || c == '/' || c == '.')) return false;
  bool year = false, ok = true;
  std::size_t tokens = 0;
  forTokens(text, [&](const Token& t) {
    ++tokens;
    if (standaloneYear(text, t) || (t.text.size() == 8 && ParseDate(t.text).year != 0))
      year = true;
    else if (!(monthOf(t.text) != 0 || (allDigits(t.text) && t.text.size() <= 2)))
      ok = false;
    return ok;
  });
  return ok && year && tokens <= 5;
}

bool LooksLikeSource(std::string_view text) {
  if (FindYear(text) != 0) return true;
  SourceParts parts;
  ParseSource(text, parts);
  return !parts.volume.empty() || !parts.firstPage.empty();
}

void ParseSource(std::string_view text, SourceParts& out) {
  out = SourceParts{};
  text = TrimText(text);
  // The journal: up to the first comma, semicolon, parenthesis, run of blanks,
  // ". " before a number, or word that begins with a digit.
  std::size_t j = 0;
  for (; j < text.size(); ++j) {
    const char c = text[j];
    if (c == ',' || c == ';' || c == '(') break;
    if (c == ' ' && j + 1 < text.size() && (text[j + 1] == ' ' || isDigit(text[j + 1]) || text[j + 1] == '(')) break;
    if (c == '.' && j + 2 < text.size() && text[j + 1] == ' ' && isDigit(text[j + 2])) break;
  }
  std::string_view journal = text.substr(0, j);
  while (!journal.empty() && (journal.back() == '.' || IsBlank(journal.back()))) journal.remove_suffix(1);
  out.journal = journal;
  out.date = ParseDate(text);

  for (std::size_t i = j; i < text.size(); ++i) {
    const char c = text[i];
    if (!out.volume.empty() && !out.firstPage.empty() && !out.issue.empty()) break;
    const bool marker = c == 'v' || c == 'V' || c == 'n' || c == 'N' || c == 'p' || c == 'P';
    if (!marker && !isDigit(c)) continue;
    if (std::size_t v = marker && out.volume.empty() ? afterMarker(text, i, {"vol", "Vol", "v", "V"}) : 0) {
      std::size_t e = v;
      while (e < text.size() && isDigit(text[e])) ++e;
      out.volume = text.substr(v, e - v);
      i = e - 1;
    } else if (std::size_t n = marker && out.issue.empty() ? afterMarker(text, i, {"No", "no", "n"}) : 0) {
      std::size_t e = n;
      while (e < text.size() && isDigit(text[e])) ++e;
      out.issue = text.substr(n, e - n);
      i = e - 1;
    } else if (std::size_t p = marker && out.firstPage.empty() ? afterMarker(text, i, {"pp", "p", "P"}) : 0) {
      std::size_t e = p;
      takePages(text, e, out);
      i = e - 1;
    } else if (isDigit(c) && (i == 0 || !(isDigit(text[i - 1]) || isAlpha(text[i - 1]))) && out.volume.empty()) {
      std::size_t e = i;
      while (e < text.size() && isDigit(text[e])) ++e;
      const std::string_view num = text.substr(i, e - i);
      std::size_t k = skipBlanks(text, e);
      if (k < text.size() && text[k] == '(' && num.size() <= 5) {  // 41(8), 61 (1)
        const std::size_t close = text.find(')', k);
        if (close == std::string_view::npos || close - k > 12) continue;
        out.volume = num;
        out.issue = TrimText(text.substr(k + 1, close - k - 1));
        std::size_t m = close + 1;
        while (m < text.size() && (IsBlank(text[m]) || text[m] == ':' || text[m] == ',')) ++m;
        if (m < text.size() && isDigit(text[m])) takePages(text, m, out);
        i = m - 1;
      } else if (e < text.size() && text[e] == ':' && e + 1 < text.size() && isDigit(text[e + 1])) {  // 3:45-58
        out.volume = num;
        std::size_t m = e + 1;
        takePages(text, m, out);
        i = m - 1;
      } else {
        i = e - 1;
      }
    }
  }
  if (!out.volume.empty() || !out.firstPage.empty()) return;
  // "Fisheries Extension Notes, 2024, 3, 5-6.": the parts between commas.
  forParts(text.substr(j), ',', [&](std::string_view part) {
    part = TrimText(part);
    while (!part.empty() && part.back() == '.') part.remove_suffix(1);
    if (part.size() == 4 && allDigits(part) && yearValue(number(part))) return;  // the year
    if (allDigits(part)) {
      if (out.volume.empty()) out.volume = part;
    } else if (!part.empty() && isDigit(part[0]) && out.firstPage.empty()) {
      std::size_t m = 0;
      SourceParts pages;
      takePages(part, m, pages);
      if (m == part.size()) {
        out.firstPage = pages.firstPage;
        out.lastPage = pages.lastPage;
      }
    }
  });
}

std::string_view FindDoi(std::string_view text) {
  std::size_t at = 0;
  while ((at = text.find("10.", at)) != std::string_view::npos) {
    const std::size_t start = at;
    at += 3;
    if (start > 0 && (isDigit(text[start - 1]) || isAlpha(text[start - 1]) || text[start - 1] == '.')) continue;
    std::size_t i = at;
    while (i < text.size() && isDigit(text[i])) ++i;
    if (i - at < 4 || i + 1 >= text.size() || text[i] != '/' || IsBlank(text[i + 1])) continue;
    std::size_t e = i + 1;
    while (e < text.size() && !IsBlank(text[e]) && text[e] != '"' && text[e] != '<' && text[e] != '>') ++e;
    while (e > i + 1 && std::strchr(".,;:)]}'", text[e - 1]) != nullptr) --e;
    return text.substr(start, e - start);
  }
  return {};
}

std::string_view FindPmid(std::string_view text) {
  std::size_t at = 0;
  while ((at = text.find("PMID", at)) != std::string_view::npos) {
    std::size_t i = at + 4;
    at = i;
    while (i < text.size() && (IsBlank(text[i]) || text[i] == ':' || text[i] == '-')) ++i;
    std::size_t e = i;
    while (e < text.size() && isDigit(text[e])) ++e;
    if (e > i && (e == text.size() || !isAlpha(text[e]))) return text.substr(i, e - i);
  }
  return {};
}

std::string_view FindIssn(std::string_view text, bool afterLabel) {
  auto issnAt = [&](std::size_t i) {
    if (i + 9 > text.size() || (i > 0 && isDigit(text[i - 1]))) return false;
    for (std::size_t k = 0; k < 9; ++k) {
      const char c = text[i + k];
      if (!(k == 4 ? c == '-' : (isDigit(c) || (k == 8 && (c == 'X' || c == 'x'))))) return false;
    }
    return i + 9 == text.size() || !isDigit(text[i + 9]);
  };
  if (!afterLabel) {
    for (std::size_t i = 0; i + 9 <= text.size(); ++i)
      if (issnAt(i)) return text.substr(i, 9);
    return {};
  }
  std::size_t at = 0;
  while ((at = text.find("ISSN", at)) != std::string_view::npos) {
    std::size_t i = at + 4;
    at = i;
    while (i < text.size() && (IsBlank(text[i]) || text[i] == ':' || text[i] == '-')) ++i;
    if (issnAt(i)) return text.substr(i, 9);
  }
  return {};
}

std::string_view FindIsbn(std::string_view text, bool afterLabel) {
  auto isbnAt = [&](std::size_t i) -> std::string_view {
    std::size_t e = i;
    int digits = 0;
    while (e < text.size() && (isDigit(text[e]) || text[e] == '-' || text[e] == 'X')) {
      if (text[e] != '-') ++digits;
      ++e;
    }
    while (e > i && text[e - 1] == '-') --e;
    return digits == 10 || digits == 13 ? text.substr(i, e - i) : std::string_view{};
  };
  if (!afterLabel) return isbnAt(TrimText(text).data() - text.data());
  std::size_t at = 0;
  while ((at = text.find("ISBN", at)) != std::string_view::npos) {
    std::size_t i = at + 4;
    at = i;
    if (text.substr(i, 3) == "-10" || text.substr(i, 3) == "-13") i += 3;
    while (i < text.size() && (IsBlank(text[i]) || text[i] == ':')) ++i;
    if (const std::string_view isbn = isbnAt(i); !isbn.empty()) return isbn;
  }
  return {};
}

namespace {

// The mark of the word that begins at text[i], which holds '1', 'P' or 'I'.
unsigned marksAt(std::string_view text, std::size_t i) {
  const std::size_t left = text.size() - i;
  const char* p = text.data() + i;
  if (left < 3) return 0;
  if (p[0] == '1') return p[1] == '0' && p[2] == '.' ? kDoiMark : 0;
  if (left < 4) return 0;
  if (p[0] == 'P') return p[1] == 'M' && p[2] == 'I' && p[3] == 'D' ? kPmidMark : 0;
  if (p[1] != 'S' || p[3] != 'N') return 0;
  return p[2] == 'S' ? kIssnMark : p[2] == 'B' ? kIsbnMark : 0;
}

}  // namespace

unsigned IdentifierMarks(std::string_view text) {
  unsigned marks = 0;
  std::size_t i = 0;
#if defined(__SSE2__)
  // The first letters of the words, sixteen places at a time; each place found is
  // looked at in full.
  const __m128i one = _mm_set1_epi8('1'), p = _mm_set1_epi8('P'), capitalI = _mm_set1_epi8('I');
  for (; i + 16 <= text.size(); i += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
    auto hits = static_cast<unsigned>(_mm_movemask_epi8(
        _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, one), _mm_cmpeq_epi8(v, p)), _mm_cmpeq_epi8(v, capitalI))));
    while (hits != 0) {
      marks |= marksAt(text, i + static_cast<std::size_t>(__builtin_ctz(hits)));
      hits &= hits - 1;
    }
  }
#endif
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '1' || c == 'P' || c == 'I') marks |= marksAt(text, i);
  }
  return marks;
}

}  // namespace zv
