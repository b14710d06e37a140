// The viewer's commands over a real display: search and stepper sequences, Jump to
// Line with its limits and its 16-bit overflow, Bottom, the refusals of Split and Open.
#include "viewer/file_view.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "commands/command_table.h"
#include "core/error.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::TempDir;
using test::WriteFile;

// The viewer's window as its commands see it: answers from a queue, messages kept,
// and the display's events handled as the window handles them.
class Viewer : public FileDisplayEvents, public fileview::FileViewHost {
 public:
  FileDisplay display{*this};
  std::deque<std::string> answers;
  std::vector<std::string> prompts;
  std::vector<Message> messages;
  std::vector<std::string> events;
  std::string gsSearchText;

  explicit Viewer(const std::string& path) {
    display.setFileName(path);
    display.waitForLoad();
    display.setPageLines(5);
  }

  std::string inputBox(std::string_view prompt, std::string_view title) override {
    prompts.push_back(std::string(title) + ": " + std::string(prompt));
    if (answers.empty()) return {};
    std::string a = answers.front();
    answers.pop_front();
    return a;
  }
  void message(const Message& m) override { messages.push_back(m); }
  void LoadComplete() override { events.emplace_back("LoadComplete"); }
  void TopIndexChange() override { events.emplace_back("TopIndexChange"); }
  void SearchRequest() override {
    events.emplace_back("SearchRequest");
    fileview::OnSearchRequest(display);
  }
  void SearchComplete() override {
    events.emplace_back("SearchComplete");
    if (const auto m = fileview::OnSearchComplete(display)) messages.push_back(*m);
  }

  // The text of the selection, and the titles said so far.
  std::string selected() const { return display.selectedText(); }
  std::vector<std::string> titles() const {
    std::vector<std::string> out;
    for (const Message& m : messages) out.push_back(m.title);
    return out;
  }
};

// Three records; "wetland" stands in the first and the third.
const std::string kRecords =
    "Record - 1\r\n\r\nTitle one about a wetland\r\nmore of record one\r\n\r\n"
    "Record - 2\r\n\r\nTitle two about a forest\r\n\r\n"
    "Record - 3\r\n\r\nwetland again\r\n";

class FileViewTest : public testing::Test {
 protected:
  TempDir dir;
  std::string path = dir.file("records.pro");
  void SetUp() override { WriteFile(path, kRecords); }
  int64_t positionOf(const std::string& text, std::size_t nth = 1) const {
    std::size_t at = std::string::npos;
    for (std::size_t k = 0, from = 0; k < nth; ++k, from = at + 1) at = kRecords.find(text, from);
    return static_cast<int64_t>(at) + 1;
  }
};

TEST_F(FileViewTest, TheStepperWalksTheLabelsAndStartsAtTheTopAfterTheLast) {
  Viewer v(path);
  std::vector<int64_t> found;
  for (int step = 0; step < 5; ++step) {
    fileview::RecordStepper(v.display);
    found.push_back(v.display.selLength() > 0 ? v.display.selStart() : 0);
  }
  EXPECT_EQ(found, (std::vector<int64_t>{positionOf("Record - 1"), positionOf("Record - 2"), positionOf("Record - 3"),
                                         0, positionOf("Record - 1")}));
  ASSERT_EQ(v.messages.size(), 1u);
  EXPECT_EQ(v.messages[0].title, "Last Record");
  EXPECT_EQ(v.messages[0].text, "No further 'Record - N' style record labels found.");
  EXPECT_EQ(v.display.selLine(), 1);
  EXPECT_TRUE(v.gsSearchText.empty()) << "the stepper leaves gsSearchText alone";
}

