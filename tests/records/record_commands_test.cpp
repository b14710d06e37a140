// index, keep and order as table commands: the order a list gives, the marks, and what
// a failed keep leaves in the index.
#include "records/record_commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "commands/command_table.h"
#include "records/record_file.h"
#include "records/sifter.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

const std::string kPro = CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC", "",
                               "Record - 4", "", "DDD"});

TEST(OrderPuttingFirst, IsWhatOrderGivesWhenEachListedRecordMovesToTheNextPosition) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    const int32_t count = 1 + static_cast<int32_t>(random() % 12);
    std::vector<int32_t> all(static_cast<std::size_t>(count));
    for (int32_t k = 1; k <= count; ++k) all[static_cast<std::size_t>(k - 1)] = k;
    std::shuffle(all.begin(), all.end(), random);
    const std::vector<int32_t> first(all.begin(), all.begin() + 1 + static_cast<long>(random() % count));
    std::vector<int32_t> moved = IdentityOrder(count);
    for (std::size_t i = 0; i < first.size(); ++i) MoveInOrder(moved, count, first[i], static_cast<int32_t>(i + 1));
    int32_t twice = 0;
    SCOPED_TRACE("round " + std::to_string(round));
    EXPECT_EQ(OrderPuttingFirst(first, count, twice), moved);
    EXPECT_EQ(twice, 0);
  }
}

TEST(OrderPuttingFirst, ARecordListedTwiceGivesNoOrder) {
  int32_t twice = 0;
  EXPECT_TRUE(OrderPuttingFirst(std::vector<int32_t>{2, 1, 2, 1}, 4, twice).empty());
  EXPECT_EQ(twice, 2);
}

struct Indexed {
  TempDir dir;
  JobState job;
  RecordFileInput file{dir.file("r.PRO"), dir.file("r.NDX")};
  Indexed() {
    WriteFile(file.proFile, kPro);
    CommandContext context{job, NoProgress(), file};
    EXPECT_EQ(RunCommand(kIndexRecordFile, context, CommandTable()).records, 4);
  }
  JobResult run(int32_t number, std::any params) {
    CommandContext context{job, NoProgress(), std::move(params)};
    return RunCommand(number, context, CommandTable());
  }
  std::vector<std::string> marks() const {
    std::vector<std::string> out;
    for (const IndexRec& r : ReadIndexFile(file.indexFile)) out.push_back(std::to_string(r.keepFlag) + r.keepFileName());
    return out;
  }
};

TEST(MarkForKeeping, MarksTheListedRecordsAndTakesOffWhatAnEarlierSessionLeft) {
  Indexed t;
  IndexRec stale = GetIndexRec(t.file.indexFile, 3);
  stale.keepFlag = 1;
  stale.setKeepFile("stale.kep");
  PutIndexRec(t.file.indexFile, 3, stale);
  MarkForKeeping(t.file.indexFile, 4, std::vector<int32_t>{4, 1, 4}, "k.kep");
  EXPECT_EQ(t.marks(), (std::vector<std::string>{"1k.kep", "0", "0", "1k.kep"}));
}

TEST(KeepRecordsCommand, WritesTheListAndLeavesNoMarksWhicheverWayItEnds) {
  Indexed t;
  const std::string keep = t.dir.file("k.kep");
  JobResult r = t.run(kKeepRecords, KeepInput{t.file, 4, {3, 1}, keep});
  ASSERT_TRUE(r.done());
  EXPECT_EQ(r.records, 2);
  EXPECT_EQ(ReadFile(keep), CrLf({"Record - 1", "", "AAA", "", "Record - 3", "", "CCC", ""}));
  EXPECT_EQ(t.marks(), (std::vector<std::string>(4, "0")));

  std::filesystem::create_directory(t.dir.file("folder.kep"));
  r = t.run(kKeepRecords, KeepInput{t.file, 4, {2}, t.dir.file("folder.kep")});
  EXPECT_EQ(r.outcome, JobOutcome::Failed);
  EXPECT_EQ(t.job.gsErrNumber, " 75");
  EXPECT_EQ(t.marks(), (std::vector<std::string>(4, "0")));
  EXPECT_TRUE(std::filesystem::is_directory(t.dir.file("folder.kep")));  // a folder is never removed

  // Without its parameters a row answers nothing.
  EXPECT_EQ(t.run(kKeepRecords, RecordFileInput{}).outcome, JobOutcome::NoCommand);
  EXPECT_EQ(t.run(kOrderRecords, KeepInput{}).outcome, JobOutcome::NoCommand);
  EXPECT_EQ(t.run(kIndexRecordFile, OrderInput{}).outcome, JobOutcome::NoCommand);
}

TEST(OrderRecordsCommand, WritesTheOrderFile) {
  Indexed t;
  int32_t twice = 0;
  const JobResult r = t.run(kOrderRecords, OrderInput{t.file, 4, OrderPuttingFirst(std::vector<int32_t>{4}, 4, twice),
                                                      t.dir.file("r.ORD")});
  ASSERT_TRUE(r.done());
  EXPECT_EQ(r.files, std::vector<std::string>{t.dir.file("r.ORD")});
  EXPECT_TRUE(ReadFile(t.dir.file("r.ORD")).starts_with(CrLf({"Record - 4", "", "DDD", "", "Record - 1"})));
}

}  // namespace
}  // namespace zv
