// FilterDialogSep: each type's file, its numbering and index, and what is left on every way out.
#include "filters/dialog_separate.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/error.h"
#include "filters/dialog_all.h"
#include "filters/types_test_support.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;

struct SepRun {
  test::FilterRun run;  // the .FSC and the result; the record files are read by name
  test::RecordingProgress host;
  std::vector<std::pair<int, int32_t>> typeOdometers;
  const TempDir* dir = nullptr;

  std::string pro(const std::string& name) const { return test::ReadFile(dir->file(name + ".PRO")); }
  std::vector<IndexRec> ndx(const std::string& name) const { return ReadIndexFile(dir->file(name + ".NDX")); }
  bool has(const std::string& name) const {
    return test::FileExists(dir->file(name + ".PRO")) || test::FileExists(dir->file(name + ".NDX"));
  }
  std::vector<std::string> files() const {
    std::vector<std::string> out;
    for (const auto& e : std::filesystem::directory_iterator(dir->path())) out.push_back(e.path().filename());
    std::sort(out.begin(), out.end());
    return out;
  }
};

void RunSep(SepRun& r, const TempDir& dir, const std::string& capture, std::vector<SepOutput> outputs) {
  r.dir = &dir;
  r.run = test::RunFilterWith(
      [&](JobState& job, JobProgress& progress, const FilterInput& input) {
        test::TypeRecorder recorder(progress);
        JobResult result = FilterDialogSep(job, recorder, SepTypesParams{input, outputs});
        r.typeOdometers = recorder.types;
        return result;
      },
      dir, capture, "session.log", &r.host);
}

std::string Sample() { return test::ReadFile(ZV_SAMPLES_DIR "/dialog_types_session.log"); }

std::vector<std::string> Labels(const std::string& pro) {
  std::vector<std::string> out;
  for (std::size_t at = 0; (at = pro.find("Record -", at)) != std::string::npos; at = pro.find("\r\n", at))
    out.push_back(pro.substr(at, pro.find("\r\n", at) - at));
  return out;
}

