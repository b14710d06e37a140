// What the content tools share: words and terms, their 16-bit limits, the report lines
// and the panels their windows show beyond the frame's.
#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "core/error.h"
#include "core/job.h"
#include "core/text_out.h"

namespace zv {

// The word delimiters of Query by Form and Rank: blank ` ~ ! @ # $ % ^ & * ( ) _ = + [ ]
// { } ; : ' , . < > / \ | and the double quote. The hyphen and the question mark are
// not among them (CD-ROM is one word, and so is "why?"), nor are tab and the other
// control characters.
inline constexpr std::string_view kSearchDelims = " `~!@#$%^&*()_=+[]{};:',.<>/\\|\"";
// Diction's: the same and the question mark.
inline constexpr std::string_view kDicDelims = " `~!@#$%^&*()_=+[]{};:',.<>/?\\|\"";

// A table of delimiter characters for fast tests.
class DelimiterSet {
 public:
  explicit DelimiterSet(std::string_view delimiters);
  bool has(char c) const { return is_[static_cast<unsigned char>(c)]; }

 private:
  std::array<bool, 256> is_{};
};

// A search term as Query by Form and Rank use it: a final "*" dropped and marking
// right truncation, the rest in capitals. A term of "*" alone is empty and takes no part.
struct Term {
  std::string text;
  bool truncated = false;
  bool empty() const { return text.empty(); }
};
Term PrepareTerm(std::string_view typed);

// Whether a word of a line meets the term: equal to it, or for a truncated term,
// beginning with it.
inline bool WordMatches(std::string_view word, const Term& term) {
  return term.truncated ? word.starts_with(term.text) : word == term.text;
}

// The words of an upper-cased line, as the parse table of the line gives them: the line
// trimmed of blanks and cut at every single delimiter, empty words included.
// `exactLimits`: the table's positions are 16-bit, and a trimmed line of over 32,767
// characters is the overflow error.
// FirstMatch stops at the first word that meets the term; CountMatches counts them all.
bool FirstMatch(std::string_view line, const Term& term, const DelimiterSet& delims, bool exactLimits);
int32_t CountMatches(std::string_view line, const Term& term, const DelimiterSet& delims, bool exactLimits);

// In place: a to z made capitals, or A to Z made small; other bytes stay. Written
// without branches so that the compiler makes vector code of it: every line of a
// record passes here.
inline void UpperInPlace(std::string& text) {
  for (char& ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    ch = static_cast<char>(c - 32 * static_cast<unsigned char>(static_cast<unsigned char>(c - 'a') < 26));
  }
}
inline void LowerInPlace(char* text, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    text[i] = static_cast<char>(c + 32 * static_cast<unsigned char>(static_cast<unsigned char>(c - 'A') < 26));
  }
}

// Whether `text` holds `part` (case-sensitive): the plain search that decides whether
// a line is split into words at all.
bool LineHolds(std::string_view text, std::string_view part);

// `value` as a 16-bit number, or the overflow error with a reason line naming `what`
// and, when given, the record or line the job had reached.
int16_t Narrow16(int64_t value, std::string_view what, LimitAt where = {});

// The line count of a record, endLine - startLine + 1, held in 16 bits unless `large`.
int32_t RecordLines(int64_t startLine, int64_t endLine, bool large);

// Where a record is read from for writing, its bytes and its lines. Without size
// limits the tools keep one for each record as they first read it, so that writing
// in a new order needs no second look at the index.
struct RecordExtent {
  int64_t start = 0;
  int32_t byteLen = 0;
  int32_t lines = 0;
};

// Line 2 of the .TBL and the .DIC: the date, three blanks, the time, as short forms
// ("05/14/2024   14:03:07"). Tests pass a fixed time; nothing means now.
std::string ReportDateLine(std::optional<std::time_t> when);

// One line of a report as the system's print statement lays it out. A number printed
// by itself has a blank for its sign before it and a blank after it; a "Str" number
// has the sign's blank only; a tab moves to a 1-based column, and when the line has
// already passed that column it goes on at the column of the next line.
// `wrapPastColumn` false (the no-limits mode, where numbers grow wide) goes on in the
// same line instead.
class PrintLine {
 public:
  explicit PrintLine(bool wrapPastColumn = true) : wrap_(wrapPastColumn) {}
  PrintLine& number(int64_t n);
  PrintLine& str(int64_t n);
  PrintLine& text(std::string_view s);
  PrintLine& tab(int32_t column);
  // The line (and any line a tab began) with CR LF.
  void writeTo(TextOut& out);
  const std::string& bytes() const { return line_; }

 private:
  bool wrap_;
  std::string line_;
  std::size_t lineStart_ = 0;  // where the current physical line begins in line_
};

// The panels of the content tools' windows beyond the frame's odometers and bar. The
// tools look for this interface on the job's observer; an observer without it shows
// the frame's panels only.
class AnalysisProgress : public JobProgress {
 public:
  // The line number within the record being read (pnlSearchingLine, pnlLineOdom).
  virtual void recordLine(int32_t /*n*/) {}
  // Query by Form: records hit so far, and the line of a hit record being written.
  virtual void hitRecord(int32_t /*hits*/) {}
  virtual void hitLine(int32_t /*n*/) {}
  // Diction: the unique words so far.
  virtual void uniqueWords(int32_t /*n*/) {}
};
AnalysisProgress& PanelsOf(JobProgress& progress);

}  // namespace zv
