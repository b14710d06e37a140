// Generator of a large NLM session capture with the line shapes of real sessions.
#include "capture_nlm.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zv::bench {

namespace {

using sv = std::string_view;

// splitmix64, as the other generators: the same file from the same size everywhere.
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
  const T& pick(const std::array<T, N>& a) {
    return a[below(N)];
  }

 private:
  uint64_t state_;
};

// Words of abstracts. Every body line is indented or opens with a field tag, so no
// word here can make a line begin like one of the service's prompts.
constexpr std::array<sv, 64> kWords = {
    "patients", "were", "followed", "for", "years", "after", "implant", "device", "leadless", "pacemaker", "battery",
    "registry", "outcomes", "cardiac", "pacing", "older", "adults", "trial", "randomized", "cohort", "mortality",
    "rate", "rates", "compared", "with", "than", "the", "of", "and", "in", "on", "by", "a", "to", "from", "was",
    "higher", "lower", "no", "significant", "difference", "between", "groups", "retrieval", "migration", "infection",
    "complications", "procedure", "second", "lithium", "iodide", "cells", "leakage", "toxicity", "THE", "RESULTS",
    "CONCLUSIONS:", "METHODS:", "(p", "<", "0.05)", "95%", "CI", "months"};

constexpr std::array<sv, 24> kSurnames = {
    "Okonkwo-Lind P", "Brandvold K", "Szabo-Merin A", "Faltin R", "Ekwall M", "Ndiaye F", "Petrakis N",
    "Aldana-Ruiz C", "Rautio H", "Ekholm V", "Gallacher S", "Brook O", "Horvath E", "Tamsin G", "Quarrie B",
    "Voss-Amadi L", "Kettunen R", "Ibarra M", "Varga T", "Holm-Lindqvist E", "Achterberg L", "Moreau-Castell D",
    "Oyelaran S", "Lindqvist J"};

constexpr std::array<sv, 8> kJournals = {
    "Journal of Invented Cardiology", "Pacing Reports", "Heart Device Quarterly", "Invented Toxicology Letters",
    "Hospital Waste Review", "Geriatric Device Studies", "Annals of Implant Surgery", "Clinical Battery Safety"};

constexpr std::array<sv, 16> kTerms = {
    "leadless pacemaker (tw)", "aged", "battery", "lithium iodide", "device removal", "equipment failure",
    "registries", "cardiac pacing", "infection", "toxicity", "implant retrieval", "follow-up studies", "mortality",
    "elderly", "prosthesis", "leakage"};

constexpr std::array<sv, 3> kFiles = {"MEDFILE", "TOXFILE", "BACKFILE"};

