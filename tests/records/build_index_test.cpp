// BuildIndex: its numbers beside a filter's, refusals, failures and the cancel.
#include "records/build_index.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "core/error.h"
#include "core/filter_frame.h"
#include "records/fake_sift_view.h"
#include "records/record_file.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::TempDir;
using test::WriteFile;

// Copies a capture into a .PRO through the filter frame: a "Record - " line becomes
// the next label, an empty line a blank, any other line a text line.
class CopyFilter : public LineFilter {
 public:
  void onLine(FilterFrame& f) override {
    if (f.gsLine.starts_with("Record - ")) {
      f.openRecord({.blankAfter = false, .flagForPass = false});
    } else if (f.gsLine.empty()) {
      f.writeBlank();
    } else {
      f.writeText(f.gsLine);
    }
  }
  // A copy has no record left open at the end: nothing is repeated.
  void atEndOfInput(FilterFrame&) override {}
};

using Progress = test::FakeIndexing;

struct Built {
  JobResult result;
  JobOutcome outcome = JobOutcome::NoCommand;
  std::vector<IndexRec> ndx;
  std::unique_ptr<JobState> job = std::make_unique<JobState>();
};

Built Build(const TempDir& dir, const std::string& pro, Progress& progress) {
  WriteFile(dir.file("r.PRO"), pro);
  Built b;
  b.job->gsProFile = dir.file("r.PRO");
  b.job->gsIndexFile = dir.file("r.NDX");
  b.result = BuildIndex(*b.job, progress);
  b.outcome = b.result.outcome;
  if (FileExists(dir.file("r.NDX"))) b.ndx = ReadIndexFile(dir.file("r.NDX"));
  return b;
}

struct Fields {
  int32_t startByte, byteLen, startLine, endLine;
};

void ExpectFields(const std::vector<IndexRec>& ndx, const std::vector<Fields>& want) {
  ASSERT_EQ(ndx.size(), want.size());
  for (std::size_t i = 0; i < want.size(); ++i) {
    SCOPED_TRACE("record " + std::to_string(i + 1));
    EXPECT_EQ(ndx[i].recNum, static_cast<int32_t>(i + 1));
    EXPECT_EQ(ndx[i].startByte, want[i].startByte);
    EXPECT_EQ(ndx[i].byteLen, want[i].byteLen);
    EXPECT_EQ(ndx[i].startLine, want[i].startLine);
    EXPECT_EQ(ndx[i].endLine, want[i].endLine);
    EXPECT_EQ(ndx[i].keepFlag, 0);
    EXPECT_EQ(ndx[i].keepFileName(), "");
  }
}

const std::string kExample = CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC",
                                   "", "Record - 4", "", "DDD"});

TEST(BuildIndexWorkedExample, BothWritersGiveTheirOwnNumbersForTheSameFile) {
  ASSERT_EQ(kExample.size(), 82u);
  TempDir dir;
  // The filter side: the capture copied through the frame gives the same 82 bytes.
  JobState job;
  job.outDir = dir.path().string();
  test::RecordingProgress progressOfCopy;
  WriteFile(dir.file("capture.log"), kExample);
  CopyFilter copy;
  ASSERT_EQ(RunLineFilter(job, progressOfCopy, FilterInput{dir.file("capture.log"), dir.path().string()}, {"Copy"}, copy)
                .outcome,
            JobOutcome::Done);
  ASSERT_EQ(test::ReadFile(dir.file("capture.PRO")), kExample);
  ExpectFields(ReadIndexFile(dir.file("capture.NDX")),
               {{0, 19, 1, 4}, {21, 19, 5, 8}, {42, 19, 9, 12}, {63, 19, 13, 15}});

  Progress progress;
  const Built b = Build(dir, kExample, progress);
  ASSERT_EQ(b.outcome, JobOutcome::Done);
  ExpectFields(b.ndx, {{1, 19, 1, 3}, {21, 21, 4, 7}, {42, 21, 9, 12}, {63, 19, 12, 15}});
  EXPECT_EQ(b.result.records, 4);
  EXPECT_EQ(b.result.lines, 15);
  EXPECT_EQ(progress.title, "Indexing Record File");
  EXPECT_EQ(progress.fileSize, "82");
  EXPECT_EQ(progress.lastLine, 15);
  EXPECT_EQ(progress.lastRecord, 4);
  EXPECT_EQ(progress.finished, 1);
  EXPECT_EQ(progress.closed, 1);
}

