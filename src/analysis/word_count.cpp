// Diction's hashed word table without size limits.
#include "analysis/word_count.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "analysis/analysis_common.h"

namespace zv {

namespace {

#if defined(__x86_64__)
bool hasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}

__attribute__((target("avx2"))) uint64_t nibbleMask64(const char* p, const unsigned char* low, const unsigned char* high) {
  const __m256i lo = _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(low)));
  const __m256i hi = _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(high)));
  const __m256i nibble = _mm256_set1_epi8(0x0F);
  uint64_t bits = 0;
  for (int half = 0; half < 2; ++half) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32 * half));
    const __m256i l = _mm256_and_si256(v, nibble);
    const __m256i h = _mm256_and_si256(_mm256_srli_epi16(v, 4), nibble);
    const __m256i both = _mm256_and_si256(_mm256_shuffle_epi8(lo, l), _mm256_shuffle_epi8(hi, h));
    const auto none = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(both, _mm256_setzero_si256())));
    bits |= static_cast<uint64_t>(~none) << (32 * half);
  }
  return bits;
}
#endif

// A to Z made small, other bytes kept, sixteen at a time.
void lowerInPlace(char* text, std::size_t n) {
  std::size_t i = 0;
#if defined(__SSE2__)
  const __m128i a = _mm_set1_epi8('A');
  const __m128i span = _mm_set1_epi8(25);
  const __m128i bit = _mm_set1_epi8(0x20);
  for (; i + 16 <= n; i += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
    const __m128i t = _mm_sub_epi8(v, a);
    const __m128i upper = _mm_cmpeq_epi8(_mm_min_epu8(t, span), t);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(text + i), _mm_add_epi8(v, _mm_and_si128(upper, bit)));
  }
#endif
  LowerInPlace(text + i, n - i);
}

uint64_t load8(const char* p) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  return v;
}

// The first `len` bytes of the eight at p, zeros after.
uint64_t head8(const char* p, std::size_t len) {
  if (len >= 8) return load8(p);
  return len == 0 ? 0 : load8(p) & ((uint64_t{1} << (8 * len)) - 1);
}

uint64_t mix(uint64_t h) {
  h ^= h >> 32;
  h *= 0xd6e8feb86659fd93ull;
  h ^= h >> 32;
  return h;
}

// The hash of a word of `len` bytes whose first sixteen are w0 and w1.
uint64_t hashOf(const char* word, std::size_t len, uint64_t w0, uint64_t w1) {
  uint64_t h = (w0 ^ 0x9E3779B97F4A7C15ull) * 0xC2B2AE3D27D4EB4Full;
  h ^= ((w1 + len) * 0x165667B19E3779F9ull) >> 7 | ((w1 + len) * 0x165667B19E3779F9ull) << 57;
  for (std::size_t at = 16; at < len; at += 8) h = (h ^ head8(word + at, len - at)) * 0x9E3779B97F4A7C15ull;
  return mix(h);
}

uint64_t byteSwapped(uint64_t v) { return __builtin_bswap64(v); }

// The length of a word of at most 16 bytes from its key: up to its last non-zero byte.
std::size_t keyLength(uint64_t key0, uint64_t key1) {
  if (key1 != 0) return 16 - static_cast<std::size_t>(__builtin_ctzll(key1)) / 8;
  if (key0 != 0) return 8 - static_cast<std::size_t>(__builtin_ctzll(key0)) / 8;
  return 0;
}

}  // namespace

ByteSetMasks::ByteSetMasks(const std::array<bool, 256>& in) : in_(in) {
  // The low halves of the bytes in the set, for each high half.
  std::array<uint16_t, 16> lows{};
  for (int b = 0; b < 256; ++b)
    if (in[static_cast<std::size_t>(b)]) lows[static_cast<std::size_t>(b >> 4)] |= static_cast<uint16_t>(1u << (b & 15));
  std::vector<uint16_t> classes;
  for (int h = 0; h < 16; ++h) {
    const uint16_t set = lows[static_cast<std::size_t>(h)];
    if (set == 0) continue;
    auto at = std::find(classes.begin(), classes.end(), set);
    if (at == classes.end()) {
      if (classes.size() == 8) return;  // more than eight: byte by byte
      classes.push_back(set);
      at = classes.end() - 1;
    }
    const auto bit = static_cast<unsigned char>(1u << (at - classes.begin()));
    high_[h] = bit;
    for (int l = 0; l < 16; ++l)
      if (set & (1u << l)) low_[l] = static_cast<unsigned char>(low_[l] | bit);
  }
  nibbles_ = true;
}

