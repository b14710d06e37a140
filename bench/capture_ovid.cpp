// Generator of a large Ovid session capture with the line shapes of real sessions.
#include "capture_ovid.h"

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace zv::bench {

namespace {

using sv = std::string_view;

// splitmix64, as the DIALOG generator uses: the same size gives the same file.
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

constexpr std::array<sv, 60> kWords = {
    "otter", "otters", "mink", "river", "rivers", "bank", "banks", "den", "dens", "reach", "reaches", "weir",
    "sluice", "alder", "willow", "spraint", "survey", "surveys", "tracking", "winter", "summer", "season",
    "flow", "regulated", "lowland", "upland", "canalised", "reinforced", "timber", "stone", "works", "water",
    "quality", "prey", "fish", "eel", "crayfish", "use", "sites", "counts", "showed", "compared", "measured",
    "fell", "rose", "within", "between", "after", "before", "the", "of", "and", "in", "on", "by", "was",
    "were", "a", "to", "with"};

constexpr std::array<sv, 16> kAuthors = {
    "Quellmark, Annika B.", "Tressidy, Paul L.", "Oyelaran, T. M.", "Vasquell, Ines.", "Brandt-Hollis, Ewan.",
    "Pellworth, Sigrun.", "Achterberg, L. J.", "Nwosu-Kell, Ada.", "Faltin, Rudi.", "Ekwall, Maj.",
    "Rautio, Hanna K.", "Ibarra, Marta.", "Gallacher, S. D.", "Kettunen, Risto.", "Voss-Amadi, Lena.",
    "Horvath, Edit."};

constexpr std::array<sv, 8> kJournals = {
    "Journal of Inland Mammal Studies", "River Works Quarterly", "Freshwater Survey Methods", "Weir and Sluice",
    "Riparian Ecology Letters", "Lowland Waters Review", "Bulletin of Bank Fauna", "Canal and Catchment"};

constexpr std::array<sv, 4> kDatabases = {
    "Verdant Index of Freshwater Ecology <1985 to February 1997>", "Mammal Field Reports <1979 to 1996>",
    "Catchment Engineering Abstracts <1988 to January 1997>", "Inland Fisheries Digest <1990 to 1997 Week 8>"};

constexpr std::array<sv, 12> kTerms = {
    "exp otters/", "river bank$.tw.", "exp mink/", "spraint$.tw.", "den site$.tw.", "weir$.tw.",
    "exp rivers/", "bank reinforcement.tw.", "radio tracking.mp.", "alder$.tw.", "canali?ed.tw.", "exp eels/"};

std::string format(const char* fmt, auto... args) {
  char buf[256];
  const int n = std::snprintf(buf, sizeof buf, fmt, args...);
  return std::string(buf, static_cast<std::size_t>(n < 0 ? 0 : n));
}

constexpr sv kMargin = "         ";  // 9 columns

class Generator {
 public:
  Generator(const std::string& path, int64_t target) : rng_(0x0F1D0F1Du), target_(target) {
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
    while (bytes() < target_) {
      if (printsInSession_ >= 400) {
        logoff();
        logon();
      }
      searchAndPrint();
    }
    logoff();
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
  void body(sv s) {
    buf_.append(kMargin);
    line(s);
  }

  void flush() {
    if (!buf_.empty() && std::fwrite(buf_.data(), 1, buf_.size(), out_) != buf_.size())
      throw std::runtime_error("cannot write " + result_.path);
    written_ += static_cast<int64_t>(buf_.size());
    buf_.clear();
  }

  // Lines of running text, 40 to 70 characters. A few hold a Latin-1 letter or a tab,
  // as captures do, so that the line cleaning has something to change.
  void makeTextPool() {
    pool_.reserve(4096);
    for (int i = 0; i < 4096; ++i) {
      std::string s;
      const std::size_t width = rng_.between(40, 70);
      while (s.size() < width) {
        if (!s.empty()) s += ' ';
        s += rng_.pick(kWords);
      }
      if (rng_.chance(10)) s[s.size() / 2] = '\xE9';
      if (rng_.chance(5)) s[s.size() / 3] = '\t';
      pool_.push_back(std::move(s));
    }
  }
  const std::string& text() { return pool_[rng_.below(static_cast<uint32_t>(pool_.size()))]; }

  std::string clock() {
    seconds_ += rng_.between(5, 90);
    return format("%02d:%02d:%02d", (seconds_ / 3600) % 24, (seconds_ / 60) % 60, seconds_ % 60);
  }

  void logon() {
    line("ATDT 5550147");
    line("CONNECT 9600");
    blank();
    line("Welcome to the Ovid online search service.");
    line(format("Username: ZV%04u", rng_.below(10000)));
    line("Password:");
    line("Session begun " + clock() + " on 14-MAR-97.");
    blank();
    printsInSession_ = 0;
  }

  void logoff() {
    blank();
    line("Enter Ovid Syntax, a set number, or \"..\" for commands: ..logoff");
    blank();
    line(format("Session ended %s.  Connect time 0:%02u:%02u.", clock().c_str(), rng_.below(60), rng_.below(60)));
    line(format("Estimated cost of this session: $%u.%02u", rng_.between(5, 200), rng_.below(100)));
    line("Thank you for using Ovid.  Good-bye.");
    blank();
    line("NO CARRIER");
  }

  // A search history under its database line, then a print of some of its citations.
  void searchAndPrint() {
    line("Database: " + std::string(rng_.pick(kDatabases)));
    line("Set   Search                                                Results");
    line("------------------------------------------------------------------");
    const uint32_t sets = rng_.between(2, 6);
    for (uint32_t s = 1; s <= sets; ++s)
      line(format("%2u    %-50s %6u", s, std::string(rng_.pick(kTerms)).c_str(), rng_.between(1, 9000)));
    blank();
    const uint32_t citations = rng_.between(1, 40);
    line(format("Enter Ovid Syntax, a set number, or \"..\" for commands: ..pr %u/1-%u doc=cit,ab", sets, citations));
    blank();
    line("Press Enter once screen capture is on, or Q to return.");
    blank();
    for (uint32_t n = 1; n <= citations; ++n) citation(n);
    // Most prints end with the notices; some run straight into the next database line.
    if (rng_.chance(800)) {
      blank();
      line("Transmission complete ...");
      line("Turn off screen capture.");
      blank();
    }
    ++printsInSession_;
  }

  // The running page: a footer after about every 60 lines of a print.
  void paged() {
    if (++pageLines_ < 60) return;
    pageLines_ = 0;
    blank();
    line(format("                                                    Page Number : %u", ++page_));
    blank();
  }

  void field(sv name) {
    line(name);
    paged();
  }
  void text(uint32_t minLines, uint32_t maxLines) {
    const uint32_t n = rng_.between(minLines, maxLines);
    for (uint32_t i = 0; i < n; ++i) {
      body(this->text());
      paged();
    }
  }

  void citation(uint32_t n) {
    line(rng_.chance(100) ? format("   <%u>   ", n) : format("<%u>", n));
    ++result_.records;
    field("Authors");
    std::string authors(rng_.pick(kAuthors));
    for (uint32_t i = rng_.between(0, 3); i > 0; --i) authors += "  " + std::string(rng_.pick(kAuthors));
    body(authors);
    if (rng_.chance(300)) {
      field("Institution");
      body("Lowland Waters Research Station, Fennbury.");
    }
    field("Title");
    text(1, 2);
    field("Source");
    body(format("%s. %u(%u):%u-%u, %u.", rng_.pick(kJournals).data(), rng_.between(1, 30), rng_.between(1, 4),
                rng_.between(1, 300), rng_.between(301, 400), rng_.between(1985, 1997)));
    if (rng_.chance(700)) {
      field("Abstract");
      text(3, 12);
      if (rng_.chance(20)) body("Records held in the Database: 1985 onward were searched.");
    }
    if (rng_.chance(500)) {
      field("Subjects");
      text(1, 3);
    }
    blank();
  }

  Rng rng_;
  int64_t target_;
  std::FILE* out_ = nullptr;
  std::string buf_;
  int64_t written_ = 0;
  SyntheticCapture result_;
  std::vector<std::string> pool_;
  int printsInSession_ = 0;
  int pageLines_ = 0;
  uint32_t page_ = 0;
  int seconds_ = 9 * 3600;
};

}  // namespace

SyntheticCapture WriteOvidCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