TEST(BuildIndexNumbers, TextAheadOfTheFirstLabelIsShownWithRecordOne) {
  TempDir dir;
  Progress progress;
  const std::string pro = CrLf({"HEAD", "", "Record - 1", "", "AAA", "", "Record - 2", "", "B", "", "Record - 3", "C"});
  const Built b = Build(dir, pro, progress);
  ASSERT_EQ(b.outcome, JobOutcome::Done);
  ExpectFields(b.ndx, {{1, 27, 3, 5}, {29, 19, 7, 10}, {48, static_cast<int32_t>(pro.size()) - 48, 10, 12}});
  RecordReader reader(dir.file("r.PRO"));
  EXPECT_EQ(reader.readDisplay(1, b.ndx[0]).bytes, pro.substr(0, 27));
}

// The builder as it has always worked: a table of running byte totals, a table of
// label lines, and a walk of both. The numbers of BuildIndex must be the walk's.
std::vector<Fields> ThreePassModel(const std::string& pro, bool& refused) {
  std::vector<int32_t> totals, entries;
  int32_t total = 0, line = 0;
  for (std::size_t at = 0; at < pro.size();) {
    std::size_t end = pro.find("\r\n", at);
    const std::size_t len = (end == std::string::npos ? pro.size() : end) - at;
    ++line;
    if (pro.compare(at, 9, "Record - ") == 0) entries.push_back(entries.empty() ? line : line - 1);
    total += static_cast<int32_t>(len) + 2;
    totals.push_back(total);
    at = end == std::string::npos ? pro.size() : end + 2;
  }
  refused = entries.size() < 2;
  if (refused) return {};
  std::size_t walked = 0;
  auto walk = [&](int32_t target) {
    do {
      if (walked > totals.size()) throw ZvError(62, "past end");
      ++walked;
    } while (static_cast<int32_t>(walked) != target);
    return totals[walked - 1];
  };
  std::vector<Fields> recs;
  walk(entries[0]);
  recs.push_back({1, 0, entries[0], entries[1] - 1});
  int32_t remembered = 1, prev = 0, cur = entries[0], next = entries[1];
  for (std::size_t read = 2;; ++read) {
    prev = cur;
    cur = next;
    const bool atEnd = read == entries.size();
    next = atEnd ? 0 : entries[read];
    const std::size_t k = recs.size() + 1;
    const int32_t offset = walk(cur);
    recs[k - 2].byteLen = offset - remembered - (k - 1 == 1 ? 1 : 0);
    if (!atEnd) {
      recs.push_back({offset, 0, cur, next - 1});
    } else {
      recs[k - 2].startLine = prev + 1;
      recs[k - 2].endLine = cur;
      recs.push_back({offset, static_cast<int32_t>(pro.size()) - offset, cur, line});
      break;
    }
    remembered = offset;
  }
  return recs;
}

TEST(BuildIndexNumbers, AgreeWithTheThreePassBuilderOnVariedFiles) {
  std::mt19937 random(20240611);
  TempDir dir;
  for (int round = 0; round < 60; ++round) {
    std::vector<std::string> lines;
    if (random() % 4 == 0) lines.push_back("text ahead");
    const int records = 2 + static_cast<int>(random() % 9);
    for (int k = 1; k <= records; ++k) {
      lines.push_back("Record - " + std::to_string(k));
      // From label 2 on, a label may stand right under the one before (a record of its
      // label alone, as the STN filter writes a REFERENCE record followed by another).
      const int body = (k == 1 ? 1 : 0) + static_cast<int>(random() % 5);
      for (int i = 0; i < body; ++i) {
        switch (random() % 4) {
          case 0: lines.emplace_back(""); break;
          case 1: lines.emplace_back(" Record - 9"); break;  // a leading blank: no label
          case 2: lines.emplace_back("record - 9"); break;   // small letters: no label
          default: lines.emplace_back(std::string(random() % 70, 'x')); break;
        }
      }
    }
    std::string pro = CrLf(lines);
    if (round % 5 == 0) pro.resize(pro.size() - 2);  // a last line without its CR LF
    bool refused = false;
    const std::vector<Fields> want = ThreePassModel(pro, refused);
    ASSERT_FALSE(refused);
    Progress progress;
    const Built b = Build(dir, pro, progress);
    SCOPED_TRACE("round " + std::to_string(round));
    ASSERT_EQ(b.outcome, JobOutcome::Done);
    ExpectFields(b.ndx, want);
  }
}

