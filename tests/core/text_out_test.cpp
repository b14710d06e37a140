// Tests of TextOut: lines and raw pieces of every size come out in order; a full disk
// is the system's error whether a piece is buffered or goes straight through.
#include "core/text_out.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/error.h"
#include "support/test_support.h"

namespace zv {
namespace {

constexpr std::size_t kBuffer = std::size_t{1} << 16;

// A piece of `n` bytes that tells where in it each byte stands.
std::string piece(std::size_t n, char tag) {
  std::string s(n, tag);
  for (std::size_t i = 0; i < n; i += 97) s[i] = static_cast<char>('0' + (i / 97) % 10);
  return s;
}

TEST(TextOut, LinesAndPiecesOfEverySizeKeepTheirOrder) {
  struct Step {
    bool raw;
    std::size_t size;
  };
  const std::vector<std::vector<Step>> runs = {
      {{true, 10}, {true, kBuffer}, {false, 5}},                      // a buffer's worth after bytes held
      {{true, kBuffer - 1}, {true, 1}, {true, 2}},                    // exactly full, then more
      {{false, 3}, {true, 3 * kBuffer + 7}, {true, 4}, {false, 0}},   // far past the buffer
      {{true, kBuffer + 1}},                                          // alone, into an empty buffer
      {{false, kBuffer}, {true, 2 * kBuffer}, {false, kBuffer - 2}},  // huge lines beside it
  };
  for (std::size_t r = 0; r < runs.size(); ++r) {
    test::TempDir dir;
    const std::string path = dir.file("out.txt");
    std::string expected;
    TextOut out(path);
    char tag = 'a';
    for (const Step& step : runs[r]) {
      const std::string bytes = piece(step.size, tag++);
      if (step.raw) {
        out.raw(bytes);
        expected += bytes;
      } else {
        out.line(bytes);
        expected += bytes + "\r\n";
      }
    }
    out.close();
    EXPECT_EQ(test::ReadFile(path), expected) << "run " << r;
  }
}

TEST(TextOut, AFullDiskIsTheDiskFullErrorForHeldAndPassedPieces) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
  for (const std::size_t size : {std::size_t{100}, kBuffer, 5 * kBuffer}) {
    int32_t number = 0;
    try {
      TextOut out("/dev/full");
      out.raw(std::string(size, 'x'));
      out.close();
    } catch (const ZvError& e) {
      number = e.number();
    }
    EXPECT_EQ(number, err::kDiskFull) << size;
  }
}

}  // namespace
}  // namespace zv