TEST_F(FileViewTest, EachSearchGoesOnBehindTheLastMatchThenFromTheTop) {
  Viewer v(path);
  v.answers = {"wetland"};
  fileview::FindText(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.gsSearchText, "wetland");
  EXPECT_EQ(v.display.selStart(), positionOf("wetland"));
  EXPECT_EQ(v.selected(), "wetland");
  EXPECT_EQ(v.display.selLine(), 3);
  fileview::RepeatSearch(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.display.selStart(), positionOf("wetland", 2));
  EXPECT_EQ(v.display.selLine(), 12);
  fileview::RepeatSearch(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.display.selLength(), 0);
  EXPECT_EQ(v.display.selStart(), 0);
  ASSERT_EQ(v.messages.size(), 1u);
  EXPECT_EQ(v.messages[0].title, "Text Not Found");
  EXPECT_EQ(v.messages[0].text, "No further occurences of the search text.");
  fileview::RepeatSearch(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.display.selStart(), positionOf("wetland"));
  EXPECT_EQ(v.events, (std::vector<std::string>{"LoadComplete", "SearchRequest", "SearchComplete", "SearchRequest",
                                                "TopIndexChange", "SearchComplete", "SearchRequest", "SearchComplete",
                                                "SearchRequest", "TopIndexChange", "SearchComplete"}));
}

TEST_F(FileViewTest, RepeatSearchAfterTheStepperRepeatsTheLastFindText) {
  Viewer v(path);
  fileview::RecordStepper(v.display);
  v.answers = {"wetland"};
  fileview::FindText(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.display.selStart(), positionOf("wetland"));
  fileview::RecordStepper(v.display);
  EXPECT_EQ(v.display.selStart(), positionOf("Record - 2"));
  fileview::RepeatSearch(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.display.searchText(), "wetland");
  EXPECT_EQ(v.display.selStart(), positionOf("wetland", 2));
  // The stepper keeps its own place: the next label, whatever the searches found.
  fileview::RecordStepper(v.display);
  EXPECT_EQ(v.display.selStart(), positionOf("Record - 3"));
  EXPECT_TRUE(v.messages.empty());
}

TEST_F(FileViewTest, FindTextCancelledEmptiesTheSharedTextAndSearchesNothing) {
  Viewer v(path);
  v.gsSearchText = "forest";
  fileview::FindText(v.display, v, v.gsSearchText);  // Cancel: the empty answer
  EXPECT_EQ(v.gsSearchText, "");
  EXPECT_EQ(v.events, std::vector<std::string>{"LoadComplete"});
  EXPECT_EQ(v.prompts, std::vector<std::string>{"Find Text: Search text:"});
  fileview::RepeatSearch(v.display, v, v.gsSearchText);
  ASSERT_EQ(v.messages.size(), 1u);
  EXPECT_EQ(v.messages[0].title, "No Search To Repeat");
  EXPECT_EQ(v.messages[0].text,
            "There is no prior search to repeat.  You may, however, use the 'Find Text' command or 'Search' button now, "
            "if you like.");
}

TEST_F(FileViewTest, AMatchBelowThePageScrollsItToTheTop) {
  Viewer v(path);
  v.answers = {"again"};
  fileview::FindText(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.display.topLine(), 12);
  // One on the page already leaves it where it is.
  v.display.setTopLine(10);
  v.display.clearSelection();
  fileview::RepeatSearch(v.display, v, v.gsSearchText);
  EXPECT_EQ(v.display.topLine(), 10);
  EXPECT_EQ(v.display.selLine(), 12);
}

// --- Jump to Line ---------------------------------------------------------------------

struct JumpCase {
  std::string name;
  int64_t lines;                     // of the file
  std::vector<std::string> answers;  // typed in turn
  int64_t top;                       // the top line after it
  std::vector<std::string> said;     // the titles of the messages, in order
  std::size_t prompts;               // how often it asked
  int32_t error = 0;                 // the error it ends in
};
void PrintTo(const JumpCase& c, std::ostream* os) { *os << c.name; }

