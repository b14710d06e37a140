// Write Kept Records and Write Order, byte for byte, and what a failure leaves behind.
#include "records/record_writers.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/error.h"
#include "records/build_index.h"
#include "records/fake_sift_view.h"
#include "records/record_file.h"
#include "records/sifter.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

const std::string kExample = CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC",
                                   "", "Record - 4", "", "DDD"});

// The example .PRO and the index BuildIndex makes of it, in `dir`.
void IndexedExample(const TempDir& dir) {
  WriteFile(dir.file("r.PRO"), kExample);
  JobState job;
  job.gsProFile = dir.file("r.PRO");
  job.gsIndexFile = dir.file("r.NDX");
  ASSERT_EQ(BuildIndex(job, NoProgress()).outcome, JobOutcome::Done);
}

JobResult WriteKept(const TempDir& dir, JobProgress& progress, int32_t count = 4) {
  JobState job;
  return WriteKeptRecords(job, progress, {dir.file("r.PRO"), dir.file("r.NDX"), count});
}

JobResult WriteOrderOf(const TempDir& dir, JobProgress& progress, const std::vector<int32_t>& order, int32_t count) {
  JobState job;
  return WriteOrder(job, progress, {dir.file("r.PRO"), dir.file("r.NDX"), dir.file("r.ORD"), order, count});
}

int32_t ErrorOf(const JobResult& r) { return r.error ? r.error->number() : 0; }

void Mark(const TempDir& dir, int32_t k, const std::string& keepFile) {
  IndexRec r = GetIndexRec(dir.file("r.NDX"), k);
  r.keepFlag = 1;
  r.setKeepFile(keepFile);
  PutIndexRec(dir.file("r.NDX"), k, r);
}

TEST(WriteKeptRecords, EachRecordGoesToItsOwnFileInAscendingOrderAppended) {
  TempDir dir;
  IndexedExample(dir);
  const std::string a = dir.file("a.kep"), b = dir.file("b.kep");
  WriteFile(a, "OLD\r\n");
  Mark(dir, 4, a);
  Mark(dir, 3, b);
  Mark(dir, 1, "  " + a);  // blanks around the name are trimmed
  test::FakeWriting writing;
  EXPECT_EQ(WriteKept(dir, writing).records, 3);
  // Record 1 is one line short under BuildIndex and gets one more CR LF; the last
  // record spans one line past the end of the file.
  EXPECT_EQ(ReadFile(a), "OLD\r\n" + CrLf({"Record - 1", "", "AAA", "", "Record - 4", "", "DDD", ""}));
  EXPECT_EQ(ReadFile(b), CrLf({"Record - 3", "", "CCC", ""}));
  EXPECT_EQ(writing.captions, std::vector<std::string>{"Writing Kept Records"});
  EXPECT_EQ(writing.records, (std::vector<int32_t>{1, 2, 3}));
  EXPECT_EQ(writing.files, (std::vector<std::string>{a, b, a}));
  EXPECT_EQ(writing.ended, 1);
  for (const IndexRec& r : ReadIndexFile(dir.file("r.NDX"))) EXPECT_EQ(r.keepFlag, 0);
  EXPECT_EQ(ReadFile(dir.file("r.PRO")), kExample);

  // A second run finds no marks and writes nothing.
  const JobResult second = WriteKept(dir, writing);
  EXPECT_EQ(second.outcome, JobOutcome::Done);
  EXPECT_EQ(second.records, 0);
  EXPECT_EQ(ReadFile(b), CrLf({"Record - 3", "", "CCC", ""}));
}

TEST(WriteKeptRecords, UnderAFiltersIndexRecordOneHasOneMoreEmptyLine) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kExample);
  IndexFile f;
  f.open(dir.file("r.NDX"));
  const int32_t rows[4][4] = {{0, 19, 1, 4}, {21, 19, 5, 8}, {42, 19, 9, 12}, {63, 19, 13, 15}};
  for (int32_t k = 1; k <= 4; ++k) {
    IndexRec r;
    r.recNum = k;
    r.startByte = rows[k - 1][0];
    r.byteLen = rows[k - 1][1];
    r.startLine = rows[k - 1][2];
    r.endLine = rows[k - 1][3];
    f.put(k, r);
  }
  f.close();
  Mark(dir, 1, dir.file("k.kep"));
  Mark(dir, 4, dir.file("k.kep"));
  test::FakeWriting writing;
  EXPECT_EQ(WriteKept(dir, writing).records, 2);
  EXPECT_EQ(ReadFile(dir.file("k.kep")), CrLf({"Record - 1", "", "AAA", "", "", "Record - 4", "", "DDD"}));
}