uint64_t ByteSetMasks::mask64(const char* p) const {
#if defined(__x86_64__)
  if (nibbles_ && hasAvx2()) return nibbleMask64(p, low_, high_);
#endif
  uint64_t bits = 0;
  for (int i = 0; i < 64; ++i)
    bits |= static_cast<uint64_t>(in_[static_cast<unsigned char>(p[i])]) << i;
  return bits;
}

namespace {
std::array<bool, 256> wordEnds() {
  std::array<bool, 256> in{};
  const DelimiterSet delims(kDicDelims);
  for (int c = 0; c < 256; ++c) in[static_cast<std::size_t>(c)] = delims.has(static_cast<char>(c)) || c == '\r' || c == '\n';
  return in;
}
}  // namespace

WordCounter::WordCounter(const std::vector<std::string>& omit)
    : delims_(wordEnds()), slots_(std::size_t{1} << 12), recent_(std::size_t{1} << kRecentBits) {
  bits_ = 12;
  mask_ = slots_.size() - 1;
  for (const std::string& entry : omit) {
    if (entry.size() > kWordLen) {
      longOmit_.push_back(entry);
      continue;
    }
    std::string padded = entry + std::string(16, '\0');
    Entry& e = entries_[entryOf(padded.data(), entry.size(), head8(padded.data(), entry.size()),
                       entry.size() > 8 ? head8(padded.data() + 8, entry.size() - 8) : 0,
                       hashOf(padded.data(), entry.size(), head8(padded.data(), entry.size()),
                              entry.size() > 8 ? head8(padded.data() + 8, entry.size() - 8) : 0))];
    e.flags |= kOmitted;
  }
}

void WordCounter::grow() {
  std::vector<Slot> old(slots_.size() * 2);
  old.swap(slots_);
  ++bits_;
  mask_ = slots_.size() - 1;
  // A slot's place comes from the top bits of its tag, so the words need no new hash.
  for (const Slot& s : old) {
    if (s.entry == 0) continue;
    std::size_t i = s.tag >> (32 - bits_);
    while (slots_[i].entry != 0) i = (i + 1) & mask_;
    slots_[i] = s;
  }
}

uint32_t WordCounter::entryOf(const char* word, std::size_t len, uint64_t w0, uint64_t w1, uint64_t hash) {
  const auto tag = static_cast<uint32_t>(hash >> 32);
  std::size_t i = tag >> (32 - bits_);
  for (;; i = (i + 1) & mask_) {
    const Slot s = slots_[i];
    if (s.entry == 0) break;
    if (s.tag != tag) continue;
    Entry& e = entries_[s.entry - 1];
    if (e.len == len && e.w0 == w0 && e.w1 == w1 &&
        (len <= 16 || std::memcmp(tails_.data() + e.tail + 16, word + 16, len - 16) == 0))
      return s.entry - 1;
  }
  if ((entries_.size() + 1) * 2 > slots_.size()) {
    grow();
    i = tag >> (32 - bits_);
    while (slots_[i].entry != 0) i = (i + 1) & mask_;
  }
  Entry e;
  e.w0 = w0;
  e.w1 = w1;
  e.len = static_cast<uint8_t>(len);
  if (len > 16) {
    e.tail = static_cast<uint32_t>(tails_.size());
    tails_.append(word, len);
  }
  entries_.push_back(e);
  slots_[i] = {tag, static_cast<uint32_t>(entries_.size())};
  return static_cast<uint32_t>(entries_.size() - 1);
}

void WordCounter::countShort(const char* word, std::size_t len) {
  const uint64_t w0 = head8(word, len);
  const uint64_t w1 = len > 8 ? head8(word + 8, len - 8) : 0;
  countHashed(word, len, w0, w1, hashOf(word, len, w0, w1));
}