std::vector<JumpCase> jumpCases() {
  return {
      {"Cancelled", 40, {""}, 1, {}, 1},
      {"ALine", 40, {"25"}, 25, {}, 1},
      {"BlanksAround", 40, {" 7 "}, 7, {}, 1},
      {"TheLastLine", 40, {"40"}, 40, {}, 1},
      {"NoDigitsAsksAgain", 40, {"abc", "3"}, 3, {"Zero or Non-numeric Input Error"}, 2},
      {"ZeroAsksAgain", 40, {"0", "2"}, 2, {"Jump Error"}, 2},
      {"NegativeAsksAgain", 40, {"-5", ""}, 1, {"Jump Error"}, 2},
      {"PastTheLastEnds", 40, {"41", "3"}, 1, {"Jump Error"}, 1},
      {"TheLargest16BitNumberIsTooMany", 40, {"32767"}, 1, {"Jump Error"}, 1},
      {"OverflowInASmallFile", 40, {"32768"}, 1, {}, 1, err::kOverflow},
      {"OverflowInALargeFile", 40000, {"40000"}, 1, {}, 1, err::kOverflow},
      {"ALineOfALargeFile", 40000, {"32767"}, 32767, {}, 1},
      {"DigitsWithText", 40, {"12abc"}, 1, {}, 1, 13},
  };
}

class JumpTest : public testing::TestWithParam<JumpCase> {};

TEST_P(JumpTest, AnswersAsTheViewerDoes) {
  const JumpCase& c = GetParam();
  TempDir dir;
  std::string text;
  for (int64_t i = 1; i <= c.lines; ++i) text += "line " + std::to_string(i) + "\r\n";
  WriteFile(dir.file("f.txt"), text);
  Viewer v(dir.file("f.txt"));
  v.answers.assign(c.answers.begin(), c.answers.end());
  int32_t error = 0;
  try {
    fileview::JumpToLine(v.display, v);
  } catch (const ZvError& e) {
    error = e.number();
  }
  EXPECT_EQ(error, c.error);
  EXPECT_EQ(v.display.topLine(), c.top);
  EXPECT_EQ(v.titles(), c.said);
  ASSERT_EQ(v.prompts.size(), c.prompts);
  EXPECT_EQ(v.prompts[0], "Jump to Line: Jump to what line?\r\n\r\n(1 to " + std::to_string(c.lines) + ")");
}

INSTANTIATE_TEST_SUITE_P(Answers, JumpTest, testing::ValuesIn(jumpCases()),
                         [](const testing::TestParamInfo<JumpCase>& p) { return p.param.name; });

TEST(FileViewJump, TheMessagesOfJump) {
  TempDir dir;
  WriteFile(dir.file("f.txt"), "a\r\nb\r\n");
  Viewer v(dir.file("f.txt"));
  v.answers = {"x", "0", "9"};
  fileview::JumpToLine(v.display, v);
  ASSERT_EQ(v.messages.size(), 3u);
  EXPECT_EQ(v.messages[0].text, "Please choose a number.");
  EXPECT_EQ(v.messages[1].text, "You chose a line less than 1.");
  EXPECT_EQ(v.messages[2].text, "There aren't that many lines.");
}

TEST(FileViewBottom, TwentyLinesAboveTheLastWhereThereAreThatMany) {
  for (const auto& [lines, top] : std::vector<std::pair<int, int64_t>>{{30, 10}, {21, 1}, {20, 1}, {5, 1}}) {
    TempDir dir;
    std::string text;
    for (int i = 1; i <= lines; ++i) text += "line\n";
    WriteFile(dir.file("f.txt"), text);
    Viewer v(dir.file("f.txt"));
    v.display.setTopLine(2);
    fileview::Bottom(v.display);
    EXPECT_EQ(v.display.topLine(), lines > 20 ? top : 2) << lines << " lines";
  }
}

// --- the display's own properties ------------------------------------------------------

TEST_F(FileViewTest, AClickSelectsTheWholeLineWithItsEnd) {
  Viewer v(path);
  ASSERT_TRUE(v.display.selectLine(2));  // the empty line after the first label
  EXPECT_EQ(v.display.selLine(), 2);
  EXPECT_EQ(v.display.selStart(), 13);
  EXPECT_EQ(v.selected(), "\r\n");
  ASSERT_TRUE(v.display.selectLines(12, 10));
  EXPECT_EQ(v.selected(), "Record - 3\r\n\r\nwetland again\r\n");
  EXPECT_EQ(v.display.selLine(), 10);
  EXPECT_FALSE(v.display.selectLine(13));
}

