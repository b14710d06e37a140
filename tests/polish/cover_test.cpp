// The header and cover page: both layouts, the three ways of saving, empty fields,
// and a word too long to wrap.
#include <gtest/gtest.h>

#include <filesystem>

#include "polish/cover.h"
#include "polish_test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

// Fifteen words of six letters: 104 characters, wrapped after the tenth.
std::string FifteenWords() {
  std::string s;
  for (int i = 1; i <= 15; ++i) s += (i > 1 ? " word" : "word") + std::string(i < 10 ? "0" : "") + std::to_string(i);
  return s;
}

CoverFields Filled() {
  CoverFields f;
  f.to = "Dr. Ada Reed";
  f.from1 = "Central Library";
  f.from2 = "Reference Desk";
  f.subject = "Wheat rust";
  f.date = "March 4, 2026";
  f.jobNo = "J-17";
  f.database = "AGRICOLA 1970-2026; CAB Abstracts 1973-2026";
  f.memo = FifteenWords();
  return f;
}

const std::vector<std::string> kTail = {
    "Subject:    Wheat rust",
    "",
    "",  // the date line, per layout
    "",
    "Database(s) and Date(s) Searched:",
    "",
    "   AGRICOLA 1970-2026; CAB Abstracts 1973-2026",
    "",
    "Memo:",
    "",
    "   word01 word02 word03 word04 word05 word06 word07 word08 word09 word10",
    "   word11 word12 word13 word14 word15",
    "",
};

std::vector<std::string> Tail(const std::string& dateLine) {
  std::vector<std::string> t = kTail;
  t[2] = dateLine;
  return t;
}

