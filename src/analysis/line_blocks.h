// A text file read in large blocks of whole lines, for the tools that take its words
// in bulk.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

// Reads a text file in large blocks of whole lines, split as LineReader splits them
// (CR LF, LF or CR ends a line). A line longer than the buffer grows it.
class LineBlocks {
 public:
  static constexpr std::size_t kBlock = std::size_t{4} << 20;
  static constexpr std::size_t kSlack = 64;

  // `block` is the buffer's first size; small ones are for tests of its edges.
  explicit LineBlocks(const std::string& path, std::size_t block = kBlock);
  ~LineBlocks();
  LineBlocks(const LineBlocks&) = delete;
  LineBlocks& operator=(const LineBlocks&) = delete;

  // The next block of whole lines, with kSlack bytes to spare after it, which the
  // caller may change in place; empty at the end of the file. A last line without its
  // end is a line.
  std::string_view next();
  // The block's bytes, to be changed in place.
  char* data() { return buf_.data(); }

 private:
  std::size_t capacity() const { return buf_.size() - kSlack; }

  int fd_ = -1;
  std::string path_;
  std::vector<char> buf_;
  std::size_t held_ = 0, used_ = 0;
  bool eof_ = false;
};

// The lines of `text` (whole lines; a last one without its end counts). When there
// are more than `most`, the first `most` and `cut` where they end, their line ends
// included; else `cut` is the size of the text.
std::size_t LinesIn(std::string_view text, std::size_t most, std::size_t& cut);

}  // namespace zv
