// modFormat: hard line breaks out of TAGed records (.FMT), page breaks in (.BRK), and
// the records-per-page answer.
#include <gtest/gtest.h>

#include "core/brindle.h"
#include "polish/format.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunTool;
using test::TempDir;

const std::string kNul(1, '\0');

JobResult LineBreaks(JobState& s, JobProgress& p, const std::string& in, const std::string&) {
  return RemoveLineBreaks(s, p, {in});
}

test::ToolRun RunLineBreaks(const TempDir& dir, const std::vector<std::string>& lines) {
  return RunTool(dir, CrLf(lines), &LineBreaks, {.outName = "in.FMT"});
}

TEST(RemoveLineBreaks, EachFieldOnOneLineWithItsDelimitersAsSeparators) {
  TempDir dir;
  const auto run = RunLineBreaks(dir, test::kTaggedLines);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, CrLf({
                         "Record - 5",
                         "",
                         "TI- Rust" + kNul + "in wheat" + kNul,          // "|" is byte 0, blanks folded
                         "AU- Smith, J., Jones, K." + kNul,              // "^" is ", "
                         "DE- Wheat / Rust" + kNul + "Fungi; Plant, ; Disease /  Crops ",
                         "AB- First line. Second: part goes on here" + kNul,
                         "",
                         "Record - 2",
                         "",
                         "TI- Second  title" + kNul + kNul + "Ab- not a tag",  // 20 blanks leave two
                         "",
                         // "Record -x" and the lines behind it are a last paragraph: lost.
                     }));
  EXPECT_EQ(run.result.records, 2);  // "Record -x" is no label here
  EXPECT_EQ(run.progress->title, "Remove Hard Line Breaks");
}

TEST(RemoveLineBreaks, TheDescriptorRuleAndTheTagTest) {
  struct Case {
    std::string field, out;
  } cases[] = {
      {"DE- a|b|c|", "DE- a / b / c "},  // the last slash cut, the blank before it kept
      {"DE- a||b", "DE- a" + kNul + "b"},
      {"DE- a^_b", "DE- a, ; b"},        // "_" went first: ", " and "; " side by side
      {"DE- a  |", "DE- a  "},           // folded, then trimmed before the slash is cut
      {"TI- a|b", "TI- a" + kNul + "b"},
      {"AU- a^b", "AU- a, b"},
      {"TI- a^_b", "TI- a; b"},
      {"AB- x", "AB- x"},
      {"DE- x /  ", "DE- x "},  // no delimiter: still trimmed and its slash cut
  };
  for (const Case& c : cases) {
    TempDir dir;
    const auto run = RunLineBreaks(dir, {"Record - 1", "", c.field, ""});
    EXPECT_EQ(run.out, CrLf({"Record - 1", "", c.out, ""})) << c.field;
  }
  // Only two capitals and "- " make a tag; other lines join the paragraph before.
  TempDir dir;
  const auto run = RunLineBreaks(dir, {"Record - 1", "", "TI- t", "Ab- a", "A1- b", "ABC- c", "AB-x", "AB- d", ""});
  EXPECT_EQ(run.out, CrLf({"Record - 1", "", "TI- tAb- aA1- bABC- cAB-x", "AB- d", ""}));
  // A delimiter on a continuation line, and a "^_" split over two lines.
  TempDir dir2;
  const auto joined = RunLineBreaks(dir2, {"Record - 1", "", "TI- a", "   b|c^", "_d", ""});
  EXPECT_EQ(joined.out, CrLf({"Record - 1", "", "TI- a b" + kNul + "c; d", ""}));
}

TEST(RemoveLineBreaks, BlankRunsFoldToOneUpToSixteenAndAContinuationJoinsByItsBlank) {
  struct Case {
    int blanks;
    int left;
  } cases[] = {{1, 1}, {2, 1}, {16, 1}, {17, 2}, {40, 3}};
  for (const Case& c : cases) {
    TempDir dir;
    const auto run = RunLineBreaks(dir, {"Record - 1", "", "TI- a" + std::string(c.blanks, ' ') + "b", ""});
    EXPECT_EQ(run.out, CrLf({"Record - 1", "", "TI- a" + std::string(c.left, ' ') + "b", ""})) << c.blanks;
  }
}

