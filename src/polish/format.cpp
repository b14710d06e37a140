// modFormat: RemoveLineBreaks (.FMT) and InsertPageBreaks (.BRK).
#include "polish/format.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/brindle.h"
#include "core/byte_scan.h"
#include "core/files.h"
#include "core/text.h"

namespace zv {

namespace {

constexpr int32_t kTypeMismatch = 13;

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

// "AB- ": two capitals, a hyphen and a blank open a tagged field.
bool isTagged(std::string_view line) {
  return line.size() >= 4 && line[2] == '-' && line[3] == ' ' && isCapital(line[0]) && isCapital(line[1]);
}

// What one look at a cleaned line tells: where it has two blanks in a row (a bit for
// each blank that a blank follows), and whether it holds a delimiter ("|", "^" or
// "_") that a flush must turn into a separator. Most lines of a TAGed record have two
// blanks in a row (an indented continuation, two blanks after a stop) and no
// delimiter. The folding of the blanks then needs no second look at the line, whose
// bytes were just written back (reading them again in vectors would wait for the
// writes).
class LineFacts {
 public:
  // The delimiters the line holds, a bit each.
  static constexpr unsigned kBar = 1, kCaret = 2, kUnderline = 4;
  unsigned delimiters = 0;
  bool barsGone = false;  // "|"s were made byte 0 as the line was cleaned

  // Sized for a line of n bytes, no pair marked.
  void reset(std::size_t n) {
    const std::size_t words = n / 64 + 2;
    if (pairs_.size() < words) pairs_.resize(words);
    used_ = words;
    for (std::size_t w = 0; w < words; ++w) pairs_[w] = 0;
  }
  // Pairs at `at` + each set bit of `mask`.
  void mark(std::size_t at, uint64_t mask) {
    const std::size_t w = at / 64, bit = at % 64;
    pairs_[w] |= mask << bit;
    if (bit != 0) pairs_[w + 1] |= mask >> (64 - bit);
  }
  // The first pair at or after `from`, or npos.
  std::size_t pairFrom(std::size_t from) const {
    std::size_t w = from / 64;
    if (w >= used_) return std::string::npos;
    uint64_t bits = pairs_[w] & (~uint64_t{0} << (from % 64));
    for (;;) {
      if (bits != 0) return w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
      if (++w == used_) return std::string::npos;
      bits = pairs_[w];
    }
  }

