// Generator of a large DIALOG session capture with the line shapes of real sessions.
#include "synthetic_capture.h"

#include <algorithm>
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

// splitmix64: small, fast and the same on every platform, so a size always gives
// the same file.
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

// Words of the running text. None holds "off": in a prompt it would open the logoff
// block, and the generator keeps prompts and record text apart from that rule.
constexpr std::array<sv, 64> kWords = {
    "water", "table", "peat", "bog", "fen", "drain", "ditch", "dam", "surface", "sites",
    "season", "seasons", "plots", "cover", "carbon", "methane", "nitrogen", "flux", "fluxes",
    "soil", "sediment", "restored", "rewetted", "drained", "reference", "years", "after",
    "before", "within", "between", "mean", "median", "rose", "fell", "slowed", "measured",
    "followed", "compared", "showed", "explained", "variation", "growing", "vegetation",
    "moss", "sedge", "grazing", "mowing", "cattle", "the", "of", "and", "in", "on", "by",
    "was", "were", "a", "to", "from", "with", "than", "field", "study", "levels"};

constexpr std::array<sv, 24> kSurnames = {
    "Varga T", "Holm-Lindqvist E", "Okafor-Reyes P", "Brandvold K", "Szabo-Merin A",
    "Lindqvist J", "Achterberg L", "Moreau-Castell D", "Faltin R", "Oyelaran S", "Ekwall M",
    "Petrakis N", "Aldana-Ruiz C", "Rautio H", "Ekholm V", "Gallacher S", "Ndiaye F",
    "Brook O", "Horvath E", "Tamsin G", "Quarrie B", "Voss-Amadi L", "Kettunen R", "Ibarra M"};

constexpr std::array<sv, 8> kJournals = {
    "Journal of Applied Mire Science (Netherlands)", "Wetland Biogeochemistry Letters (England)",
    "Journal of River Landscapes (Germany)", "Plant Ecology of Northern Europe (Sweden)",
    "Coastal Habitat Review (United States)", "Journal of Peatland Engineering (Finland)",
    "Fen and Marsh Studies (Poland)", "Soil Water Quarterly (Canada)"};

constexpr std::array<sv, 20> kTerms = {
    "wetland?", "peat?", "restoration", "ditch(w)block?", "fen?", "bog?", "methane",
    "water()table", "sphagnum", "rewet?", "carbon", "nitrogen", "sediment?", "drain?",
    "floodplain?", "salt()marsh?", "grazing", "subsidence", "hydrology", "mire?"};

constexpr std::array<sv, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

struct DialogFile {
  int number;
  sv name;
  sv copyright;
};

constexpr std::array<DialogFile, 4> kFiles = {{
    {155, "BioMed Abstracts", "(c) format only 2024 Dialog. All rts. reserv."},
    {402, "Soil and Sediment Index", "(c) 2024 Soil Survey Data Cooperative. All rts. reserv."},
    {688, "Northern Waters Technical Reports", "(c) 2024 Northern Waters Board. All rts. reserv."},
    {714, "Regional Land Use Digest", "(c) 2024 Land Use Digest Ltd. All rts. reserv."},
}};

// Print formats, their share of prints (per thousand) and their largest print range.
struct Format {
  sv command;  // as typed after the set number
  sv label;    // as the label shows it
  uint32_t share;
  uint32_t maxItems;
};

constexpr std::array<Format, 6> kFormats = {{
    {"5", "5", 350, 20},
    {"3", "3", 200, 30},
    {"6", "6", 200, 50},
    {"8", "8", 100, 25},
    {"kwic", "KWIC", 100, 20},
    {"3,k", "3,K", 50, 15},
}};

// The .FSC counter of the filter is 16 bits; commands that feed the file stop short
// of this, with room left for the closing logoff block.
constexpr int64_t kFscBudget = 30000;
constexpr int64_t kLargestFscEvent = 40;

std::string format(const char* fmt, auto... args) {
  char buf[256];
  const int n = std::snprintf(buf, sizeof buf, fmt, args...);
  return std::string(buf, static_cast<std::size_t>(n < 0 ? 0 : n));
}

