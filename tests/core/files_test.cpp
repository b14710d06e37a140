// Tests of the file primitives: tests by name, LineCount against LineReader, handles.
#include "core/files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "core/error.h"
#include "core/line_reader.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::ReadFile;
using test::TempDir;
using test::WriteFile;

int32_t readerLines(const std::string& path) {
  LineReader reader(path);
  std::string line;
  int32_t n = 0;
  while (reader.readLine(line)) ++n;
  return n;
}

template <class F>
int32_t errorOf(F&& f) {
  try {
    f();
  } catch (const ZvError& e) {
    return e.number();
  }
  return 0;
}

TEST(FilesByName, ExistAndFileSize) {
  TempDir dir;
  const std::string file = dir.file("a.log");
  WriteFile(file, std::string(70000, 'x'));
  EXPECT_EQ(Exist(file), -1);
  EXPECT_EQ(FileSize(file), 70000);
  EXPECT_EQ(Exist(dir.file("missing.log")), 0);
  EXPECT_EQ(FileSize(dir.file("missing.log")), 0);
  EXPECT_EQ(Exist(dir.path().string()), 0);  // a directory is no file
  EXPECT_EQ(Exist(""), 0);
}

TEST(LineCountTest, CountsLinesLikeLineReader) {
  TempDir dir;
  const std::string path = dir.file("c.log");
  const struct {
    const char* bytes;
    int32_t lines;
  } cases[] = {
      {"", 0},          {"a", 1},          {"\r\n", 1},       {"\n", 1},
      {"\r", 1},        {"\n\r", 2},       {"\r\r\n", 2},     {"a\r\nb", 2},
      {"a\r\nb\r\n", 2}, {"a\nb\rc\r\nd", 4}, {"\r\n\r\n\n\r", 4}, {"a\r\n\r", 2},
  };
  for (const auto& c : cases) {
    WriteFile(path, c.bytes);
    EXPECT_EQ(LineCount(path), c.lines) << testing::PrintToString(std::string(c.bytes));
    EXPECT_EQ(readerLines(path), c.lines) << testing::PrintToString(std::string(c.bytes));
  }
}

TEST(LineCountTest, CrLfSplitAcrossReadChunks) {
  // LineReader reads 256 KiB at a time, LineCount 1 MiB: put a CR LF, a lone CR and a
  // lone LF astride each boundary.
  TempDir dir;
  const std::string path = dir.file("big.log");
  for (std::size_t boundary : {std::size_t{1} << 18, std::size_t{1} << 20}) {
    for (const char* end : {"\r\n", "\r", "\n", "\r\r", "\n\n"}) {
      std::string bytes(boundary - 1, 'x');
      bytes += end;
      bytes += "tail";
      WriteFile(path, bytes);
      EXPECT_EQ(LineCount(path), readerLines(path)) << boundary << testing::PrintToString(std::string(end));
    }
  }
}

TEST(LineCountTest, TellsAfterEachBlockCounted) {
  // One call a megabyte begun, and the count the same as without the calls.
  TempDir dir;
  const std::string path = dir.file("big.log");
  const std::size_t block = std::size_t{1} << 20;
  for (const std::size_t size : {std::size_t{0}, std::size_t{10}, block, block + 1, 3 * block - 5}) {
    std::string bytes(size, 'x');
    for (std::size_t i = 79; i < size; i += 80) bytes[i] = '\n';
    WriteFile(path, bytes);
    int calls = 0;
    EXPECT_EQ(LineCount(path, [&] { ++calls; }), LineCount(path)) << size;
    EXPECT_EQ(calls, static_cast<int>((size + block - 1) / block)) << size;
  }
}

TEST(FileHandles, SeekGetPutAreByteExact) {
  TempDir dir;
  const std::string path = dir.file("r.pro");
  FCreate(path);
  const int32_t h = CSFOpen(path);
  FPut(h, "Record - 1\r\nline\r\n");
  FSeek(h, FileSize(path));  // append as the callers do
  FPut(h, "Record - 2\r\n");
  FSeek(h, 12);
  std::string buf(4, ' ');
  FGet(h, buf);
  EXPECT_EQ(buf, "line");
  FSeek(h, 0);
  FPut(h, "R");  // overwrite in place, nothing else moves
  FClose(h);
  EXPECT_EQ(ReadFile(path), "Record - 1\r\nline\r\nRecord - 2\r\n");

  const int32_t h2 = CSFOpen(path);
  FSeek(h2, 26);
  std::string past(10, ' ');
  EXPECT_EQ(errorOf([&] { FGet(h2, past); }), err::kPastEnd);
  FClose(h2);
}

TEST(FileHandles, FailuresThrowWithThePath) {
  TempDir dir;
  const std::string missing = dir.file("missing.pro");
  try {
    CSFOpen(missing);
    FAIL() << "opened a missing file";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), err::kFileNotFound);
    EXPECT_EQ(e.detail(), missing);
  }
  EXPECT_NE(errorOf([&] { FCreate(dir.file("no/such/dir/x")); }), 0);
  EXPECT_EQ(errorOf([&] { CSFOpen(dir.path().string()); }), err::kPathFileAccess);
  EXPECT_EQ(errorOf([] { FClose(999); }), err::kBadFileNumber);
  EXPECT_EQ(errorOf([] { FSeek(0, 0); }), err::kBadFileNumber);

  const std::string file = dir.file("f");
  FCreate(file);
  const int32_t h = CSFOpen(file);
  FClose(h);
  EXPECT_EQ(errorOf([&] { FPut(h, "x"); }), err::kBadFileNumber);
}

TEST(FileHandles, ReadOnlyFileOpensForReadingOnly) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may write any file";
  TempDir dir;
  const std::string path = dir.file("ro.pro");
  WriteFile(path, "Record - 1\r\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  const int32_t h = CSFOpen(path);
  std::string buf(6, ' ');
  FGet(h, buf);
  EXPECT_EQ(buf, "Record");
  EXPECT_EQ(errorOf([&] { FPut(h, "x"); }), err::kPermissionDenied);
  FClose(h);
  EXPECT_EQ(ReadFile(path), "Record - 1\r\n");
}

TEST(FileHandles, FLInputReadsEachLineEnd) {
  TempDir dir;
  const std::string path = dir.file("l.log");
  WriteFile(path, "one\r\ntwo\nthree\rfour\r\n\r\nlast");
  const int32_t h = CSFOpen(path);
  for (const char* want : {"one", "two", "three", "four", "", "last"}) EXPECT_EQ(FLInput(h), want);
  EXPECT_EQ(errorOf([&] { FLInput(h); }), err::kPastEnd);
  // The position stays just behind the line read, so a byte read follows on.
  FSeek(h, 5);
  EXPECT_EQ(FLInput(h), "two");
  std::string buf(5, ' ');
  FGet(h, buf);
  EXPECT_EQ(buf, "three");
  FClose(h);
}

TEST(FileHandles, FLInputLongLinesAndCrLfAcrossItsReadAhead) {
  TempDir dir;
  const std::string path = dir.file("long.log");
  // A CR as the last byte of FLInput's 4096-byte read, its LF the first of the next.
  const std::string first(4095, 'a');
  const std::string second(9000, 'b');
  WriteFile(path, first + "\r\n" + second + "\r\nc\r");
  const int32_t h = CSFOpen(path);
  EXPECT_EQ(FLInput(h), first);
  EXPECT_EQ(FLInput(h), second);
  EXPECT_EQ(FLInput(h), "c");
  EXPECT_EQ(errorOf([&] { FLInput(h); }), err::kPastEnd);
  FClose(h);
}

}  // namespace
}  // namespace zv