// Blanks folded as the halving does it: two blanks made one, four times over, then
// the blanks after a stop and a colon.
std::string Folded(std::string text) {
  for (int i = 0; i < 4; ++i) ReplaceAll(text, "  ", " ");
  ReplaceAll(text, ".  ", ". ");
  ReplaceAll(text, ":  ", ": ");
  return text;
}

TEST(RemoveLineBreaks, RunsAndDelimitersAnywhereInLinesOfEveryLength) {
  // Lines are looked at sixteen bytes at a time: runs of blanks and delimiters at
  // every place of lines around those lengths, on tagged and continuation lines.
  std::vector<std::string> in{"Record - 1", ""}, out{"Record - 1", ""};
  for (std::size_t length : {14u, 15u, 16u, 17u, 18u, 31u, 32u, 33u, 47u, 63u, 64u, 65u, 80u}) {
    for (std::size_t run : {2u, 3u, 16u, 17u, 33u}) {
      for (std::size_t at = 0; at + run <= length; at += 3) {
        std::string text(length, 'x');
        for (std::size_t k = 0; k < length; k += 7) text[k] = '.';
        text.replace(at, run, std::string(run, ' '));
        text[(at * 5 + run) % length] = '|';
        const std::string tagged = "TI- " + text;
        const std::string continued = "      " + text + (length % 2 ? "^" : "");
        in.insert(in.end(), {tagged, continued});
        std::string expected = Folded(tagged) + Folded(continued);
        for (char& c : expected) c = c == '|' ? '\0' : c;
        ReplaceAll(expected, "^", ", ");
        out.push_back(expected);
      }
    }
  }
  // Lines whose class folding changes: a label and a tag that two blanks hid.
  in.insert(in.end(), {"Record  -  7", "AB  - x", "  TI- not a tag", ""});
  out.insert(out.end(), {"Record - 7AB - x TI- not a tag", ""});
  TempDir dir;
  const auto run = RunLineBreaks(dir, in);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, CrLf(out));
  EXPECT_EQ(run.result.records, 2);
}

// The cleaning of LowAscii and RemCtrl with character 0.
std::string Cleaned(std::string text) {
  for (char& ch : text) {
    const auto c = static_cast<unsigned char>(ch & 0x7f);
    ch = static_cast<char>(c < 32 ? 0 : c);
  }
  return text;
}

TEST(RemoveLineBreaks, AContinuationsIndentationIsCleanedThenFolded) {
  // The blanks that open a line are folded from the bytes as read: a byte that
  // cleans to a blank is one, a control character is not, and a long opening run
  // folds with the rest of the line (its stop and colon blanks too).
  const std::string hb("\xA0");  // a blank once its high bit goes
  const std::vector<std::string> continuations{
      "x",
      " x",
      "  x",
      hb + hb + "x",
      " " + hb + " x|y",
      "\t  x",
      "  \tx",
      std::string(16, ' ') + "x",
      std::string(17, ' ') + "x",
      std::string(15, ' ') + hb + hb + "x",
      std::string(33, ' ') + "x",
      std::string(17, ' ') + "end.  Next:  one" + std::string(20, ' ') + "two",
      std::string(3, ' ') + "end." + std::string(18, ' ') + "Next",
      std::string(2, ' '),
      std::string(20, ' '),
      std::string(6, ' ') + "a" + std::string(40, ' '),
  };
  std::vector<std::string> in{"Record - 1", ""}, out{"Record - 1", ""};
  for (const std::string& c : continuations) {
    in.insert(in.end(), {"TI- t", c});
    out.push_back(Folded(Cleaned("TI- t" + c)));
    for (char& ch : out.back()) ch = ch == '|' ? '\0' : ch;
  }
  in.push_back("");
  out.push_back("");
  TempDir dir;
  const auto run = RunLineBreaks(dir, in);
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, CrLf(out));
}