 private:
  std::vector<uint64_t> pairs_;
  std::size_t used_ = 0;  // words of pairs_ for the line
};

unsigned delimiterBit(char c) {
  return c == '|' ? LineFacts::kBar : c == '^' ? LineFacts::kCaret : c == '_' ? LineFacts::kUnderline : 0;
}

// The byte cleaning of LowAscii and RemCtrl with character 0: the high bit cleared, a
// control character made byte 0.
char cleanByte(char ch) {
  const auto c = static_cast<unsigned char>(ch & 0x7f);
  return static_cast<char>(c < 32 ? 0 : c);
}

// Lines shorter than a vector, a byte at a time, from `src` to `p`.
void cleanAndScanShort(const char* src, char* p, std::size_t n, LineFacts& facts, bool barsToNul) {
  facts.delimiters = 0;
  facts.barsGone = false;
  for (std::size_t i = 0; i < n; ++i) {
    p[i] = cleanByte(src[i]);
    if (barsToNul && p[i] == '|') {
      p[i] = '\0';
      facts.barsGone = true;
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    facts.delimiters |= delimiterBit(p[i]);
    if (i + 1 < n && p[i] == ' ' && p[i + 1] == ' ') facts.mark(i, 1);
  }
}

// The line as read, put at `p` with LowAscii and RemCtrl done with character 0 (high
// bits cleared, control characters to byte 0), and the facts of the cleaned line, in
// one pass over the bytes read. With `barsToNul` each "|" is made byte 0 as well, as
// the paragraph of a field other than descriptors will have it: the facts then tell
// of no "|".
#if defined(__SSE2__)
// Sixteen bytes at a time. The line's tail is taken as its last sixteen bytes, which
// overlap bytes seen already: a pair of blanks marked twice is one pair.
__m128i load16(const char* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }

void cleanAndScan(std::string_view raw, char* p, LineFacts& facts, bool barsToNul) {
  const std::size_t n = raw.size();
  const char* src = raw.data();
  facts.reset(n);
  if (n < 16) return cleanAndScanShort(src, p, n, facts, barsToNul);
  const __m128i low7 = _mm_set1_epi8(0x7f), below = _mm_set1_epi8(0x1f), blank = _mm_set1_epi8(' ');
  const __m128i bar = _mm_set1_epi8('|'), caret = _mm_set1_epi8('^'), under = _mm_set1_epi8('_');
  const __m128i tail = load16(src + n - 16);
  unsigned delimiters = 0;
  bool barsGone = false;
  unsigned lastBlank = 0;  // the previous block ended in a blank
  // All ones where a "|" is to stay, none where it is to be made byte 0.
  const __m128i keepBars = barsToNul ? _mm_setzero_si128() : _mm_set1_epi8(-1);
  const auto block = [&](__m128i v, std::size_t at) {
    v = _mm_and_si128(v, low7);
    v = _mm_and_si128(v, _mm_cmpgt_epi8(v, below));  // all bytes are 0 to 127 now
    const __m128i bars = _mm_cmpeq_epi8(v, bar), carets = _mm_cmpeq_epi8(v, caret), unders = _mm_cmpeq_epi8(v, under);
    const __m128i goneBars = _mm_andnot_si128(keepBars, bars);
    v = _mm_andnot_si128(goneBars, v);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p + at), v);
    if (_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(bars, carets), unders)) != 0) {  // seldom: which ones
      delimiters |= (_mm_movemask_epi8(_mm_and_si128(keepBars, bars)) != 0 ? LineFacts::kBar : 0u) |
                    (_mm_movemask_epi8(carets) != 0 ? LineFacts::kCaret : 0u) |
                    (_mm_movemask_epi8(unders) != 0 ? LineFacts::kUnderline : 0u);
      barsGone = barsGone || _mm_movemask_epi8(goneBars) != 0;
    }
    const auto blanks = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, blank)));
    const unsigned pairs = blanks & (blanks >> 1);
    if (pairs != 0) facts.mark(at, pairs);
    if (at > 0 && (lastBlank & blanks & 1u) != 0) facts.mark(at - 1, 1);  // across the edge
    lastBlank = blanks >> 15;
  };
  std::size_t i = 0;
  for (; i + 16 < n; i += 16) block(load16(src + i), i);
  if (n - 16 != i) lastBlank = 0;  // the tail overlaps the last block: no edge to cross
  block(tail, n - 16);
  facts.delimiters = delimiters;
  facts.barsGone = barsGone;
}
#else
void cleanAndScan(std::string_view raw, char* p, LineFacts& facts, bool barsToNul) {
  facts.reset(raw.size());
  cleanAndScanShort(raw.data(), p, raw.size(), facts, barsToNul);
}
#endif

// The line as read put at the end of `dest`, cleaned, with its blanks folded: runs of
// blanks halved four times over (replacing two blanks by one, four times), and the two
// blanks typed after a full stop or a colon made one. Each halving turns a run of k
// blanks into ceil(k / 2), so the four leave ceil(k / 16) of it: up to 16 become one,
// longer runs keep a few. `facts` gets the delimiters of the line; `barsToNul` makes
// each "|" byte 0 (see cleanAndScan).
//
// A run of blanks that opens the line (an indented continuation) is folded before the
// rest is cleaned, straight from the bytes read; the rest is cleaned in place at the
// end of `dest`, and what runs it holds are folded there, the text between them moved
// down in pieces.
// The bytes that open `raw` and are blanks once cleaned.
std::size_t leadingBlanks(std::string_view raw) {
  std::size_t lead = 0;
#if defined(__SSE2__)
  const __m128i low7 = _mm_set1_epi8(0x7f), blank = _mm_set1_epi8(' ');
  for (; lead + 16 <= raw.size(); lead += 16) {
    const __m128i v = _mm_and_si128(load16(raw.data() + lead), low7);
    const unsigned other = ~static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, blank))) & 0xFFFFu;
    if (other != 0) return lead + static_cast<std::size_t>(__builtin_ctz(other));
  }
#endif
  while (lead < raw.size() && (raw[lead] & 0x7f) == ' ') ++lead;
  return lead;
}

