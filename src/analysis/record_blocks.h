// Records of a .PRO as blocks of whole lines, taken from large sequential reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_out.h"

namespace zv {

// Where a line of a block lies in it, its end left out.
struct LineSpan {
  uint32_t start = 0;
  uint32_t length = 0;
};

// A record's lines as they stand in the file, line ends included, with what the tools
// need to know of them without looking again.
struct RecordBlock {
  std::string_view bytes;   // from the record's offset through its last line's end
  int32_t lines = 0;        // lines asked for
  int32_t fileLines = 0;    // lines found in the file; the others lie past its end and read as empty
  bool crlf = true;         // every line of `bytes` ends with CR LF
  std::size_t longest = 0;  // the longest line, without its end
  std::size_t text = 0;     // the bytes of the lines without their ends
  std::vector<LineSpan> spans;  // the lines found in the file

  // Line n, from 1; a line past the end of the file is empty.
  std::string_view line(int32_t n) const {
    if (n > fileLines) return {};
    const LineSpan& s = spans[static_cast<std::size_t>(n - 1)];
    return bytes.substr(s.start, s.length);
  }

  // Whether the record is written as it stands: every line ends with CR LF, none lies
  // past the end of the file.
  bool asItStands() const { return crlf && fileLines == lines; }

  // The bytes the record takes when each of its lines is written with CR LF.
  int64_t writtenBytes() const { return static_cast<int64_t>(text) + 2 * static_cast<int64_t>(lines); }
};

// Calls `onLine(n, line)` for the lines of `block` from n = 1 as a line reader gives
// them (CR LF, LF or CR ends a line), then an empty line for each line past the end.
template <class OnLine>
void ForEachBlockLine(const RecordBlock& block, OnLine&& onLine) {
  for (int32_t n = 1; n <= block.lines; ++n) onLine(n, block.line(n));
}

// The longest line whose plain search cannot overflow the 16-bit word table.
inline constexpr std::size_t kLongestPlainLine = 32767;

// Writes the lines of `block` to `out`, each with CR LF, as a line-by-line copy would.
inline void WriteBlockLines(TextOut& out, const RecordBlock& block) {
  if (block.crlf) {
    out.raw(block.bytes);
    for (int32_t n = block.fileLines; n < block.lines; ++n) out.blank();
    return;
  }
  ForEachBlockLine(block, [&](int32_t, std::string_view line) { out.line(line); });
}

// The same, appended to `out`.
inline void AppendBlockLines(std::string& out, const RecordBlock& block) {
  if (block.crlf) {
    out.append(block.bytes);
    for (int32_t n = block.fileLines; n < block.lines; ++n) out.append("\r\n");
    return;
  }
  ForEachBlockLine(block, [&](int32_t, std::string_view line) {
    out.append(line);
    out.append("\r\n");
  });
}

// Reads records by offset and line count, as RecordReader's seek and readLine give
// them, from one buffer filled by large reads: records asked for in file order cost
// no read of their own. A record larger than the limit is refused, and the caller
// reads it line by line, so that memory never grows with the file.
class RecordBlockReader {
 public:
  static constexpr std::size_t kFirstBuffer = std::size_t{1} << 20;
  static constexpr std::size_t kLimit = std::size_t{16} << 20;

  // `firstBuffer` and `limit` are for tests of the buffer's edges.
  explicit RecordBlockReader(const std::string& proFile, std::size_t firstBuffer = kFirstBuffer,
                             std::size_t limit = kLimit);
  ~RecordBlockReader();
  RecordBlockReader(const RecordBlockReader&) = delete;
  RecordBlockReader& operator=(const RecordBlockReader&) = delete;

  // The `lines` lines from byte `offset` into `block`, valid until the next call. False
  // when they take more than the limit. A negative offset is error 5, as for
  // RecordReader; read errors throw.
  bool read(int64_t offset, int32_t lines, RecordBlock& block);
  // The `count` bytes from `offset`, valid until the next call: for a record whose
  // extent an earlier read found. False when they take more than the limit or the
  // file ends before them.
  bool readRaw(int64_t offset, std::size_t count, std::string_view& bytes);

  int64_t fileSize() const { return size_; }

 private:
  // Makes the buffer begin at `offset` and holds as much of the file after it as fits.
  // False when the buffer is at its limit already.
  bool refill(int64_t offset, bool grow);

  int fd_ = -1;
  std::string path_;
  int64_t size_ = 0;
  std::size_t limit_;
  static constexpr std::size_t kSlack = 64;  // read past the bytes held by the vector search
  std::vector<char> buf_;
  int64_t pos_ = 0;     // file offset of buf_[0]
  std::size_t len_ = 0; // bytes held
  bool eof_ = false;    // the file ends where the bytes held end
};

}  // namespace zv
