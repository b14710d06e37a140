// Tests of the file primitives: tests by name, LineCount against LineReader.
#include "core/files.h"

#include <gtest/gtest.h>

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
      {"a\r\nb\r\n", 2}, {"a\nb\rc\r\nd", 4},
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


}  // namespace
}  // namespace zv
