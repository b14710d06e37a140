// RecordFileWriter: the label text, and writers that share one index record buffer.
#include "core/record_file_writer.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/output_files.h"
#include "support/test_support.h"

namespace zv {
namespace {

TEST(RecordLabel, TheNumberBehindTheTextAtEveryWidth) {
  const std::pair<int32_t, const char*> cases[] = {
      {1, "Record - 1"},
      {9, "Record - 9"},
      {10, "Record - 10"},
      {174781, "Record - 174781"},
      {0, "Record - 0"},
      {std::numeric_limits<int32_t>::max(), "Record - 2147483647"},
      {-7, "Record - -7"},
      {std::numeric_limits<int32_t>::min(), "Record - -2147483648"},
  };
  for (const auto& [number, label] : cases) EXPECT_EQ(RecordLabel(number), label) << number;
}

// Writer b keeps its index record in a's buffer: its first record, never closed,
// keeps the end line and length of a's record closed just before, as the separate
// files of one job always have.
TEST(RecordFileWriterSharing, ARecordOpenedTakesTheEndOfTheOneTheSharedBufferLastHeld) {
  test::TempDir dir;
  OutputFiles outputs;
  IndexRec shared;
  RecordFileWriter a, b;
  a.open(outputs, dir.file("a.PRO"), dir.file("a.NDX"));
  b.open(outputs, dir.file("b.PRO"), dir.file("b.NDX"));
  a.shareIndexRec(shared);
  b.shareIndexRec(shared);

  a.writeText("Record - 1", 1, true);
  a.writeText("first of a", 1, false);
  a.writeText("more of a", 1, false);
  a.writeText("Record - 2", 2, true);  // closes a's record 1 in the shared buffer
  b.writeText("Record - 1", 1, true);
  b.writeText("only of b", 1, false);
  a.FinishIndex(2);
  a.close();
  b.close();
  outputs.commit();

  const auto ra = ReadIndexFile(dir.file("a.NDX"));
  const auto rb = ReadIndexFile(dir.file("b.NDX"));
  ASSERT_EQ(ra.size(), 2u);
  ASSERT_EQ(rb.size(), 1u);
  EXPECT_EQ(ra[0].endLine, 3);
  EXPECT_EQ(ra[0].byteLen, 10 + 2 + 10 + 2 + 9);
  EXPECT_EQ(rb[0].startLine, 1);
  EXPECT_EQ(rb[0].startByte, 0);
  EXPECT_EQ(rb[0].endLine, ra[0].endLine);
  EXPECT_EQ(rb[0].byteLen, ra[0].byteLen);
  // A writer of its own buffer would have left them 0.
  EXPECT_NE(rb[0].endLine, 0);
}

}  // namespace
}  // namespace zv
