// The mapped file: its bytes, its refusals, and a file cut short while it is mapped.
#include "viewer/mapped_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/error.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::TempDir;
using test::WriteFile;

TEST(MappedFile, MapsTheBytesAndRefusesWhatIsNoFile) {
  TempDir dir;
  WriteFile(dir.file("a.txt"), "one\r\ntwo\r\n");
  WriteFile(dir.file("empty.txt"), "");
  EXPECT_EQ(MappedFile(dir.file("a.txt")).bytes(), "one\r\ntwo\r\n");
  const MappedFile empty(dir.file("empty.txt"));
  EXPECT_TRUE(empty.isOpen());
  EXPECT_EQ(empty.size(), 0);
  const std::pair<std::string, int32_t> refused[] = {{dir.file("none.txt"), err::kFileNotFound},
                                                     {dir.path().string(), err::kPathFileAccess}};
  for (const auto& [path, number] : refused) {
    try {
      const MappedFile m(path);
      ADD_FAILURE() << "mapped " << path;
    } catch (const ZvError& e) {
      EXPECT_EQ(e.number(), number) << path;
    }
  }
}

TEST(MappedFile, AFileCutShortWhileMappedReadsBlankPastItsNewEnd) {
  TempDir dir;
  const std::string path = dir.file("growing.log");
  WriteFile(path, std::string(3 * 4096 + 100, 'x'));
  MappedFile file(path);
  std::filesystem::resize_file(path, 10);
  const std::string_view bytes = file.bytes();
  EXPECT_EQ(bytes[5], 'x');
  // Past the new end the page is gone; the program reads zeros instead of dying.
  EXPECT_EQ(bytes[2 * 4096 + 7], '\0');
  EXPECT_EQ(bytes[3 * 4096 + 99], '\0');
  file.close();
  EXPECT_EQ(file.size(), 0);
}

}  // namespace
}  // namespace zv
