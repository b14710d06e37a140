// Generator of a large DIALOG capture with prints of wanted and unwanted types.
#include "capture_dialog_types.h"

#include <algorithm>
#include <string>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

// Words of the running text. None holds "off", which would open the logoff block in a
// prompt, nor a slash, which could make a label.
constexpr std::array<sv, 40> kWords = {
    "salt", "marsh", "creek", "tide", "tidal", "flood", "ebb", "sediment", "mud", "sand", "accretion",
    "erosion", "edge", "platform", "pioneer", "zone", "vegetation", "cores", "traps", "storm", "layer",
    "grain", "nutrient", "burial", "rates", "years", "after", "before", "the", "of", "and", "in", "on",
    "by", "was", "were", "a", "to", "from", "with"};

constexpr std::array<sv, 12> kTerms = {"salt(w)marsh?", "sediment?", "accretion", "tidal()creek?", "storm?",
                                       "erosion",       "mudflat?",  "estuar?",   "nutrient?",     "burial",
                                       "pioneer",       "spartina"};

struct Format {
  sv command;  // as typed after the set number
  sv label;    // as the label shows it
  bool wanted;
  uint32_t maxItems;
};

constexpr std::array<Format, 7> kFormats = {{
    {"3", "3", true, 20},
    {"5", "5", true, 12},
    {"8", "8", true, 20},
    {"3,ab", "3,AB", true, 15},
    {"kwic", "KWIC", true, 15},
    {"6", "6", false, 30},
    {"3,k", "3,K", false, 10},
}};

class Generator : DialogCaptureGenerator {
 public:
  Generator(const std::string& path, int64_t target)
      : DialogCaptureGenerator(path, target, 0x7E5A3B01u, kWords, 40) {}

  SyntheticCapture run() {
    logon();
    begin();
    while (out_.bytes() < target_) {
      if (printsInFile_ > 300 && affordable()) begin();
      searchAndPrint();
    }
    logoff();
    return out_.finish(result_);
  }

 private:
  void logon() {
    for (sv line : {"Trying 31060000447...Open", "", "DIALOG INFORMATION SERVICES", "PLEASE LOGON:", " *******",
                    "ENTER PASSWORD:", " *********", "Welcome to DIALOG", "", "Dialog level 24.05.02D", ""})
      out_.line(line);
    out_.line("Logon file001 06may24 " + clock_.next(rng_));
  }

  void costLines() {
    out_.line(CaptureFormat("       06may24 %s User208841 Session D4410.%d", clock_.next(rng_).c_str(), ++step_));
    out_.line(CaptureFormat("           $%u.%02u   0.%03u DialUnits File%d", rng_.below(20), rng_.below(100),
                            rng_.below(1000), file_));
    out_.line(CaptureFormat("              $%u.%02u  %u Type(s) in Format  3,AB", rng_.below(40), rng_.below(100),
                            rng_.between(1, 200)));
    out_.line(CaptureFormat("    $%u.%02u  Estimated total session cost   %u.%03u DialUnits", rng_.below(300),
                            rng_.below(100), rng_.below(9), rng_.below(1000)));
  }

  void begin() {
    file_ = file_ == 88 ? 155 : 88;
    fscBlock([&] {
      out_.line(CaptureFormat("?b %d", file_));
      costLines();
      out_.blank();
      out_.line(CaptureFormat("File %3d:Coastal and Estuarine Science 1970-2024/Apr", file_));
      out_.line("      Set  Items  Description");
    });
    sets_ = 0;
    printsInFile_ = 0;
  }

  void logoff() {
    const int64_t before = out_.lines();
    out_.line("?logoff");
    costLines();
    out_.line(CaptureFormat(" Logoff: level 24.05.02 D %s", clock_.next(rng_).c_str()));
    result_.fscLines += out_.lines() - before;
    ++result_.fscSeparators;  // the blank line written after "Logoff:"
  }

  void searchAndPrint() {
    // A label's set field has at most three characters: once the .FSC budget stops
    // the begin commands that number sets from 1 again, the prints use the sets made.
    if (sets_ >= 990) {
      print(kFormats[rng_.below(kFormats.size())]);
      return;
    }
    out_.line("?s " + std::string(rng_.pick(kTerms)));
    out_.line(CaptureFormat("      S%d  %6u  TERM", ++sets_, rng_.between(1, 90000)));
    if (sets_ > 1 && rng_.chance(40) && affordable()) {
      fscBlock([&] {
        out_.line(CaptureFormat("?s s%d and s%d", sets_ - 1, sets_));
        out_.line(CaptureFormat("      S%d  %6u  S%d AND S%d", sets_ + 1, rng_.between(1, 900), sets_ - 1, sets_));
      });
      ++sets_;
    }
    if (rng_.chance(5) && affordable()) {
      fscBlock([&] {
        out_.line("?ds");
        out_.line("Set     Items   Description");
        for (int s = std::max(1, sets_ - 5); s <= sets_; ++s) out_.line(CaptureFormat("S%-3d %8u   TERM", s, 40u));
      });
    }
    print(kFormats[rng_.below(kFormats.size())]);
  }

  void print(const Format& f) {
    const int items = static_cast<int>(rng_.between(1, f.maxItems));
    out_.line(CaptureFormat("?t s%d/%s/1-%d", sets_, f.command.data(), items));
    out_.blank();
    for (int item = 1; item <= items; ++item) {
      // Items of one print follow each other with no prompt between.
      if (item > 1 && rng_.chance(600)) out_.blank();
      out_.line(CaptureFormat(" %d/%s/%d", sets_, f.label.data(), item));
      record(f.label);
      if (f.wanted) ++result_.records;
      ++result_.labels;
    }
    ++printsInFile_;
  }

  void record(sv kind) {
    if (kind != "6") {
      out_.line(CaptureFormat("DIALOG(R)File %d:Coastal and Estuarine Science", file_));
      out_.line("(c) 2024 Marine Data Consortium. All rts. reserv.");
      out_.blank();
    }
    out_.line(CaptureFormat("%07u  CES Accession Number: %02u-%06u", rng_.between(100000, 9999999), rng_.below(25),
                            rng_.below(1000000)));
    out_.line(text());
    if (kind == "6") return;
    if (kind == "KWIC" || kind == "3,K") {
      out_.blank();
      out_.line("..." + text() + "...");
      return;
    }
    out_.line("  Author: " + text());
    if (kind == "8") {
      out_.line("  Descriptors: " + text());
      return;
    }
    out_.line(CaptureFormat("  Source: Estuarine Processes Quarterly, v %u, p %u-%u, 2023", rng_.between(1, 60),
                            rng_.between(1, 400), rng_.between(401, 420)));
    if (kind == "3") return;
    // 5 and 3,AB: an abstract, with blank runs that the filters fold.
    const uint32_t paragraphs = kind == "5" ? rng_.between(1, 3) : 1;
    for (uint32_t p = 0; p < paragraphs; ++p) {
      const uint32_t run = rng_.between(1, 3);
      for (uint32_t i = 0; i < run; ++i) out_.blank();
      const uint32_t lines = rng_.between(3, 8);
      out_.line("Abstract: " + text());
      for (uint32_t i = 1; i < lines; ++i) out_.line(text());
    }
  }

  int file_ = 155;
  int sets_ = 0;
  int step_ = 0;
  int printsInFile_ = 0;
};

}  // namespace

SyntheticCapture WriteDialogTypesCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