TEST(RemoveLineBreaks, BarsOnAnyLineOfAParagraphAfterOneWithBarsFarOn) {
  // Where a paragraph's first "|" stands, on its opening line or a later one, after a
  // paragraph whose first "|" stood further on than the whole of the next.
  const std::string far(120, 'w');
  TempDir dir;
  const auto run = RunLineBreaks(dir, {"Record - 1|", "", "AB- " + far, "      " + far + "|", "TI- a", "      b",
                                       "      c|d", "      e|", "AU- x|y", "   z|", "DE- p", "   q|r|",
                                       "SO- s", "   t^u|", "Record - 2", "", "TI- n|", ""});
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, CrLf({"Record - 1" + kNul, "", "AB- " + far + " " + far + kNul, "TI- a b c" + kNul + "d e" + kNul,
                           "AU- x" + kNul + "y z" + kNul, "DE- p q / r ", "SO- s t, u" + kNul, "Record - 2", "",
                           "TI- n" + kNul, ""}));
  EXPECT_EQ(run.result.records, 2);
}

TEST(RemoveLineBreaks, ALinesBarsGoAsItsParagraphHasThemWhateverItsBytesBeforeCleaning) {
  // Tags that high bits hide until the line is cleaned, and a label with two blanks
  // in it after a paragraph of descriptors: each "|" still goes by its paragraph.
  TempDir dir;
  const auto run = RunLineBreaks(dir, {"Record - 1", "", "\xC4\xC5- a|b|", "\xD4I- a|b", "DE- x|", "Record  -  2|", "",
                                       "DE-\xA0" "c|d", "      e|", "AB- f|", ""});
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, CrLf({"Record - 1", "", "DE- a / b ", "TI- a" + kNul + "b", "DE- x ", "Record - 2" + kNul, "",
                           "DE- c / d e ", "AB- f" + kNul, ""}));
  EXPECT_EQ(run.result.records, 2);
}

TEST(RemoveLineBreaks, ALabelOrTagMissingFromTheFirst39LinesIsRefusedAtLine40) {
  std::vector<std::string> labelsOnly;
  for (int i = 1; i <= 20; ++i) labelsOnly.insert(labelsOnly.end(), {"Record - " + std::to_string(i), ""});
  struct Case {
    std::string name;
    std::vector<std::string> lines;
    std::string said;
  } cases[] = {
      {"no label, no tag", test::BodyLines(45), "This does not appear to be a filtered record file."},
      {"labels, no tag", labelsOnly, "This file does not appear to contain TAGed Dialog records."},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const auto run = RunLineBreaks(dir, c.lines);
    EXPECT_EQ(run.result.outcome, JobOutcome::Refused) << c.name;
    ASSERT_TRUE(run.result.message);
    EXPECT_EQ(run.result.message->title, "File Format Error");
    EXPECT_EQ(run.result.message->text, c.said);
    EXPECT_FALSE(run.outExists);
  }
  // Under 40 lines neither test is reached; nothing ever ends a paragraph here.
  TempDir dir;
  const auto run = RunLineBreaks(dir, test::BodyLines(39));
  EXPECT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, "");
}

JobResult PageBreaks(int perPage, JobState& s, JobProgress& p, const std::string& in) {
  return InsertPageBreaks(s, p, {in, std::to_string(perPage)});
}

// Seven records of two lines each.
std::vector<std::string> SevenRecords() {
  std::vector<std::string> lines;
  for (int i = 1; i <= 7; ++i) lines.insert(lines.end(), {"Record - " + std::to_string(i), "", "text"});
  return lines;
}

TEST(InsertPageBreaks, AFormFeedLineStandsAboveRecordsNPlusOneAnd2NPlusOne) {
  struct Case {
    int perPage;
    std::vector<int> breaksAbove;
  } cases[] = {{1, {2, 3, 4, 5, 6, 7}}, {3, {4, 7}}, {7, {}}, {99, {}}};
  for (const Case& c : cases) {
    TempDir dir;
    const auto run = RunTool(
        dir, CrLf(SevenRecords()),
        [&](JobState& s, JobProgress& p, const std::string& in, const std::string&) { return PageBreaks(c.perPage, s, p, in); },
        {.outName = "in.BRK"});
    ASSERT_EQ(run.result.outcome, JobOutcome::Done);
    std::vector<std::string> expected;
    for (int i = 1; i <= 7; ++i) {
      if (std::find(c.breaksAbove.begin(), c.breaksAbove.end(), i) != c.breaksAbove.end()) expected.push_back("\f");
      expected.insert(expected.end(), {"Record - " + std::to_string(i), "", "text"});
    }
    EXPECT_EQ(run.out, CrLf(expected)) << c.perPage;
    EXPECT_EQ(run.progress->title, "Insert Hard Page Breaks");
  }
}