void appendCleanFolded(std::string& dest, std::string_view raw, LineFacts& facts, bool barsToNul) {
  const std::size_t lineStart = dest.size();
  std::size_t lead = leadingBlanks(raw);
  if (lead < 2) lead = 0;
  std::size_t longest = lead;
  const std::size_t opening = (lead + 15) / 16;  // the blanks the opening run leaves
  raw.remove_prefix(lead);
  const std::size_t from = lineStart + opening;
  dest.resize(from + raw.size());
  for (std::size_t k = lineStart; k < from; ++k) dest[k] = ' ';
  char* p = dest.data() + from;
  cleanAndScan(raw, p, facts, barsToNul);
  std::size_t i = facts.pairFrom(0);
  if (i != std::string::npos) {
    const std::size_t n = raw.size();
    std::size_t to = i;  // never past i: the text only moves down
    for (;;) {
      std::size_t end = i;
      while (end < n && p[end] == ' ') ++end;
      longest = std::max(longest, end - i);
      for (std::size_t kept = (end - i + 15) / 16; kept > 0; --kept) p[to++] = ' ';  // mostly one
      std::size_t next = facts.pairFrom(end);
      if (next == std::string::npos) next = n;
      std::memmove(p + to, p + end, next - end);
      to += next - end;
      if (next == n) break;
      i = next;
    }
    dest.resize(from + to);
  }
  // Only a run of more than 16 leaves two blanks in a row.
  if (longest <= 16) return;
  std::string folded = dest.substr(lineStart);
  if (folded.find(".  ") != std::string::npos) ReplaceAll(folded, ".  ", ". ");
  if (folded.find(":  ") != std::string::npos) ReplaceAll(folded, ":  ", ": ");
  dest.resize(lineStart);
  dest += folded;
}

// A paragraph's delimiters as readable separators, written to `out` (the paragraph is
// emptied). A "|" of an ordinary field, or "||" of a descriptor field, becomes the
// byte 0 (a one-character text, not an empty one); "^_" and "^" become "; " and ", ".
// In a descriptor field "|" becomes " / " and "_" becomes "; " before the field is
// trimmed on the right (a last "/" cut, the blank before it kept) and before any
// "^" is looked at, so "^_" comes out as ", " and "; " side by side. Each rule in
// turn, applied to the whole text from left to right, gives what one left-to-right
// pass gives, as no replacement makes a text that a later rule looks for: so each
// paragraph is rewritten in one pass, or two for a descriptor field with a "^".
// `delimiters` tells which the paragraph holds (LineFacts' bits), and `barsFrom` where
// the first of its lines that holds a "|" begins.
void flush(std::string& paragraph, unsigned delimiters, std::size_t barsFrom, std::string& work, TextOut& out) {
  const bool descriptors = paragraph.starts_with("DE- ");
  if (!delimiters && !descriptors) {
    out.line(paragraph);
    paragraph.clear();
    return;
  }
  const std::string_view nul("\0", 1);
  if (!descriptors) {
    // One character for one: the same as replacing every "|" by the text of code 0.
    if ((delimiters & LineFacts::kBar) != 0)
      for (std::size_t at = paragraph.find('|', barsFrom); at != std::string::npos; at = paragraph.find('|', at + 1))
        paragraph[at] = '\0';
    if ((delimiters & LineFacts::kCaret) == 0) {
      out.line(paragraph);
      paragraph.clear();
      return;
    }
  }
  // The rest in one pass: the text between the delimiters goes over in runs, the
  // delimiters found by the library's fast searches.
  work.clear();
  const char* p = paragraph.data();
  std::size_t n = paragraph.size();
  std::size_t from = 0;
  const auto put = [&](std::size_t at, std::size_t used, std::string_view as) {
    work.append(p + from, at - from);
    work += as;
    from = at + used;
  };
  // Calls each(at) for each `a` and `b` of the paragraph, left to right; each returns
  // how many characters it used.
  const auto forEach = [&](char a, char b, auto each) {
    std::size_t nextA = paragraph.find(a), nextB = a == b ? std::string::npos : paragraph.find(b);
    while (nextA != std::string::npos || nextB != std::string::npos) {
      const std::size_t at = std::min(nextA, nextB);
      const std::size_t after = at + each(at);
      if (nextA < after) nextA = paragraph.find(a, after);
      if (nextB < after) nextB = a == b ? std::string::npos : paragraph.find(b, after);
    }
    work.append(p + from, n - from);
  };
  if (descriptors) {
    forEach('|', '_', [&](std::size_t at) -> std::size_t {
      if (p[at] == '_') {
        put(at, 1, "; ");
        return 1;
      }
      const bool pair = at + 1 < n && p[at + 1] == '|';
      put(at, pair ? 2 : 1, pair ? nul : " / ");
      return pair ? 2 : 1;
    });
    const std::size_t last = work.find_last_not_of(' ');
    work.resize(last == std::string::npos ? 0 : last + 1);
    if (work.ends_with('/')) work.pop_back();  // the blank before it stays
    if ((delimiters & LineFacts::kCaret) != 0) {
      paragraph.swap(work);
      work.clear();
      p = paragraph.data();
      n = paragraph.size();
      from = 0;
      forEach('^', '^', [&](std::size_t at) -> std::size_t {
        put(at, 1, ", ");
        return 1;
      });
    }
  } else {
    forEach('^', '^', [&](std::size_t at) -> std::size_t {
      const bool underline = at + 1 < n && p[at + 1] == '_';
      put(at, underline ? 2 : 1, underline ? "; " : ", ");
      return underline ? 2 : 1;
    });
  }
  out.line(work);
  paragraph.clear();
}

