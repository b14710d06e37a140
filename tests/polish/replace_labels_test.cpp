// Replace: each mode's lines at the labels, and the closing marker in every mode.
#include <gtest/gtest.h>

#include "polish/replace_labels.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunTool;
using test::TempDir;

struct ModeCase {
  std::string name;
  ReplaceMode mode;
  std::string replacement, begin, end;
  // What stands at the first label, at each later one, and at the end of the file.
  std::vector<std::string> first, later, last;
};

class ReplaceModes : public ::testing::TestWithParam<ModeCase> {};

// The sample with each label swapped for what the mode writes there.
std::string Expected(const ModeCase& c) {
  const std::vector<std::string> cleaned = test::CleanedTaggedLines();
  std::vector<std::string> out;
  int labels = 0;
  for (const std::string& line : cleaned) {
    if (!line.starts_with("Record -")) {
      out.push_back(line);
      continue;
    }
    for (std::string s : ++labels == 1 ? c.first : c.later) out.push_back(s == "LABEL" ? line : s);
  }
  out.insert(out.end(), c.last.begin(), c.last.end());
  return CrLf(out);
}

TEST_P(ReplaceModes, WriteTheirLinesAtEachLabelAndCloseTheFile) {
  const ModeCase& c = GetParam();
  TempDir dir;
  const auto run = RunTool(dir, CrLf(test::kTaggedLines), [&](JobState& s, JobProgress& p, const std::string& in,
                                                              const std::string& out) {
    return ReplaceLabels(s, p, {{in, out}, c.mode, c.replacement, c.begin, c.end});
  });
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(run.out, Expected(c));
  EXPECT_EQ(run.result.records, 3);
  EXPECT_EQ(run.progress->title, "Replace Record Labels");
}

INSTANTIATE_TEST_SUITE_P(
    Modes, ReplaceModes,
    ::testing::Values(
        ModeCase{"Single", ReplaceMode::Single, "== ITEM ==", "", "", {"== ITEM =="}, {"== ITEM =="}, {"", ""}},
        // An empty replacement leaves an empty line where each label stood; markers
        // typed before the mode was changed back are not read.
        ModeCase{"SingleEmpty", ReplaceMode::Single, "", "<b>", "</b>", {""}, {""}, {"", ""}},
        // Labels lost between the markers.
        ModeCase{"Double", ReplaceMode::Double, "", "<rec>", "</rec>", {"<rec>"}, {"</rec>", "", "<rec>"},
                 {"</rec>", ""}},
        // Labels kept inside them, as they stood (not renumbered).
        ModeCase{"Surround", ReplaceMode::Surround, "", "<rec>", "</rec>", {"<rec>", "LABEL"},
                 {"</rec>", "", "<rec>", "LABEL"}, {"</rec>", ""}},
        ModeCase{"DoubleEmptyMarkers", ReplaceMode::Double, "", "", "", {""}, {"", "", ""}, {"", ""}}),
    [](const auto& p) { return p.param.name; });

TEST(ReplaceLabels, AFileWithoutLabelsStillGetsTheClosingLines) {
  TempDir dir;
  const auto run = RunTool(dir, CrLf({"a", "b"}), [](JobState& s, JobProgress& p, const std::string& in,
                                                     const std::string& out) {
    return ReplaceLabels(s, p, {{in, out}, ReplaceMode::Double, "", "[", "]"});
  });
  EXPECT_EQ(run.out, CrLf({"a", "b", "]", ""}));
}

}  // namespace
}  // namespace zv