TEST(InsertPageBreaks, ALabelAnywhereInALineCountsAndLinesAreCleaned) {
  TempDir dir;
  // N = 1 on the sample: "Record -x" has no blank and does not count; the body line
  // that quotes a label does.
  const auto run = RunTool(
      dir, CrLf(test::kTaggedLines),
      [](JobState& s, JobProgress& p, const std::string& in, const std::string&) { return PageBreaks(1, s, p, in); },
      {.outName = "in.BRK"});
  std::vector<std::string> expected = test::CleanedTaggedLines();
  expected.insert(expected.begin() + 15, "\f");
  expected.insert(expected.begin() + 9, "\f");
  EXPECT_EQ(run.out, CrLf(expected));
  EXPECT_EQ(run.result.records, 3);
}

TEST(CheckRecordsPerPage, TheInputBoxRulesInTheirOrder) {
  using K = PerPageAnswer::Kind;
  struct Case {
    std::string answer;
    K kind;
    std::string said;  // "title: text", the error's number, or N
  } cases[] = {
      {"1", K::Accepted, "1"},
      {"99", K::Accepted, "99"},
      {"007", K::Accepted, "7"},
      {"0", K::AskAgain, "Zero Input Error: Please choose a number from 1 to 99."},
      {"00", K::AskAgain, "Invalid Number of Records Per Page: The valid range is 1 to 99."},
      {"100", K::AskAgain, "Invalid Number of Records Per Page: The valid range is 1 to 99."},
      {"32767", K::AskAgain, "Invalid Number of Records Per Page: The valid range is 1 to 99."},
      {"1.5", K::AskAgain, "Non-numeric Input Error: Please choose a number from 1 to 99."},
      {"-3", K::AskAgain, "Non-numeric Input Error: Please choose a number from 1 to 99."},
      {" 5", K::AskAgain, "Non-numeric Input Error: Please choose a number from 1 to 99."},
      {"", K::Error, "13 Type mismatch"},  // Cancel: the conversion fails before the empty test
      {"32768", K::Error, "6 Overflow"},
  };
  for (const Case& c : cases) {
    const PerPageAnswer a = CheckRecordsPerPage(c.answer);
    EXPECT_EQ(a.kind, c.kind) << '"' << c.answer << '"';
    const std::string said = a.kind == K::Accepted ? std::to_string(a.perPage)
                             : a.kind == K::AskAgain ? a.message.title + ": " + a.message.text
                                                     : std::to_string(a.error->number()) + " " + a.error->text();
    EXPECT_EQ(said, c.said) << '"' << c.answer << '"';
  }
}

TEST(InsertPageBreaks, AnAnswerThatDoesNotConvertFailsAndRemovesAnOlderOutput) {
  TempDir dir;
  test::WriteFile(dir.file("in.BRK"), "older\r\n");
  const auto run = RunTool(dir, CrLf(SevenRecords()),
                           [](JobState& s, JobProgress& p, const std::string& in, const std::string&) {
                             return InsertPageBreaks(s, p, {in, ""});
                           },
                           {.outName = "in.BRK"});
  EXPECT_EQ(run.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(run.result.error->number(), 13);
  EXPECT_FALSE(run.outExists);
  // One the box would ask again for is refused before anything is touched.
  test::WriteFile(dir.file("in.BRK"), "older\r\n");
  const auto again = RunTool(dir, CrLf(SevenRecords()),
                             [](JobState& s, JobProgress& p, const std::string& in, const std::string&) {
                               return InsertPageBreaks(s, p, {in, "100"});
                             },
                             {.outName = "in.BRK"});
  EXPECT_EQ(again.result.outcome, JobOutcome::Refused);
  EXPECT_EQ(again.out, "older\r\n");
}

}  // namespace
}  // namespace zv
