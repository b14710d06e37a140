// zorvanta-cli filter dialog-types, dialog-separate and adhoc: options, refusals, outputs, exit codes.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/index_rec.h"
#include "filters/adhoc.h"
#include "filters/dialog_pick.h"
#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

const std::string kTypes = ReadFile(ZV_SAMPLES_DIR "/dialog_types_session.log");

// A folder holding the sample as t.log; the command runs there.
struct Folder {
  TempDir dir;
  Folder() { test::WriteFile(dir.file("t.log"), kTypes); }
  test::ProcessResult run(std::vector<std::string> args) const {
    args.insert(args.begin(), "filter");
    return RunCli(args, {.cwd = dir.path().string()});
  }
  std::vector<std::string> files() const {
    std::vector<std::string> out;
    for (const auto& e : std::filesystem::directory_iterator(dir.path())) out.push_back(e.path().filename());
    std::sort(out.begin(), out.end());
    return out;
  }
};

TEST(CliDialogTypes, TypesAreUpperCasedAsTheDialogTypesThem) {
  Folder f;
  const auto r = f.run({"dialog-types", "t.log", "--type", "3,ab", "--type", "kwic"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Records Saved To: t.PRO"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Records: 5"), std::string::npos) << r.out;
  TempDir ref;
  const auto want = test::RunFilterWith(
      [](JobState& job, JobProgress& progress, const FilterInput& input) {
        return FilterDialogPik(job, progress, PikTypesParams{input, {"3,AB", "KWIC"}});
      },
      ref, kTypes);
  EXPECT_EQ(ReadFile(f.dir.file("t.PRO")), want.pro);
  EXPECT_EQ(ReadFile(f.dir.file("t.FSC")), want.fsc);
  EXPECT_EQ(ReadFile(f.dir.file("t.log")), kTypes);
}

TEST(CliDialogTypes, BadTypesAndNoneOfThemFoundAreRefused) {
  Folder f;
  const struct {
    std::vector<std::string> args;
    int code;
    const char* message;
  } cases[] = {
      {{"dialog-types", "t.log"}, 2, "--type is required"},
      {{"dialog-types", "t.log", "--type", "5", "--type", ""}, 2, "Not All Types Filled Error: One of the types"},
      {{"dialog-types", "t.log", "--type", "3,AB,KWIC,5"}, 2, "Type Length Error"},
      {{"dialog-types", "t.log", "--type", "1", "--type", "2", "--type", "3", "--type", "4", "--type", "5", "--type",
        "6"},
       2,
       "Invalid Number of Types: Valid number of types ranges from 1 to 5."},
      {{"dialog-types", "t.log", "--type", "9"}, 3,
       "Zero Records: The filter has recognized no records\nof types you specified."},
  };
  for (const auto& c : cases) {
    const auto r = f.run(c.args);
    EXPECT_EQ(r.exitCode, c.code) << c.message;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
    EXPECT_EQ(f.files(), std::vector<std::string>{"t.log"});
  }
}

