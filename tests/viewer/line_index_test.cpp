// The line index and its scans against a bytewise reading of the same line rule, on
// files of every line-end kind, around the 64-byte blocks and across both kinds of mark.
#include "viewer/line_index.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/line_reader.h"
#include "viewer/line_scan.h"

namespace zv {
namespace {

// Where each line starts, by the rule every reader of the program follows: a line ends
// at CR LF, LF or a lone CR, and a last line without an end is a line.
struct Reference {
  std::vector<int64_t> starts;
  std::vector<int64_t> textEnds;
  std::vector<int64_t> nexts;
};

Reference reference(const std::string& s) {
  Reference r;
  const auto n = static_cast<int64_t>(s.size());
  int64_t start = 0;
  for (int64_t i = 0; i < n; ++i) {
    if (s[i] != '\n' && s[i] != '\r') continue;
    const int64_t next = (s[i] == '\r' && i + 1 < n && s[i + 1] == '\n') ? i + 2 : i + 1;
    r.starts.push_back(start);
    r.textEnds.push_back(i);
    r.nexts.push_back(next);
    start = next;
    i = next - 1;
  }
  if (start < n) {
    r.starts.push_back(start);
    r.textEnds.push_back(n);
    r.nexts.push_back(n);
  }
  return r;
}

struct IndexCase {
  std::string name;
  std::string bytes;
};
void PrintTo(const IndexCase& c, std::ostream* os) { *os << c.name; }

std::string repeatLines(int64_t count, const std::string& text, const std::string& end) {
  std::string s;
  for (int64_t i = 0; i < count; ++i) s += text + std::to_string(i % 97) + end;
  return s;
}

// Random text that is mostly CR, LF and CR LF, so that ends fall on every block edge.
std::string endHeavy(std::size_t size, unsigned seed) {
  std::mt19937 rng(seed);
  const char alphabet[] = {'x', 'y', '\r', '\n', '\r', '\n', ' ', '\0'};
  std::string s(size, 'x');
  for (char& c : s) c = alphabet[rng() % sizeof alphabet];
  return s;
}

std::vector<IndexCase> indexCases() {
  std::vector<IndexCase> cases = {
      {"Empty", ""},
      {"OneLineNoEnd", "abc"},
      {"OneLineCrLf", "abc\r\n"},
      {"LoneCr", "a\rb\rc"},
      {"MixedEnds", "one\r\ntwo\nthree\rfour\r\n\r\n\n\rlast"},
      {"CrAtEnd", "abc\r"},
      {"CrLfSplitAtBlock", std::string(63, 'a') + "\r\n" + std::string(70, 'b') + "\r\nz"},
      {"CrAtBlockEndLone", std::string(63, 'a') + "\r" + "b\n"},
      {"OnlyEnds", std::string(300, '\n')},
      {"OnlyCrLf", repeatLines(300, "", "\r\n")},
      {"LineMarksCrLf", repeatLines(3 * LineIndex::kLinesPerMark + 17, "line ", "\r\n")},
      {"LineMarksLfNoFinalEnd", repeatLines(2 * LineIndex::kLinesPerMark + 5, "l", "\n") + "tail"},
      {"EmptyLinesPastMarks", std::string(2 * LineIndex::kLinesPerMark + 3, '\n')},
      // Lines longer than the byte mark's distance: each following line gets a mark.
      {"LongLines", std::string(LineIndex::kBytesPerMark + 10, 'a') + "\r\nshort\r\n" +
                        std::string(2 * LineIndex::kBytesPerMark, 'b') + "\nc\n" +
                        std::string(LineIndex::kBytesPerMark / 2, 'd')},
      {"EndHeavy", endHeavy(20000, 3)},
  };
  return cases;
}

class LineIndexTest : public testing::TestWithParam<IndexCase> {};

void expectAgrees(const LineIndex& index, const std::string& s, const Reference& r) {
  ASSERT_EQ(index.lineCount(), static_cast<int64_t>(r.starts.size()));
  const auto lines = static_cast<int64_t>(r.starts.size());
  // Every line of a small file; a spread of them in a large one, always the first,
  // the last and those around each mark.
  std::vector<int64_t> wanted;
  for (int64_t n = 1; n <= lines; n += (lines > 5000 ? 61 : 1)) wanted.push_back(n);
  for (int64_t n : {int64_t{1}, lines, LineIndex::kLinesPerMark, LineIndex::kLinesPerMark + 1,
                    2 * LineIndex::kLinesPerMark + 1, lines - 1})
    if (n >= 1 && n <= lines) wanted.push_back(n);
  for (const int64_t n : wanted) {
    const auto k = static_cast<std::size_t>(n - 1);
    ASSERT_EQ(index.lineStart(n), r.starts[k]) << "line " << n;
    const LineSpan span = index.lineSpan(n);
    EXPECT_EQ(span.start, r.starts[k]) << "line " << n;
    EXPECT_EQ(span.textEnd, r.textEnds[k]) << "line " << n;
    EXPECT_EQ(span.next, r.nexts[k]) << "line " << n;
    EXPECT_EQ(index.lineOfOffset(r.starts[k]), n) << "line " << n;
    if (r.nexts[k] > r.starts[k]) {
      EXPECT_EQ(index.lineOfOffset(r.nexts[k] - 1), n) << "line " << n;
    }
  }
  EXPECT_EQ(index.lineStart(0), -1);
  EXPECT_EQ(index.lineStart(lines + 1), -1);
  EXPECT_FALSE(index.lineSpan(lines + 1).valid());
  (void)s;
}

TEST_P(LineIndexTest, AgreesWithTheLineRule) {
  const std::string& s = GetParam().bytes;
  LineIndex index(s);
  index.build();
  ASSERT_TRUE(index.complete());
  expectAgrees(index, s, reference(s));
}

TEST_P(LineIndexTest, CountsTheLinesTheReaderReads) {
  const std::string& s = GetParam().bytes;
  LineReader reader{std::string_view(s)};
  std::string line;
  int64_t lines = 0;
  while (reader.readLine(line)) ++lines;
  LineIndex index(s);
  index.build();
  EXPECT_EQ(index.lineCount(), lines);
}

TEST_P(LineIndexTest, BuiltInTheBackgroundAgreesToo) {
  const std::string& s = GetParam().bytes;
  LineIndex index(s);
  bool notified = false;
  index.start([&] { notified = true; });
  // Lookups while it runs answer by counting past the last mark.
  const Reference r = reference(s);
  if (!r.starts.empty()) {
    EXPECT_EQ(index.lineStart(static_cast<int64_t>(r.starts.size())), r.starts.back());
  }
  index.wait();
  ASSERT_TRUE(index.complete());
  EXPECT_TRUE(notified || s.empty());
  expectAgrees(index, s, r);
}

TEST_P(LineIndexTest, AnswersBeforeItIsBuiltByCountingFromTheTop) {
  const std::string& s = GetParam().bytes;
  const LineIndex index(s);  // never started: the first screen is drawn from this
  const Reference r = reference(s);
  EXPECT_EQ(index.lineCount(), 0);
  for (std::size_t k = 0; k < r.starts.size(); k += 1 + r.starts.size() / 50) {
    const auto n = static_cast<int64_t>(k + 1);
    EXPECT_EQ(index.lineStart(n), r.starts[k]) << "line " << n;
    EXPECT_EQ(index.lineOfOffset(r.starts[k]), n) << "line " << n;
    const LineSpan span = index.lineSpan(n, int64_t{1} << 30);
    EXPECT_EQ(span.next, r.nexts[k]) << "line " << n;
  }
}

INSTANTIATE_TEST_SUITE_P(Files, LineIndexTest, testing::ValuesIn(indexCases()),
                         [](const testing::TestParamInfo<IndexCase>& p) { return p.param.name; });

TEST(LineIndex, LineCountGrowsWhileBuildingAndStopsEarlyWhenAsked) {
  const std::string s = repeatLines(400000, "a line of text ", "\r\n");
  LineIndex index(s);
  index.start();
  index.stop();
  // Stopped: what was indexed stays, and is a whole number of slices' lines.
  EXPECT_LE(index.lineCount(), 400000);
  const int64_t n = index.lineCount();
  if (n > 0) {
    EXPECT_EQ(index.lineStart(n), index.lineSpan(n).start);
  }
}

TEST(LineIndex, MarksStayUnderFourBytesPerThousandOfTheFile) {
  // The worst case for marks: every line empty.
  const std::string empties(4 << 20, '\n');
  LineIndex index(empties);
  index.build();
  EXPECT_EQ(index.lineCount(), static_cast<int64_t>(empties.size()));
  EXPECT_LE(index.memoryBytes(), empties.size() * 4 / 1000);
}

TEST(LineIndex, ALineLongerThanTheLookAheadComesBackCut) {
  const std::string s = std::string(1000, 'a') + "\nb";
  LineIndex index(s);
  // Not built: no mark tells where line 1 ends.
  const LineSpan cut = index.lineSpan(1, 100);
  EXPECT_EQ(cut.start, 0);
  EXPECT_EQ(cut.textEnd, 100);
  EXPECT_EQ(cut.next, -1);
  index.build();
  EXPECT_EQ(index.lineSpan(1).next, 1001);
}

TEST(LineScan, CountsAndSkipsAsTheReferenceOnRandomEnds) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    const std::string s = endHeavy(1 + seed * 37, seed);
    const Reference r = reference(s);
    // Ends in [0, n) with the byte behind settling a CR at the end.
    for (std::size_t cut : {std::size_t{0}, s.size() / 3, s.size() / 2, s.size()}) {
      const int next = cut < s.size() ? static_cast<unsigned char>(s[cut]) : viewer::kNoByte;
      int64_t expected = 0;
      for (std::size_t k = 0; k < r.nexts.size(); ++k)
        if (r.nexts[k] <= static_cast<int64_t>(cut) && r.textEnds[k] < r.nexts[k]) ++expected;
      EXPECT_EQ(viewer::CountLineEnds(s.data(), cut, next), expected) << seed << ' ' << cut;
    }
    for (std::size_t k = 0; k + 1 < r.starts.size(); ++k)
      EXPECT_EQ(viewer::SkipLineEnds(s.data(), s.size(), viewer::kNoByte, static_cast<int64_t>(k + 1)), r.starts[k + 1])
          << seed << ' ' << k;
  }
}

}  // namespace
}  // namespace zv
