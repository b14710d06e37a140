// Generator of a large Data-Star session capture with the line shapes of real sessions.
#include "capture_datastar.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

// Words of the running text, none of which makes a notice of the service.
constexpr std::array<sv, 56> kWords = {
    "mercury", "pike", "perch", "trout", "reservoir", "reservoirs", "lake", "river", "filling",
    "flooded", "forest", "soils", "peat", "sediment", "sediments", "bottom", "water", "fish",
    "samples", "sampled", "levels", "rose", "fell", "slowly", "fastest", "years", "after",
    "before", "within", "between", "mean", "shallow", "deep", "stocked", "survey", "surveyed",
    "measured", "showed", "methylmercury", "carried", "held", "least", "most", "the", "of", "and",
    "in", "on", "by", "was", "were", "a", "to", "from", "with", "than"};

constexpr std::array<sv, 16> kAuthors = {
    "Petrakis N", "Aldana-Ruiz C", "Brook O", "Horvath E", "Tamsin G", "Quarrie B", "Voss-Amadi L",
    "Kettunen R", "Ibarra M", "Ekholm V", "Ndiaye F", "Rautio H", "Faltin R", "Oyelaran S",
    "Gallacher S", "Lindqvist J"};

constexpr std::array<sv, 6> kJournals = {
    "Journal of River Landscapes", "Coastal Habitat Review", "Soil Water Quarterly",
    "Fisheries Extension Notes", "Plant Ecology of Northern Europe", "Fen and Marsh Studies"};

// A database and the width of its start lines: 14 columns for most, 13 and 15 for
// the others, so that all three label forms are made.
struct Database {
  sv code;
  sv name;
  int width;
};

constexpr std::array<Database, 4> kBases = {{
    {"LAKE", "LAKE AND RIVER ABSTRACTS 1972 - 2024/03", 14},
    {"FSHX", "FISHERIES EXTRACTS 1981 - 2024/02", 13},
    {"RIVR", "RIVER BASIN MANAGEMENT 1985 - 2024/03", 14},
    {"GEOB", "GEOSCIENCE BIBLIOGRAPHY 1975 - 2024/03", 15},
}};

constexpr std::array<sv, 10> kTerms = {
    "fish adj mercury", "reservoir$", "pike or perch", "methylmercury", "flooded adj soil$",
    "sediment$ and mercury", "trout and stock$", "lake$ near reservoir$", "bottom adj sediment$",
    "mercury.ti."};

class Generator : CaptureGenerator {
 public:
  Generator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0xDA7A57A2u, kWords) {}

  SyntheticCapture run() {
    logon();
    while (out_.bytes() < target_) {
      if (searches_ > 400) {
        logoff();
        logon();
      } else if (printsInBase_ > 40) {
        changeBase();
      }
      searchAndPrint();
    }
    logoff();
    return out_.finish(result_);
  }

 private:
  std::string clock() { return clock_.next(rng_); }

  void prompt(const std::string& command) {
    out_.line("D-S - SEARCH MODE - ENTER QUERY");
    out_.line(std::to_string(++set_) + "_: " + command);
  }

  void logon() {
    out_.line("CONNECTED TO NODE 2284 - LINE 07");
    out_.line("DATA-STAR - PLEASE ENTER YOUR PASSWORD");
    out_.line("********");
    out_.line("WELCOME TO DATA-STAR. LAST SESSION 12 MAR 2024 " + clock() + ".");
    set_ = 0;
    searches_ = 0;
    changeBase();
  }

  void changeBase() {
    base_ = &kBases[baseTurn_++ % kBases.size()];
    set_ = 0;
    prompt("..b " + std::string(base_->code));
    if (rng_.chance(200))
      out_.line("HAPPY HOUR on database " + std::string(base_->code) + " from 18:00 CET: prints at half price.");
    out_.line("DATABASE " + std::string(base_->code) + ": " + std::string(base_->name));
    printsInBase_ = 0;
  }

  void logoff() {
    prompt("..off");
    out_.line(CaptureFormat("CONNECT TIME 0:%02u:%02u   COST SFR %u.%02u", rng_.below(60), rng_.below(60),
                            rng_.between(5, 150), rng_.below(100)));
    out_.line("D-S - SESSION ENDED " + clock());
    out_.blank();
  }

  void searchAndPrint() {
    ++searches_;
    const uint32_t found = rng_.between(1, 900);
    prompt(std::string(rng_.pick(kTerms)));
    out_.line(CaptureFormat("RESULT %7u", found));
    const uint32_t first = rng_.chance(700) ? 1 : rng_.between(1, found);
    const uint32_t last = std::min(found, first + rng_.between(0, 25));
    prompt(CaptureFormat("..p %d %u-%u all", set_, first, last));
    for (uint32_t n = first; n <= last; ++n) {
      document(n);
      out_.line(n == last && last == found ? "END OF DOCUMENTS IN LIST" : "END OF DOCUMENT");
    }
    ++printsInBase_;
  }

  // The number stands right-justified so that its last digit is the column before
  // the two blanks: "     123  LAKE" at width 14.
  void startLine(uint32_t number) {
    const int lead = base_->width - 9;  // blanks ahead of the three number columns
    out_.line(CaptureFormat("%*s%3u  %s", lead, "", number, base_->code.data()));
    ++result_.records;
  }

  void document(uint32_t number) {
    startLine(number);
    out_.line(CaptureFormat("AN  %08u %s.", rng_.between(10000000, 99999999), base_->code.data()));
    std::string authors = "AU  ";
    const uint32_t n = rng_.between(1, 4);
    for (uint32_t i = 0; i < n; ++i) {
      if (i) authors += ", ";
      authors += rng_.pick(kAuthors);
    }
    out_.line(authors + ".");
    out_.line("TI  " + text() + ".");
    if (rng_.chance(300)) out_.line("    " + text() + ".");
    out_.line(CaptureFormat("SO  %s, %u, %u(%u), %u-%u.", rng_.pick(kJournals).data(), rng_.between(1980, 2024),
                            rng_.between(1, 40), rng_.between(1, 12), rng_.between(1, 400), rng_.between(401, 420)));
    // The text field, in pages: a "TX" line ahead of it, an indented page line
    // between the pages, empty lines between paragraphs. The filter drops all three.
    const uint32_t pages = rng_.between(1, 3);
    out_.line(CaptureFormat("TX 1 OF %u.", pages));
    for (uint32_t page = 1; page <= pages; ++page) {
      if (page > 1) out_.line(CaptureFormat("  %u OF %u.", page, pages));
      const uint32_t paragraphs = rng_.between(1, 2);
      for (uint32_t p = 0; p < paragraphs; ++p) {
        if (p > 0) out_.blank();
        out_.line((page == 1 && p == 0 ? "AB  " : "    ") + text());
        const uint32_t lines = rng_.between(2, 7);
        for (uint32_t i = 0; i < lines; ++i) out_.line("    " + text());
      }
    }
  }

  const Database* base_ = &kBases[0];
  std::size_t baseTurn_ = 0;
  int set_ = 0;
  int searches_ = 0;
  int printsInBase_ = 0;
};

}  // namespace

SyntheticCapture WriteDataStarCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