TEST(CliDialogSeparate, WritesAFilePairPerTypeWithRecordsAndOneStrategyFile) {
  Folder f;
  TempDir out;
  const auto r = f.run({"dialog-separate", "t.log", "--type", "3,ab=abstracts", "--type", "8=eights", "--type",
                        "9=nines", "--out-dir", out.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Records Saved To: " + out.file("abstracts.PRO")), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Index Saved To: " + out.file("eights.NDX")), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Records: 4"), std::string::npos) << r.out;
  EXPECT_EQ(ReadIndexFile(out.file("abstracts.NDX")).size(), 3u);
  EXPECT_EQ(ReadIndexFile(out.file("eights.NDX")).size(), 1u);
  EXPECT_TRUE(FileExists(out.file("t.FSC")));
  EXPECT_FALSE(FileExists(out.file("nines.PRO")) || FileExists(out.file("nines.NDX")));
  EXPECT_EQ(f.files(), std::vector<std::string>{"t.log"});
}

TEST(CliDialogSeparate, RefusedNamesExitWithTwoAndTheDialogsMessageBeforeAnythingIsWritten) {
  Folder f;
  const struct {
    std::vector<std::string> args;
    const char* message;
  } cases[] = {
      {{"--type", "5=a", "--type", "3=a"}, "File Specification Error: Two of the types have been given the same file."},
      {{"--type", "5=a*b"}, "* is not a valid character in a file name"},
      {{"--type", "5="}, "Not All Types Filled Error: One of the files has been left blank."},
      {{"--type", "5=" + std::string(251, 'x')}, "File Specification Error: Your file name now has over 250 characters."},
      {{"--type", "5"}, "--type takes TYPE=NAME: 5"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> args = {"dialog-separate", "t.log"};
    args.insert(args.end(), c.args.begin(), c.args.end());
    const auto r = f.run(args);
    EXPECT_EQ(r.exitCode, 2) << c.message;
    EXPECT_EQ(r.err.rfind(c.message, 0), 0u) << r.err;  // a message without a title is its text alone
    EXPECT_EQ(f.files(), std::vector<std::string>{"t.log"});
  }
}

TEST(CliDialogSeparate, CtrlCRemovesEveryFileOfTheJob) {
  TempDir dir;
  const int code = test::InterruptCliOnceItWrites(
      {"filter", "dialog-separate", "big.log", "--type", "3=a", "--type", "5=b", "--type", "8=c", "--type", "3,AB=d",
       "--type", "KWIC=e"},
      dir.path().string(), dir.file("e.NDX"),
      [&](int copies) {
        std::string capture;
        for (int i = 0; i < copies; ++i) capture += kTypes;
        test::WriteFile(dir.file("big.log"), capture);
      },
      400);
  ASSERT_NE(code, 0) << "the job always finished before the interrupt";
  EXPECT_EQ(code, 130) << ReadFile(dir.file("cli.stderr"));
  for (const char* name : {"a", "b", "c", "d", "e"})
    EXPECT_FALSE(FileExists(dir.file(std::string(name) + ".PRO")) || FileExists(dir.file(std::string(name) + ".NDX")))
        << name;
  EXPECT_FALSE(FileExists(dir.file("big.FSC")));
}

TEST(CliAdHoc, AMarkerMayBeginWithAHyphen) {
  TempDir dir;
  const std::string capture = ReadFile(ZV_SAMPLES_DIR "/adhoc_session.log");
  test::WriteFile(dir.file("h.log"), capture);
  TempDir ref;
  const auto both = test::RunFilterWith(
      [](JobState& job, JobProgress& progress, const FilterInput& input) {
        return FilterAdHoc(job, progress, AdHocParams{input, "-begin-", "-end-", true});
      },
      ref, capture);
  for (const auto& args : {std::vector<std::string>{"filter", "adhoc", "h.log", "--begin", "-begin-", "--end", "-end-"},
                           std::vector<std::string>{"filter", "adhoc", "--begin=-begin-", "--end=-end-", "h.log"}}) {
    const auto r = RunCli(args, {.cwd = dir.path().string()});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_NE(r.out.find("Records: 3"), std::string::npos) << r.out;
    EXPECT_EQ(ReadFile(dir.file("h.PRO")), both.pro);
  }
  // Without --end the records run to the next beginning marker.
  const auto r = RunCli({"filter", "adhoc", "h.log", "--begin", "-begin-"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(ReadFile(dir.file("h.PRO")).find("NORDLINK> COST"), std::string::npos);
}

TEST(CliAdHoc, AMarkerThatNeverMatchesIsTheZeroRecordPath) {
  TempDir dir;
  test::WriteFile(dir.file("h.log"), ReadFile(ZV_SAMPLES_DIR "/adhoc_session.log"));
  const auto r = RunCli({"filter", "adhoc", "h.log", "--begin", "-BEGIN-"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 3);
  EXPECT_NE(r.err.find("Zero Records: The filter has recognized no"), std::string::npos) << r.err;
  EXPECT_FALSE(FileExists(dir.file("h.PRO")) || FileExists(dir.file("h.NDX")));
  EXPECT_EQ(RunCli({"filter", "adhoc", "h.log"}, {.cwd = dir.path().string()}).exitCode, 2);  // --begin required
}

}  // namespace
}  // namespace zv