void WordCounter::countHashed(const char* word, std::size_t len, uint64_t w0, uint64_t w1, uint64_t hash) {
  const uint32_t at = entryOf(word, len, w0, w1, hash);
  Entry& e = entries_[at];
  if (e.flags & kOmitted) return;
  if (!(e.flags & kSeen)) {
    e.flags |= kSeen;
    ++unique_;
  }
  if (++e.shortCount > kMaxCount) ThrowOverflow(LimitReason("the count of a word", kMaxCount));
  // Only a word met a few times takes a place there, so that the many words met once
  // do not push the common ones out.
  if (len <= 16 && e.shortCount >= kRecentAfter) {
    Recent& r = recent_[recentPlace(w0, w1, len)];
    r = {w0, w1, at, static_cast<uint32_t>(len)};
  }
}

void WordCounter::countLong(std::string_view word) {
  for (const std::string& omitted : longOmit_)
    if (omitted == word) return;
  // Stored as its first 35 characters; found again only by a word of exactly those.
  char cut[kWordLen + 16] = {};
  std::memcpy(cut, word.data(), kWordLen);
  const uint64_t w0 = load8(cut), w1 = load8(cut + 8);
  Entry& e = entries_[entryOf(cut, kWordLen, w0, w1, hashOf(cut, kWordLen, w0, w1))];
  if (!(e.flags & kSeen)) e.flags |= kSeen | kFirstLong;
  ++e.longCount;
  ++unique_;
}

void WordCounter::countWord(std::string_view word) {
  if (word.size() > kWordLen) {
    countLong(word);
    return;
  }
  char padded[kWordLen + 16] = {};
  std::memcpy(padded, word.data(), word.size());
  countShort(padded, word.size());
}

void WordCounter::countText(char* text, std::size_t n) {
  lowerInPlace(text, n);
  // The words are taken in batches: each one's slot is asked for ahead of its turn,
  // so that the table's misses of the cache overlap.
  struct Pending {
    const char* word;
    std::size_t len;
    uint64_t w0, w1, hash;
  };
  constexpr int kBatch = 16;
  Pending batch[kBatch];
  int pending = 0;
  auto settle = [&] {
    for (int i = 0; i < pending; ++i) {
      const Pending& w = batch[i];
      if (w.len <= kWordLen)
        countHashed(w.word, w.len, w.w0, w.w1, w.hash);
      else
        countLong(std::string_view(w.word, w.len));
    }
    pending = 0;
  };
  auto take = [&](const char* word, std::size_t len) {
    if (len <= 16) {
      const uint64_t w0 = head8(word, len);
      const uint64_t w1 = len > 8 ? head8(word + 8, len - 8) : 0;
      const Recent& r = recent_[recentPlace(w0, w1, len)];
      // Counts commute, and a word here has been seen: it may go before the batch.
      if (r.w0 == w0 && r.w1 == w1 && r.len == len) {
        if (++entries_[r.entry].shortCount > kMaxCount) ThrowOverflow(LimitReason("the count of a word", kMaxCount));
        return;
      }
    }
    if (pending == kBatch) settle();
    Pending& w = batch[pending++];
    w.word = word;
    w.len = len;
    if (len > kWordLen) return;
    w.w0 = head8(word, len);
    w.w1 = len > 8 ? head8(word + 8, len - 8) : 0;
    w.hash = hashOf(word, len, w.w0, w.w1);
    __builtin_prefetch(&slots_[(static_cast<uint32_t>(w.hash >> 32) >> (32 - bits_))]);
  };
  // The delimiter bits of the 64 bytes from `at`; bytes past the end count as delimiters.
  auto ends = [&](std::size_t at) {
    uint64_t m = delims_.mask64(text + at);
    if (n - at < 64) m |= ~uint64_t{0} << (n - at);
    return m;
  };
  std::size_t chunk = 0;
  uint64_t m = n > 0 ? ends(0) : ~uint64_t{0};
  uint64_t words = ~m;  // bytes of words from the place reached on
  for (;;) {
    while (words == 0) {
      chunk += 64;
      if (chunk >= n) break;
      m = ends(chunk);
      words = ~m;
    }
    if (words == 0) break;
    const std::size_t start = chunk + static_cast<std::size_t>(__builtin_ctzll(words));
    uint64_t stop = m & (~uint64_t{0} << (start - chunk));
    std::size_t end = n;
    while (stop == 0) {
      chunk += 64;
      if (chunk >= n) break;
      m = ends(chunk);
      stop = m;
    }
    if (stop != 0) end = chunk + static_cast<std::size_t>(__builtin_ctzll(stop));
    take(text + start, end - start);
    if (end >= n) break;
    words = ~m & (~uint64_t{0} << (end - chunk));
  }
  settle();
}

