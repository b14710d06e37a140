// What every polishing tool shares: the refusals of the files given, the format test
// of the first 40 lines, the interrupt, and the input left as it was.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "polish/delete_labels.h"
#include "polish/divide.h"
#include "polish/format.h"
#include "polish/polish_files.h"
#include "polish/renumber.h"
#include "polish/replace_labels.h"
#include "polish/undelimit.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::RunTool;
using test::TempDir;
using test::ToolCall;
using test::WriteFile;

struct Tool {
  std::string name;
  ToolCall call;
  std::string outName;       // where the output lies: the named output, or BASE.FMT / BASE.BRK
  int zeroLengthBreaks = 1;  // line breaks in its zero-length message
  int existsBreaks = 0;      // line breaks in its existing-output message; 0: it replaces outputs
};

const std::vector<Tool>& Tools() {
  static const std::vector<Tool> tools = {
      {"renumber", [](JobState& s, JobProgress& p, const std::string& in,
                      const std::string& out) { return RenumberLabels(s, p, {in, out}); },
       "out.txt", 2, 2},
      {"replace",
       [](JobState& s, JobProgress& p, const std::string& in, const std::string& out) {
         return ReplaceLabels(s, p, {{in, out}, ReplaceMode::Double, "", "[", "]"});
       },
       "out.txt", 1, 2},
      {"delete", [](JobState& s, JobProgress& p, const std::string& in,
                    const std::string& out) { return DeleteLabels(s, p, {in, out}); },
       "out.txt", 1, 2},
      {"undelimit", [](JobState& s, JobProgress& p, const std::string& in,
                       const std::string& out) { return UndelimitRecords(s, p, {in, out}); },
       "out.txt", 1, 1},
      {"linebreaks", [](JobState& s, JobProgress& p, const std::string& in,
                        const std::string&) { return RemoveLineBreaks(s, p, {in}); },
       "in.FMT"},
      {"pagebreaks", [](JobState& s, JobProgress& p, const std::string& in,
                        const std::string&) { return InsertPageBreaks(s, p, {in, "2"}); },
       "in.BRK"},
  };
  return tools;
}

std::string Breaks(int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += "\r\n";
  return s;
}

std::string Said(const JobResult& r) { return r.message ? r.message->title + ": " + r.message->text : "(none)"; }