TEST(BuildIndexRefusal, FewerThanTwoLabelsIsNoRecordFileAndTheIndexGoes) {
  const std::string cases[] = {
      "",
      CrLf({"Record - 1", "", "ONLY"}),
      CrLf({"Record - 1", "", "A", "", "record - 2", "", " Record - 3", "", "Record -4"}),
  };
  for (const std::string& pro : cases) {
    TempDir dir;
    WriteFile(dir.file("r.NDX"), std::string(277, 'x'));  // the filter's index of the same file
    Progress progress;
    const Built b = Build(dir, pro, progress);
    EXPECT_EQ(b.outcome, JobOutcome::Refused) << pro;
    ASSERT_TRUE(b.result.message.has_value());
    EXPECT_EQ(b.result.message->title, "File Format Error");
    EXPECT_EQ(b.result.message->text, "This does not appear to be a filtered record file.");
    EXPECT_FALSE(FileExists(dir.file("r.NDX")));
    EXPECT_EQ(progress.closed, 1);
    EXPECT_EQ(progress.finished, 0);
  }
}

TEST(BuildIndexNumbers, LabelsUnderEachOtherFromLabelTwoOnIndexAsTheWalkGivesThem) {
  TempDir dir;
  Progress progress;
  const std::string pro =
      CrLf({"Record - 1", "", "AAA", "Record - 2", "Record - 3", "Record - 4", "", "D", "Record - 5", "Record - 6"});
  const Built b = Build(dir, pro, progress);
  ASSERT_EQ(b.outcome, JobOutcome::Done);
  // Records 2 and 3 are their label lines alone; record 5 too, and the last one its
  // label and the empty line past the end.
  ExpectFields(b.ndx, {{1, 17, 1, 2}, {19, 12, 3, 3}, {31, 12, 4, 4}, {43, 17, 5, 7}, {60, 12, 9, 9}, {72, 12, 9, 10}});
}

TEST(BuildIndexFailure, LabelsOneAndTwoOnAdjacentLinesFailAsAReadPastTheEndAndSayWhere) {
  struct Case {
    std::string pro;
    std::string reason;
  } cases[] = {
      {CrLf({"Record - 1", "Record - 2", "", "B", "", "Record - 3", "", "C"}),
       "Labels 1 and 2 stand on adjacent lines (lines 1 and 2): the index cannot be built from this file."},
      {CrLf({"HEAD", "", "Record - 1", "Record - 2"}),
       "Labels 1 and 2 stand on adjacent lines (lines 3 and 4): the index cannot be built from this file."},
  };
  for (const Case& c : cases) {
    TempDir dir;
    WriteFile(dir.file("r.NDX"), std::string(277, 'x'));  // an older index goes, as on every failure
    Progress progress;
    const Built b = Build(dir, c.pro, progress);
    const JobResult& r = b.result;
    const JobState& job = *b.job;
    EXPECT_EQ(r.outcome, JobOutcome::Failed) << c.pro;
    ASSERT_TRUE(r.error.has_value());
    EXPECT_EQ(r.error->number(), 62);
    EXPECT_EQ(r.error->reason(), c.reason);
    EXPECT_EQ(job.gsErrNumber, " 62");
    EXPECT_EQ(job.gsErrText, "Input past end of file");
    EXPECT_FALSE(FileExists(dir.file("r.NDX")));
    EXPECT_EQ(progress.closed, 1);
  }
}

TEST(BuildIndexCancel, TheInterruptIsSeenAfterTheLineInHandAndNoIndexStays) {
  TempDir dir;
  WriteFile(dir.file("r.NDX"), std::string(277 * 2, 'x'));
  JobState* running = nullptr;
  Progress progress;
  progress.onLine = [&](int32_t n) {
    if (n == 6) running->giInterrupt = 1;
  };
  WriteFile(dir.file("r.PRO"), kExample);
  JobState job;
  running = &job;
  job.gsProFile = dir.file("r.PRO");
  job.gsIndexFile = dir.file("r.NDX");
  EXPECT_EQ(BuildIndex(job, progress).outcome, JobOutcome::Interrupted);
  EXPECT_EQ(job.giInterrupt, 0);  // the frame's: no later job starts interrupted
  EXPECT_EQ(progress.lastLine, 6);
  EXPECT_EQ(progress.lastRecord, 2);
  EXPECT_FALSE(FileExists(dir.file("r.NDX")));
  EXPECT_EQ(progress.closed, 1);
  EXPECT_EQ(test::ReadFile(dir.file("r.PRO")), kExample);
}

}  // namespace
}  // namespace zv
