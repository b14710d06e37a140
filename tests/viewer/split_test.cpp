// Split: where the cut falls on every kind of line end, that it agrees with the lines
// the viewer shows, that the input stays as it was, and its refusals and ways out.
#include "viewer/split.h"

#include <gtest/gtest.h>

#include "commands/command_table.h"
#include "support/test_support.h"
#include "viewer/file_display.h"
#include "viewer/file_view.h"

namespace zv {
namespace {

using test::FileExists;
using test::ReadFile;
using test::RecordingProgress;
using test::TempDir;
using test::WriteFile;

struct SplitCase {
  std::string name;
  std::string input;
  int64_t at;
  std::string first;
  std::string second;
};
void PrintTo(const SplitCase& c, std::ostream* os) { *os << c.name; }

std::vector<SplitCase> splitCases() {
  const std::string crlf = "a\r\nb\r\nc\r\n";
  return {
      {"CrLfInTheMiddle", crlf, 2, "a\r\n", "b\r\nc\r\n"},
      {"AtLineOneTheFirstFileIsEmpty", crlf, 1, "", crlf},
      {"AtTheLastLine", crlf, 3, "a\r\nb\r\n", "c\r\n"},
      {"PastTheLastLineTheSecondIsEmpty", crlf, 4, crlf, ""},
      {"LfEnds", "a\nb\nc\n", 2, "a\r\n", "b\r\nc\r\n"},
      {"NoFinalLineEndIsNotLost", "a\r\nb\r\nc", 3, "a\r\nb\r\n", "c\r\n"},
      {"NoFinalLineEndOneLine", "only", 1, "", "only\r\n"},
      {"LoneCrEnds", "a\rb\rc", 2, "a\r\n", "b\r\nc\r\n"},
      {"MixedEnds", "a\r\nb\nc\rd\r\n", 3, "a\r\nb\r\n", "c\r\nd\r\n"},
      {"EmptyLinesAndControlBytesPassUnchanged", "x\t\x01y\r\n\r\n\xff\x80z\r\n", 2, "x\t\x01y\r\n",
       "\r\n\xff\x80z\r\n"},
  };
}

class SplitTest : public testing::TestWithParam<SplitCase> {};

TEST_P(SplitTest, CutsAtTheSelectedLineAndLeavesTheInputAsItWas) {
  const SplitCase& c = GetParam();
  TempDir dir;
  const std::string in = dir.file("in.txt");
  WriteFile(in, c.input);
  JobState job;
  RecordingProgress progress;
  const SplitResult result =
      SplitFile(job, progress, SplitParams{in, c.at, dir.file("one.txt"), dir.file("two.txt")});
  ASSERT_EQ(result.outcome, JobOutcome::Done);
  EXPECT_EQ(ReadFile(dir.file("one.txt")), c.first);
  EXPECT_EQ(ReadFile(dir.file("two.txt")), c.second);
  EXPECT_EQ(ReadFile(in), c.input);
  EXPECT_EQ(result.files, (std::vector<std::string>{dir.file("one.txt"), dir.file("two.txt")}));
  EXPECT_EQ(progress.title, "Split File");
  // Every line reported against the count of lines.
  const int64_t lines = result.firstLines + result.secondLines;
  EXPECT_EQ(progress.lastLine, lines);
  EXPECT_EQ(progress.lineCount, lines);
  EXPECT_EQ(result.firstLines, std::min<int64_t>(c.at - 1, lines));
}

TEST_P(SplitTest, TheSecondFileBeginsWithTheLineTheViewerShows) {
  const SplitCase& c = GetParam();
  TempDir dir;
  WriteFile(dir.file("in.txt"), c.input);
  FileDisplayEvents quiet;
  FileDisplay display(quiet);
  display.setFileName(dir.file("in.txt"));
  display.waitForLoad();
  JobState job;
  SplitFile(job, NoProgress(), SplitParams{dir.file("in.txt"), c.at, dir.file("one.txt"), dir.file("two.txt")});
  const LineSpan line = display.lineSpan(c.at);
  if (!line.valid()) {
    EXPECT_EQ(ReadFile(dir.file("two.txt")), "");
    return;
  }
  const std::string shown(display.bytes().substr(static_cast<std::size_t>(line.start),
                                                 static_cast<std::size_t>(line.textEnd - line.start)));
  EXPECT_EQ(ReadFile(dir.file("two.txt")).substr(0, shown.size() + 2), shown + "\r\n");
}

INSTANTIATE_TEST_SUITE_P(Files, SplitTest, testing::ValuesIn(splitCases()),
                         [](const testing::TestParamInfo<SplitCase>& p) { return p.param.name; });

TEST(Split, ReplacesExistingFilesOfTheNamesGiven) {
  TempDir dir;
  WriteFile(dir.file("in.txt"), "1\r\n2\r\n");
  WriteFile(dir.file("one.txt"), "old first, much longer than the new one\r\n");
  WriteFile(dir.file("two.txt"), "old second\r\n");
  JobState job;
  EXPECT_TRUE(SplitFile(job, NoProgress(), SplitParams{dir.file("in.txt"), 2, dir.file("one.txt"), dir.file("two.txt")})
                  .done());
  EXPECT_EQ(ReadFile(dir.file("one.txt")), "1\r\n");
  EXPECT_EQ(ReadFile(dir.file("two.txt")), "2\r\n");
}

TEST(Split, RefusesToWriteOverTheInputOrTwiceToOneFile) {
  TempDir dir;
  const std::string in = dir.file("in.txt");
  WriteFile(in, "1\r\n2\r\n");
  const std::vector<std::pair<std::string, std::string>> outputs = {
      {in, dir.file("two.txt")},
      {dir.file("one.txt"), dir.path().string() + "/./in.txt"},
      {dir.file("same.txt"), dir.file("same.txt")},
  };
  for (const auto& [first, second] : outputs) {
    JobState job;
    const SplitResult result = SplitFile(job, NoProgress(), SplitParams{in, 2, first, second});
    EXPECT_EQ(result.outcome, JobOutcome::Refused) << first << " " << second;
    ASSERT_TRUE(result.message.has_value());
    EXPECT_EQ(result.message->title, "Split File");
    EXPECT_EQ(ReadFile(in), "1\r\n2\r\n");
    EXPECT_FALSE(FileExists(dir.file("one.txt")));
    EXPECT_FALSE(FileExists(dir.file("two.txt")));
    EXPECT_FALSE(FileExists(dir.file("same.txt")));
  }
}

TEST(Split, AnInterruptRemovesWhatItWroteAndLeavesAnUntouchedSecondName) {
  TempDir dir;
  WriteFile(dir.file("in.txt"), "1\r\n2\r\n3\r\n4\r\n");
  WriteFile(dir.file("two.txt"), "kept\r\n");
  JobState job;
  RecordingProgress progress;
  progress.onLine = [&](int32_t line) {
    if (line == 1) job.giInterrupt = 1;
  };
  // Interrupted in the first segment: the second name was never opened.
  const SplitResult early =
      SplitFile(job, progress, SplitParams{dir.file("in.txt"), 3, dir.file("one.txt"), dir.file("two.txt")});
  EXPECT_EQ(early.outcome, JobOutcome::Interrupted);
  EXPECT_FALSE(FileExists(dir.file("one.txt")));
  EXPECT_EQ(ReadFile(dir.file("two.txt")), "kept\r\n");
  // Interrupted in the second: both go.
  progress.onLine = [&](int32_t line) {
    if (line == 3) job.giInterrupt = 1;
  };
  const SplitResult late =
      SplitFile(job, progress, SplitParams{dir.file("in.txt"), 2, dir.file("one.txt"), dir.file("two.txt")});
  EXPECT_EQ(late.outcome, JobOutcome::Interrupted);
  EXPECT_FALSE(FileExists(dir.file("one.txt")));
  EXPECT_FALSE(FileExists(dir.file("two.txt")));
  EXPECT_EQ(ReadFile(dir.file("in.txt")), "1\r\n2\r\n3\r\n4\r\n");
}

TEST(Split, RunsAsCommand2901AndFailsOnAMissingInputWritingNothing) {
  TempDir dir;
  JobState job;
  CommandContext context{job, NoProgress(), SplitParams{dir.file("none.txt"), 1, dir.file("a"), dir.file("b")}};
  const JobResult result = RunCommand(kSplitFile, context, CommandTable());
  EXPECT_EQ(result.outcome, JobOutcome::Failed);
  EXPECT_EQ(job.gsErrNumber, " 53");
  EXPECT_FALSE(FileExists(dir.file("a")));
  EXPECT_FALSE(FileExists(dir.file("b")));
  CommandContext none{job, NoProgress(), 5};
  EXPECT_EQ(RunCommand(kSplitFile, none, CommandTable()).outcome, JobOutcome::NoCommand);
}

}  // namespace
}  // namespace zv
