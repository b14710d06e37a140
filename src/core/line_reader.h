// Reading a capture line by line, from a file or from memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zv {

// Splits bytes into lines. A line ends at CR LF, at a lone LF or at a lone CR, so
// captures saved on any system read alike; the line end is not part of the line. A
// last line without a line end is a line; an empty input has no lines. Lines may be
// of any length. No byte is changed: cleaning is the caller's business.
class LineReader {
 public:
  // Reads the file `path`; throws ZvError if it cannot be opened.
  explicit LineReader(const std::string& path);
  // Reads `memory`, which must outlive the reader (for tests and in-memory text).
  explicit LineReader(std::string_view memory);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // The next line into `line`; false at the end of input. Read errors throw ZvError.
  bool readLine(std::string& line);
  // The same without a copy: `line` shows the line inside the reader's buffer (or, for
  // a line that a read splits, inside a buffer of its own), valid until the next call.
  bool readLine(std::string_view& line);

 private:
  bool refill();

  int fd_ = -1;
  std::string path_;
  std::string buf_;
  std::string carry_;       // a line that a read split, for the view form
  std::string_view data_;   // unread bytes
  bool skipLf_ = false;     // the last line ended in CR: a following LF belongs to it
};

}  // namespace zv