std::vector<std::string> Join(std::vector<std::string> a, const std::vector<std::string>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// Writes the page alone (Separate File) and returns it.
std::string Page(const CoverFields& fields, CoverLayout layout) {
  TempDir dir;
  CoverParams params{fields, "", dir.file("page.COV")};
  params.fields.saveMode = SaveMode::SepFile;
  JobState state;
  const JobResult r = SaveCoverPage(state, NoProgress(), params, layout);
  EXPECT_EQ(r.outcome, JobOutcome::Done);
  return ReadFile(dir.file("page.COV"));
}

TEST(CoverPage, TheLibraryLayoutPutsToThenFromThenTheTail) {
  EXPECT_EQ(Page(Filled(), CoverLayout::Library),
            CrLf(Join({"Requester:  Dr. Ada Reed", "", "Library:    Central Library", "            Reference Desk", ""},
                      Tail("Date:       March 4, 2026     Job No.:  J-17"))));
  CoverFields f = Filled();
  f.toLabel = ToLabel::Client;
  f.fromLabel = FromLabel::Searcher;
  EXPECT_EQ(Page(f, CoverLayout::Library),
            CrLf(Join({"Client:     Dr. Ada Reed", "", "Searcher:   Central Library", "            Reference Desk", ""},
                      Tail("Date:       March 4, 2026     Job No.:  J-17"))));
}

TEST(CoverPage, TheFirmLayoutPutsALetterheadFirstAndTheDateAtColumnOne) {
  CoverFields f = Filled();
  f.fromLabel = FromLabel::Firm;
  f.from3 = "  Suite 4";  // written untrimmed
  EXPECT_EQ(Page(f, CoverLayout::Firm),
            CrLf(Join({"Central Library", "Reference Desk", "  Suite 4", "", "Requester:  Dr. Ada Reed", ""},
                      Tail("March 4, 2026     Job No.:  J-17"))));
}

TEST(CoverPage, AbsentFieldsLeaveTheirBlocksOut) {
  struct Case {
    std::string name;
    std::function<void(CoverFields&)> set;
    CoverLayout layout;
    std::vector<std::string> page;
  } cases[] = {
      {"every field empty", [](CoverFields&) {}, CoverLayout::Library, {}},
      {"blanks only", [](CoverFields& f) { f.to = f.subject = f.memo = "   "; }, CoverLayout::Library, {}},
      {"only the third From box", [](CoverFields& f) { f.from3 = "Reed Library"; }, CoverLayout::Library,
       {"Library:    Reed Library", ""}},
      {"no To label set", [](CoverFields& f) { f.toLabel = ToLabel::None; f.to = "Ada"; }, CoverLayout::Library,
       {"            Ada", ""}},
      {"a date alone has no empty line after it",
       [](CoverFields& f) { f.date = "May 1, 2026"; f.database = "DB"; }, CoverLayout::Library,
       {"Date:       May 1, 2026", "Database(s) and Date(s) Searched:", "", "   DB", ""}},
      {"a job number alone", [](CoverFields& f) { f.jobNo = "77"; }, CoverLayout::Firm, {"     Job No.:  77", ""}},
      {"the firm layout with no From box", [](CoverFields& f) { f.to = "Ada"; }, CoverLayout::Firm,
       {"Requester:  Ada", ""}},
  };
  for (const Case& c : cases) {
    CoverFields f;
    c.set(f);
    EXPECT_EQ(Page(f, c.layout), CrLf(c.page)) << c.name;
  }
}

TEST(CoverPage, LineEndsTypedInABoxStayInTheWrappedText) {
  CoverFields f;
  f.memo = BoxText("first line\nsecond");
  EXPECT_EQ(f.memo, "first line\r\nsecond");
  EXPECT_EQ(Page(f, CoverLayout::Library), CrLf({"Memo:", "", "   first line\r\nsecond", ""}));
}

struct Saving {
  TempDir dir;
  std::string input = CrLf({"Record - 1", "", "text"});
  Saving() { WriteFile(dir.file("recs.PRO"), input); }
  JobResult save(const CoverFields& fields, SaveMode mode, const std::string& out = "front.COV") {
    CoverParams params{fields, dir.file("recs.PRO"), dir.file(out)};
    params.fields.saveMode = mode;
    JobState state;
    return SaveCoverPage(state, NoProgress(), params, LayoutOf(params.fields));
  }
};

TEST(CoverPage, PrefixModesPutThePageAndAPageBreakInFrontOfTheFile) {
  Saving s;
  CoverFields f;
  f.subject = "Rust";
  const std::string page = CrLf({"Subject:    Rust", ""});
  struct Case {
    SaveMode mode;
    std::string bytes;
  } cases[] = {
      {SaveMode::Prefix, page + s.input},
      {SaveMode::PrefixWithBreak, page + "\f\r\n" + s.input},
      {SaveMode::SepFile, page},
  };
  for (const Case& c : cases) {
    ASSERT_TRUE(s.save(f, c.mode).done());
    EXPECT_EQ(ReadFile(s.dir.file("front.COV")), c.bytes);
    EXPECT_EQ(ReadFile(s.dir.file("recs.PRO")), s.input);
    EXPECT_FALSE(FileExists(s.dir.file("front.TMP")));
  }
  // An empty page: a plain copy, or the copy behind a form feed line.
  ASSERT_TRUE(s.save(CoverFields{}, SaveMode::Prefix).done());
  EXPECT_EQ(ReadFile(s.dir.file("front.COV")), s.input);
  ASSERT_TRUE(s.save(CoverFields{}, SaveMode::PrefixWithBreak).done());
  EXPECT_EQ(ReadFile(s.dir.file("front.COV")), "\f\r\n" + s.input);
}

TEST(CoverPage, AWordLongerThanTheLineFailsBeforeTheOutputIsTouched) {
  Saving s;
  WriteFile(s.dir.file("front.COV"), "older\r\n");
  CoverFields f = Filled();
  f.memo = "short " + std::string(100, 'x');
  const JobResult r = s.save(f, SaveMode::PrefixWithBreak);
  ASSERT_EQ(r.outcome, JobOutcome::Failed);
  EXPECT_EQ(r.error->number(), 5);
  EXPECT_EQ(ReadFile(s.dir.file("front.COV")), "older\r\n");
  EXPECT_FALSE(FileExists(s.dir.file("front.TMP")));
}

TEST(CoverPage, APrefixNeedsAnInputThatIsThereAndIsNotTheOutput) {
  Saving s;
  CoverParams params{CoverFields{}, s.dir.file("gone.PRO"), s.dir.file("front.COV")};
  JobState state;
  JobResult r = SaveCoverPage(state, NoProgress(), params, CoverLayout::Library);
  EXPECT_EQ(r.outcome, JobOutcome::Refused);
  EXPECT_EQ(r.message->text, "File not found.");
  r = s.save(CoverFields{}, SaveMode::Prefix, "recs.PRO");
  EXPECT_EQ(r.outcome, JobOutcome::Refused);
  EXPECT_EQ(r.message->title, "Save File Error");
  EXPECT_EQ(ReadFile(s.dir.file("recs.PRO")), s.input);
  // A page file that would be the input: recs.TMP as the input, recs.x as the output.
  WriteFile(s.dir.file("recs.TMP"), s.input);
  params = {CoverFields{}, s.dir.file("recs.TMP"), s.dir.file("recs.x")};
  r = SaveCoverPage(state, NoProgress(), params, CoverLayout::Library);
  EXPECT_EQ(r.outcome, JobOutcome::Refused);
  EXPECT_EQ(ReadFile(s.dir.file("recs.TMP")), s.input);
  // An output named like its own page file still gets its page.
  ASSERT_TRUE(s.save(CoverFields{}, SaveMode::PrefixWithBreak, "out.TMP").done());
  EXPECT_EQ(ReadFile(s.dir.file("out.TMP")), "\f\r\n" + s.input);
}

TEST(CoverPage, TheDateReadsMonthDayYear) {
  EXPECT_EQ(CoverDateText(2026, 11, 3), "November 3, 2026");
  EXPECT_EQ(TodayCoverDate().find(", 20"), TodayCoverDate().size() - 6);
}

}  // namespace
}  // namespace zv