std::vector<std::string> FilesIn(const TempDir& dir) {
  std::vector<std::string> names;
  for (const auto& e : std::filesystem::directory_iterator(dir.path())) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(PolishRefusals, AMissingOrEmptyInputIsRefusedInTheToolsWordsAndNothingIsWritten) {
  for (const Tool& tool : Tools()) {
    SCOPED_TRACE(tool.name);
    TempDir dir;
    JobState state;
    state.outDir = dir.path().string();
    JobResult r = tool.call(state, NoProgress(), dir.file("gone.PRO"), dir.file("out.txt"));
    EXPECT_EQ(r.outcome, JobOutcome::Refused);
    EXPECT_EQ(Said(r), "File Open Error: File not found.");
    WriteFile(dir.file("in.PRO"), "");
    r = tool.call(state, NoProgress(), dir.file("in.PRO"), dir.file("out.txt"));
    EXPECT_EQ(r.outcome, JobOutcome::Refused);
    EXPECT_EQ(Said(r), "Zero-Length File: " + dir.file("in.PRO") + Breaks(tool.zeroLengthBreaks) +
                           "is a zero-length file.");
    EXPECT_EQ(FilesIn(dir), std::vector<std::string>{"in.PRO"});
  }
}

TEST(PolishRefusals, ANamedOutputMustBeNeitherTheInputNorAnExistingFile) {
  for (const Tool& tool : Tools()) {
    if (tool.existsBreaks == 0) continue;
    SCOPED_TRACE(tool.name);
    TempDir dir;
    const std::string pro = CrLf(test::kTaggedLines);
    // The same file under its own name and under another spelling.
    for (const std::string& out : {dir.file("in.PRO"), dir.path().string() + "/./in.PRO"}) {
      const auto run = RunTool(dir, pro, [&](JobState& s, JobProgress& p, const std::string& in, const std::string&) {
        return tool.call(s, p, in, out);
      });
      EXPECT_EQ(run.result.outcome, JobOutcome::Refused);
      EXPECT_EQ(Said(run.result), "Save File Error: Output file must not be the\r\nsame as the input file.");
    }
    // These tools never overwrite: the older file stays as it was.
    WriteFile(dir.file("out.txt"), "older\r\n");
    const auto run = RunTool(dir, pro, tool.call);
    EXPECT_EQ(run.result.outcome, JobOutcome::Refused);
    EXPECT_EQ(Said(run.result), "File Save Error: " + dir.file("out.txt") + Breaks(tool.existsBreaks) +
                                    "already exits and would be overwritten.");
    EXPECT_EQ(run.out, "older\r\n");
  }
}

TEST(PolishRefusals, TheBreakToolsRefuseTheirOwnExtensionAnywhereInThePathAndReplaceAnOlderOutput) {
  TempDir dir;
  const std::string pro = CrLf(test::kTaggedLines);
  struct Case {
    std::string tool, inName, outName, said;
  } cases[] = {
      {"linebreaks", "in.FMT", "in.FMT", "Open File Error: Input file must not have .FMT extension."},
      {"linebreaks", "x.FMT.txt", "x.FMT.FMT", "Open File Error: Input file must not have .FMT extension."},
      {"pagebreaks", "in.BRK", "in.BRK", "Open File Error: Input file must not have .BRK extension."},
      // The search is case-sensitive: a lower-case extension passes, and the output
      // beside it is another file.
      {"linebreaks", "in.fmt", "in.FMT", "(none)"},
      {"pagebreaks", "in.brk", "in.BRK", "(none)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.inName);
    const Tool& tool = *std::find_if(Tools().begin(), Tools().end(), [&](const Tool& t) { return t.name == c.tool; });
    std::filesystem::remove(dir.file(c.outName));
    if (c.inName != c.outName) WriteFile(dir.file(c.outName), "older\r\n");
    const auto run = RunTool(dir, pro, tool.call, {.inName = c.inName, .outName = c.outName});
    EXPECT_EQ(Said(run.result), c.said);
    if (c.said == "(none)") {
      EXPECT_TRUE(run.result.done());
      EXPECT_NE(run.out, "older\r\n");
    }
  }
}

TEST(PolishRefusals, AnOutputNameTheToolDerivesLiesWhereTheBaseNameSays) {
  struct Case {
    std::string in, ext, out;
  } cases[] = {
      {"/data/run.PRO", ".FMT", "run.FMT"},  // the folder dropped: the current directory
      {"/data/a.b.PRO", ".BRK", "a.b.BRK"},  // only the last extension goes
      {"/data/run", ".FMT", "/data/run.FMT"},  // no "." anywhere: beside the input
      {"/data.d/run", ".FMT", ".FMT"},         // a dot in a folder only: no base name at all
  };
  for (const Case& c : cases) EXPECT_EQ(DerivedOutputName(c.in, c.ext), c.out) << c.in;
}

// The format test: a tool with one refuses a file with no label on its first 39
// lines when it reaches line 40.
struct FormatCase {
  std::string tool;
  bool refuses;  // whether the tool has the test at all
};

class FormatTest : public ::testing::TestWithParam<FormatCase> {
 protected:
  const Tool& tool() const {
    return *std::find_if(Tools().begin(), Tools().end(), [&](const Tool& t) { return t.name == GetParam().tool; });
  }
  // A label on line `labelLine` of a file of `lines` lines, tagged fields behind it.
  static std::string fileWithLabelAt(int labelLine, int lines) {
    std::vector<std::string> v;
    for (int i = 1; i <= lines; ++i)
      v.push_back(i == labelLine ? "Record - 1" : i > labelLine ? "TI- field " + std::to_string(i) : "preamble");
    return CrLf(v);
  }
};

TEST_P(FormatTest, AFirstLabelOnLine39PassesAndOnLine40IsRefusedWithTheOutputRemoved) {
  TempDir dir;
  auto run = RunTool(dir, fileWithLabelAt(39, 45), tool().call, {.outName = tool().outName});
  EXPECT_EQ(run.result.outcome, JobOutcome::Done) << Said(run.result);
  EXPECT_TRUE(run.outExists);
  std::filesystem::remove(dir.file(tool().outName));

  run = RunTool(dir, fileWithLabelAt(40, 45), tool().call, {.outName = tool().outName});
  if (GetParam().refuses) {
    EXPECT_EQ(run.result.outcome, JobOutcome::Refused);
    EXPECT_EQ(Said(run.result), "File Format Error: This does not appear to be a filtered record file.");
    EXPECT_FALSE(run.outExists);
  } else {
    EXPECT_EQ(run.result.outcome, JobOutcome::Done);
    EXPECT_TRUE(run.outExists);
  }
}

TEST_P(FormatTest, AFileOfFewerThan40LinesWithoutALabelPasses) {
  TempDir dir;
  const auto run = RunTool(dir, CrLf(test::BodyLines(39)), tool().call, {.outName = tool().outName});
  EXPECT_EQ(run.result.outcome, JobOutcome::Done) << Said(run.result);
  EXPECT_TRUE(run.outExists);
}

TEST_P(FormatTest, AnInterruptRemovesThePartialOutput) {
  TempDir dir;
  std::vector<std::string> lines = test::kTaggedLines;
  for (int i = 0; i < 50; ++i) lines.push_back("more text " + std::to_string(i));
  const auto run = RunTool(dir, CrLf(lines), tool().call, {.outName = tool().outName, .interruptAtLine = 3});
  EXPECT_EQ(run.result.outcome, JobOutcome::Interrupted);
  EXPECT_FALSE(run.outExists);
  EXPECT_EQ(run.progress->lastLine, 3);
  EXPECT_EQ(run.state->giInterrupt, 0);
}

INSTANTIATE_TEST_SUITE_P(Tools, FormatTest,
                         ::testing::Values(FormatCase{"renumber", true}, FormatCase{"replace", true},
                                           FormatCase{"delete", false}, FormatCase{"undelimit", false},
                                           FormatCase{"pagebreaks", true}),
                         [](const auto& p) { return p.param.tool; });

}  // namespace
}  // namespace zv