TEST(WriteKeptRecords, AFailedRunPutsEveryKeepFileBackAsItWas) {
  TempDir dir;
  IndexedExample(dir);
  WriteFile(dir.file("old.kep"), "OLD\r\n");
  std::filesystem::create_directory(dir.file("folder.kep"));
  Mark(dir, 1, dir.file("old.kep"));
  Mark(dir, 2, dir.file("new.kep"));
  Mark(dir, 3, dir.file("folder.kep"));
  test::FakeWriting writing;
  EXPECT_EQ(ErrorOf(WriteKept(dir, writing)), 75);
  EXPECT_EQ(ReadFile(dir.file("old.kep")), "OLD\r\n");
  EXPECT_FALSE(FileExists(dir.file("new.kep")));
  EXPECT_EQ(writing.ended, 1);

  // Nor is the record file or its index ever a keep file.
  for (const char* own : {"r.PRO", "r.NDX"}) {
    Mark(dir, 3, dir.file(own));
    EXPECT_EQ(ErrorOf(WriteKept(dir, writing)), 75) << own;
  }
  EXPECT_EQ(ReadFile(dir.file("r.PRO")), kExample);
  EXPECT_EQ(RecordCount(dir.file("r.NDX")), 4);
}

TEST(WriteKeptRecords, MoreThan32767RecordsOverflowAtTheOneThatPassesAndNothingStays) {
  TempDir dir;
  std::string pro;
  for (int k = 1; k <= 32768; ++k) pro += "Record - " + std::to_string(k) + "\r\n\r\n";
  WriteFile(dir.file("r.PRO"), pro);
  JobState job;
  job.gsProFile = dir.file("r.PRO");
  job.gsIndexFile = dir.file("r.NDX");
  ASSERT_EQ(BuildIndex(job, NoProgress()).outcome, JobOutcome::Done);
  const std::string keep = dir.file("all.kep");
  ForEachIndexRec(dir.file("r.NDX"), [&](int32_t, IndexRec& r) {
    r.keepFlag = 1;
    r.setKeepFile(keep);
    return true;
  });
  test::FakeWriting writing;
  const JobResult kept = WriteKept(dir, writing, 32768);
  EXPECT_EQ(ErrorOf(kept), 6);
  EXPECT_EQ(ReasonOf(kept), "Limit reached: the records one Write Kept Records writes can be at most 32767; passed at "
                            "record 32768.");
  EXPECT_FALSE(FileExists(keep));
  EXPECT_EQ(writing.records.back(), 32767);
}

// An index whose last record claims lines up to 2147483647: the copy would be about
// 4 GB of empty lines. Both writers stop at the end of the .PRO before writing a line
// of it, say that the index does not match, and leave their outputs as they were.
TEST(RecordWriters, ACorruptEndLineStopsAtTheEndOfTheProAndSaysTheIndexDoesNotMatch) {
  TempDir dir;
  IndexedExample(dir);
  IndexRec last = GetIndexRec(dir.file("r.NDX"), 4);
  last.endLine = 2147483647;
  PutIndexRec(dir.file("r.NDX"), 4, last);
  const std::string reason = "The index does not match its record file: record 4 runs past the end of r.PRO.";

  WriteFile(dir.file("k.kep"), "OLD\r\n");
  Mark(dir, 2, dir.file("k.kep"));
  Mark(dir, 4, dir.file("k.kep"));
  test::FakeWriting writing;
  const JobResult kept = WriteKept(dir, writing);
  EXPECT_EQ(ErrorOf(kept), 62);
  EXPECT_EQ(ReasonOf(kept), reason);
  EXPECT_EQ(ReadFile(dir.file("k.kep")), "OLD\r\n");

  WriteFile(dir.file("r.ORD"), "an older order");
  const JobResult ordered = WriteOrderOf(dir, writing, IdentityOrder(4), 4);
  EXPECT_EQ(ErrorOf(ordered), 62);  // said before its line count could overflow
  EXPECT_EQ(ReasonOf(ordered), reason);
  EXPECT_FALSE(FileExists(dir.file("r.ORD")));
  EXPECT_LE(writing.lines, 4);
}

