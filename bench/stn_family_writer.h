// What the STN and Orbit/Questel capture generators share: a seeded random source, a
// streaming CR LF writer, and the words their records are made of.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include "synthetic_capture.h"

namespace zv::bench::stn_family {

// splitmix64: the same sequence on every platform, so a size always gives one file.
class Rng {
 public:
  explicit Rng(uint64_t seed) : state_(seed) {}
  uint64_t next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  uint32_t below(uint32_t n) { return static_cast<uint32_t>(next() % n); }
  uint32_t between(uint32_t lo, uint32_t hi) { return lo + below(hi - lo + 1); }
  bool chance(uint32_t perThousand) { return below(1000) < perThousand; }
  template <typename T, std::size_t N>
  const T& pick(const std::array<T, N>& a) { return a[below(N)]; }

 private:
  uint64_t state_;
};

// Lines to a file through a 1 MB buffer, counted as they go.
class LineWriter {
 public:
  explicit LineWriter(const std::string& path) : path_(path) {
    out_ = std::fopen(path.c_str(), "wb");
    if (!out_) throw std::runtime_error("cannot create " + path);
    buf_.reserve(kFlushAt + 4096);
  }
  ~LineWriter() {
    if (out_) std::fclose(out_);
  }
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  void line(std::string_view s) {
    buf_.append(s);
    buf_.append("\r\n");
    ++lines_;
    if (buf_.size() >= kFlushAt) flush();
  }
  void blank() { line({}); }
  int64_t bytes() const { return written_ + static_cast<int64_t>(buf_.size()); }

  // Flushes and syncs, so that no write-back of the capture runs beside a timed case.
  SyntheticCapture finish(int64_t records) {
    flush();
    const bool ok = std::fflush(out_) == 0 && ::fsync(::fileno(out_)) == 0;
    const bool closed = std::fclose(out_) == 0;
    out_ = nullptr;
    if (!ok || !closed) throw std::runtime_error("cannot write " + path_);
    SyntheticCapture result;
    result.path = path_;
    result.bytes = written_;
    result.lines = lines_;
    result.records = records;
    return result;
  }

 private:
  static constexpr std::size_t kFlushAt = 1 << 20;

  void flush() {
    if (!buf_.empty() && std::fwrite(buf_.data(), 1, buf_.size(), out_) != buf_.size())
      throw std::runtime_error("cannot write " + path_);
    written_ += static_cast<int64_t>(buf_.size());
    buf_.clear();
  }

  std::string path_;
  std::FILE* out_ = nullptr;
  std::string buf_;
  int64_t written_ = 0;
  int64_t lines_ = 0;
};

// Words of running text: no hyphens, no capitals, no colons, so that no text line
// made of them can pass for a start or end line.
inline constexpr std::array<std::string_view, 48> kWords = {
    "membrane", "fibre", "fibres", "polymer", "film", "films", "gas", "carbon", "dioxide",
    "methane", "permeance", "selectivity", "pressure", "bar", "module", "modules", "spun",
    "tested", "measured", "rose", "fell", "held", "steady", "after", "before", "within",
    "between", "the", "of", "and", "in", "on", "by", "was", "were", "a", "to", "from",
    "with", "than", "days", "months", "free", "volume", "ageing", "thin", "humid", "sites"};

inline constexpr std::array<std::string_view, 12> kAuthors = {
    "Brandvold, Kari", "Oyelaran, Simi", "Ekwall, Mats", "Moreau Castell, Delphine",
    "Rautio, Heikki", "Aldana Ruiz, Carmen", "Petrakis, Nikos", "Gallacher, Sean",
    "Achterberg, Lise", "Faltin, Rolf", "Ndiaye, Fatou", "Ibarra, Marta"};

// A pool of running-text lines of 40 to 72 characters; a few carry a Latin-1 letter
// or a tab, as captures do, so that the line cleaning has something to change.
inline std::vector<std::string> TextPool(Rng& rng, std::size_t indent) {
  std::vector<std::string> pool;
  pool.reserve(2048);
  for (int i = 0; i < 2048; ++i) {
    std::string s(indent, ' ');
    const std::size_t width = indent + rng.between(40, 72);
    while (s.size() < width) {
      if (s.size() > indent) s += ' ';
      s += rng.pick(kWords);
    }
    if (rng.chance(10)) s[s.size() / 2] = '\xE9';
    if (rng.chance(5)) s[s.size() / 3] = '\t';
    pool.push_back(std::move(s));
  }
  return pool;
}

template <typename... Args>
std::string Format(const char* fmt, Args... args) {
  char buf[256];
  const int n = std::snprintf(buf, sizeof buf, fmt, args...);
  return std::string(buf, static_cast<std::size_t>(n < 0 ? 0 : n));
}

}  // namespace zv::bench::stn_family
