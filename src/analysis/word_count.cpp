// Diction's hashed word table without size limits: cutting the words, counting them,
// and the ordered list.
#include "analysis/word_count.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "analysis/analysis_common.h"
#include "analysis/line_blocks.h"
#include "analysis/word_list.h"
#include "core/brindle.h"
#include "core/text.h"

namespace zv {

namespace {

// Text is counted in pieces of whole lines of about this size, so that the piece, its
// lowered copy and the table's common words stay in the processor's second cache.
constexpr std::size_t kPiece = std::size_t{64} << 10;
constexpr std::size_t kFirstSlots = std::size_t{1} << 12;
constexpr std::size_t kHugePage = std::size_t{2} << 20;

uint64_t load8(const char* p) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  return v;
}

// The bytes of a word of `len` (1 to 11) bytes that belong to it, by its length.
struct InlineMasks {
  uint64_t a[12];
  uint32_t b[12];
  constexpr InlineMasks() : a(), b() {
    for (int len = 0; len < 12; ++len) {
      a[len] = len >= 8 ? ~uint64_t{0} : (uint64_t{1} << (8 * len)) - 1;
      b[len] = len <= 8 ? 0u : static_cast<uint32_t>((uint64_t{1} << (8 * (len - 8))) - 1);
    }
  }
};
constexpr InlineMasks kInlineMasks;

}  // namespace

