// The .NDX record: byte layout, and random access with the pending tail.
#include "core/index_rec.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "support/test_support.h"

namespace zv {
namespace {

IndexRec sample(int32_t k) {
  IndexRec r;
  r.recNum = k;
  r.startByte = k * 1000;
  r.byteLen = k * 10;
  r.startLine = k * 3;
  r.endLine = k * 3 + 2;
  return r;
}

TEST(IndexRecLayout, FieldsAreLittleEndianAtTheirOffsets) {
  IndexRec r;
  r.recNum = 0x01020304;
  r.startByte = -2;
  r.byteLen = 0x7fffffff;
  r.startLine = 5;
  r.endLine = 6;
  r.keepFlag = 1;
  r.setKeepFile("KEEP1.TXT");
  const auto b = EncodeIndexRec(r);
  ASSERT_EQ(b.size(), 277u);
  EXPECT_EQ(b[0], 0x04);
  EXPECT_EQ(b[3], 0x01);
  EXPECT_EQ(b[4], 0xfe);
  EXPECT_EQ(b[7], 0xff);
  EXPECT_EQ(b[11], 0x7f);
  EXPECT_EQ(b[12], 5);
  EXPECT_EQ(b[16], 6);
  EXPECT_EQ(b[20], 1);
  EXPECT_EQ(b[21], 0);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&b[22]), 9), "KEEP1.TXT");
  EXPECT_EQ(b[31], ' ');
  EXPECT_EQ(b[276], ' ');
  const IndexRec back = DecodeIndexRec(b.data());
  EXPECT_EQ(back.startByte, -2);
  EXPECT_EQ(back.keepFileName(), "KEEP1.TXT");
  EXPECT_EQ(back.keepFlag, 1);
}

TEST(IndexFileAccess, RecordsWrittenAndRewrittenReadBackFromMemoryAndDisk) {
  test::TempDir dir;
  const std::string path = dir.file("a.NDX");
  {
    IndexFile f;
    f.open(path);
    // The filter's pattern: write k, read k - 1 back, rewrite it; past the pending limit.
    for (int32_t k = 1; k <= 3000; ++k) {
      f.put(k, sample(k));
      if (k > 1) {
        IndexRec prev = f.get(k - 1);
        EXPECT_EQ(prev.recNum, k - 1);
        prev.byteLen = -k;
        f.put(k - 1, prev);
      }
    }
    EXPECT_EQ(f.count(), 3000);
    f.close();
  }
  EXPECT_EQ(std::filesystem::file_size(path), 3000u * 277u);
  const auto all = ReadIndexFile(path);
  ASSERT_EQ(all.size(), 3000u);
  for (int32_t k = 1; k <= 3000; ++k) {
    EXPECT_EQ(all[k - 1].recNum, k);
    EXPECT_EQ(all[k - 1].startByte, k * 1000);
    EXPECT_EQ(all[k - 1].byteLen, k < 3000 ? -(k + 1) : 30000);
  }
}

TEST(IndexFileAccess, ALeftoverTailIsIgnoredAndReadingPastTheEndIsError62) {
  test::TempDir dir;
  const std::string path = dir.file("b.NDX");
  const auto bytes = EncodeIndexRec(sample(1));
  test::WriteFile(path, std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()) + "junk");
  IndexFile f;
  f.openRead(path);
  EXPECT_EQ(f.count(), 1);
  EXPECT_EQ(f.get(1).startByte, 1000);
  try {
    f.get(2);
    FAIL();
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kPastEnd);
  }
}

TEST(IndexFileAccess, AnIndexOpenedAgainKeepsItsRecordsForRewriting) {
  test::TempDir dir;
  const std::string path = dir.file("c.NDX");
  {
    IndexFile f;
    f.open(path);
    for (int32_t k = 1; k <= 5; ++k) f.put(k, sample(k));
    f.close();
  }
  IndexFile f;
  f.open(path);
  EXPECT_EQ(f.count(), 5);
  IndexRec r = f.get(3);
  r.keepFlag = 1;
  r.setKeepFile("K.TXT");
  f.put(3, r);
  f.close();
  const auto all = ReadIndexFile(path);
  ASSERT_EQ(all.size(), 5u);
  EXPECT_EQ(all[2].keepFlag, 1);
  EXPECT_EQ(all[2].keepFileName(), "K.TXT");
  EXPECT_EQ(all[3].keepFlag, 0);
}

}  // namespace
}  // namespace zv
