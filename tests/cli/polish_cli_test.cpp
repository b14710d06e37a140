// zorvanta-cli's polishing commands: outputs byte for byte, where derived outputs lie,
// refusals, failures, Ctrl-C, and the cover page's defaults from the saved settings.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

const std::string kPro = CrLf({"Record - 4", "", "TI- Rust|", "AU- a^b||", "", "Record - 9", "", "TI- Smut|||", ""});

TEST(CliPolish, EachLineToolWritesItsOutputAndLeavesTheInputAlone) {
  struct Case {
    std::vector<std::string> args;
    std::string output, bytes;
  } cases[] = {
      {{"renumber", "r.PRO", "--to", "out"}, "out",
       CrLf({"Record - 1", "", "TI- Rust|", "AU- a^b||", "", "Record - 2", "", "TI- Smut|||", ""})},
      {{"delete-labels", "r.PRO", "--to", "out"}, "out", CrLf({"TI- Rust|", "AU- a^b||", "", "TI- Smut|||", ""})},
      {{"undelimit", "r.PRO", "--to", "out"}, "out",
       CrLf({"Record - 4", "", "TI- Rust", "AU- a^b", "", "Record - 9", "", "TI- Smut|", ""})},
      {{"replace-labels", "r.PRO", "--to", "out", "--single", "***"}, "out",
       CrLf({"***", "", "TI- Rust|", "AU- a^b||", "", "***", "", "TI- Smut|||", "", "", ""})},
      {{"replace-labels", "r.PRO", "--to", "out", "--double", "--begin", "<r>", "--end", "</r>"}, "out",
       CrLf({"<r>", "", "TI- Rust|", "AU- a^b||", "", "</r>", "", "<r>", "", "TI- Smut|||", "", "</r>", ""})},
      {{"replace-labels", "r.PRO", "--to", "out", "--surround", "--begin", "<r>"}, "out",
       CrLf({"<r>", "Record - 4", "", "TI- Rust|", "AU- a^b||", "", "", "", "<r>", "Record - 9", "", "TI- Smut|||",
             "", "", ""})},
      {{"line-breaks", "r.PRO"}, "r.FMT",
       CrLf({"Record - 4", "", "TI- Rust" + std::string(1, '\0'), "AU- a, b" + std::string(2, '\0'), "",
             "Record - 9", "", "TI- Smut" + std::string(3, '\0'), ""})},
      {{"page-breaks", "r.PRO", "--per-page", "1"}, "r.BRK",
       CrLf({"Record - 4", "", "TI- Rust|", "AU- a^b||", "", "\f", "Record - 9", "", "TI- Smut|||", ""})},
      {{"divide", "r.PRO"}, "r.002", CrLf({"TI- Smut|||", ""})},
  };
  for (const Case& c : cases) {
    TempDir dir;
    WriteFile(dir.file("r.PRO"), kPro);
    const auto r = RunCli(c.args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 0) << c.args[0] << ": " << r.err;
    EXPECT_EQ(ReadFile(dir.file(c.output)), c.bytes) << c.args[0];
    EXPECT_TRUE(Has(r.out, "Written: ")) << c.args[0];
    EXPECT_EQ(ReadFile(dir.file("r.PRO")), kPro);
  }
}

TEST(CliPolish, DerivedOutputsLieInTheCurrentDirectory) {
  TempDir data, here;
  WriteFile(data.file("r.PRO"), kPro);
  for (const std::vector<std::string>& args : {std::vector<std::string>{"line-breaks", data.file("r.PRO")},
                                               {"page-breaks", data.file("r.PRO"), "--per-page", "5"},
                                               {"divide", data.file("r.PRO")}})
    ASSERT_EQ(RunCli(args, {.cwd = here.path().string()}).exitCode, 0) << args[0];
  for (const char* name : {"r.FMT", "r.BRK", "r.001", "r.002"}) EXPECT_TRUE(FileExists(here.file(name))) << name;
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(data.path()), {}), 1);
}