constexpr std::array<sv, 12> kMonths = {
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string format(const char* fmt, auto... args) {
  char buf[256];
  const int n = std::snprintf(buf, sizeof buf, fmt, args...);
  return std::string(buf, static_cast<std::size_t>(n < 0 ? 0 : n));
}

class Generator {
 public:
  Generator(const std::string& path, int64_t target) : rng_(0x4E4C4D01u), target_(target) {
    out_ = std::fopen(path.c_str(), "wb");
    if (!out_) throw std::runtime_error("cannot create " + path);
    buf_.reserve(kFlushAt + 4096);
    result_.path = path;
    makeTextPool();
  }
  ~Generator() {
    if (out_) std::fclose(out_);
  }

  SyntheticCapture run() {
    logon();
    int searches = 0;
    while (bytes() < target_) {
      if (++searches % 300 == 0) {
        signOff();
        logon();
      } else if (searches % 40 == 0) {
        changeFile();
      }
      searchAndPrint();
    }
    signOff();
    flush();
    // On disk before any case is timed, so that its write-back does not run beside them.
    if (std::fflush(out_) != 0 || ::fsync(::fileno(out_)) != 0 || std::fclose(out_) != 0) {
      out_ = nullptr;
      throw std::runtime_error("cannot write " + result_.path);
    }
    out_ = nullptr;
    result_.bytes = written_;
    return result_;
  }

 private:
  static constexpr std::size_t kFlushAt = 1 << 20;

  int64_t bytes() const { return written_ + static_cast<int64_t>(buf_.size()); }

  void line(sv s) {
    buf_.append(s);
    buf_.append("\r\n");
    ++result_.lines;
    if (buf_.size() >= kFlushAt) flush();
  }
  void blank() { line({}); }

  void flush() {
    if (!buf_.empty() && std::fwrite(buf_.data(), 1, buf_.size(), out_) != buf_.size())
      throw std::runtime_error("cannot write " + result_.path);
    written_ += static_cast<int64_t>(buf_.size());
    buf_.clear();
  }

  // Continuation lines of 50 to 70 characters behind a six-blank indent. A few hold a
  // Latin-1 letter or a tab, so that the cleaning has work.
  void makeTextPool() {
    pool_.reserve(4096);
    for (int i = 0; i < 4096; ++i) {
      std::string s = "      ";
      const std::size_t width = 6 + rng_.between(50, 70);
      while (s.size() < width) {
        if (s.size() > 6) s += ' ';
        s += rng_.pick(kWords);
      }
      if (rng_.chance(10)) s[s.size() / 2] = '\xE9';
      if (rng_.chance(5)) s[s.size() / 3] = '\t';
      pool_.push_back(std::move(s));
    }
  }
  const std::string& text() { return pool_[rng_.below(static_cast<uint32_t>(pool_.size()))]; }
  // A field: its tag, then the first text line, then indented continuations.
  void field(sv tag, uint32_t continuations) {
    line(std::string(tag) + "  - " + text().substr(6));
    for (uint32_t i = 0; i < continuations; ++i) line(text());
  }

  void prompt(sv answer) {
    line("USER:");
    line(answer);
    line("PROG:");
  }

  void logon() {
    line("CONNECT 9600");
    line("MEDICAL RETRIEVAL NETWORK - INVENTED HOST 4");
    line("ENTER USER CODE");
    prompt("QX7741");
    line("WELCOME TO THE MEDICAL RETRIEVAL SERVICE");
    file_ = kFiles[0];
    line(format("FILE %s IS NOW IN USE.  UPDATED 03/11/24.", file_.data()));
    sets_ = 0;
  }

  void changeFile() {
    line(format("SS %d /C?", sets_ + 1));
    file_ = rng_.pick(kFiles);
    prompt(format("file %s", file_.data()));
    line(format("FILE %s IS NOW IN USE.", file_.data()));
    sets_ = 0;
  }

  void signOff() {
    line(format("SS %d /C?", sets_ + 1));
    prompt("stop");
    line(format("TIME 00:%02u:%02u", rng_.below(60), rng_.below(60)));
    line(format("THE COST OF THIS SESSION IS $%u.%02u", rng_.between(2, 80), rng_.below(100)));
    line("GOOD BYE!");
    line("*** DISCONNECTED");
    blank();
  }

  void searchAndPrint() {
    ++sets_;
    const uint32_t found = rng_.between(1, 30);
    line(format("SS %d /C?", sets_));
    prompt(format("%s and %s", rng_.pick(kTerms).data(), rng_.pick(kTerms).data()));
    line(format("SS (%d) PSTG (%u)", sets_, found));
    line(format("SS %d /C?", sets_ + 1));
    const bool full = rng_.chance(700);
    prompt(full ? "print full" : "prt ti so");
    for (uint32_t n = 1; n <= found; ++n) {
      if (n % 10 == 1 && n > 1) {
        line("CONTINUE PRINTING? (YES/NO)");
        prompt("Y");
      }
      blank();
      citation(n, full);
    }
    if (rng_.chance(200)) {
      line(format("READY TO PRINT FROM SS %d ON THE OFFLINE PRINTER.", sets_));
      prompt("n");
    } else {
      line("OK");
    }
  }

  void citation(uint32_t n, bool full) {
    line(full ? format("%u (%s)", n, file_.data()) : std::to_string(n));
    ++result_.records;
    if (full) {
      std::string authors = "AU  - ";
      for (uint32_t i = rng_.between(1, 5); i > 0; --i) {
        authors += rng_.pick(kSurnames);
        if (i > 1) authors += " ; ";
      }
      line(authors);
    }
    field("TI", rng_.between(0, 2));
    line(format("SO  - %s %u %s;%u(%u):%u-%u", rng_.pick(kJournals).data(), rng_.between(1970, 2024),
                rng_.pick(kMonths).data(), rng_.between(1, 60), rng_.between(1, 12), rng_.between(1, 400),
                rng_.between(401, 480)));
    if (!full) return;
    if (rng_.chance(700)) {
      blank();
      field("AB", rng_.between(3, 12));
    }
    field("MH", rng_.between(0, 2));
  }

  Rng rng_;
  int64_t target_;
  std::FILE* out_ = nullptr;
  std::string buf_;
  int64_t written_ = 0;
  SyntheticCapture result_;
  std::vector<std::string> pool_;
  sv file_ = kFiles[0];
  int sets_ = 0;
};

}  // namespace

SyntheticCapture WriteNlmCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
