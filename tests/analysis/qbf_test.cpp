// Query by Form: the implied statement, which records the form chooses, the .QRY bytes.
#include "analysis/qbf.h"

#include <gtest/gtest.h>

#include "analysis_test_support.h"
#include "core/error.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::Indexer;
using test::ReadFile;
using test::Records;
using test::RecordingPanels;
using test::TempDir;
using test::WriteRecordFile;

QbfBoxes Boxes(std::initializer_list<std::pair<int, const char*>> filled) {
  QbfBoxes b;
  for (const auto& [at, text] : filled) b[static_cast<std::size_t>(at)] = text;
  return b;
}

// Box numbers as the form names them.
constexpr int t11 = 0, t12 = 1, t13 = 2, t21 = 3, t22 = 4, t31 = 6, t32 = 7, t33 = 8;

struct QueryRun {
  JobResult result;
  std::string qry;  // "<none>" when there is no .QRY
  RecordingPanels panels;
};

QueryRun RunOn(const TempDir& dir, const RecordFileChoice& file, const QbfBoxes& boxes,
               const std::function<void(JobState&, RecordingPanels&)>& hook = {}) {
  QueryRun run;
  JobState job;
  if (hook) hook(job, run.panels);
  const std::string out = dir.file("out.QRY");
  run.result = RunQuery(job, run.panels, QbfParams{file, boxes, out});
  run.qry = FileExists(out) ? ReadFile(out) : "<none>";
  return run;
}

TEST(QbfStatement, BuiltFromTheTrimmedBoxesNestByNest) {
  struct Case {
    QbfBoxes boxes;
    const char* mask;
    const char* statement;
  } cases[] = {
      {Boxes({{t11, "cost"}, {t12, "price"}, {t21, "car"}, {t31, "toy"}}), "110-100-100",
       "(cost or price) and car and not toy"},
      {Boxes({{t12, " price "}}), "010-000-000", "price"},  // a lone term is bare, in whatever box
      {Boxes({{t11, "a"}, {t21, "b"}, {t22, "c"}}), "100-110-000", "a and (b or c)"},
      {Boxes({{t21, "car"}}), "000-100-000", " and car"},
      {Boxes({{t31, "x"}, {t32, "y"}, {t33, "z"}}), "000-000-111", "not (x or y or z)"},
      {Boxes({{t11, "a"}, {t13, "c"}, {t32, "y"}, {t33, "z"}}), "101-000-011", "(a or c) and not (y or z)"},
      {Boxes({{t11, "   "}, {t12, "cost*"}}), "010-000-000", "cost*"},
      {Boxes({}), "000-000-000", ""},
  };
  for (const Case& c : cases) {
    const SearchStatement s = ImpliedSearchStatement(c.boxes);
    EXPECT_EQ(s.gsNestMask, c.mask);
    EXPECT_EQ(s.gsSearchStatement, c.statement);
  }
}

// Four records: COST exactly in 1, COST-EFFECTIVE and a TOY in 2, COSTS and a CAR on
// another line in 3, PRICE and CAR in 4.
const Records kCars = {
    {"The cost of a car"},
    {"COST-EFFECTIVE CAR", "a toy"},
    {"Costs of running", "", "car pools"},
    {"price", "car"},
};

std::string Hits(const std::string& qry) {
  std::string labels;
  for (std::size_t at = qry.find("Record - "); at != std::string::npos; at = qry.find("Record - ", at + 1))
    labels += qry.substr(at + 9, 1);
  return labels;
}

