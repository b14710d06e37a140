// Reading through the index: record counts, display blocks, line reads, bookmarks, marks.
#include "records/record_file.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

int32_t ErrorOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const ZvError& e) {
    return e.number();
  }
  return 0;
}

IndexRec Rec(int32_t k, int32_t startByte, int32_t byteLen, int32_t startLine = 1, int32_t endLine = 1) {
  IndexRec r;
  r.recNum = k;
  r.startByte = startByte;
  r.byteLen = byteLen;
  r.startLine = startLine;
  r.endLine = endLine;
  return r;
}

TEST(RecordCount, IsTheIndexLengthOver277Truncated) {
  TempDir dir;
  WriteFile(dir.file("a.NDX"), std::string(277 * 3 + 100, '\0'));
  WriteFile(dir.file("b.NDX"), std::string(276, '\0'));
  EXPECT_EQ(RecordCount(dir.file("a.NDX")), 3);
  EXPECT_EQ(RecordCount(dir.file("b.NDX")), 0);
  EXPECT_EQ(ErrorOf([&] { (void)RecordCount(dir.file("missing.NDX")); }), 53);
}

TEST(RecordReaderDisplay, TakesByteLenBelow32760AndExactly32760FromThereOn) {
  TempDir dir;
  std::string pro(40000, 'x');
  for (std::size_t i = 0; i < pro.size(); i += 97) pro[i] = static_cast<char>('a' + i % 26);
  WriteFile(dir.file("r.PRO"), pro);
  RecordReader reader(dir.file("r.PRO"));
  struct Case {
    int32_t k, startByte, byteLen;
    std::size_t from, size;
    bool partial;
  } cases[] = {
      {2, 100, 32759, 100, 32759, false},
      {2, 100, 32760, 100, 32760, true},  // exactly the limit counts as partial
      {2, 5, 39000, 5, 32760, true},
      {1, 1, 10, 0, 10, false},  // record 1 is read from the first byte, whatever startByte says
  };
  for (const Case& c : cases) {
    const DisplayBlock b = reader.readDisplay(c.k, Rec(c.k, c.startByte, c.byteLen));
    EXPECT_EQ(b.partial, c.partial) << c.byteLen;
    EXPECT_EQ(b.bytes, pro.substr(c.from, c.size)) << c.byteLen;
  }
  EXPECT_EQ(ErrorOf([&] { (void)reader.readDisplay(2, Rec(2, 39990, 20)); }), 62);
}

TEST(RecordReaderLines, SplitsAtEveryLineEndAndGivesOneEmptyLinePastTheEnd) {
  TempDir dir;
  const std::string longLine(5000, 'L');
  const std::string head = "one\r\ntwo\nthree\rfour\r\n" + longLine + "\r\n";
  // A line whose CR ends the reader's first 64 KB block, its LF beginning the next.
  const std::string straddle(65535 - head.size(), 'S');
  WriteFile(dir.file("r.PRO"), head + straddle + "\r\nafter\r\nlast");
  RecordReader reader(dir.file("r.PRO"));
  std::vector<std::string> got;
  reader.readLines(0, 9, [&](int64_t n, const std::string& line) {
    EXPECT_EQ(n, static_cast<int64_t>(got.size()) + 1);
    got.push_back(line);
  });
  EXPECT_EQ(got, (std::vector<std::string>{"one", "two", "three", "four", longLine, straddle, "after", "last", ""}));
  std::string line;
  reader.seek(5);
  reader.readLine(line);
  EXPECT_EQ(line, "two");
}

