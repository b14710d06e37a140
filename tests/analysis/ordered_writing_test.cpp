// Rank and Sort without limits write their records from one read in file order; with
// no equal keys their order is that of the exchange sort, so their files must be the
// same bytes as the record-by-record writing within the limits makes.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "analysis/rank.h"
#include "analysis/sort.h"
#include "analysis_test_support.h"
#include "core/index_rec.h"
#include "records/record_file.h"

namespace zv {
namespace {

using test::FileExists;
using test::Indexer;
using test::ReadFile;
using test::Records;
using test::TempDir;
using test::WriteRecordFile;

struct Layout {
  const char* name;
  Indexer indexer;
};

// 25 records, so that the labels of records 10 to 19 are there; each with a distinct
// count of "hit" words and a distinct key, in a shuffled order; with empty lines
// first, last and in pairs, which the .RNK's rules leave out or keep.
Records Shuffled() {
  std::vector<int> value(25);
  for (int i = 0; i < 25; ++i) value[static_cast<std::size_t>(i)] = i + 1;
  std::shuffle(value.begin(), value.end(), std::mt19937(5));
  Records records;
  for (int k = 1; k <= 25; ++k) {
    const int v = value[static_cast<std::size_t>(k - 1)];
    std::string hits = "t";
    for (int i = 0; i < v; ++i) hits += " hit";
    std::vector<std::string> lines{hits, "K - " + std::string(1, static_cast<char>('A' + v))};
    if (k % 3 == 0) lines.insert(lines.begin(), "");
    if (k % 4 == 0) lines.insert(lines.begin() + 1, 2, "");
    if (k % 5 == 0) lines.push_back("");
    records.push_back(lines);
  }
  return records;
}

// The letters after "K - " in a file, in order.
std::string KeysOf(const std::string& text) {
  std::string keys;
  for (std::size_t at = text.find("K - "); at != std::string::npos; at = text.find("K - ", at + 1)) keys += text[at + 4];
  return keys;
}

std::string Output(const std::string& path) { return FileExists(path) ? ReadFile(path) : "<none>"; }

class OrderedWriting : public ::testing::TestWithParam<Layout> {};

TEST_P(OrderedWriting, RankWithoutLimitsWritesWhatTheRecordByRecordWritingWrites) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, Shuffled(), GetParam().indexer);
  std::string rnk[2], tbl[2];
  for (int large = 0; large < 2; ++large) {
    RankParams params;
    params.file = file;
    params.large = large == 1;
    params.terms[0] = "hit";
    params.weights[0] = "2";
    params.reportTime = 1'700'000'000;
    JobState job;
    ASSERT_EQ(Rank(job, NoProgress(), params).outcome, JobOutcome::Done);
    rnk[large] = Output(file.baseName + ".RNK");
    tbl[large] = Output(file.baseName + ".TBL");
  }
  EXPECT_EQ(rnk[1], rnk[0]);
  EXPECT_EQ(tbl[1], tbl[0]);
  EXPECT_EQ(KeysOf(rnk[0]), "ZYXWVUTSRQPONMLKJIHGFEDCB");  // by falling count of hits
}

TEST_P(OrderedWriting, SortWithoutLimitsWritesWhatTheRecordByRecordWritingWrites) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, Shuffled(), GetParam().indexer);
  std::string srt[2];
  for (int large = 0; large < 2; ++large) {
    JobState job;
    ASSERT_EQ(SortRecords(job, NoProgress(), SortParams{file, "k -", large == 1}).outcome, JobOutcome::Done);
    srt[large] = Output(file.baseName + ".SRT");
  }
  EXPECT_EQ(srt[1], srt[0]);
  EXPECT_EQ(KeysOf(srt[0]), "BCDEFGHIJKLMNOPQRSTUVWXYZ");
}

// Distinct keys in a random order: about half as many runs as records.
Records ShuffledKeys(int count) {
  std::vector<int> value(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) value[static_cast<std::size_t>(i)] = i;
  std::shuffle(value.begin(), value.end(), std::mt19937(21));
  Records records;
  for (int v : value) records.push_back({"K - " + std::to_string(100000 + v), "text"});
  return records;
}

std::string SortedFile(const RecordFileChoice& file, bool large) {
  JobState job;
  EXPECT_EQ(SortRecords(job, NoProgress(), SortParams{file, "K -", large}).outcome, JobOutcome::Done);
  return Output(file.baseName + ".SRT");
}

TEST(OrderedWritingFallback, AnOrderOfTooManyRunsIsWrittenRecordByRecord) {
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, ShuffledKeys(6000), Indexer::Filter);
  const std::string exact = SortedFile(file, false);
  EXPECT_EQ(SortedFile(file, true), exact);
}

TEST(OrderedWritingFallback, AnIndexWhoseOffsetsDoNotRiseIsReadInTheOrderOfTheFile) {
  // The index's records after the first, shuffled: record k is no longer the k-th in
  // the file, and the writer reads by offset.
  TempDir dir;
  const RecordFileChoice file = WriteRecordFile(dir, ShuffledKeys(40), Indexer::Filter);
  std::vector<IndexRec> recs = ReadIndexFile(file.indexFile);
  std::shuffle(recs.begin() + 1, recs.end(), std::mt19937(4));
  for (std::size_t i = 0; i < recs.size(); ++i) PutIndexRec(file.indexFile, static_cast<int32_t>(i + 1), recs[i]);
  const std::string exact = SortedFile(file, false);
  EXPECT_EQ(SortedFile(file, true), exact);
}

INSTANTIATE_TEST_SUITE_P(Layouts, OrderedWriting,
                         ::testing::Values(Layout{"FilterIndex", Indexer::Filter},
                                           Layout{"BuildIndex", Indexer::BuildIndex}),
                         [](const ::testing::TestParamInfo<Layout>& p) { return std::string(p.param.name); });

}  // namespace
}  // namespace zv
