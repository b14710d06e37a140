// Generator of a large DJN/R //TEXT session capture with the line shapes of real sessions.
#include "capture_djnr.h"

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

// Words of news copy, capitals included. None of them, and no line built from them,
// holds a DOCUMENT marker, an end notice or a leading "..".
constexpr std::array<sv, 64> kWords = {
    "Kestrel", "Motors", "Varnel", "Cells", "Harlow", "Vale", "Lundmark", "shares", "rose", "fell", "percent",
    "quarter", "profit", "revenue", "analysts", "said", "Monday", "Tuesday", "plant", "battery", "vans", "order",
    "contract", "council", "board", "chief", "executive", "company", "market", "prices", "expected", "would", "could",
    "the", "of", "and", "in", "on", "by", "was", "were", "a", "to", "from", "with", "than", "for", "its", "after",
    "before", "Inc.", "Ltd.", "crowns", "million", "billion", "exchange", "listing", "yard", "rail", "investors",
    "NEW", "YORK", "(AP)", "spokesman"};

constexpr std::array<sv, 8> kSources = {
    "Valley Business Wire", "Northern Markets Daily", "Quarterly Auto Review", "Harlow Vale Courier",
    "Lundmark Exchange News", "Regional Energy Letter", "The Morning Ledger", "Fleet Operators Weekly"};

constexpr std::array<sv, 12> kBylines = {
    "Imogen Trask", "Osric Pellow", "Felicity Armitage-Kwan", "Tobiah Renquist", "Maren Oduya", "Castor Vell",
    "Ines Halloran", "Piet Marchbank", "Odile Ferreira-Stone", "Hamish Quorra", "Lotte Brannagh", "Yusuf Ellery"};

constexpr std::array<sv, 16> kTerms = {
    "kestrel motors", "varnel cells", "battery", "harlow vale", "fleet order", "rail yard", "listing", "lundmark",
    "electric vans", "chief executive", "plant", "council", "merger", "profit warning", "cell prices",
    "postal service"};

constexpr std::array<sv, 12> kMonths = {
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string format(const char* fmt, auto... args) {
  char buf[256];
  const int n = std::snprintf(buf, sizeof buf, fmt, args...);
  return std::string(buf, static_cast<std::size_t>(n < 0 ? 0 : n));
}

class Generator {
 public:
  Generator(const std::string& path, int64_t target) : rng_(0xD0C0DE11u), target_(target) {
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
      if (++searches % 400 == 0) {
        disconnect();
        logon();
      }
      searchAndPrint();
    }
    disconnect();
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

  // Lines of body text, 50 to 72 characters behind the six-blank indent of the TD
  // field. A few hold a Latin-1 letter or a tab, so that the cleaning has work.
  void makeTextPool() {
    pool_.reserve(4096);
    for (int i = 0; i < 4096; ++i) {
      std::string s = "      ";
      const std::size_t width = 6 + rng_.between(50, 72);
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

  void logon() {
    line("ATDT 5551804");
    line("CONNECT 9600");
    blank();
    line("WELCOME TO THE NEWS/RETRIEVAL NETWORK");
    line("WHAT SERVICE PLEASE????");
    line("DJNS");
    line("ENTER PASSWORD");
    line("********");
    blank();
    line("        NEWS/RETRIEVAL");
    line("   COPYRIGHT (C) 2024 INVENTED NEWS CO.");
    blank();
    line("ENTER QUERY");
    line("//TEXT");
    blank();
    line("        //TEXT SEARCH SERVICES");
    blank();
    sets_ = 0;
  }

  void disconnect() {
    line("ENTER QUERY");
    line("DISCONNECT");
    line(format("SESSION TIME 00:%02u:%02u   ESTIMATED CHARGE $%u.%02u", rng_.below(60), rng_.below(60),
                rng_.between(5, 90), rng_.below(100)));
    line("DISCONNECTED");
    blank();
  }

  void searchAndPrint() {
    ++sets_;
    const uint32_t found = rng_.between(1, 25);
    line("ENTER QUERY");
    line(format("..s %s and %s", rng_.pick(kTerms).data(), rng_.pick(kTerms).data()));
    line(format("SEARCH %d RETRIEVED %u DOCUMENTS", sets_, found));
    line(format("CURRENT SET_%d: %u DOCUMENTS (NEWS WIRES 1994-2024)", sets_, found));
    line("ENTER QUERY");
    line(format("..p 1-%u full", found));
    blank();
    for (uint32_t doc = 1; doc <= found; ++doc) {
      document(doc, found);
      endOfDocument(doc, found);
    }
  }

  void document(uint32_t doc, uint32_t found) {
    if (rng_.chance(700))
      line(format("    DOCUMENT=%u                                       PAGE 1 OF %u", doc, rng_.between(1, 4)));
    else
      line(format("SEARCH %d          DOCUMENT  %u OF %u", sets_, doc, found));
    ++result_.records;
    line("  HD  " + text().substr(6, 48));
    if (rng_.chance(700)) line(format("  BY  By %s", rng_.pick(kBylines).data()));
    line(format("  SN  %s", rng_.pick(kSources).data()));
    line(format("  PD  %02u %s %u", rng_.between(1, 28), rng_.pick(kMonths).data(), rng_.between(1994, 2024)));
    line(format("  WC  %u words", rng_.between(80, 1800)));
    blank();
    const uint32_t paragraphs = rng_.between(1, 5);
    for (uint32_t p = 0; p < paragraphs; ++p) {
      if (p) blank();
      std::string first = text();
      if (p == 0) first.replace(0, 6, "  TD  ");
      line(first);
      for (uint32_t i = rng_.between(1, 7); i > 0; --i) line(text());
    }
  }

  // The notice after a document, in the shares a session shows them. A document with
  // none runs straight into the next one.
  void endOfDocument(uint32_t doc, uint32_t found) {
    const uint32_t roll = rng_.below(1000);
    if (doc == found && roll < 300) {
      line("End of documents in list");
    } else if (roll < 450) {
      blank();
      line("* END OF DOCUMENT.");
      blank();
    } else if (roll < 700) {
      line("End of document.");
      blank();
    } else if (roll < 800) {
      line("Press ENTER to see the rest of this document");
      line("ENTER QUERY");
      line("DOC+1");
      blank();
    } else if (roll < 850) {
      line("ENTER QUERY");
      line(format("   doc=%u", doc + 1));
    } else if (roll < 900) {
      line(format("CURRENT SET_%d: DOCUMENT %u OF %u", sets_, doc, found));
    } else if (roll < 950) {
      line("ENTER QUERY");
      line(" ..S");
    }
  }

  Rng rng_;
  int64_t target_;
  std::FILE* out_ = nullptr;
  std::string buf_;
  int64_t written_ = 0;
  SyntheticCapture result_;
  std::vector<std::string> pool_;
  int sets_ = 0;
};

}  // namespace

SyntheticCapture WriteDjnrCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