// What the first four bytes of a line will be once cleaned: a tag (folding leaves them
// as they are), and the tag of descriptors.
struct Head {
  bool tagged = false;
  bool descriptors = false;
};
Head headOf(std::string_view raw) {
  if (raw.size() < 4) return {};
  const char h[4] = {cleanByte(raw[0]), cleanByte(raw[1]), cleanByte(raw[2]), cleanByte(raw[3])};
  if (!isTagged(std::string_view(h, 4))) return {};
  return {true, h[0] == 'D' && h[1] == 'E'};
}

// The checks both tools make of their input, and the name of the output.
std::optional<Message> checkInput(const JobState& state, const std::string& inFile, std::string_view ext,
                                  std::string& outFile) {
  if (auto refusal = CheckBreaksInput(inFile, ext)) return refusal;
  outFile = state.outputPath(DerivedOutputName(inFile, ext));
  // The output is replaced without a word; the input must not be what it replaces.
  if (SameFile(inFile, outFile)) return InputIsOutputMessage();
  return std::nullopt;
}

}  // namespace

std::optional<Message> CheckBreaksInput(const std::string& inFile, std::string_view ext) {
  if (auto refusal = CheckPolishInput(inFile, FileWording{1, 1})) return refusal;
  if (inFile.find(ext) != std::string::npos)
    return Message{std::string(kOpenFileErrorTitle), "Input file must not have " + std::string(ext) + " extension."};
  return std::nullopt;
}

JobResult RemoveLineBreaks(JobState& state, JobProgress& progress, const PolishInput& input) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    std::string outFile;
    if (auto refusal = checkInput(state, input.inFile, ".FMT", outFile)) {
      result.message = *refusal;
      return JobOutcome::Refused;
    }
    LineToolFiles io(job, input.inFile, outFile);
    job.start(result, kLineBreaksTitle, FileSize(input.inFile), io.lineCount);

    int32_t lTagLines = 0;
    int32_t labels = 0;
    std::string sParagraph;
    std::string work;  // the paragraph as written
    std::string next;  // a line that opens a paragraph, while the last one is written
    LineFacts facts;
    unsigned delimiters = 0;  // those sParagraph holds: "|", "^" or "_"
    std::size_t barsFrom = 0;  // where its first line with a "|" begins
    for (int32_t i = 1; i <= io.lineCount; ++i) {
      if (i == 40 && labels < 1) {
        result.message = NotRecordFileMessage();
        return JobOutcome::Refused;
      }
      if (i == 40 && lTagLines < 1) {
        result.message = Message{std::string(kFormatErrorTitle), std::string(kNotTaggedText)};
        return JobOutcome::Refused;
      }
      std::string_view raw;
      if (!io.in.readLine(raw)) break;
      result.lines = i;
      // The line goes onto the paragraph as it will stand there, and its class is read
      // from it there; a line that ends the paragraph before it is then taken off.
      // Its "|"s are made byte 0 as it is cleaned unless it will stand in a paragraph of
      // descriptors: its own, when its first bytes make it a tagged line (folding
      // keeps them), else the one it continues. A line of descriptors whose "|"s went
      // after all is cleaned again with them.
      const std::size_t lineStart = sParagraph.size();
      const bool inDescriptors = lineStart > 0 && sParagraph.starts_with("DE- ");
      const Head head = headOf(raw);
      appendCleanFolded(sParagraph, raw, facts, head.tagged ? !head.descriptors : !inDescriptors);
      std::string_view line = std::string_view(sParagraph).substr(lineStart);
      const bool empty = line.empty();
      bool ends = false;
      if (isTagged(line)) {
        Count32(lTagLines, 1);
        ends = true;
      } else if (!line.empty() && line[0] == 'R' && line.starts_with("Record - ")) {
        Count32(labels, 1);
        job.progress.recordDone(labels);
        ends = true;
      } else if (empty) {
        ends = true;
      }
      const bool descriptors = isTagged(line) ? line.starts_with("DE- ") : !ends && inDescriptors;
      if (descriptors && facts.barsGone) {
        sParagraph.resize(lineStart);
        appendCleanFolded(sParagraph, raw, facts, false);
        line = std::string_view(sParagraph).substr(lineStart);
      }
      // A label is gathered like text, and goes out at the next tagged or empty line.
      if (ends && lineStart > 0) {
        next.assign(line);
        sParagraph.resize(lineStart);
        flush(sParagraph, delimiters, barsFrom, work, io.out);
        sParagraph.swap(next);
      }
      if (empty) io.out.blank();
      const bool opens = lineStart == 0 || ends;  // the line begins the paragraph
      if (opens) delimiters = 0;
      if ((facts.delimiters & LineFacts::kBar) != 0 && (delimiters & LineFacts::kBar) == 0)
        barsFrom = opens ? 0 : lineStart;
      delimiters |= facts.delimiters;
      if (job.lineDone(i, io.lineCount)) return JobOutcome::Interrupted;
    }
    // What the paragraph still holds is not written: a file that ends on a line of
    // text loses its last paragraph, as it always has.
    io.out.close();
    result.records = labels;
    job.finish(result);
    return JobOutcome::Done;
  });
}