TEST(CliPolish, BadInputExitsWithTwoAndTheSystemsMessage) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  WriteFile(dir.file("old"), "older\r\n");
  WriteFile(dir.file("empty"), "");
  WriteFile(dir.file("r.FMT"), kPro);
  std::string notes;
  for (int i = 1; i <= 45; ++i) notes += "note " + std::to_string(i) + "\r\n";
  WriteFile(dir.file("notes"), notes);
  struct Case {
    std::vector<std::string> args;
    std::string said;
  } cases[] = {
      {{"renumber", "gone", "--to", "x"}, "File Open Error: File not found."},
      {{"renumber", "empty", "--to", "x"}, "Zero-Length File: empty\n\nis a zero-length file."},
      {{"delete-labels", "empty", "--to", "x"}, "Zero-Length File: empty\nis a zero-length file."},
      {{"renumber", "r.PRO", "--to", "r.PRO"}, "Save File Error: Output file must not be the\nsame as the input file."},
      {{"undelimit", "r.PRO", "--to", "old"}, "File Save Error: old\nalready exits and would be overwritten."},
      {{"replace-labels", "r.PRO", "--to", "old", "--single", ""}, "File Save Error: old\n\nalready exits"},
      {{"renumber", "notes", "--to", "x"}, "File Format Error: This does not appear to be a filtered record file."},
      {{"line-breaks", "r.FMT"}, "Open File Error: Input file must not have .FMT extension."},
      {{"divide", "notes"}, "File Format Error: This does not appear to be a filtered record file."},
      {{"page-breaks", "r.PRO", "--per-page", "0"}, "Zero Input Error: Please choose a number from 1 to 99."},
      {{"page-breaks", "r.PRO", "--per-page", "00"}, "Invalid Number of Records Per Page: The valid range is 1 to 99."},
      {{"page-breaks", "r.PRO", "--per-page", "100"}, "Invalid Number of Records Per Page: The valid range is 1 to 99."},
      {{"page-breaks", "r.PRO", "--per-page", "1.5"}, "Non-numeric Input Error: Please choose a number from 1 to 99."},
      {{"page-breaks", "r.PRO", "--per-page", "-3"}, "Non-numeric Input Error: Please choose a number from 1 to 99."},
      {{"replace-labels", "r.PRO", "--to", "x"}, "give one of --single TEXT, --double, --surround"},
      {{"replace-labels", "r.PRO", "--to", "x", "--single", "a", "--double"}, "excludes"},
      {{"cover", "--to", "c", "--prefix", "gone"}, "File Open Error: File not found."},
      {{"cover", "--to", "r.PRO", "--prefix", "r.PRO"}, "Save File Error: Output file must not be the"},
      {{"cover", "--to", "c", "--from-label", "office"}, "office not in {library,searcher,firm}"},
  };
  for (const Case& c : cases) {
    const auto r = RunCli(c.args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2) << c.args[0] << " " << c.args[1] << ": " << r.err;
    EXPECT_TRUE(Has(r.err, c.said)) << r.err;
  }
  EXPECT_EQ(ReadFile(dir.file("old")), "older\r\n");
  EXPECT_EQ(ReadFile(dir.file("r.PRO")), kPro);
  for (const char* name : {"x", "c", "notes.001", "r.BRK"}) EXPECT_FALSE(FileExists(dir.file(name))) << name;
}

TEST(CliPolish, AnEmptyPerPageFailsAsTheCancelledInputBoxDoesAndRemovesTheOlderOutput) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  WriteFile(dir.file("r.BRK"), "older\r\n");
  const auto r = RunCli({"page-breaks", "r.PRO", "--per-page", ""}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 13\nType mismatch")) << r.err;
  EXPECT_FALSE(FileExists(dir.file("r.BRK")));
}

TEST(CliPolish, AFullDiskFailsWithFourAndRemovesTheOutputButDivideKeepsItsFiles) {
  TempDir dir;
  std::string big;
  for (int k = 1; k <= 200; ++k) big += CrLf({"Record - " + std::to_string(k), "", std::string(60, 'x'), ""});
  WriteFile(dir.file("big.PRO"), big);
  auto r = RunCli({"renumber", "big.PRO", "--to", "out"}, {.cwd = dir.path().string(), .fileSizeLimit = 4000});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 61\nDisk full")) << r.err;
  EXPECT_FALSE(FileExists(dir.file("out")));
  // Divide's files are small enough; a record past the limit fails once files exist.
  WriteFile(dir.file("div.PRO"), CrLf({"Record - 1", "", "a", "Record - 2", "", std::string(5000, 'y')}));
  r = RunCli({"divide", "div.PRO"}, {.cwd = dir.path().string(), .fileSizeLimit = 4000});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 13\nType mismatch")) << r.err;
  EXPECT_TRUE(Has(r.err, "Kept: div.001")) << r.err;
  EXPECT_EQ(ReadFile(dir.file("div.001")), CrLf({"a"}));
}

