// What the capture generators share: a portable random source, a buffered writer of
// CR LF lines that streams to disk, so a capture of any size needs little memory, a
// session clock, pools of running text and the word lists more than one service uses.
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

namespace zv::bench {

// splitmix64: small, fast and the same on every platform, so a size always gives the
// same file.
class CaptureRng {
 public:
  explicit CaptureRng(uint64_t seed) : state_(seed) {}
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
  template <typename T>
  const T& pick(const std::vector<T>& v) { return v[below(static_cast<uint32_t>(v.size()))]; }

 private:
  uint64_t state_;
};

// snprintf into a std::string, for the short lines of a capture.
template <typename... Args>
std::string CaptureFormat(const char* fmt, Args... args) {
  char buf[256];
  const int n = std::snprintf(buf, sizeof buf, fmt, args...);
  return std::string(buf, static_cast<std::size_t>(n < 0 ? 0 : n));
}

// CR LF lines to a file through a 1 MB buffer, counted as they go. finish() puts them
// on disk (fsync), so that no write-back of the capture runs beside a timed case.
class CaptureStream {
 public:
  explicit CaptureStream(const std::string& path) : path_(path) {
    out_ = std::fopen(path.c_str(), "wb");
    if (!out_) throw std::runtime_error("cannot create " + path);
    buf_.reserve(kFlushAt + 4096);
  }
  ~CaptureStream() {
    if (out_) std::fclose(out_);
  }
  CaptureStream(const CaptureStream&) = delete;
  CaptureStream& operator=(const CaptureStream&) = delete;

  void line(std::string_view s) {
    buf_.append(s);
    buf_.append("\r\n");
    ++lines_;
    if (buf_.size() >= kFlushAt) flush();
  }
  // One line of two parts, such as an indent and its text, without a joined copy.
  void line(std::string_view head, std::string_view rest) {
    buf_.append(head);
    line(rest);
  }
  void blank() { line({}); }

  int64_t bytes() const { return written_ + static_cast<int64_t>(buf_.size()); }
  int64_t lines() const { return lines_; }

  // Puts the capture on disk and returns `counts` (what the generator counted: records,
  // .FSC lines) with the path, bytes and lines filled in.
  SyntheticCapture finish(SyntheticCapture counts = {}) {
    flush();
    const bool ok = std::fflush(out_) == 0 && ::fsync(::fileno(out_)) == 0;
    const bool closed = std::fclose(out_) == 0;
    out_ = nullptr;
    if (!ok || !closed) throw std::runtime_error("cannot write " + path_);
    counts.path = path_;
    counts.bytes = written_;
    counts.lines = lines_;
    return counts;
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

// The time of day through a session, from 09:00:00 on, a few seconds to a minute and
// a half later at each reading.
class CaptureClock {
 public:
  std::string next(CaptureRng& rng) {
    seconds_ += static_cast<int>(rng.between(5, 90));
    return CaptureFormat("%02d:%02d:%02d", (seconds_ / 3600) % 24, (seconds_ / 60) % 60, seconds_ % 60);
  }

 private:
  int seconds_ = 9 * 3600;
};

// How the lines of a text pool look: `count` lines, each `indent` blanks and then
// words up to a width of `minWidth` to `maxWidth` characters behind the indent.
struct TextPoolShape {
  std::size_t count = 4096;
  uint32_t minWidth = 40;
  uint32_t maxWidth = 76;
  std::size_t indent = 0;
};

// A pool of lines of running text built from `words`. A few hold a Latin-1 letter or a
// tab, as captures do, so that the line cleaning has work.
template <std::size_t N>
std::vector<std::string> CaptureTextPool(CaptureRng& rng, const std::array<std::string_view, N>& words,
                                         TextPoolShape shape = {}) {
  std::vector<std::string> pool;
  pool.reserve(shape.count);
  for (std::size_t i = 0; i < shape.count; ++i) {
    std::string s(shape.indent, ' ');
    const std::size_t width = shape.indent + rng.between(shape.minWidth, shape.maxWidth);
    while (s.size() < width) {
      if (s.size() > shape.indent) s += ' ';
      s += rng.pick(words);
    }
    if (rng.chance(10)) s[s.size() / 2] = '\xE9';
    if (rng.chance(5)) s[s.size() / 3] = '\t';
    pool.push_back(std::move(s));
  }
  return pool;
}

// What every generator starts from: its random source, seeded with a number of its own;
// the stream it writes and the size it writes up to; the counts it returns; a pool of
// running text from its words, made first thing from the random source; the session
// clock.
class CaptureGenerator {
 protected:
  template <std::size_t N>
  CaptureGenerator(const std::string& path, int64_t target, uint64_t seed,
                   const std::array<std::string_view, N>& words, TextPoolShape shape = {})
      : rng_(seed), target_(target), out_(path), pool_(CaptureTextPool(rng_, words, shape)) {}

  // A line of the pool.
  const std::string& text() { return rng_.pick(pool_); }

  CaptureRng rng_;
  int64_t target_;
  CaptureStream out_;
  SyntheticCapture result_;
  std::vector<std::string> pool_;
  CaptureClock clock_;
};

// The DIALOG generators also count what the filter copies to the .FSC. The filters
// count .FSC lines in 16 bits, so the commands that feed the .FSC stop once the largest
// block one of them writes could pass a budget well under that limit.
class DialogCaptureGenerator : public CaptureGenerator {
 protected:
  template <std::size_t N>
  DialogCaptureGenerator(const std::string& path, int64_t target, uint64_t seed,
                         const std::array<std::string_view, N>& words, int64_t largestFscBlock)
      : CaptureGenerator(path, target, seed, words), largestFscBlock_(largestFscBlock) {}

  static constexpr int64_t kFscBudget = 30000;

  bool affordable() const { return result_.fscLines + largestFscBlock_ <= kFscBudget; }

  // A block runs from its command to the next prompt, which adds a blank separator:
  // counts what `emit` wrote.
  template <typename F>
  void fscBlock(F&& emit) {
    const int64_t before = out_.lines();
    emit();
    result_.fscLines += out_.lines() - before;
    ++result_.fscSeparators;
  }

 private:
  int64_t largestFscBlock_;
};

inline constexpr std::array<std::string_view, 12> kCaptureMonths = {
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// Running text of polymer membrane records, as the patent and chemistry services (STN,
// Orbit) show them: no hyphens, no capitals, no colons, so that no text line made of
// them can pass for a start or end line there.
inline constexpr std::array<std::string_view, 48> kMembraneWords = {
    "membrane", "fibre", "fibres", "polymer", "film", "films", "gas", "carbon", "dioxide",
    "methane", "permeance", "selectivity", "pressure", "bar", "module", "modules", "spun",
    "tested", "measured", "rose", "fell", "held", "steady", "after", "before", "within",
    "between", "the", "of", "and", "in", "on", "by", "was", "were", "a", "to", "from",
    "with", "than", "days", "months", "free", "volume", "ageing", "thin", "humid", "sites"};

inline constexpr std::array<std::string_view, 12> kMembraneAuthors = {
    "Brandvold, Kari", "Oyelaran, Simi", "Ekwall, Mats", "Moreau Castell, Delphine",
    "Rautio, Heikki", "Aldana Ruiz, Carmen", "Petrakis, Nikos", "Gallacher, Sean",
    "Achterberg, Lise", "Faltin, Rolf", "Ndiaye, Fatou", "Ibarra, Marta"};

}  // namespace zv::bench