class Generator {
 public:
  Generator(const std::string& path, int64_t target) : rng_(0x5A0A7A11u), target_(target) {
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
    logon(true);
    begin();
    while (bytes() < target_) {
      if (recordsInSession_ > 60000 && affordable()) {
        logoff();
        logon(false);
        begin();
      } else if (printsInFile_ > 300 && affordable()) {
        begin();
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
  bool affordable() const { return result_.fscLines + kLargestFscEvent <= kFscBudget; }

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

  // A block of the .FSC runs from its command to the next prompt, and the prompt that
  // closes it adds a blank separator: count what the block function wrote.
  template <typename F>
  void fscBlock(F&& emit) {
    const int64_t before = result_.lines;
    emit();
    result_.fscLines += result_.lines - before;
    ++result_.fscSeparators;
  }

  // Lines of running text, 40 to 76 characters. A few hold a Latin-1 letter or a tab,
  // as captures do, so that the line cleaning has something to change.
  void makeTextPool() {
    pool_.reserve(4096);
    for (int i = 0; i < 4096; ++i) {
      std::string s;
      const std::size_t width = rng_.between(40, 76);
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

  void logon(bool first) {
    line("Trying 31060000447...Open");
    blank();
    line("DIALOG INFORMATION SERVICES");
    line("PLEASE LOGON:");
    line(" *******");
    line("ENTER PASSWORD:");
    line(" *********");
    line("Welcome to DIALOG");
    blank();
    line("Dialog level 24.03.12D");
    blank();
    line(first ? "Last logoff: 11mar24 16:40:02" : "Last logoff: 14mar24 " + clock());
    line("Logon file001 14mar24 " + clock());
    line("*** ANNOUNCEMENTS ***");
    blank();
    line("File   1:Education Resources Abstracts 1966-2024/Mar");
    line("       (c) format only 2024 Dialog");
    blank();
    line("      Set  Items  Description");
    line("      ---  -----  -----------");
    recordsInSession_ = 0;
  }

  void costLines(const char* session) {
    line(format("       14mar24 %s User208841 Session %s.%d", clock().c_str(), session, ++sessionStep_));
    line(format("           $%d.%02d   0.%03d DialUnits File%d", rng_.below(20), rng_.below(100),
                rng_.below(1000), file_->number));
    line(format("              $%d.%02d  %d Type(s) in Format  5", rng_.below(40), rng_.below(100),
                rng_.between(1, 200)));
    line(format("     $%d.%02d  Estimated cost File%d", rng_.below(60), rng_.below(100), file_->number));
    line(format("     $0.%02d  TELNET", rng_.below(100)));
    line(format("     $%d.%02d  Estimated cost this search", rng_.below(60), rng_.below(100)));
    line(format("    $%d.%02d  Estimated total session cost   %d.%03d DialUnits", rng_.below(300),
                rng_.below(100), rng_.below(9), rng_.below(1000)));
  }

  void begin() {
    file_ = &kFiles[fileTurn_++ % kFiles.size()];
    fscBlock([&] {
      line(format("?b %d", file_->number));
      costLines("D3127");
      blank();
      line(format("File %d:%s 1966-2024/Mar W2", file_->number, file_->name.data()));
      line("       (c) format only 2024 Dialog");
      blank();
      line("      Set  Items  Description");
      line("      ---  -----  -----------");
    });
    sets_ = 0;
    printsInFile_ = 0;
  }

  void logoff() {
    const int64_t before = result_.lines;
    line("?logoff");
    costLines("D3127");
    line(format(" Logoff: level 24.03.12 D %s", clock().c_str()));
    result_.fscLines += result_.lines - before;
    ++result_.fscSeparators;  // the blank line written after "Logoff:"
    blank();
    line("Connection closed by foreign host.");
  }

  // A select, sometimes a combination or a display of the sets, then a print.
  void searchAndPrint() {
    if (sets_ < 900) {
      line("?s " + std::string(rng_.pick(kTerms)));
      ++sets_;
      line(format("      S%d  %6u  %s", sets_, rng_.between(1, 90000), "TERM"));
      if (sets_ > 1 && rng_.chance(30) && affordable()) {
        const int a = static_cast<int>(rng_.between(1, static_cast<uint32_t>(sets_)));
        fscBlock([&] {
          line(format("?s s%d and s%d", a, sets_));
          line(format("           %5u  S%d", rng_.between(1, 9000), a));
          line(format("           %5u  S%d", rng_.between(1, 9000), sets_));
          ++sets_;
          line(format("      S%d  %6u  S%d AND S%d", sets_, rng_.between(1, 900), a, sets_ - 1));
        });
      }
    }
    if (rng_.chance(5) && affordable()) {
      fscBlock([&] {
        line("?ds");
        blank();
        line("Set     Items   Description");
        for (int s = std::max(1, sets_ - 11); s <= sets_; ++s) line(format("S%-3d %8u   TERM", s, rng_.between(1, 90000)));
      });
    }
    if (rng_.chance(10)) {
      line(format("?t s%d/5/1", sets_ + 5));
      line(format(">>>Set %d does not exist", sets_ + 5));
    }
    print();
  }

  void print() {
    uint32_t roll = rng_.below(1000);
    const Format* f = &kFormats[0];
    for (const Format& candidate : kFormats) {
      if (roll < candidate.share) {
        f = &candidate;
        break;
      }
      roll -= candidate.share;
    }
    const int set = static_cast<int>(rng_.between(1, static_cast<uint32_t>(sets_ > 0 ? sets_ : 1)));
    const int items = static_cast<int>(rng_.between(1, f->maxItems));
    line(format("?%s s%d/%s/1-%d", rng_.chance(100) ? "type" : "t", set, f->command.data(), items));
    blank();
    for (int item = 1; item <= items; ++item) {
      if (item > 1) {
        const uint32_t gap = rng_.below(10);
        if (gap >= 1) blank();
        if (gap >= 7) blank();
      }
      std::string label = format(" %d/%s/%d", set, f->label.data(), item);
      if (f->label == "5" && rng_.chance(400))
        label += format("     (Item %d from file: %d)", item, file_->number);
      line(label);
      record(*f);
      ++result_.records;
      ++recordsInSession_;
    }
    ++printsInFile_;
  }

  void header() {
    line(format("DIALOG(R)File %d:%s", file_->number, file_->name.data()));
    line(file_->copyright);
    blank();
  }
  void accession() { line(format("%08u   Accession: %02u-%06u", rng_.between(1000000, 99999999), rng_.below(25), rng_.below(1000000))); }
  void title() {
    line("  " + text());
    if (rng_.chance(500)) line(text());
  }
  void citation() {
    std::string authors = "  ";
    const uint32_t n = rng_.between(1, 4);
    for (uint32_t i = 0; i < n; ++i) {
      if (i) authors += "; ";
      authors += rng_.pick(kSurnames);
    }
    line(authors);
    line(format("  %s  %s %u,  %u (%u)", rng_.pick(kJournals).data(), rng_.pick(kMonths).data(),
                rng_.between(1990, 2024), rng_.between(1, 80), rng_.between(1, 12)));
    line(format("p%u-%u,  ISSN: %04u-%04u--Print   Journal Code: %u", rng_.between(1, 400),
                rng_.between(401, 420), rng_.below(10000), rng_.below(10000), rng_.between(8000000, 9999999)));
    line("  Document type: Journal Article");
    line("  Languages: ENGLISH");
  }
  void paragraph(uint32_t minLines, uint32_t maxLines) {
    const uint32_t n = rng_.between(minLines, maxLines);
    line("  " + text());
    for (uint32_t i = 1; i < n; ++i) line(text());
  }
  void descriptors() {
    line("  Descriptors: *" + text());
    if (rng_.chance(600)) line(text());
  }
  void excerpt() { line("..." + text() + "..."); }

  void record(const Format& f) {
    const sv kind = f.label;
    if (kind == "6") {
      accession();
      title();
      return;
    }
    header();
    accession();
    title();
    if (kind == "KWIC") {
      const uint32_t n = rng_.between(1, 3);
      for (uint32_t i = 0; i < n; ++i) {
        blank();
        excerpt();
        if (rng_.chance(500)) line(text() + "...");
      }
      return;
    }
    if (kind == "8") {
      descriptors();
      line("  Identifiers: " + text());
      return;
    }
    citation();
    if (kind == "3,K") {
      blank();
      excerpt();
      return;
    }
    if (kind == "5") {
      line("  Record type: Abstract; Completed");
      // Runs of blank lines inside a record: the filter keeps one of each run.
      const uint32_t paragraphs = rng_.between(1, 3);
      for (uint32_t p = 0; p < paragraphs; ++p) {
        const uint32_t run = rng_.between(1, 3);
        for (uint32_t i = 0; i < run; ++i) blank();
        paragraph(3, 9);
      }
      descriptors();
      line(format("  Record Date Created: %u%02u%02u", rng_.between(2000, 2024), rng_.between(1, 12), rng_.between(1, 28)));
      line(format("  Entry Date: %02u/%02u/%u", rng_.between(1, 12), rng_.between(1, 28), rng_.between(2000, 2024)));
    }
  }

  Rng rng_;
  int64_t target_;
  std::FILE* out_ = nullptr;
  std::string buf_;
  int64_t written_ = 0;
  SyntheticCapture result_;
  std::vector<std::string> pool_;
  const DialogFile* file_ = &kFiles[0];
  std::size_t fileTurn_ = 0;
  int sets_ = 0;
  int printsInFile_ = 0;
  int64_t recordsInSession_ = 0;
  int sessionStep_ = 0;
  int seconds_ = 9 * 3600;
};

}  // namespace

SyntheticCapture WriteSyntheticCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
