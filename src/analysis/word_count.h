// Diction's count without size limits: the words of a text counted in a hashed table
// that keeps each distinct word once, and the list of what was counted.
#pragma once

#include <array>
#include <memory>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

// Which bytes of a text are in a set, 64 bytes at a time, as the bits of a number.
class ByteSetMasks {
 public:
  explicit ByteSetMasks(const std::array<bool, 256>& in);
  // Bit i is set when p[i] is in the set, for i from 0 to 63. Reads all 64 bytes.
  uint64_t mask64(const char* p) const;

 private:
  std::array<bool, 256> in_{};
  // The set as two 16-entry tables, by the low and the high half of a byte, whose
  // AND is not zero exactly for the bytes in the set; possible when the high halves
  // fall into at most eight classes of the same low halves.
  bool nibbles_ = false;
  alignas(16) unsigned char low_[16] = {};
  alignas(16) unsigned char high_[16] = {};
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

  // Counts the words of lines that need nothing but cutting at the delimiters (the
  // caller sends lines holding "--" or "Record - " one by one to countWord): CR and LF
  // end words like the delimiters. Lowers the text in place. `text` must have 64
  // readable bytes after its end.
  void countText(char* text, std::size_t n);
  // Counts one word: lowered, not empty.
  void countWord(std::string_view word);

  // The elements so far, as the table in order of first sight would hold them.
  int64_t unique() const { return unique_; }

  // The list: each element's count and word, by falling count and, for each count,
  // by word in byte order. A count over 32 bits is the overflow error.
  struct Element {
    uint64_t key0 = 0, key1 = 0;  // the word's first 16 bytes, for ordering
    uint32_t count = 0;
    uint32_t entry = 0;  // with kLookUp when the key does not hold the whole word
  };
  std::vector<Element> ordered() const;
  // Frees the hashed index once the counting is over (nothing can be counted after).
  void dropIndex();
  // The element's word, in `scratch` when it is there in whole.
  std::string_view wordOf(const Element& e, char (&scratch)[16]) const;

 private:
  struct Entry {
    uint64_t w0 = 0, w1 = 0;  // the first 16 bytes, zeros after the word
    uint32_t shortCount = 0;  // words of at most 35 characters equal to it
    uint32_t longCount = 0;   // words longer, whose first 35 it is
    uint32_t tail = 0;        // where bytes 17 to 35 lie in tails_
    uint8_t len = 0;
    uint8_t flags = 0;
  };
  static constexpr uint8_t kOmitted = 1, kSeen = 2, kFirstLong = 4;
  static constexpr uint32_t kLookUp = uint32_t{1} << 31;
  static constexpr uint32_t kMaxCount = 0x7FFFFFFF;  // counts are 32-bit signed numbers
  struct Slot {
    uint32_t tag = 0;
    uint32_t entry = 0;  // entry number + 1; 0 is free
  };
  // The entries in blocks that never move: growing copies nothing.
  class Entries {
   public:
    Entry& operator[](std::size_t i) { return blocks_[i >> kShift][i & kMask]; }
    const Entry& operator[](std::size_t i) const { return blocks_[i >> kShift][i & kMask]; }
    std::size_t size() const { return size_; }
    Entry& push_back(const Entry& e) {
      if ((size_ & kMask) == 0) blocks_.push_back(std::make_unique<Entry[]>(kMask + 1));
      Entry& slot = (*this)[size_++];
      slot = e;
      return slot;
    }

   private:
    static constexpr int kShift = 16;
    static constexpr std::size_t kMask = (std::size_t{1} << kShift) - 1;
    std::vector<std::unique_ptr<Entry[]>> blocks_;
    std::size_t size_ = 0;
  };
  // Words of at most 16 bytes met lately, each with its entry, seen and not omitted:
  // most words of a text are a few hundred common ones, found here without the table.
  struct Recent {
    uint64_t w0 = 0, w1 = 0;
    uint32_t entry = 0;
    uint32_t len = ~uint32_t{0};
  };
  static constexpr int kRecentBits = 11;
  static constexpr uint32_t kRecentAfter = 8;
  static std::size_t recentPlace(uint64_t w0, uint64_t w1, std::size_t len) {
    return static_cast<std::size_t>(((w0 + w1 * 31 + len) * 0x9E3779B97F4A7C15ull) >> (64 - kRecentBits));
  }

  // The number of the entry of `word` (at most 35 bytes), made when it is new.
  uint32_t entryOf(const char* word, std::size_t len, uint64_t w0, uint64_t w1, uint64_t hash);
  void grow();
  void countShort(const char* word, std::size_t len);
  void countHashed(const char* word, std::size_t len, uint64_t w0, uint64_t w1, uint64_t hash);
  void countLong(std::string_view word);

  ByteSetMasks delims_;
  std::vector<Slot> slots_;
  std::size_t mask_ = 0;
  int bits_ = 0;  // slots_ has 2^bits_ slots
  Entries entries_;
  std::vector<Recent> recent_;
  std::string tails_;
  std::vector<std::string> longOmit_;  // omit entries of more than 35 characters
  int64_t unique_ = 0;
};

}  // namespace zv
