// Records read in one pass: by labels, through both kinds of index, across the buffer.
#include "records/record_scanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/job_state.h"
#include "core/index_rec.h"
#include "filters/ovid.h"
#include "records/build_index.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::TempDir;
using test::WriteFile;

// Each record as "label|line|line...".
std::vector<std::string> Scan(RecordScanner& scanner) {
  std::vector<std::string> out;
  RecordText r;
  while (scanner.next(r)) {
    std::string s(r.label);
    for (std::string_view line : r.lines) s += "|" + std::string(line);
    out.push_back(s);
  }
  return out;
}

std::vector<std::string> ByLabels(const std::string& bytes) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), bytes);
  RecordScanner scanner(dir.file("r.PRO"));
  return Scan(scanner);
}

const std::string kPro = CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC", "",
                               "Record - 4", "", "DDD"});

TEST(RecordScanner, ByLabelsEachRecordRunsToTheNextLabelWhateverTheLineEnds) {
  EXPECT_EQ(ByLabels(kPro), (std::vector<std::string>{"Record - 1||AAA|", "Record - 2||BBB|", "Record - 3||CCC|",
                                                      "Record - 4||DDD"}));
  // Text ahead of the first label goes with record 1.
  EXPECT_EQ(ByLabels("head\nRecord - 1\rA\r\nB\nRecord -  2\r\rC"),
            (std::vector<std::string>{"Record - 1|head|A|B", "Record -  2||C"}));
  // Only a label in its first column counts; a file with none is one record without one.
  EXPECT_EQ(ByLabels(" Record - 1\r\nrecord - 2\r\n"), (std::vector<std::string>{"| Record - 1|record - 2"}));
  EXPECT_TRUE(ByLabels("").empty());
}

TEST(RecordScanner, RecordsLargerThanTheBufferAndLinesAcrossItsEdges) {
  // Records of a few MB, and a CR LF split by a read boundary somewhere in between.
  std::vector<std::string> lines, expected;
  for (int r = 1; r <= 3; ++r) {
    lines.push_back("Record - " + std::to_string(r));
    std::string want = lines.back();
    for (int i = 0; i < 40000; ++i) {
      lines.push_back(std::string(static_cast<std::size_t>(i % 97), 'x') + std::to_string(i));
      want += "|" + lines.back();
    }
    expected.push_back(want);
  }
  TempDir dir;
  WriteFile(dir.file("big.PRO"), CrLf(lines));
  RecordScanner scanner(dir.file("big.PRO"));
  EXPECT_EQ(Scan(scanner), expected);
  EXPECT_EQ(scanner.linesRead(), static_cast<int32_t>(lines.size()));
}

// The records of a file read in blocks of about `size` bytes, as "label|line|line...",
// and the lines found.
std::pair<std::vector<std::string>, int64_t> ByBlocks(const std::string& bytes, std::size_t size) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), bytes);
  LabelBlockReader reader(dir.file("r.PRO"));
  std::vector<std::string> out;
  int64_t lines = 0, blockBytes = 0;
  std::string block;
  while (reader.next(block, size)) {
    blockBytes += static_cast<int64_t>(block.size());
    BlockRecords records(block);
    RecordText r;
    while (records.next(r)) {
      std::string s(r.label);
      for (std::string_view line : r.lines) s += "|" + std::string(line);
      out.push_back(s);
    }
    lines += records.lines();
  }
  EXPECT_EQ(blockBytes, static_cast<int64_t>(bytes.size()));
  EXPECT_EQ(reader.bytesDone(), blockBytes);
  return {out, lines};
}

TEST(LabelBlockReader, BlocksOfEverySizeGiveTheScannersRecordsAndLines) {
  std::string big;
  for (int r = 1; r <= 40; ++r) big += CrLf({"Record - " + std::to_string(r), "", std::string(r * 7, 'y'), "text Record - x"});
  const std::string cases[] = {
      kPro,
      "head\nRecord - 1\rA\r\nB\nRecord -  2\r\rC",      // line ends of every kind, text ahead
      " Record - 1\r\nrecord - 2\r\n",                    // no label at all
      "Record - 1",                                         // one label, no line end
      "Record - 1\rRecord - 2\r\rRecord - 3\n\nRecord - 4\r",  // lone CRs before labels
      "xRecord - 1\r\nRecord - 2\r\nA",                    // a label only in its first column
      "lead\r\nmore lead\r\n\r\nRecord - 7\r\nA\r\nRecord - 8\r\n",
      big,
  };
  for (const std::string& bytes : cases) {
    TempDir dir;
    WriteFile(dir.file("r.PRO"), bytes);
    RecordScanner scanner(dir.file("r.PRO"));
    const std::vector<std::string> expected = Scan(scanner);
    // Blocks smaller than a record, cut near every byte, and one block for the file.
    for (std::size_t size : {1u, 5u, 16u, 17u, 23u, 64u, 100u, 1000u, 1u << 20}) {
      const auto [records, lines] = ByBlocks(bytes, size);
      EXPECT_EQ(records, expected) << size << ": " << bytes.substr(0, 40);
      EXPECT_EQ(lines, scanner.linesRead()) << size << ": " << bytes.substr(0, 40);
    }
  }
  EXPECT_TRUE(ByBlocks("", 16).first.empty());
}

TEST(RecordScanner, ThroughTheIndexOfBuildIndex) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  JobState job;
  job.gsProFile = dir.file("r.PRO");
  job.gsIndexFile = dir.file("r.NDX");
  ASSERT_EQ(BuildIndex(job, NoProgress()).outcome, JobOutcome::Done);
  RecordScanner scanner(dir.file("r.PRO"), dir.file("r.NDX"));
  EXPECT_EQ(scanner.indexRecords(), 4);
  // The builder's records start a line early and the last reaches a line past the
  // end: the empty line before a label goes, and so does the line that is not there.
  EXPECT_EQ(Scan(scanner), (std::vector<std::string>{"Record - 1||AAA", "Record - 2||BBB", "Record - 3||CCC|",
                                                     "Record - 4||DDD"}));
}

TEST(RecordScanner, ThroughAnOvidIndexWhoseBytesFallBehind) {
  // The Ovid filter counts its body lines 9 bytes short; the line numbers hold.
  TempDir dir;
  WriteFile(dir.file("s.log"), CrLf({"<1>", "Title", "         First record's title line", "", "<2>", "Title",
                                     "         Second record's title line", "Database: x"}));
  JobState job;
  ASSERT_TRUE(FilterOvid(job, NoProgress(), FilterInput{dir.file("s.log"), dir.path().string()}).done());
  RecordScanner scanner(dir.file("s.PRO"), dir.file("s.NDX"));
  EXPECT_EQ(Scan(scanner), (std::vector<std::string>{"Record - 1||Title|First record's title line|",
                                                     "Record - 2||Title|Second record's title line"}));
}

TEST(RecordScanner, AMissingFileIsTheSystemsError) {
  TempDir dir;
  try {
    RecordScanner scanner(dir.file("gone.PRO"));
    FAIL() << "no error";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kFileNotFound);
  }
}

}  // namespace
}  // namespace zv
