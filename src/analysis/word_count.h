// Diction's count without size limits: the words of a text counted in a hashed table
// that keeps each distinct word once, and the list of what was counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "analysis/word_scan.h"

namespace zv {

// Zeroed memory straight from the system; a large block asks for huge pages, so that a
// table touched at random costs few page faults and few misses of the address cache.
class PageBlock {
 public:
  PageBlock() = default;
  explicit PageBlock(std::size_t bytes);
  ~PageBlock();
  PageBlock(PageBlock&& other) noexcept { swap(other); }
  PageBlock& operator=(PageBlock&& other) noexcept {
    swap(other);
    return *this;
  }
  void* data() const { return data_; }
  std::size_t size() const { return size_; }

 private:
  void swap(PageBlock& other) noexcept {
    std::swap(map_, other.map_);
    std::swap(mapSize_, other.mapSize_);
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
  }
  void* map_ = nullptr;
  std::size_t mapSize_ = 0;
  void* data_ = nullptr;
  std::size_t size_ = 0;
};

// Counts words as Diction does: a word is stored cut to 35 characters; a word of more
// than 35 is never found again (each occurrence is an element of its own, count 1),
// but its stored 35 characters are found by a later word of exactly those; words in
// the omit list are not counted.
class WordCounter {
 public:
  static constexpr std::size_t kWordLen = 35;

  // `omit`: the omit list's lines, compared as they stand with the lowered words.
  explicit WordCounter(const std::vector<std::string>& omit);
  ~WordCounter();
  WordCounter(const WordCounter&) = delete;
  WordCounter& operator=(const WordCounter&) = delete;

  // Counts the words of `n` bytes of whole lines as Diction's loop takes them, line by
  // line: "--" made a blank, a line holding "Record - " passed over, the rest cut at
  // the delimiters, CR and LF, and lowered; at most `most` lines (a CR LF pair ends
  // one, and a last line without its end counts). Returns the lines counted. `text`
  // must have 64 readable bytes after the lines; it is not changed.
  std::size_t countLines(const char* text, std::size_t n, std::size_t most);

  // The elements so far, as the table in order of first sight would hold them.
  int64_t unique() const { return unique_; }

  // The list's lines as the .DIC has them, handed to `out` in pieces: the elements by
  // falling count and, within a count, by word in byte order; every group but the last,
  // and the last only when its count is 1 and a group of a higher count came before
  // it. A count over 32 bits is the overflow error. Ends the count: the table's memory
  // is used to order the list.
  void writeList(const std::function<void(std::string_view)>& out);

 private:
  // A slot of the table: a word of at most kInline bytes is held in the slot itself,
  // its bytes 0-7 in `a`, 8-10 in the low three bytes of `b` and its length in the high
  // one; a longer word is an element of `specials_`, numbered in `a`, with kSpecial and
  // 24 bits of its hash in `b`. `b` is 0 in a free slot.
  struct Slot {
    uint64_t a;
    uint32_t b;
    uint32_t count;  // of a word held in the slot; kOmitted for a word of the omit list
  };
  struct Special {
    uint64_t hash = 0;
    uint64_t at = 0;  // the word's bytes in bytes_
    uint32_t shortCount = 0;  // words of at most 35 characters equal to it
    uint8_t len = 0;
    uint8_t flags = 0;
    uint64_t longCount = 0;  // words longer, whose first 35 it is
  };
  // A word cut, waiting for its turn while its slot is fetched.
  struct Pending {
    uint64_t a;
    uint64_t h;  // of a longer word: its length, `a` its place
    uint32_t b;  // 0 for a longer word
  };
  static constexpr std::size_t kInline = 11;
  static constexpr uint32_t kSpecial = 0xFF000000u;
  static constexpr uint32_t kMaxCount = 0x7FFFFFFF;  // counts are 32-bit signed numbers
  static constexpr uint32_t kOmitted = 0xFFFFFFFFu;
  static constexpr uint8_t kOmittedFlag = 1, kSeen = 2, kFirstLong = 4;
  static constexpr int kBatch = 256;

  // The top bits place the word.
  static uint64_t hashInline(uint64_t a, uint32_t b) { return a * 0xD6E8FEB86659FD93ull + uint64_t{b} * 0x9E3779B97F4A7C15ull; }
  static uint64_t hashBytes(const char* word, std::size_t len);

  void countInline(uint64_t a, uint32_t b, uint64_t h);
  uint64_t specialOf(const char* word, std::size_t len, uint64_t h);
  void countSpecial(const char* word, std::size_t len);
  void countLong(const char* word, std::size_t len);
  // One word, lowered, of any length but 0.
  void countWord(const char* word, std::size_t len);
  void takeSlot();
  void grow();

  void countScanned(const char* text, std::size_t n);
  void markLines(const char* text, std::size_t n);
  void cutWords(std::size_t from, std::size_t to);
  void settle();
  void countExactLine(std::string_view line);

  PageBlock table_;
  Slot* slots_ = nullptr;
  std::size_t mask_ = 0;
  int shift_ = 0;  // a hash's slot is its top bits: h >> shift_
  std::size_t used_ = 0, growAt_ = 0;
  std::vector<Special> specials_;
  std::string bytes_;
  struct ViewHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  // Omit entries of more than 35 characters, found by the whole of a longer word.
  std::unordered_set<std::string, ViewHash, std::equal_to<>> longOmit_;
  int64_t unique_ = 0;

  TextScan scan_;
  std::vector<std::pair<std::size_t, std::size_t>> exactLines_;
  Pending batch_[kBatch];
  int pending_ = 0;
  std::string line_;
};

}  // namespace zv