PageBlock::PageBlock(std::size_t bytes) {
  if (bytes == 0) return;
  const bool huge = bytes >= kHugePage;
  mapSize_ = huge ? bytes + kHugePage : bytes;
  void* map = ::mmap(nullptr, mapSize_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (map == MAP_FAILED) throw std::bad_alloc();
  map_ = map;
  data_ = map;
  if (huge) {
    const auto at = (reinterpret_cast<std::uintptr_t>(map) + kHugePage - 1) & ~(kHugePage - 1);
    data_ = reinterpret_cast<void*>(at);
#ifdef MADV_HUGEPAGE
    ::madvise(data_, bytes, MADV_HUGEPAGE);
#endif
  }
  size_ = bytes;
}

PageBlock::~PageBlock() {
  if (map_ != nullptr) ::munmap(map_, mapSize_);
}

WordCounter::WordCounter(const std::vector<std::string>& omit) : table_(kFirstSlots * sizeof(Slot)) {
  slots_ = static_cast<Slot*>(table_.data());
  mask_ = kFirstSlots - 1;
  shift_ = 64 - 12;
  growAt_ = kFirstSlots / 2;
  for (const std::string& entry : omit) {
    if (entry.empty()) continue;  // no word is empty
    if (entry.size() > kWordLen) {
      longOmit_.insert(entry);
    } else if (entry.size() > kInline) {
      specials_[specialOf(entry.data(), entry.size(), hashBytes(entry.data(), entry.size()))].flags |= kOmittedFlag;
    } else {
      char padded[16] = {};
      std::memcpy(padded, entry.data(), entry.size());
      uint64_t a;
      uint32_t b;
      std::memcpy(&a, padded, 8);
      std::memcpy(&b, padded + 8, 4);
      b = (b & 0xFFFFFF) | static_cast<uint32_t>(entry.size()) << 24;
      for (std::size_t i = hashInline(a, b) >> shift_;; i = (i + 1) & mask_) {
        Slot& s = slots_[i];
        if (s.a == a && s.b == b) break;
        if (s.b == 0) {
          s = {a, b, kOmitted};
          takeSlot();
          break;
        }
      }
    }
  }
}

WordCounter::~WordCounter() = default;

uint64_t WordCounter::hashBytes(const char* word, std::size_t len) {
  uint64_t h = (len + 1) * 0x9E3779B97F4A7C15ull;
  std::size_t at = 0;
  for (; at + 8 <= len; at += 8) {
    h = (h ^ load8(word + at)) * 0xC2B2AE3D27D4EB4Full;
    h ^= h >> 31;
  }
  if (at < len) {
    uint64_t tail = 0;
    std::memcpy(&tail, word + at, len - at);
    h = (h ^ tail) * 0xC2B2AE3D27D4EB4Full;
  }
  h ^= h >> 29;
  h *= 0xD6E8FEB86659FD93ull;
  return h ^ (h >> 32);
}

void WordCounter::takeSlot() {
  if (++used_ > growAt_) grow();
}

void WordCounter::grow() {
  const std::size_t size = (mask_ + 1) * 2;
  PageBlock bigger(size * sizeof(Slot));
  auto* to = static_cast<Slot*>(bigger.data());
  const int shift = shift_ - 1;
  const std::size_t mask = size - 1;
  // A slot's place is the top bits of its hash: the old table read in order fills the
  // new one nearly in order.
  for (std::size_t i = 0; i <= mask_; ++i) {
    const Slot s = slots_[i];
    if (s.b == 0) continue;
    const uint64_t h = (s.b & kSpecial) == kSpecial ? specials_[s.a].hash : hashInline(s.a, s.b);
    std::size_t j = h >> shift;
    while (to[j].b != 0) j = (j + 1) & mask;
    to[j] = s;
  }
  table_ = std::move(bigger);
  slots_ = to;
  mask_ = mask;
  shift_ = shift;
  growAt_ = size / 2;
}

inline void WordCounter::countInline(uint64_t a, uint32_t b, uint64_t h) {
  for (std::size_t i = h >> shift_;; i = (i + 1) & mask_) {
    Slot& s = slots_[i];
    if (s.a == a && s.b == b) {
      if (s.count >= kMaxCount) [[unlikely]] {
        if (s.count == kOmitted) return;
        ThrowOverflow(LimitReason("the count of a word", kMaxCount));
      }
      ++s.count;
      return;
    }
    if (s.b == 0) {
      s = {a, b, 1};
      ++unique_;
      takeSlot();
      return;
    }
  }
}

uint64_t WordCounter::specialOf(const char* word, std::size_t len, uint64_t h) {
  const uint32_t tag = kSpecial | static_cast<uint32_t>(h & 0xFFFFFF);
  for (std::size_t i = h >> shift_;; i = (i + 1) & mask_) {
    Slot& s = slots_[i];
    if (s.b == tag) {
      const Special& e = specials_[s.a];
      if (e.len == len && std::memcmp(bytes_.data() + e.at, word, len) == 0) return s.a;
    } else if (s.b == 0) {
      Special e;
      e.hash = h;
      e.at = bytes_.size();
      e.len = static_cast<uint8_t>(len);
      bytes_.append(word, len);
      specials_.push_back(e);
      const uint64_t at = specials_.size() - 1;
      s = {at, tag, 0};
      takeSlot();
      return at;
    }
  }
}

void WordCounter::countSpecial(const char* word, std::size_t len) {
  Special& e = specials_[specialOf(word, len, hashBytes(word, len))];
  if (e.flags & kOmittedFlag) return;
  if (!(e.flags & kSeen)) {
    e.flags |= kSeen;
    ++unique_;
  }
  if (e.shortCount >= kMaxCount) ThrowOverflow(LimitReason("the count of a word", kMaxCount));
  ++e.shortCount;
}

void WordCounter::countLong(const char* word, std::size_t len) {
  if (!longOmit_.empty() && longOmit_.contains(std::string_view(word, len))) return;
  // Stored as its first 35 characters; found again only by a word of exactly those.
  Special& e = specials_[specialOf(word, kWordLen, hashBytes(word, kWordLen))];
  if (!(e.flags & kSeen)) e.flags |= kSeen | kFirstLong;
  ++e.longCount;
  ++unique_;
}

void WordCounter::countWord(const char* word, std::size_t len) {
  if (len > kWordLen) {
    countLong(word, len);
  } else if (len > kInline) {
    countSpecial(word, len);
  } else {
    char padded[16] = {};
    std::memcpy(padded, word, len);
    uint64_t a;
    uint32_t b;
    std::memcpy(&a, padded, 8);
    std::memcpy(&b, padded + 8, 4);
    b = (b & 0xFFFFFF) | static_cast<uint32_t>(len) << 24;
    countInline(a, b, hashInline(a, b));
  }
}

std::size_t WordCounter::countLines(const char* text, std::size_t n, std::size_t most) {
  std::size_t lines = 0;
  for (std::size_t at = 0; at < n && lines < most;) {
    std::size_t end = n;
    if (n - at > kPiece) {
      end = at + kPiece;
      while (end > at && text[end - 1] != '\n' && text[end - 1] != '\r') --end;
      if (end == at) {  // one line longer than a piece, with its end
        end = at + kPiece;
        while (end < n && text[end] != '\n' && text[end] != '\r') ++end;
        if (end < n) ++end;
      }
      if (end < n && text[end - 1] == '\r' && text[end] == '\n') ++end;  // a CR LF pair stays whole
    }
    ScanText(text + at, end - at, scan_);
    std::size_t got = scan_.lines;
    if (lines + got > most) {
      // The lines past the last to be read are left out.
      std::size_t cut = 0;
      got = LinesIn(std::string_view(text + at, end - at), most - lines, cut);
      end = at + cut;
      ScanText(text + at, cut, scan_);
    }
    countScanned(text + at, end - at);
    lines += got;
    at = end;
  }
  return lines;
}

void WordCounter::countScanned(const char* text, std::size_t n) {
  exactLines_.clear();
  if (!scan_.hyphens.empty()) markLines(text, n);
  // The words in order; a line that needs the exact steps comes in its place.
  std::size_t from = 0;
  for (const auto& [start, end] : exactLines_) {
    cutWords(from, start);
    settle();
    countExactLine(std::string_view(text + start, end - start));
    from = end;
  }
  cutWords(from, n);
  settle();
}

// The lines with a hyphen before a hyphen or a blank: a line holding "Record - " has
// no words; in a line holding "--" each pair of hyphens from the start of a run ends
// words as the blank it becomes would; a line holding both "--" and "Record" could
// make "Record - " of them and takes the exact steps.
void WordCounter::markLines(const char* text, std::size_t n) {
  const uint64_t* lineEnds = scan_.lineEnds.data();
  uint64_t* ends = scan_.ends.data();
  auto setEnd = [ends](std::size_t i) { ends[i / 64] |= uint64_t{1} << (i % 64); };
  std::size_t looked = 0;  // hyphens before this lie in lines already looked at
  for (const std::size_t j : scan_.hyphens) {
    if (j < looked) continue;
    std::size_t c = j / 64;
    uint64_t m = lineEnds[c] & ((uint64_t{1} << (j % 64)) - 1);
    while (m == 0 && c > 0) m = lineEnds[--c];
    const std::size_t start = m == 0 ? 0 : 64 * c + 64 - static_cast<std::size_t>(__builtin_clzll(m));
    c = j / 64;
    m = lineEnds[c] & (~uint64_t{0} << (j % 64));
    while (m == 0 && 64 * (c + 1) < n) m = lineEnds[++c];
    const std::size_t end = m == 0 ? n : 64 * c + static_cast<std::size_t>(__builtin_ctzll(m));
    looked = end;
    const std::string_view line(text + start, end - start);
    if (line.find("Record - ") != std::string_view::npos) {
      for (std::size_t i = start; i < end; ++i) setEnd(i);
      continue;
    }
    // The first hyphen of a pair in the line is at j or after.
    if (line.find("--", j - start) == std::string_view::npos) continue;
    if (line.find("Record") != std::string_view::npos) {
      exactLines_.emplace_back(start, end);
      continue;
    }
    for (std::size_t k = j; k + 1 < end;) {
      const void* hyphen = std::memchr(text + k, '-', end - k);
      if (hyphen == nullptr) break;
      k = static_cast<std::size_t>(static_cast<const char*>(hyphen) - text);
      std::size_t run = k;
      while (run < end && text[run] == '-') ++run;
      for (; k + 1 < run; k += 2) {
        setEnd(k);
        setEnd(k + 1);
      }
      k = run;
    }
  }
}

void WordCounter::cutWords(std::size_t from, std::size_t to) {
  if (from >= to) return;
  // Locals: the compiler cannot tell that the stores to the batch leave the members be.
  const uint64_t* ends = scan_.ends.data();
  const char* lower = scan_.lower.data();
  Pending* const batch = batch_;
  int pending = pending_;
  const Slot* slots = slots_;
  int shift = shift_;
  std::size_t c = from / 64;
  const std::size_t last = (to - 1) / 64;
  uint64_t m = ends[c] | ((uint64_t{1} << (from % 64)) - 1);
  uint64_t before = 1;  // the byte before `from` ends a word
  for (;;) {
    const uint64_t next = ends[c + 1];
    uint64_t starts = ~m & ((m << 1) | before);
    if (c == last && to - 64 * c < 64) starts &= (uint64_t{1} << (to - 64 * c)) - 1;
    while (starts != 0) {
      const auto s = static_cast<unsigned>(__builtin_ctzll(starts));
      starts &= starts - 1;
      const std::size_t at = 64 * c + s;
      // The word's end: the first end from s on, in this mask or the next.
      const auto rest = static_cast<uint64_t>(((static_cast<unsigned __int128>(next) << 64) | m) >> s);
      std::size_t len;
      if (rest != 0) [[likely]] {
        len = static_cast<std::size_t>(__builtin_ctzll(rest));
      } else {
        std::size_t k = c + 2;
        while (ends[k] == 0) ++k;
        len = 64 * k + static_cast<std::size_t>(__builtin_ctzll(ends[k])) - at;
      }
      const char* word = lower + at;
      if (len <= kInline) {
        uint64_t a;
        uint32_t b;
        std::memcpy(&a, word, 8);
        std::memcpy(&b, word + 8, 4);
        a &= kInlineMasks.a[len];
        b = (b & kInlineMasks.b[len]) | static_cast<uint32_t>(len) << 24;
        const uint64_t h = hashInline(a, b);
        __builtin_prefetch(slots + (h >> shift));
        batch[pending] = {a, h, b};
      } else {
        batch[pending] = {reinterpret_cast<std::uintptr_t>(word), len, 0};
      }
      if (++pending == kBatch) {
        pending_ = pending;
        settle();
        pending = 0;
        slots = slots_;
        shift = shift_;
      }
    }
    if (c == last) break;
    before = m >> 63;
    m = next;
    ++c;
  }
  pending_ = pending;
}

void WordCounter::settle() {
  Slot* slots = slots_;
  std::size_t mask = mask_;
  int shift = shift_;
  const int pending = pending_;
  for (int i = 0; i < pending; ++i) {
    const Pending w = batch_[i];
    if (w.b == 0) {
      countWord(reinterpret_cast<const char*>(w.a), w.h);
      slots = slots_;
      mask = mask_;
      shift = shift_;
      continue;
    }
    for (std::size_t j = w.h >> shift;; j = (j + 1) & mask) {
      Slot& s = slots[j];
      if (s.a == w.a && s.b == w.b) {
        if (s.count >= kMaxCount) [[unlikely]] {
          if (s.count == kOmitted) break;
          ThrowOverflow(LimitReason("the count of a word", kMaxCount));
        }
        ++s.count;
        break;
      }
      if (s.b == 0) {
        s = {w.a, w.b, 1};
        ++unique_;
        if (++used_ > growAt_) {
          grow();
          slots = slots_;
          mask = mask_;
          shift = shift_;
        }
        break;
      }
    }
  }
  pending_ = 0;
}

// The loop's own steps for one line: "--" made a blank, the line passed over when it
// then holds "Record - ", the words cut at the delimiters and lowered.
void WordCounter::countExactLine(std::string_view line) {
  line_.assign(line);
  ReplaceAll(line_, "--", " ");
  if (line_.find("Record - ") != std::string::npos) return;
  LowerInPlace(line_.data(), line_.size());
  const ByteSetMasks& ends = DictionWordEnds();
  for (std::size_t at = 0; at < line_.size();) {
    if (ends.has(static_cast<unsigned char>(line_[at]))) {
      ++at;
      continue;
    }
    std::size_t end = at;
    while (end < line_.size() && !ends.has(static_cast<unsigned char>(line_[end]))) ++end;
    countWord(line_.data() + at, end - at);
    at = end;
  }
}

namespace {

// An element of the list other than a word of at most eleven bytes met once.
struct Listed {
  uint64_t count;
  WordKey key;
  uint64_t special;  // kNotSpecial for a word held in its slot
};
constexpr uint64_t kNotSpecial = ~uint64_t{0};

// The list's lines, gathered into large pieces for the output.
class ListLines {
 public:
  explicit ListLines(const std::function<void(std::string_view)>& out) : out_(out), buf_(kSize + 128) {}
  ~ListLines() = default;
  void flush() {
    out_(std::string_view(buf_.data(), at_));
    at_ = 0;
  }
  // A line of the count as a number (a blank, the digits, a blank), the word at column 9.
  void line(uint64_t count, std::string_view word) {
    room(word.size());
    char digits[24];
    int len = 0;
    for (uint64_t c = count; c != 0 || len == 0; c /= 10) digits[len++] = static_cast<char>('0' + c % 10);
    char* p = buf_.data() + at_;
    *p++ = ' ';
    for (int i = len - 1; i >= 0; --i) *p++ = digits[i];
    *p++ = ' ';
    for (int i = len + 2; i < 8; ++i) *p++ = ' ';
    std::memcpy(p, word.data(), word.size());
    p += word.size();
    *p++ = '\r';
    *p++ = '\n';
    at_ = static_cast<std::size_t>(p - buf_.data());
  }
  // A line of a word of at most eleven bytes met once.
  void single(const WordKey& key) {
    room(16);
    char* p = buf_.data() + at_;
    std::memcpy(p, " 1      ", 8);
    const std::size_t len = key.spell(p + 8);
    std::memcpy(p + 8 + len, "\r\n", 2);
    at_ += 10 + len;
  }

 private:
  static constexpr std::size_t kSize = std::size_t{1} << 20;
  void room(std::size_t word) {
    if (at_ + word + 40 > buf_.size()) flush();
    if (word + 40 > buf_.size()) buf_.resize(word + 40);
  }
  const std::function<void(std::string_view)>& out_;
  std::vector<char> buf_;
  std::size_t at_ = 0;
};

}  // namespace

void WordCounter::writeList(const std::function<void(std::string_view)>& out) {
  settle();
  // The table's slots become the keys of the words held in them and met once, in place;
  // the other elements are few and go to lists of their own.
  auto* keys = static_cast<WordKey*>(table_.data());
  std::size_t singles = 0;
  std::vector<Listed> others, longSingles;
  for (std::size_t i = 0; i <= mask_; ++i) {
    const Slot s = slots_[i];
    if (s.b == 0 || (s.b & kSpecial) == kSpecial || s.count == kOmitted) continue;
    WordKey key;
    key.k0 = __builtin_bswap64(s.a);
    key.k1 = static_cast<uint64_t>(__builtin_bswap32(s.b & 0xFFFFFF) | (s.b >> 24)) << 32;
    if (s.count == 1)
      std::memcpy(static_cast<void*>(keys + singles++), &key, sizeof key);
    else
      others.push_back({s.count, key, kNotSpecial});
  }
  for (std::size_t i = 0; i < specials_.size(); ++i) {
    const Special& e = specials_[i];
    if (!(e.flags & kSeen)) continue;
    const WordKey key = WordKey::of(bytes_.data() + e.at, e.len);
    uint64_t alone = e.longCount;
    if (e.shortCount > 0) {
      // A long word seen first made the element that the short ones then counted on.
      const uint64_t count = uint64_t{e.shortCount} + ((e.flags & kFirstLong) ? 1 : 0);
      if (count > static_cast<uint64_t>(std::numeric_limits<int32_t>::max()))
        ThrowOverflow(LimitReason("the count of a word", std::numeric_limits<int32_t>::max()));
      (count == 1 ? longSingles : others).push_back({count, key, i});
      if (e.flags & kFirstLong) --alone;
    }
    for (uint64_t k = 0; k < alone; ++k) longSingles.push_back({1, key, i});
  }
  slots_ = nullptr;  // the table is keys from here on

  auto wordOf = [this](const Listed& l, char (&scratch)[16]) {
    if (l.special == kNotSpecial) return std::string_view(scratch, l.key.spell(scratch));
    const Special& e = specials_[l.special];
    return std::string_view(bytes_.data() + e.at, e.len);
  };
  auto before = [&](const Listed& x, const Listed& y) {
    if (x.count != y.count) return x.count > y.count;
    if (!(x.key == y.key)) return x.key < y.key;
    if (x.special == kNotSpecial || y.special == kNotSpecial) return false;  // the same word
    char sx[16], sy[16];
    return wordOf(x, sx) < wordOf(y, sy);
  };
  std::sort(others.begin(), others.end(), before);
  std::sort(longSingles.begin(), longSingles.end(), before);
  PageBlock spare;
  WordKey* scratch = keys + singles;
  if (table_.size() / sizeof(WordKey) < 2 * singles) {
    spare = PageBlock(singles * sizeof(WordKey));
    scratch = static_cast<WordKey*>(spare.data());
  }
  SortWordKeys(keys, scratch, singles);

  // Every group but the last is written; the last only when its count is 1 and a group
  // of a higher count came before it.
  ListLines lines(out);
  char scratchWord[16];
  const bool anySingle = singles + longSingles.size() > 0;
  std::size_t listed = others.size();
  if (!anySingle)
    while (listed > 0 && others[listed - 1].count == others.back().count) --listed;
  for (std::size_t i = 0; i < listed; ++i) lines.line(others[i].count, wordOf(others[i], scratchWord));
  if (anySingle && !others.empty()) {
    std::size_t s = 0, l = 0;
    while (s < singles || l < longSingles.size()) {
      if (l == longSingles.size() || (s < singles && keys[s] < longSingles[l].key))
        lines.single(keys[s++]);
      else
        lines.line(1, wordOf(longSingles[l++], scratchWord));
    }
  }
  lines.flush();
}

}  // namespace zv