TEST_F(FileViewTest, SplitIsRefusedUntilALineIsSelected) {
  Viewer v(path);
  const auto refusal = fileview::SplitRefusal(v.display);
  ASSERT_TRUE(refusal.has_value());
  EXPECT_EQ(refusal->title, "Split File Error");
  EXPECT_EQ(refusal->text.substr(0, 60), "To use the Split command it is necessary first to select the");
  EXPECT_NE(refusal->text.find("clicking on it with the mouse.\r\n\r\nThe segment"), std::string::npos);
  // Line 1 starts at position 1, so it can be chosen.
  v.display.selectLine(1);
  EXPECT_FALSE(fileview::SplitRefusal(v.display).has_value());
  // A failed search leaves nothing selected.
  v.answers = {"nowhere"};
  fileview::FindText(v.display, v, v.gsSearchText);
  EXPECT_TRUE(fileview::SplitRefusal(v.display).has_value());
}

TEST_F(FileViewTest, TheTopLineStaysWithinTheFile) {
  Viewer v(path);
  v.display.setTopLine(99);
  EXPECT_EQ(v.display.topLine(), 12);
  v.display.setTopLine(-3);
  EXPECT_EQ(v.display.topLine(), 1);
  EXPECT_EQ(std::count(v.events.begin(), v.events.end(), "TopIndexChange"), 2);
  v.display.setTopLine(1);  // no change, no event
  EXPECT_EQ(std::count(v.events.begin(), v.events.end(), "TopIndexChange"), 2);
}

TEST_F(FileViewTest, AnEmptyNameClosesTheFileAndForgetsItsPlaces) {
  Viewer v(path);
  v.display.selectLine(3);
  v.display.setStepPosition(40);
  v.display.setTopLine(4);
  v.display.setFileName("");
  EXPECT_FALSE(v.display.isOpen());
  EXPECT_EQ(v.display.lineCount(), 0);
  EXPECT_EQ(v.display.selStart() + v.display.selLength() + v.display.selLine() + v.display.stepPosition(), 0);
  EXPECT_EQ(v.display.topLine(), 1);
  EXPECT_EQ(v.display.selectedText(), "");
  // Opened again, LoadComplete comes once more.
  v.display.setFileName(path);
  v.display.waitForLoad();
  v.display.poll();
  EXPECT_EQ(std::count(v.events.begin(), v.events.end(), "LoadComplete"), 2);
}

TEST(FileDisplay, AFileThatIsNotThereThrowsAndLeavesTheDisplayEmpty) {
  FileDisplayEvents quiet;
  FileDisplay display(quiet);
  TempDir dir;
  try {
    display.setFileName(dir.file("missing.txt"));
    FAIL() << "no error";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kFileNotFound);
  }
  EXPECT_FALSE(display.isOpen());
  EXPECT_EQ(display.fileName(), "");
}

// --- command 2900 ---------------------------------------------------------------------

TEST(OpenFileView, RefusesAZeroLengthFileAndAMissingOne) {
  TempDir dir;
  WriteFile(dir.file("empty.log"), "");
  WriteFile(dir.file("full.log"), "x");
  JobState job;
  auto run = [&](const std::string& path) {
    CommandContext context{job, NoProgress(), fileview::ViewFileParams{path}};
    return RunCommand(kOpenFileView, context, CommandTable());
  };
  const JobResult empty = run(dir.file("empty.log"));
  EXPECT_EQ(empty.outcome, JobOutcome::Refused);
  ASSERT_TRUE(empty.message.has_value());
  EXPECT_EQ(empty.message->title, "Zero-Length File");
  EXPECT_EQ(empty.message->text, dir.file("empty.log") + "\r\n\r\nis a zero-length file.");
  EXPECT_EQ(run(dir.file("full.log")).outcome, JobOutcome::Done);
  const JobResult missing = run(dir.file("none.log"));
  EXPECT_EQ(missing.outcome, JobOutcome::Refused);
  ASSERT_TRUE(missing.message.has_value());
  EXPECT_EQ(missing.message->title + ": " + missing.message->text, "File Open Error: File not found.");
}

}  // namespace
}  // namespace zv