TEST(WriteOrder, WritesEveryRecordInTheOrderAndReplacesTheOldFile) {
  TempDir dir;
  IndexedExample(dir);
  WriteFile(dir.file("r.ORD"), "an older order, longer than the new one ............................................");
  std::vector<int32_t> order = IdentityOrder(4);
  MoveInOrder(order, 4, 3, 1);  // 3 1 2 4
  MoveInOrder(order, 4, 4, 3);  // 3 1 4 2
  ASSERT_EQ(order, (std::vector<int32_t>{0, 3, 1, 4, 2, 0}));
  test::FakeWriting writing;
  EXPECT_EQ(WriteOrderOf(dir, writing, order, 4).records, 4);
  EXPECT_EQ(ReadFile(dir.file("r.ORD")), CrLf({"Record - 3", "", "CCC", "",       // record 3
                                                "Record - 1", "", "AAA", "",       // record 1 and its extra CR LF
                                                "Record - 4", "", "DDD", "",       // one line past the file's end
                                                "Record - 2", "", "BBB", "", ""}));  // and the closing CR LF
  EXPECT_EQ(writing.captions, std::vector<std::string>{"Writing Reordered Records"});
  EXPECT_EQ(writing.records, (std::vector<int32_t>{3, 1, 4, 2}));
  EXPECT_EQ(writing.files, std::vector<std::string>{dir.file("r.ORD")});
  EXPECT_EQ(writing.ended, 1);
}

TEST(WriteOrder, ARecordOf32768LinesOverflowsAndNoOrderFileStays) {
  TempDir dir;
  std::string pro = kExample;
  for (int i = 0; i < 33000; ++i) pro += "x\r\n";
  WriteFile(dir.file("r.PRO"), pro);
  IndexFile f;
  f.open(dir.file("r.NDX"));
  IndexRec r;
  r.recNum = 1;
  r.startLine = 1;
  r.endLine = 32767;  // the most a 16-bit count takes
  f.put(1, r);
  r.recNum = 2;
  r.startLine = 5;
  r.endLine = 32772;
  f.put(2, r);
  f.close();
  test::FakeWriting writing;
  EXPECT_TRUE(WriteOrderOf(dir, writing, IdentityOrder(1), 1).done());
  EXPECT_EQ(writing.lines, 32767);
  const JobResult overflow = WriteOrderOf(dir, writing, IdentityOrder(2), 2);
  EXPECT_EQ(ErrorOf(overflow), 6);
  EXPECT_EQ(ReasonOf(overflow),
            "Limit reached: the lines of a record that Write Order copies can be at most 32767. Record 2 has 32768.");
  EXPECT_FALSE(FileExists(dir.file("r.ORD")));
}

// The interrupt is looked at after every line written: what was written goes back.
TEST(RecordWritersInterrupt, TheKeepFilesAndTheOrderFileAreAsTheyWereBefore) {
  TempDir dir;
  IndexedExample(dir);
  WriteFile(dir.file("old.kep"), "OLD\r\n");
  Mark(dir, 1, dir.file("old.kep"));
  Mark(dir, 2, dir.file("new.kep"));
  Mark(dir, 3, dir.file("old.kep"));
  JobState job;
  test::FakeWriting writing;
  int32_t seen = 0;
  writing.onLine = [&](int32_t) {
    if (++seen == 6) job.giInterrupt = 1;  // in record 2, written to new.kep
  };
  const JobResult kept = WriteKeptRecords(job, writing, {dir.file("r.PRO"), dir.file("r.NDX"), 4});
  EXPECT_EQ(kept.outcome, JobOutcome::Interrupted);
  EXPECT_EQ(ReadFile(dir.file("old.kep")), "OLD\r\n");
  EXPECT_FALSE(FileExists(dir.file("new.kep")));
  EXPECT_EQ(GetIndexRec(dir.file("r.NDX"), 3).keepFlag, 1);  // the marks stay for the caller
  EXPECT_EQ(writing.ended, 1);
  EXPECT_EQ(job.giInterrupt, 0);

  WriteFile(dir.file("r.ORD"), "an older order");
  seen = 0;
  const JobResult ordered = WriteOrder(job, writing, {dir.file("r.PRO"), dir.file("r.NDX"), dir.file("r.ORD"), IdentityOrder(4), 4});
  EXPECT_EQ(ordered.outcome, JobOutcome::Interrupted);
  EXPECT_FALSE(FileExists(dir.file("r.ORD")));
  EXPECT_EQ(writing.records.back(), 2);  // it stopped in record 2
}

}  // namespace
}  // namespace zv
