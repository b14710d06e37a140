// zorvanta-cli query, rank, sort and diction: outputs beside the input, refusals, exit codes.
#include <gtest/gtest.h>

#include <filesystem>

#include "analysis/rank.h"
#include "cli_test_support.h"

namespace zv {
namespace {

using namespace cli_test;

const std::string kPro = CrLf({"Record - 1", "", "AU - Zweig", "TI - cost of a car", "", "Record - 2", "",
                               "AU - adams", "TI - price list", "", "Record - 3", "", "AU - Brown",
                               "TI - cost-effective toys"});

TEST(CliAnalysis, QueryPrintsTheStatementAndWritesTheHitsBesideNothingElse) {
  TempDir dir, elsewhere;
  WriteFile(dir.file("r.PRO"), kPro);
  const auto r = RunCli({"query", dir.file("r.PRO"), "--to", dir.file("hits.QRY"), "--or", "cost*", "--or", "price",
                         "--not", "toys"},
                        {.cwd = elsewhere.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_TRUE(r.out.starts_with("(cost* or price) and not toys\n")) << r.out;
  EXPECT_TRUE(Has(r.out, "Records hit: 2"));
  // Record 1 from BuildIndex's index ends before its empty line; the writer adds one.
  EXPECT_EQ(ReadFile(dir.file("hits.QRY")),
            CrLf({"Record - 1", "", "AU - Zweig", "TI - cost of a car", "", "Record - 2", "", "AU - adams",
                  "TI - price list", ""}));
  EXPECT_TRUE(FileExists(dir.file("r.NDX")));
  EXPECT_TRUE(std::filesystem::is_empty(elsewhere.path()));
  EXPECT_EQ(ReadFile(dir.file("r.PRO")), kPro);
}

TEST(CliAnalysis, ZeroHitsExitsWithThreeAndNoFile) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  const auto r = RunCli({"query", "r.PRO", "--to", "none.QRY", "--or", "nothing"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 3);
  EXPECT_TRUE(Has(r.err, "Zero Hits: The search found no records satisfying\nyour search request.")) << r.err;
  EXPECT_FALSE(FileExists(dir.file("none.QRY")));
}

TEST(CliAnalysis, RefusalsExitWithTwoAndTheFormsMessages) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  WriteFile(dir.file("old.QRY"), "x");
  WriteFile(dir.file("notes.txt"), kPro);
  struct Case {
    std::vector<std::string> args;
    std::string message;
  } cases[] = {
      {{"query", "r.PRO", "--to", "old.QRY", "--or", "cost"}, "File Save Error: old.QRY\nalready exits"},
      {{"query", "r.PRO", "--to", "r.PRO", "--or", "cost"}, "Save File Error: Output file must not be the"},
      {{"query", "r.PRO", "--to", "q.QRY", "--and", "cost"}, "Key Word Error: The first term of the first"},
      {{"query", "r.PRO", "--to", "q.QRY", "--or", "a", "--or", "b", "--or", "c", "--or", "d"}, "At most three"},
      {{"query", "notes.txt", "--to", "q.QRY", "--or", "a"}, "The search requires that you specify"},
      {{"rank", "notes.txt", "--term", "cost=1"}, "Ranking requires that you specify"},
      {{"sort", "notes.txt", "--tag", "AU -"}, "Sorting requires that you specify"},
      {{"rank", "r.PRO", "--term", "cost of=1"}, "Rank Term Error: The <space> key was pressed."},
      {{"rank", "r.PRO", "--term", "cost?=1"}, "Rank Term Error: The character key just pressed, ?, is one"},
      {{"rank", "r.PRO", "--term", "cost=x"}, "Term Weight Error: Valid weights are the numerals 0 through 9"},
      {{"rank", "r.PRO", "--term", "=", "--term", "cost=1"}, "Ranking Term Error: The first term has been left"},
      {{"rank", "r.PRO", "--term", "cost="}, "The weight for the first term has been left blank."},
      {{"rank", "r.PRO", "--term", "cost"}, "A term is given as WORD=WEIGHT"},
      {{"sort", "r.PRO", "--tag", ""}, "Sorting gsTag Error"},
      {{"sort", "gone.PRO", "--tag", "AU -"}, "File Open Error: File not found."},
      {{"diction", "gone.txt"}, "File Open Error: File not found."},
  };
  for (const Case& c : cases) {
    const auto r = RunCli(c.args, {.cwd = dir.path().string()});
    EXPECT_EQ(r.exitCode, 2) << c.args[0] << " " << c.args[1] << "\n" << r.err;
    EXPECT_TRUE(Has(r.err, c.message)) << r.err;
  }
  EXPECT_EQ(ReadFile(dir.file("old.QRY")), "x");
  EXPECT_FALSE(FileExists(dir.file("q.QRY")));
}

TEST(CliAnalysis, RankAndSortWriteBesideTheInputFromAnIndexAsItStands) {
  TempDir dir, elsewhere;
  WriteFile(dir.file("r.PRO"), kPro);
  ASSERT_EQ(RunCli({"index", dir.file("r.PRO")}).exitCode, 0);
  const auto rank = RunCli({"rank", dir.file("r.NDX"), "--term", "cost*=2", "--term", "=", "--term", "price="},
                           {.cwd = elsewhere.path().string()});
  ASSERT_EQ(rank.exitCode, 0) << rank.err;
  EXPECT_TRUE(Has(rank.out, "Written: " + dir.file("r.RNK")));
  const std::string tbl = ReadFile(dir.file("r.TBL"));
  EXPECT_TRUE(tbl.starts_with("Rank Table for " + dir.file("r") + ".RNK\r\n")) << tbl;
  EXPECT_TRUE(Has(tbl, "\r\n 2    cost*\r\n 0    price\r\n\r\n")) << tbl;
  const auto sort = RunCli({"sort", dir.file("r.NDX"), "--tag", "au -", "--large"}, {.cwd = elsewhere.path().string()});
  ASSERT_EQ(sort.exitCode, 0) << sort.err;
  const std::string srt = ReadFile(dir.file("r.SRT"));
  EXPECT_LT(srt.find("Record - 3"), srt.find("Record - 1"));  // Brown, Zweig, adams
  EXPECT_LT(srt.find("Record - 1"), srt.find("Record - 2"));
  EXPECT_TRUE(std::filesystem::is_empty(elsewhere.path()));
}

TEST(CliAnalysis, DictionSaysWhenThereIsNoOmitListAndGoesOn) {
  TempDir dir;
  WriteFile(dir.file("text.log"), "cost cost price\r\nprice cost once\r\n");
  const auto r = RunCli({"diction", "text.log"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  // The program's folder has no OMIT.LST.
  EXPECT_TRUE(Has(r.err, "No Omit List: The optional omit list file, ")) << r.err;
  EXPECT_TRUE(Has(r.out, "Unique Words: 3"));
  const std::string dic = ReadFile(dir.file("text.DIC"));
  EXPECT_TRUE(dic.ends_with("\r\n\r\nUnique Words:  3\r\n\r\n 3      cost\r\n 2      price\r\n 1      once\r\n")) << dic;
  WriteFile(dir.file("omit.txt"), "cost\r\n");
  const auto omitted = RunCli({"diction", "text.log", "--omit", "omit.txt", "--large"}, {.cwd = dir.path().string()});
  ASSERT_EQ(omitted.exitCode, 0) << omitted.err;
  EXPECT_FALSE(Has(omitted.err, "No Omit List"));
  EXPECT_TRUE(ReadFile(dir.file("text.DIC")).ends_with(" 2      price\r\n 1      once\r\n"));
}

TEST(CliAnalysis, AJobOverTheLimitsFailsWithItsOutputRemovedUnlessLarge) {
  TempDir dir;
  std::string lines;
  for (int i = 0; i < 32768; ++i) lines += "word\r\n";
  WriteFile(dir.file("long.txt"), lines);
  const auto r = RunCli({"diction", "long.txt", "--omit", "long.txt"}, {.cwd = dir.path().string()});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_TRUE(Has(r.err, "Error number 9")) << r.err;  // the omit list of 32768 entries
  const auto exact = RunCli({"diction", "long.txt"}, {.cwd = dir.path().string()});
  EXPECT_EQ(exact.exitCode, 4);
  EXPECT_TRUE(Has(exact.err, "Error number 6\nOverflow")) << exact.err;
  EXPECT_FALSE(FileExists(dir.file("long.DIC")));
  EXPECT_EQ(RunCli({"diction", "long.txt", "--large"}, {.cwd = dir.path().string()}).exitCode, 0);
}

}  // namespace
}  // namespace zv