// A record's copy stops at the end of the .PRO: the one empty line past it that the
// last record of a built index takes is given; more, or a start beyond the end, is an
// index that does not match its record file, said before any line is copied.
TEST(RecordReaderExtents, StopAtTheEndOfTheFileAndSayTheIndexDoesNotMatch) {
  TempDir dir;
  const std::string pro = CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB"});  // 7 lines, 40 bytes
  WriteFile(dir.file("r.PRO"), pro);
  RecordReader reader(dir.file("r.PRO"));
  struct Case {
    const char* name;
    IndexRec rec;
    int64_t lines;  // the lines given before the end, or before the refusal
    bool refused;
  } cases[] = {
      {"a filter's last record, to the last line", Rec(2, 21, 19, 5, 7), 3, false},
      {"a built index's last record, one line past", Rec(2, 21, 19, 4, 7), 4, false},
      {"two lines past the end", Rec(2, 21, 19, 4, 8), 3, true},
      {"the end line of a corrupt index", Rec(2, 21, 19, 5, 2147483647), 0, true},
      {"a start at the end of the file", Rec(2, 40, 1, 1, 1), 0, true},
      {"a start beyond it", Rec(2, 9000, 1, 1, 1), 0, true},
      {"record 1 from the top, whatever its start byte", Rec(1, 9000, 19, 1, 4), 4, false},
      {"no lines at all", Rec(2, 9000, 0, 5, 4), 0, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    int64_t lines = 0;
    try {
      reader.readRecord(c.rec.recNum, c.rec, [&](int64_t, const std::string&) { ++lines; });
      EXPECT_FALSE(c.refused);
      EXPECT_EQ(lines, c.lines);
    } catch (const ZvError& e) {
      EXPECT_TRUE(c.refused);
      EXPECT_EQ(lines, c.lines);
      EXPECT_EQ(e.number(), 62);
      EXPECT_EQ(e.reason(), "The index does not match its record file: record " + std::to_string(c.rec.recNum) +
                                " runs past the end of r.PRO.");
    }
  }
  // Cut short after indexing, the lines run out before the bytes do: the copy stops
  // at the end and says so.
  WriteFile(dir.file("cut.PRO"), CrLf({"Record - 1", "", "AAA", "BBBBBBBBBBBBBBBBBBBB"}));
  RecordReader cut(dir.file("cut.PRO"));
  int64_t lines = 0;
  EXPECT_EQ(ErrorOf([&] { cut.readRecord(3, Rec(3, 0, 1, 1, 10), [&](int64_t, const std::string&) { ++lines; }); }), 62);
  EXPECT_EQ(lines, 4);  // the file's four lines, and nothing past them
  EXPECT_EQ(reader.readDisplay(2, Rec(2, 21, 19)).bytes, pro.substr(21));
  EXPECT_EQ(ErrorOf([&] { (void)reader.readDisplay(2, Rec(2, 21, 20)); }), 62);
}

TEST(Bookmark, IsOneNumberLineAndOnlyWholeNumbersReadBack) {
  TempDir dir;
  const std::string wrk = dir.file("r.WRK");
  WriteBookmark(wrk, 37);
  EXPECT_EQ(ReadFile(wrk), "37\r\n");
  EXPECT_EQ(ReadBookmark(wrk), 37);
  WriteFile(wrk, "");
  EXPECT_EQ(ReadBookmark(wrk), std::nullopt);
  WriteFile(wrk, " 12 \r\nignored\r\n");
  EXPECT_EQ(ReadBookmark(wrk), 12);
  WriteFile(wrk, "twelve\r\n");
  EXPECT_EQ(ErrorOf([&] { (void)ReadBookmark(wrk); }), 13);
  WriteFile(wrk, "99999999999\r\n");
  EXPECT_EQ(ErrorOf([&] { (void)ReadBookmark(wrk); }), 6);
}

TEST(ClearAllMarks, BlanksEveryMarkAcrossBlocksAndChangesNothingElse) {
  TempDir dir;
  const std::string ndx = dir.file("r.NDX");
  {
    IndexFile f;
    f.open(ndx);
    for (int32_t k = 1; k <= 2500; ++k) {
      IndexRec r = Rec(k, k * 10, 9, k, k);
      if (k == 1 || k == 1024 || k == 1025 || k == 2500) {
        r.keepFlag = 1;
        r.setKeepFile("keep" + std::to_string(k) + ".kep");
      }
      f.put(k, r);
    }
    f.close();
  }
  ClearAllMarks(ndx);
  const auto recs = ReadIndexFile(ndx);
  ASSERT_EQ(recs.size(), 2500u);
  for (int32_t k = 1; k <= 2500; ++k) {
    const IndexRec& r = recs[static_cast<std::size_t>(k - 1)];
    ASSERT_EQ(r.keepFlag, 0) << k;
    ASSERT_EQ(r.keepFileName(), "") << k;
    ASSERT_EQ(r.startByte, k * 10) << k;
    ASSERT_EQ(r.endLine, k) << k;
  }
}

}  // namespace
}  // namespace zv