TEST(Qbf, TheFormChoosesRecords) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, kCars, Indexer::Filter);
  struct Case {
    QbfBoxes boxes;
    const char* hits;
  } cases[] = {
      {Boxes({{t11, "cost"}}), "1"},       // only the word COST
      {Boxes({{t11, "cost*"}}), "123"},    // COST, COST-EFFECTIVE, COSTS
      {Boxes({{t11, "cost*"}, {t21, "car"}, {t31, "toy"}}), "13"},  // the nests on different lines; TOY rejects 2
      {Boxes({{t11, "cost*"}, {t12, "price"}, {t21, "car"}}), "1234"},
      {Boxes({{t12, "price"}}), "4"},      // a blank txt11 takes no part
      {Boxes({{t11, "cost"}, {t21, "*"}, {t22, "*"}}), "1"},  // "*" makes an AND term blank
      {Boxes({{t11, "car"}, {t31, "of"}}), "24"},              // NOT on the hit line itself
      {Boxes({{t11, "car"}, {t21, "pools"}}), "3"},
  };
  for (const Case& c : cases) {
    const QueryRun run = RunOn(dir, file, c.boxes);
    EXPECT_EQ(run.result.outcome, JobOutcome::Done) << c.hits;
    EXPECT_EQ(Hits(run.qry), c.hits);
    EXPECT_EQ(run.result.records, static_cast<int32_t>(std::string(c.hits).size()));
    std::filesystem::remove(dir.file("out.QRY"));
  }
}

TEST(Qbf, HitRecordsAreCopiedWholeRecordOneWithAnExtraEmptyLine) {
  for (Indexer indexer : {Indexer::Filter, Indexer::BuildIndex}) {
    TempDir dir;
    const RecordFileChoice file = WriteRecordFile(dir, kCars, indexer);
    const QueryRun run = RunOn(dir, file, Boxes({{t11, "car"}, {t31, "toy"}}));
    // BuildIndex's record 1 stops before its empty line and its last record reads one
    // line past the end of the file; a filter's index reaches each next label.
    const std::string expected =
        indexer == Indexer::Filter
            ? CrLf({"Record - 1", "", "The cost of a car", "", "", "Record - 3", "", "Costs of running", "",
                    "car pools", "", "Record - 4", "", "price", "car"})
            : CrLf({"Record - 1", "", "The cost of a car", "", "Record - 3", "", "Costs of running", "", "car pools",
                    "", "Record - 4", "", "price", "car", ""});
    EXPECT_EQ(run.qry, expected) << test::IndexerName(indexer);
    EXPECT_EQ(run.panels.lastHits, 3);
  }
}

TEST(Qbf, ARecordFileOfOneRecordGetsItsExtraEmptyLine) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, {{"only cost"}}, Indexer::Filter);
  EXPECT_EQ(RunOn(dir, file, Boxes({{t11, "cost"}})).qry, CrLf({"Record - 1", "", "only cost", ""}));
}

TEST(Qbf, TermsThatNeverHitEndInZeroHitsWithTheQueryRemoved) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, kCars, Indexer::Filter);
  for (const char* term : {" cost", "cost ", "cost.of", "*", "   ", "costs of"}) {
    const QueryRun run = RunOn(dir, file, Boxes({{t11, term}}));
    EXPECT_EQ(run.result.outcome, JobOutcome::ZeroRecords) << '"' << term << '"';
    EXPECT_EQ(run.qry, "<none>");
    ASSERT_TRUE(run.result.message.has_value());
    EXPECT_EQ(run.result.message->title, "Zero Hits");
    EXPECT_EQ(run.result.message->text, "The search found no records satisfying\r\nyour search request.\r\n\r\n" +
                                            dir.file("out.QRY") +
                                            ",\r\nthe selected records file, is a zero-length\r\nfile and will be "
                                            "deleted.");
  }
}