std::string_view WordCounter::wordOf(const Element& e, char (&scratch)[16]) const {
  if (e.entry & kLookUp) {
    const Entry& entry = entries_[e.entry & ~kLookUp];
    if (entry.len > 16) return std::string_view(tails_.data() + entry.tail, entry.len);
    return std::string_view(reinterpret_cast<const char*>(&entry.w0), entry.len);
  }
  // The word is its sixteen key bytes without the zeros after it.
  const uint64_t w0 = byteSwapped(e.key0), w1 = byteSwapped(e.key1);
  std::memcpy(scratch, &w0, 8);
  std::memcpy(scratch + 8, &w1, 8);
  return std::string_view(scratch, keyLength(e.key0, e.key1));
}

void WordCounter::dropIndex() {
  slots_.clear();
  slots_.shrink_to_fit();
  std::fill(recent_.begin(), recent_.end(), Recent{});
}

std::vector<WordCounter::Element> WordCounter::ordered() const {
  std::vector<Element> list;
  list.reserve(static_cast<std::size_t>(unique_));
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const Entry& e = entries_[i];
    if (!(e.flags & kSeen)) continue;
    if (i >= kLookUp) throw std::length_error("more distinct words than the list can hold");
    Element base{byteSwapped(e.w0), byteSwapped(e.w1), 1, static_cast<uint32_t>(i)};
    // A word longer than its key, or one ending in code 0, is read from its entry.
    if (e.len > 16 || keyLength(base.key0, base.key1) != e.len) base.entry |= kLookUp;
    uint32_t singles = e.longCount;
    if (e.shortCount > 0) {
      // A long word seen first made the element that the short ones then counted on.
      const uint64_t count = uint64_t{e.shortCount} + ((e.flags & kFirstLong) ? 1 : 0);
      if (count > static_cast<uint64_t>(std::numeric_limits<int32_t>::max()))
        ThrowOverflow(LimitReason("the count of a word", std::numeric_limits<int32_t>::max()));
      Element first = base;
      first.count = static_cast<uint32_t>(count);
      list.push_back(first);
      if (e.flags & kFirstLong) --singles;
    }
    for (uint32_t s = 0; s < singles; ++s) list.push_back(base);
  }
  auto before = [this](const Element& a, const Element& b) {
    if (a.count != b.count) return a.count > b.count;
    if (a.key0 != b.key0) return a.key0 < b.key0;
    if (a.key1 != b.key1) return a.key1 < b.key1;
    if ((a.entry | b.entry) & kLookUp) {
      char x[16], y[16];
      return wordOf(a, x) < wordOf(b, y);
    }
    return keyLength(a.key0, a.key1) < keyLength(b.key0, b.key1);
  };
  // Most elements of a large text are words met once. They go last, spread by their
  // first two bytes into shares that are each sorted alone.
  const auto once = std::partition(list.begin(), list.end(), [](const Element& e) { return e.count != 1; });
  std::sort(list.begin(), once, before);
  const std::vector<Element> singles(once, list.end());
  std::vector<std::size_t> starts((std::size_t{1} << 16) + 1);
  for (const Element& e : singles) ++starts[(e.key0 >> 48) + 1];
  for (std::size_t b = 1; b < starts.size(); ++b) starts[b] += starts[b - 1];
  const auto first = static_cast<std::size_t>(once - list.begin());
  std::vector<std::size_t> next(starts.begin(), starts.end() - 1);
  for (const Element& e : singles) list[first + next[e.key0 >> 48]++] = e;
  for (std::size_t b = 0; b + 1 < starts.size(); ++b)
    std::sort(list.begin() + static_cast<std::ptrdiff_t>(first + starts[b]),
              list.begin() + static_cast<std::ptrdiff_t>(first + starts[b + 1]), before);
  return list;
}

}  // namespace zv
