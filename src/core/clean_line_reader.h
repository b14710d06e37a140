// The lines of a capture as a filter takes them: split, then cleaned, shown in place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace zv {

// Splits bytes into lines exactly as LineReader does (CR LF, a lone LF or a lone CR
// ends a line; a last line without an end is a line) and shows each line cleaned: the
// high bit of every byte cleared, then every control character turned into character
// 0 (LowAscii, then RemCtrl with character 0).
//
// Each block read is cleaned in place and its line ends listed in one pass, sixteen
// bytes at a time, so that taking a line is reading the next entry of the list: no
// line is copied, and none is looked at again for its end. Two blocks take turns, so
// that the line before the current one stays where it is when the next block is read.
class CleanLineReader {
 public:
  // Reads the file `path`; throws ZvError if it cannot be opened.
  explicit CleanLineReader(const std::string& path);
  // Reads a copy of `memory` (for tests and in-memory text).
  explicit CleanLineReader(std::string_view memory);
  ~CleanLineReader();
  CleanLineReader(const CleanLineReader&) = delete;
  CleanLineReader& operator=(const CleanLineReader&) = delete;

  // What previous() shows before the first line is read (copied): empty by default.
  void setPrevious(std::string_view before);
  // The bytes (up to four; no CR, LF or NUL) whose presence holdsMarked() tells, noted as
  // each block is read, and with `capitals` the capital letters A to Z as well; set
  // before the first line is read.
  void setMarked(std::string_view bytes, bool capitals = false);

  // Moves to the next line; false at the end of input. Read errors throw ZvError.
  bool next() {
    if (k_ < count_) [[likely]] {
      take();
      return true;
    }
    return nextSlow();
  }
  // The line next() moved to, cleaned; valid until the next call of next().
  std::string_view line() const noexcept { return line_; }
  // The line before it (after the first next(), setPrevious's text); valid as long.
  std::string_view previous() const noexcept { return prev_; }
  // Whether line() holds any of the marked bytes; true when none were set.
  bool holdsMarked() {
    if (marked_.empty() || !inBlock_) return holdsMarkedSlow();
    const auto start = skipMarks();
    return m_ < markCount_ && marks_[m_] < start + line_.size();
  }
  // The places of the marked bytes in line(), in order: [first, last) as offsets into
  // the block, `base` being the line's own. False when they were not listed (no marked
  // bytes set, or a line kept aside from the blocks): the caller then looks for itself.
  bool markPlaces(const std::size_t*& first, const std::size_t*& last, std::size_t& base) {
    if (marked_.empty() || !inBlock_) return false;
    base = skipMarks();
    std::size_t end = m_;
    while (end < markCount_ && marks_[end] < base + line_.size()) ++end;
    first = marks_.get() + m_;
    last = marks_.get() + end;
    return true;
  }

 private:
  // Passes over the marks of the lines before line(); returns where line() starts.
  std::size_t skipMarks() {
    const auto start = static_cast<std::size_t>(line_.data() - block_.get());
    while (m_ < markCount_ && marks_[m_] < start) ++m_;
    return start;
  }
  // The next listed line: its end is the entry, and it is followed by a CR LF pair's
  // LF or by the next line.
  void take() {
    const char* b = block_.get();
    const std::size_t end = ends_[k_++];
    prev_ = line_;
    line_ = std::string_view(b + pos_, end - pos_);
    inBlock_ = true;
    pos_ = end + 1 + (b[end] == '\r' && b[end + 1] == '\n' ? 1 : 0);
  }
  bool nextSlow();
  bool holdsMarkedSlow() const;
  // The line begun and not ended moves to the front of the other block, and more is
  // read behind it; eof_ at the end of input.
  void refill();
  // Cleans block_[from, filled_) in place and lists its line ends and marks.
  void scan(std::size_t from);
  // Makes the block hold at least `size` bytes (and its padding), keeping none of them.
  static void reserve(std::unique_ptr<char[]>& block, std::size_t& capacity, std::size_t size);

  int fd_ = -1;
  std::string path_;
  std::unique_ptr<char[]> block_, other_;  // the block read, and the one before it
  std::size_t capacity_ = 0, otherCapacity_ = 0;
  std::unique_ptr<std::size_t[]> ends_;  // line ends in block_, in order
  std::size_t endsCapacity_ = 0;
  std::unique_ptr<std::size_t[]> marks_;  // where block_ holds a marked byte, in order
  std::size_t markCount_ = 0;
  std::size_t m_ = 0;       // the first mark not yet passed
  std::string marked_;
  bool capitals_ = false;  // capitals are marked too
  bool inBlock_ = false;    // line_ lies in block_, whose marks are listed
  std::size_t count_ = 0;   // entries of ends_
  std::size_t k_ = 0;       // the next entry to take
  std::size_t pos_ = 0;     // the start of the next line
  std::size_t filled_ = 0;  // bytes in block_
  bool eof_ = false;        // nothing more to read behind block_
  bool unscanned_ = false;  // a text given in memory, not yet scanned
  bool skipLf_ = false;     // the last block ended in a CR: an LF at the start of the next belongs to it
  std::string_view line_, prev_;
  std::string before_;  // setPrevious's text
  std::string kept_;    // a line whose block was read over (behind a line longer than a block)
};

}  // namespace zv
