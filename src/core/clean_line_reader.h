// The lines of a capture as a filter takes them: split, then cleaned.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/byte_scan.h"

namespace zv {

// Splits bytes into lines exactly as LineReader does (CR LF, a lone LF or a lone CR
// ends a line; a last line without an end is a line), and hands each line out
// cleaned: the high bit of every byte cleared, then every control character turned
// into character 0 (LowAscii, then RemCtrl with character 0).
//
// The line ends of each block read are marked in one pass over the block, sixty-four
// bytes at a time, so that taking a line is finding the next marked bit and copying
// the line out cleaned; no line is looked at twice for its end.
class CleanLineReader {
 public:
  // Reads the file `path`; throws ZvError if it cannot be opened.
  explicit CleanLineReader(const std::string& path);
  // Reads a copy of `memory` (for tests and in-memory text).
  explicit CleanLineReader(std::string_view memory);
  ~CleanLineReader();
  CleanLineReader(const CleanLineReader&) = delete;
  CleanLineReader& operator=(const CleanLineReader&) = delete;

  // The next line, cleaned, into `line` (its old text replaced); false at the end of
  // input. Read errors throw ZvError.
  bool readLine(std::string& line) {
    // The usual case, inline: the line's end and the byte behind it are in the block.
    const std::size_t word = pos_ >> 6;
    const uint64_t bits = ends_[word] & (~uint64_t{0} << (pos_ & 63));
    if (bits != 0) {
      const std::size_t end = (word << 6) + static_cast<std::size_t>(__builtin_ctzll(bits));
      if (end + 1 < filled_) {
        take(line, end);
        return true;
      }
    }
    return readLineSlow(line);
  }

 private:
  // The line from pos_ to `end` into `line`; pos_ moves past its line end.
  void take(std::string& line, std::size_t end) {
    const char* b = buf_.data();
    CleanLineInto(line, std::string_view(b + pos_, end - pos_));
    pos_ = end + 1 + (b[end] == '\r' && end + 1 < filled_ && b[end + 1] == '\n' ? 1 : 0);
  }
  bool readLineSlow(std::string& line);
  // The unread bytes moved to the front and more read behind them; eof_ at the end.
  void refill();
  // Marks the line ends of buf_[0, filled_) and clears the words behind them.
  void mark();

  int fd_ = -1;
  std::string path_;
  std::vector<char> buf_;       // the block; its size is the most it holds
  std::vector<uint64_t> ends_;  // a bit for each line end in buf_[0, filled_)
  std::size_t pos_ = 0;         // the start of the next line
  std::size_t filled_ = 0;      // bytes in buf_
  bool eof_ = false;            // nothing more to read behind buf_
};

}  // namespace zv