PerPageAnswer CheckRecordsPerPage(std::string_view answer) {
  PerPageAnswer a;
  const auto askAgain = [&](std::string_view title, std::string_view text) {
    a.kind = PerPageAnswer::Kind::AskAgain;
    a.message = {std::string(title), std::string(text)};
    return a;
  };
  if (InCountTbl(answer, "0123456789") < static_cast<int32_t>(answer.size()))
    return askAgain("Non-numeric Input Error", "Please choose a number from 1 to 99.");
  if (answer == "0") return askAgain("Zero Input Error", "Please choose a number from 1 to 99.");
  // The conversion to 16 bits comes before the test for an empty answer, so the empty
  // answer of Cancel fails here like a number too large.
  if (answer.empty()) {
    a.kind = PerPageAnswer::Kind::Error;
    a.error = ZvError(kTypeMismatch, "Type mismatch");
    return a;
  }
  int64_t value = 0;
  for (char c : answer) {
    value = value * 10 + (c - '0');
    if (value > std::numeric_limits<int16_t>::max()) {
      a.kind = PerPageAnswer::Kind::Error;
      a.error = ZvError(err::kOverflow, ErrorText(err::kOverflow));
      return a;
    }
  }
  if (value >= 1 && value <= 99) {
    a.perPage = static_cast<int16_t>(value);
    return a;
  }
  return askAgain("Invalid Number of Records Per Page", "The valid range is 1 to 99.");
}

JobResult InsertPageBreaks(JobState& state, JobProgress& progress, const PageBreaksParams& params) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    std::string outFile;
    if (auto refusal = checkInput(state, params.inFile, ".BRK", outFile)) {
      result.message = *refusal;
      return JobOutcome::Refused;
    }
    const PerPageAnswer answer = CheckRecordsPerPage(params.answer);
    if (answer.kind == PerPageAnswer::Kind::AskAgain) {
      result.message = answer.message;
      return JobOutcome::Refused;
    }
    // A failed conversion abandons the job, and the abandoning deletes BASE.BRK.
    job.outputs.add(outFile);
    if (answer.kind == PerPageAnswer::Kind::Error) throw *answer.error;

    LineToolFiles io(job, params.inFile, outFile);
    job.start(result, kPageBreaksTitle, FileSize(params.inFile), io.lineCount);

    const int16_t iPerPage = answer.perPage;
    int16_t iOnPage = 0;
    int32_t labels = 0;
    std::string& line = state.gsLine;
    for (int32_t i = 1; i <= io.lineCount; ++i) {
      if (i == 40 && labels < 1) {
        result.message = NotRecordFileMessage();
        return JobOutcome::Refused;
      }
      if (!io.in.readLine(line)) break;
      result.lines = i;
      CleanLine(line);
      // Anywhere in the line: a body line that quotes a label counts as one.
      if (line.find("Record - ") != std::string::npos) {
        Add32(labels, 1);
        Inc16(iOnPage);
        job.progress.recordDone(labels);
      }
      if (iOnPage == iPerPage + 1) {
        io.out.line("\f");
        iOnPage = 1;
      }
      io.out.line(line);
      if (job.lineDone(i, io.lineCount)) return JobOutcome::Interrupted;
    }
    io.out.close();
    result.records = labels;
    job.finish(result);
    return JobOutcome::Done;
  });
}

}  // namespace zv