TEST(DialogSepSample, EachTypeGoesToItsOwnFileNumberedFromOne) {
  TempDir dir;
  SepRun r;
  RunSep(r, dir, Sample(), {{"3", "a"}, {"5", "b"}, {"8", "c"}, {"3,AB", "d"}, {"KWIC", "e"}});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  // Outputs 3 and 4 have two blanks between the hyphen and the number.
  EXPECT_EQ(Labels(r.pro("a")), (std::vector<std::string>{"Record - 1", "Record - 2"}));
  EXPECT_EQ(Labels(r.pro("b")), (std::vector<std::string>{"Record - 1", "Record - 2"}));
  EXPECT_EQ(Labels(r.pro("c")), (std::vector<std::string>{"Record -  1"}));
  EXPECT_EQ(Labels(r.pro("d")), (std::vector<std::string>{"Record -  1", "Record -  2", "Record -  3"}));
  EXPECT_EQ(Labels(r.pro("e")), (std::vector<std::string>{"Record - 1", "Record - 2"}));
  for (const char* name : {"a", "b", "d", "e"}) EXPECT_TRUE(test::IndexAgreesWithPro(r.pro(name), r.ndx(name))) << name;
  EXPECT_NE(r.pro("d").find("Storm deposits"), std::string::npos);
  EXPECT_NE(r.pro("b").find("Nutrient burial"), std::string::npos);

  // One strategy file for the session, as the all-types filter writes it.
  TempDir all;
  EXPECT_EQ(r.run.fsc, test::RunFilterOn(&FilterDialogAll, all, Sample()).fsc);
  EXPECT_FALSE(r.run.proExists || r.run.ndxExists);  // nothing of the capture's own name
  EXPECT_EQ(r.run.result.records, 10);
  EXPECT_EQ(r.host.title, "Specified DIALOG Types to Separate Files");
  EXPECT_EQ(r.host.recordOdometer, (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(r.typeOdometers, (std::vector<std::pair<int, int32_t>>{
                                 {1, 1}, {1, 2}, {2, 1}, {3, 1}, {4, 1}, {4, 2}, {4, 3}, {5, 1}, {5, 2}, {2, 2}}));
}

TEST(DialogSepRecords, AFileOfOneRecordKeepsTheIndexEntryItGotWhenItsLabelWasWritten) {
  TempDir dir;
  SepRun r;
  RunSep(r, dir, CrLf({"?t 1/5/1-2", " 1/5/1", "A", " 1/5/2", "BB", "?t 1/3/3", " 1/3/3", "CCC", "?"}),
         {{"5", "a"}, {"3", "c"}});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  const auto a = r.ndx("a");
  const auto c = r.ndx("c");
  ASSERT_EQ(a.size(), 2u);
  ASSERT_EQ(c.size(), 1u);
  EXPECT_TRUE(test::IndexAgreesWithPro(r.pro("a"), a));
  EXPECT_EQ(c[0].recNum, 1);
  EXPECT_EQ(c[0].startByte, 4);
  EXPECT_EQ(c[0].startLine, 3);
  // No FinishIndex for it: its end line and length are those the files' one index
  // record buffer held when its label was written: a's first record, closed just before.
  EXPECT_EQ(c[0].endLine, a[0].endLine);
  EXPECT_EQ(c[0].byteLen, a[0].byteLen);
  EXPECT_EQ(r.pro("c"), CrLf({"", "", "Record - 1", "", "CCC", ""}));
}

TEST(DialogSepRecords, AnUnwantedRecordRightBehindAKeptOneGoesOnIntoItsFile) {
  TempDir dir;
  SepRun r;
  RunSep(r, dir, CrLf({"?t 1/5/1", " 1/5/1", "A", " 1/3/2", "B", "?t 1/3/3", " 1/3/3", "C", "?"}), {{"5", "f"}});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  // Behind a prompt the unwanted record goes nowhere.
  EXPECT_EQ(r.pro("f"), CrLf({"", "Record - 1", "", "A", "", "", "Record - 2", "", "B"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(r.pro("f"), r.ndx("f")));
  EXPECT_EQ(r.typeOdometers, (std::vector<std::pair<int, int32_t>>{{1, 1}, {1, 2}}));
  EXPECT_EQ(r.host.recordOdometer.size(), 3u);
}

TEST(DialogSepRecords, ATypeWithoutRecordsLeavesNoFilesAndTheFirstOfTwoEqualTypesTakesAll) {
  TempDir dir;
  test::WriteFile(dir.file("none.PRO"), "an earlier run's records\r\n");
  SepRun r;
  RunSep(r, dir, Sample(), {{"5", "five"}, {"9", "none"}, {"5", "again"}});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  EXPECT_EQ(r.files(), (std::vector<std::string>{"five.NDX", "five.PRO", "session.FSC", "session.log"}));
  EXPECT_EQ(r.run.result.files,
            (std::vector<std::string>{dir.file("session.FSC"), dir.file("five.PRO"), dir.file("five.NDX")}));
  EXPECT_EQ(r.ndx("five").size(), 2u);
}

TEST(DialogSepRecords, ALastLineInsideAKeptRecordIsWrittenTwiceToItsFile) {
  TempDir dir;
  SepRun r;
  RunSep(r, dir, CrLf({"?t 1/5/1", " 1/5/1", "A", "?t 1/3/2", " 1/3/2", "B", "LAST"}), {{"5", "f"}, {"3", "g"}});
  EXPECT_EQ(r.pro("f"), CrLf({"", "Record - 1", "", "A"}));
  EXPECT_EQ(r.pro("g"), CrLf({"", "", "Record - 1", "", "B", "LAST", "LAST"}));
}

TEST(DialogSepZeroRecords, NoRecordOfTheTypesLeavesNothingAndSaysSo) {
  TempDir dir;
  SepRun r;
  RunSep(r, dir, Sample(), {{"9", "a"}, {"3,K", "b"}});
  EXPECT_EQ(r.run.outcome, JobOutcome::ZeroRecords);
  ASSERT_TRUE(r.run.result.message.has_value());
  EXPECT_EQ(r.run.result.message->title, "Zero Records");
  EXPECT_EQ(r.run.result.message->text, kNoTypesText);
  EXPECT_EQ(r.files(), std::vector<std::string>{"session.log"});
}

// Interrupted or failed, the job leaves none of its five record files, their indexes
// or the strategy file, also where an earlier run had left files of those names.
TEST(DialogSepWaysOut, AnInterruptOrAnErrorLeavesNoneOfTheFiles) {
  const std::vector<SepOutput> five = {{"3", "a"}, {"5", "b"}, {"8", "c"}, {"3,AB", "d"}, {"KWIC", "e"}};
  {
    TempDir dir;
    for (const char* old : {"a.PRO", "b.NDX", "e.PRO", "session.FSC"}) test::WriteFile(dir.file(old), "old\r\n");
    // The bookmark file of the capture's own .PRO belongs to no file of this job.
    test::WriteFile(dir.file("session.WRK"), "bookmarks");
    SepRun r;
    r.host.onLine = [&](int32_t line) {
      if (line == 120) r.host.running->giInterrupt = 1;
    };
    RunSep(r, dir, Sample(), five);
    EXPECT_EQ(r.run.outcome, JobOutcome::Interrupted);
    EXPECT_EQ(r.files(), (std::vector<std::string>{"session.WRK", "session.log"}));
  }
  {
    TempDir dir;
    std::filesystem::create_directory(dir.file("e.PRO"));  // the last output cannot be made
    SepRun r;
    RunSep(r, dir, Sample(), five);
    EXPECT_EQ(r.run.outcome, JobOutcome::Failed);
    EXPECT_EQ(r.files(), (std::vector<std::string>{"e.PRO", "session.log"}));
  }
}

struct RefusalCase {
  const char* name;
  std::vector<SepOutput> outputs;
  Message message;
};

class DialogSepRefusalTest : public testing::TestWithParam<RefusalCase> {};

TEST_P(DialogSepRefusalTest, RefusesTheOutputsBeforeAnythingIsWritten) {
  TempDir dir;
  SepRun r;
  RunSep(r, dir, Sample(), GetParam().outputs);
  EXPECT_EQ(r.run.outcome, JobOutcome::Refused);
  ASSERT_TRUE(r.run.result.message.has_value());
  EXPECT_EQ(r.run.result.message->title, GetParam().message.title);
  EXPECT_EQ(r.run.result.message->text, GetParam().message.text);
  EXPECT_EQ(r.files(), std::vector<std::string>{"session.log"});
}

const Message kCount{"Invalid Number of Types", "Valid number of types ranges from 1 to 5."};
const Message kTypeBlank{"Not All Types Filled Error", std::string(kTypeLeftBlankText)};
const Message kFileBlank{"Not All Types Filled Error", std::string(kFileLeftBlankText)};

INSTANTIATE_TEST_SUITE_P(
    Outputs, DialogSepRefusalTest,
    testing::Values(
        RefusalCase{"NoType", {}, kCount},
        RefusalCase{"SixTypes", {{"1", "a"}, {"2", "b"}, {"3", "c"}, {"4", "d"}, {"5", "e"}, {"6", "f"}}, kCount},
        RefusalCase{"TypeBlank", {{"5", "a"}, {"", "b"}}, kTypeBlank},
        RefusalCase{"FileBlank", {{"5", "a"}, {"3", ""}}, kFileBlank},
        RefusalCase{"TypeTooLong", {{"12345678901", "a"}}, {"Type Length Error", std::string(kTypeTooLongText)}},
        RefusalCase{"NameTooLong", {{"5", std::string(251, 'n')}},
                    {"File Specification Error", "Your file name now has over 250 characters."}},
        RefusalCase{"RefusedCharacter", {{"5", "a"}, {"3", "b|c"}}, {"", "| is not a valid character in a file name"}},
        RefusalCase{"SameFile", {{"5", "same"}, {"3", "other"}, {"KWIC", "same"}},
                    {"File Specification Error", std::string(kSameFileText)}}),
    [](const testing::TestParamInfo<RefusalCase>& param) { return param.param.name; });

TEST(DialogSepFileNames, TheFileFieldRefusesItsCharactersAndNothingElse) {
  std::string refused;
  for (int c = 0; c < 128; ++c)
    if (RefusedInFileName(static_cast<char>(c))) refused += static_cast<char>(c);
  std::string expected;
  for (int c = 0; c <= 7; ++c) expected += static_cast<char>(c);
  for (int c = 9; c <= 21; ++c) expected += static_cast<char>(c);
  expected += "\"*/:<>?\\|";
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(refused, expected);
  EXPECT_EQ(RefusedCharacterText('?'), "? is not a valid character in a file name");

  // A name of 250 characters, and one with a dot, are taken as they are.
  TempDir dir;
  SepRun r;
  RunSep(r, dir, Sample(), {{"5", std::string(250, 'n')}, {"3", "v1.2"}});
  ASSERT_EQ(r.run.outcome, JobOutcome::Done);
  EXPECT_TRUE(r.has(std::string(250, 'n')));
  EXPECT_TRUE(test::FileExists(dir.file("v1.2.PRO")));
}

TEST(DialogSepFileNames, ANameWhoseIndexWouldBeTheCaptureIsRefused) {
  TempDir dir;
  test::WriteFile(dir.file("old.NDX"), "capture");
  JobState job;
  job.outDir = dir.path().string();
  Message message;
  EXPECT_FALSE(CheckSepOutputs(job, SepTypesParams{{dir.file("old.NDX"), job.outDir}, {{"5", "old"}}}, message));
  EXPECT_EQ(message.text, kInputIsOutputText);
  EXPECT_TRUE(CheckSepOutputs(job, SepTypesParams{{dir.file("old.NDX"), job.outDir}, {{"5", "new"}}}, message));
}

}  // namespace
}  // namespace zv
