// Sort: keys from tagged lines, the weak keys' order, equal keys, the .SRT bytes, limits.
#include "analysis/sort.h"

#include <gtest/gtest.h>

#include "analysis_test_support.h"
#include "core/error.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::Indexer;
using test::Labels;
using test::ReadFile;
using test::Records;
using test::RecordingPanels;
using test::TempDir;
using test::WriteRecordFile;

struct SortRun {
  JobResult result;
  std::string srt;  // "<none>" when absent
  RecordingPanels panels;
};

SortRun RunOn(const RecordFileChoice& file, const std::string& tag, bool large = false,
              const std::function<void(JobState&, RecordingPanels&)>& hook = {}) {
  JobState job;
  SortRun run;
  if (hook) hook(job, run.panels);
  run.result = SortRecords(job, run.panels, SortParams{file, tag, large});
  const std::string out = file.baseName + ".SRT";
  run.srt = FileExists(out) ? ReadFile(out) : "<none>";
  return run;
}

TEST(SortKey, TheRestOfATaggedLineCutCleanedAndTrimmed) {
  EXPECT_EQ(SortKeyOf("au - Smith", "AU -"), "Smith");
  EXPECT_EQ(SortKeyOf("AU - |Smith|", "AU -"), "Smith");
  EXPECT_EQ(SortKeyOf("AU - Smith^Jones", "AU -"), "Smith Jones");
  EXPECT_EQ(SortKeyOf("AU -", "AU -"), "");
  EXPECT_EQ(SortKeyOf("  AU - Smith", "AU -"), std::nullopt);  // leading blanks only if the tag has them
  EXPECT_EQ(SortKeyOf("  AU - Smith", "  AU -"), "Smith");
  EXPECT_EQ(SortKeyOf("TI - AU - Smith", "AU -"), std::nullopt);
  EXPECT_EQ(SortKeyOf("AU", "AU -"), std::nullopt);
  // Cut to 75 before the blanks go: 80 characters behind five blanks keep 70.
  EXPECT_EQ(SortKeyOf("AU -     " + std::string(80, 'x'), "AU -"), std::string(70, 'x'));
}

TEST(Sort, RecordsInOrderOfCodesWeakKeysFirst) {
  // 1: data "adams"; 2: no tag; 3: tag with no data; 4: "Zweig"; 5: "Brown" from the
  // last of two tagged lines; 6: "|Abel|".
  const Records records = {
      {"TI - On peat", "AU - adams"}, {"TI - No author"}, {"AU -   "}, {"au - Zweig"},
      {"AU - Zoe", "TI - x", "AU - Brown"}, {"AU - |Abel|"},
  };
  for (bool large : {false, true}) {
    TempDir dir;
    const SortRun run = RunOn(WriteRecordFile(dir, records, Indexer::Filter), "AU -", large);
    ASSERT_EQ(run.result.outcome, JobOutcome::Done);
    // Empty key, then the untagged (code 0), then capitals before small letters.
    EXPECT_EQ(Labels(run.srt), (std::vector<int>{3, 2, 6, 5, 4, 1}));
  }
}

TEST(Sort, TheSortedFileCopiesRecordsWholeWithRecordOnesEmptyLine) {
  const Records records = {{"AU - b"}, {"AU - a"}, {"AU - c"}};
  struct Case {
    Indexer indexer;
    std::vector<std::string> lines;
  } cases[] = {
      {Indexer::Filter,
       {"Record - 2", "", "AU - a", "", "Record - 1", "", "AU - b", "", "", "Record - 3", "", "AU - c", ""}},
      // BuildIndex's record 1 is read from its second byte while reading keys (its
      // tag on the label line would be missed) and written from the first; it ends
      // before its empty line, and the last record reads one line past the end.
      {Indexer::BuildIndex,
       {"Record - 2", "", "AU - a", "", "Record - 1", "", "AU - b", "", "Record - 3", "", "AU - c", "", ""}},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const SortRun run = RunOn(WriteRecordFile(dir, records, c.indexer), "AU -");
    EXPECT_EQ(run.srt, CrLf(c.lines)) << test::IndexerName(c.indexer);
    EXPECT_EQ(run.panels.captions,
              (std::vector<std::string>{"Reading File for Field Data", "Sorting on AU - field",
                                        "Writing Sorted Records"}));
  }
}

TEST(Sort, EqualKeysTakeTheOrderOfTheExchangesOrFileOrderWithoutLimits) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, {{"K - B"}, {"K - A"}, {"K - A"}, {"K - A"}}, Indexer::Filter);
  EXPECT_EQ(Labels(RunOn(file, "K -").srt), (std::vector<int>{3, 2, 4, 1}));
  EXPECT_EQ(Labels(RunOn(file, "K -", true).srt), (std::vector<int>{2, 3, 4, 1}));
  // No record has the tag: all keys equal, file order.
  EXPECT_EQ(Labels(RunOn(file, "XX").srt), (std::vector<int>{1, 2, 3, 4}));
}

TEST(Sort, KeysThatDifferPastCharacterSeventyOneAreExchangedWholeAndTheSortEnds) {
  // Exchanging only 71 key characters would swap these two for ever; so would an
  // untagged key and a blank-padded one.
  const std::string stem(71, 'm');
  TempDir dir;
  const RecordFileChoice file =
      WriteRecordFile(dir, {{"K - " + stem + "zz"}, {"K - " + stem + "ab"}, {"none"}, {"K - q"}}, Indexer::Filter);
  const SortRun run = RunOn(file, "K -");
  ASSERT_EQ(run.result.outcome, JobOutcome::Done);
  EXPECT_EQ(Labels(run.srt), (std::vector<int>{3, 2, 1, 4}));
}

TEST(Sort, OverSixteenBitsOfRecordsFailsUnlessLifted) {
  TempDir dir;
  const RecordFileChoice file =
      WriteRecordFile(dir, Records(32768, std::vector<std::string>{"K - x"}), Indexer::Filter);
  const SortRun exact = RunOn(file, "K -");
  EXPECT_EQ(exact.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(exact.result.error->number(), err::kOverflow);
  EXPECT_EQ(exact.result.error->reason(),
            "Limit reached: the records Sort orders (glRecCount) can be at most 32767. It came to 32768.");
  EXPECT_EQ(exact.srt, "<none>");
  EXPECT_EQ(RunOn(file, "K -", true).result.outcome, JobOutcome::Done);
}

TEST(Sort, AnInterruptWhileReadingLeavesNoOutput) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, {{"K - b"}, {"K - a"}}, Indexer::Filter);
  const SortRun run = RunOn(file, "K -", false, [](JobState& job, RecordingPanels& panels) {
    panels.onLine = [&job](int32_t) { job.giInterrupt = 1; };
  });
  EXPECT_EQ(run.result.outcome, JobOutcome::Interrupted);
  EXPECT_EQ(run.srt, "<none>");
  EXPECT_EQ(SortBeginRefusal("")->text, "The sorting gsTag has been left blank.  This provides no field on which to sort.");
  EXPECT_EQ(SortBeginRefusal("")->title, "Sorting gsTag Error");
  EXPECT_FALSE(SortBeginRefusal(" ").has_value());
}

}  // namespace
}  // namespace zv