TEST(CliPolish, CtrlCExitsWith130AndLeavesNoOutput) {
  TempDir dir;
  std::string block;
  for (int k = 1; k <= 1000; ++k) block += CrLf({"Record - " + std::to_string(k), "", std::string(60, 'x'), ""});
  const int code = test::InterruptCliOnceItWrites(
      {"renumber", "big.PRO", "--to", "big.out"}, dir.path().string(), dir.file("big.out"),
      [&](int copies) {
        std::filesystem::remove(dir.file("big.out"));
        std::string pro;
        for (int i = 0; i < copies; ++i) pro += block;
        WriteFile(dir.file("big.PRO"), pro);
      },
      100);
  ASSERT_NE(code, 0) << "the copy was always done before the interrupt";
  EXPECT_EQ(code, 130) << ReadFile(dir.file("cli.stderr"));
  EXPECT_FALSE(FileExists(dir.file("big.out")));
}

// The settings file as the desktop program writes it.
const char* kSettings =
    "[Header]\n"
    "Cover\\ToClient=True\n"
    "Cover\\FromFirm=True\n"
    "Cover\\To=\"  Ada Reed\"\n"
    "Cover\\From_1=Reed Research\n"
    "Cover\\Subject=Wheat\n"
    "Cover\\Memo=\"one, two\\r\\nthree\"\n"
    "\n"
    "[Window%20Position]\n"
    "Left=100\n";

struct SettingsEnv {
  explicit SettingsEnv(const std::string& path) { setenv("ZORVANTA_SETTINGS", path.c_str(), 1); }
  ~SettingsEnv() { unsetenv("ZORVANTA_SETTINGS"); }
};

TEST(CliPolish, TheCoverPageTakesTheSavedSettingsForOptionsNotGiven) {
  TempDir dir;
  WriteFile(dir.file("q.ini"), kSettings);
  SettingsEnv env(dir.file("q.ini"));
  WriteFile(dir.file("r.PRO"), kPro);
  auto r = RunCli({"cover", "--to", "c.COV", "--date", "May 1, 2026", "--job-no", "7"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file("c.COV")), CrLf({"Reed Research", "", "Client:       Ada Reed", "", "Subject:    Wheat", "",
                                               "May 1, 2026     Job No.:  7", "", "Memo:", "",
                                               "   one, two\r\nthree", ""}));
  // Given options win; the library layout; the page in front with a break.
  r = RunCli({"cover", "--to", "d.COV", "--prefix-break", "r.PRO", "--from-label", "library", "--to-label",
              "requester", "--subject", "", "--memo", "", "--date", ""},
             {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file("d.COV")),
            CrLf({"Requester:    Ada Reed", "", "Library:    Reed Research", "", "\f"}) + kPro);
  // Without settings: the defaults, and today's date.
  unsetenv("ZORVANTA_SETTINGS");
  setenv("XDG_CONFIG_HOME", dir.file("none").c_str(), 1);
  r = RunCli({"cover", "--to", "e.COV", "--for", "Bo"}, {.cwd = dir.path().string()});
  unsetenv("XDG_CONFIG_HOME");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_TRUE(ReadFile(dir.file("e.COV")).starts_with("Requester:  Bo\r\n\r\nDate:       ")) << ReadFile(dir.file("e.COV"));
}

TEST(CliPolish, ACoverMemoWordTooLongToWrapFailsAndWritesNothing) {
  TempDir dir;
  SettingsEnv env(dir.file("none.ini"));
  const auto r = RunCli({"cover", "--to", "c.COV", "--memo", std::string(100, 'w')}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 5\nInvalid procedure call or argument")) << r.err;
  EXPECT_FALSE(FileExists(dir.file("c.COV")));
}

}  // namespace
}  // namespace zv