TEST(Qbf, TxtElevenAloneSucceedsAtItsFirstHitAndReadsNoFurther) {
  // Line 2 of record 1 is too long for the word table: it is split only if read.
  TempDir dir;
  const RecordFileChoice file =
      WriteRecordFile(dir, {{"cost", std::string(40000, 'Z') + " ZED"}, {"none"}}, Indexer::Filter);
  const QueryRun early = RunOn(dir, file, Boxes({{t11, "cost"}, {t12, "zed"}}));
  EXPECT_EQ(early.result.outcome, JobOutcome::Done);
  EXPECT_EQ(Hits(early.qry), "1");
  // With a NOT term the lines go on being read, and the long one overflows.
  const QueryRun onward = RunOn(dir, file, Boxes({{t11, "cost"}, {t12, "zed"}, {t31, "qqq"}}));
  EXPECT_EQ(onward.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(onward.result.error->number(), err::kOverflow);
  EXPECT_EQ(onward.qry, "<none>");
}

TEST(Qbf, ARecordOfOverSixteenBitsOfLinesFails) {
  TempDir dir;
  const RecordFileChoice file =
      WriteRecordFile(dir, {std::vector<std::string>(32767, "line"), {"cost"}}, Indexer::Filter);
  const QueryRun run = RunOn(dir, file, Boxes({{t11, "cost"}}));
  EXPECT_EQ(run.result.outcome, JobOutcome::Failed);
  EXPECT_EQ(run.result.error->number(), err::kOverflow);
  EXPECT_EQ(run.result.error->reason(),
            "Limit reached: the lines of a record can be at most 32767; passed at the record starting at line 1. "
            "It came to 32770.");
  EXPECT_EQ(run.qry, "<none>");
}

TEST(Qbf, TheInterruptIsSeenAtTheEndOfTheRecord) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, kCars, Indexer::Filter);
  const QueryRun run = RunOn(dir, file, Boxes({{t11, "cost*"}}), [](JobState& job, RecordingPanels& panels) {
    panels.onLine = [&job](int32_t) { job.giInterrupt = 1; };
  });
  EXPECT_EQ(run.result.outcome, JobOutcome::Interrupted);
  EXPECT_EQ(run.qry, "<none>");
  // Record 1 was read to its end and written, then nothing more.
  EXPECT_EQ(run.panels.records, (std::vector<int32_t>{1, 1}));
  EXPECT_EQ(run.panels.hitLines.size(), 4u);
}

TEST(Qbf, TheQueryFileMayNotBeTheInputNorAnExistingFile) {
  TempDir dir;
  test::WriteFile(dir.file("old.QRY"), "x");
  const auto same = RefuseQueryFile(dir.file("r.PRO"), dir.file("r.PRO"));
  ASSERT_TRUE(same.has_value());
  EXPECT_EQ(same->title, "Save File Error");
  EXPECT_EQ(same->text, "Output file must not be the\r\nsame as the input file.");
  const auto exists = RefuseQueryFile(dir.file("old.QRY"), dir.file("r.PRO"));
  ASSERT_TRUE(exists.has_value());
  EXPECT_EQ(exists->title, "File Save Error");
  EXPECT_EQ(exists->text, dir.file("old.QRY") + "\r\nalready exits and would be overwritten.");
  EXPECT_FALSE(RefuseQueryFile(dir.file("new.QRY"), dir.file("r.PRO")).has_value());
  EXPECT_EQ(KeyWordError().text, "The first term of the first\r\nnest cannot be blank.");
}

TEST(Qbf, OpeningARecordFileIndexesItAndAnIndexIsUsedAsItStands) {
  TempDir dir;
  test::WriteFile(dir.file("r.PRO"), test::ProText(kCars));
  JobState job;
  job.outDir = dir.path().string();
  RecordingPanels progress;
  const JobResult built = OpenRecordFile(job, progress, {dir.file("r.PRO")}, kQbfRequirement);
  ASSERT_EQ(built.outcome, JobOutcome::Done);
  EXPECT_EQ(built.records, 4);
  EXPECT_EQ(job.gsIndexFile, dir.file("r.NDX"));
  EXPECT_EQ(ReadIndexFile(job.gsIndexFile)[0].startByte, 1);  // BuildIndex's numbers

  test::WriteFile(dir.file("one.PRO"), test::ProText({{"only"}}));
  const JobResult refused = OpenRecordFile(job, progress, {dir.file("one.PRO")}, kQbfRequirement);
  EXPECT_EQ(refused.outcome, JobOutcome::Refused);
  EXPECT_EQ(refused.message->title, kFileFormatErrorTitle);
  EXPECT_TRUE(job.gsProFile.empty());
  EXPECT_EQ(job.giInterrupt, 0);
}

}  // namespace
}  // namespace zv
