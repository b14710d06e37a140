// Generator of a large DIALOG session capture with the line shapes of real sessions.
#include "synthetic_capture.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

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

class Generator : DialogCaptureGenerator {
 public:
  Generator(const std::string& path, int64_t target)
      : DialogCaptureGenerator(path, target, 0x5A0A7A11u, kWords, 40) {}

  SyntheticCapture run() {
    logon(true);
    begin();
    while (out_.bytes() < target_) {
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
    return out_.finish(result_);
  }

 private:
  std::string clock() { return clock_.next(rng_); }

  void logon(bool first) {
    out_.line("Trying 31060000447...Open");
    out_.blank();
    out_.line("DIALOG INFORMATION SERVICES");
    out_.line("PLEASE LOGON:");
    out_.line(" *******");
    out_.line("ENTER PASSWORD:");
    out_.line(" *********");
    out_.line("Welcome to DIALOG");
    out_.blank();
    out_.line("Dialog level 24.03.12D");
    out_.blank();
    out_.line(first ? "Last logoff: 11mar24 16:40:02" : "Last logoff: 14mar24 " + clock());
    out_.line("Logon file001 14mar24 " + clock());
    out_.line("*** ANNOUNCEMENTS ***");
    out_.blank();
    out_.line("File   1:Education Resources Abstracts 1966-2024/Mar");
    out_.line("       (c) format only 2024 Dialog");
    out_.blank();
    out_.line("      Set  Items  Description");
    out_.line("      ---  -----  -----------");
    recordsInSession_ = 0;
  }

  void costLines(const char* session) {
    out_.line(CaptureFormat("       14mar24 %s User208841 Session %s.%d", clock().c_str(), session, ++sessionStep_));
    out_.line(CaptureFormat("           $%d.%02d   0.%03d DialUnits File%d", rng_.below(20), rng_.below(100),
                rng_.below(1000), file_->number));
    out_.line(CaptureFormat("              $%d.%02d  %d Type(s) in Format  5", rng_.below(40), rng_.below(100),
                rng_.between(1, 200)));
    out_.line(CaptureFormat("     $%d.%02d  Estimated cost File%d", rng_.below(60), rng_.below(100), file_->number));
    out_.line(CaptureFormat("     $0.%02d  TELNET", rng_.below(100)));
    out_.line(CaptureFormat("     $%d.%02d  Estimated cost this search", rng_.below(60), rng_.below(100)));
    out_.line(CaptureFormat("    $%d.%02d  Estimated total session cost   %d.%03d DialUnits", rng_.below(300),
                rng_.below(100), rng_.below(9), rng_.below(1000)));
  }

  void begin() {
    file_ = &kFiles[fileTurn_++ % kFiles.size()];
    fscBlock([&] {
      out_.line(CaptureFormat("?b %d", file_->number));
      costLines("D3127");
      out_.blank();
      out_.line(CaptureFormat("File %d:%s 1966-2024/Mar W2", file_->number, file_->name.data()));
      out_.line("       (c) format only 2024 Dialog");
      out_.blank();
      out_.line("      Set  Items  Description");
      out_.line("      ---  -----  -----------");
    });
    sets_ = 0;
    printsInFile_ = 0;
  }

  void logoff() {
    const int64_t before = out_.lines();
    out_.line("?logoff");
    costLines("D3127");
    out_.line(CaptureFormat(" Logoff: level 24.03.12 D %s", clock().c_str()));
    result_.fscLines += out_.lines() - before;
    ++result_.fscSeparators;  // the blank line written after "Logoff:"
    out_.blank();
    out_.line("Connection closed by foreign host.");
  }

  // A select, sometimes a combination or a display of the sets, then a print.
  void searchAndPrint() {
    if (sets_ < 900) {
      out_.line("?s " + std::string(rng_.pick(kTerms)));
      ++sets_;
      out_.line(CaptureFormat("      S%d  %6u  %s", sets_, rng_.between(1, 90000), "TERM"));
      if (sets_ > 1 && rng_.chance(30) && affordable()) {
        const int a = static_cast<int>(rng_.between(1, static_cast<uint32_t>(sets_)));
        fscBlock([&] {
          out_.line(CaptureFormat("?s s%d and s%d", a, sets_));
          out_.line(CaptureFormat("           %5u  S%d", rng_.between(1, 9000), a));
          out_.line(CaptureFormat("           %5u  S%d", rng_.between(1, 9000), sets_));
          ++sets_;
          out_.line(CaptureFormat("      S%d  %6u  S%d AND S%d", sets_, rng_.between(1, 900), a, sets_ - 1));
        });
      }
    }
    if (rng_.chance(5) && affordable()) {
      fscBlock([&] {
        out_.line("?ds");
        out_.blank();
        out_.line("Set     Items   Description");
        for (int s = std::max(1, sets_ - 11); s <= sets_; ++s) out_.line(CaptureFormat("S%-3d %8u   TERM", s, rng_.between(1, 90000)));
      });
    }
    if (rng_.chance(10)) {
      out_.line(CaptureFormat("?t s%d/5/1", sets_ + 5));
      out_.line(CaptureFormat(">>>Set %d does not exist", sets_ + 5));
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
    out_.line(CaptureFormat("?%s s%d/%s/1-%d", rng_.chance(100) ? "type" : "t", set, f->command.data(), items));
    out_.blank();
    for (int item = 1; item <= items; ++item) {
      if (item > 1) {
        const uint32_t gap = rng_.below(10);
        if (gap >= 1) out_.blank();
        if (gap >= 7) out_.blank();
      }
      std::string label = CaptureFormat(" %d/%s/%d", set, f->label.data(), item);
      if (f->label == "5" && rng_.chance(400))
        label += CaptureFormat("     (Item %d from file: %d)", item, file_->number);
      out_.line(label);
      record(*f);
      ++result_.records;
      ++recordsInSession_;
    }
    ++printsInFile_;
  }

  void header() {
    out_.line(CaptureFormat("DIALOG(R)File %d:%s", file_->number, file_->name.data()));
    out_.line(file_->copyright);
    out_.blank();
  }
  void accession() { out_.line(CaptureFormat("%08u   Accession: %02u-%06u", rng_.between(1000000, 99999999), rng_.below(25), rng_.below(1000000))); }
  void title() {
    out_.line("  " + text());
    if (rng_.chance(500)) out_.line(text());
  }
  void citation() {
    std::string authors = "  ";
    const uint32_t n = rng_.between(1, 4);
    for (uint32_t i = 0; i < n; ++i) {
      if (i) authors += "; ";
      authors += rng_.pick(kSurnames);
    }
    out_.line(authors);
    out_.line(CaptureFormat("  %s  %s %u,  %u (%u)", rng_.pick(kJournals).data(), rng_.pick(kCaptureMonths).data(),
                rng_.between(1990, 2024), rng_.between(1, 80), rng_.between(1, 12)));
    out_.line(CaptureFormat("p%u-%u,  ISSN: %04u-%04u--Print   Journal Code: %u", rng_.between(1, 400),
                rng_.between(401, 420), rng_.below(10000), rng_.below(10000), rng_.between(8000000, 9999999)));
    out_.line("  Document type: Journal Article");
    out_.line("  Languages: ENGLISH");
  }
  void paragraph(uint32_t minLines, uint32_t maxLines) {
    const uint32_t n = rng_.between(minLines, maxLines);
    out_.line("  " + text());
    for (uint32_t i = 1; i < n; ++i) out_.line(text());
  }
  void descriptors() {
    out_.line("  Descriptors: *" + text());
    if (rng_.chance(600)) out_.line(text());
  }
  void excerpt() { out_.line("..." + text() + "..."); }

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
        out_.blank();
        excerpt();
        if (rng_.chance(500)) out_.line(text() + "...");
      }
      return;
    }
    if (kind == "8") {
      descriptors();
      out_.line("  Identifiers: " + text());
      return;
    }
    citation();
    if (kind == "3,K") {
      out_.blank();
      excerpt();
      return;
    }
    if (kind == "5") {
      out_.line("  Record type: Abstract; Completed");
      // Runs of blank lines inside a record: the filter keeps one of each run.
      const uint32_t paragraphs = rng_.between(1, 3);
      for (uint32_t p = 0; p < paragraphs; ++p) {
        const uint32_t run = rng_.between(1, 3);
        for (uint32_t i = 0; i < run; ++i) out_.blank();
        paragraph(3, 9);
      }
      descriptors();
      out_.line(CaptureFormat("  Record Date Created: %u%02u%02u", rng_.between(2000, 2024), rng_.between(1, 12), rng_.between(1, 28)));
      out_.line(CaptureFormat("  Entry Date: %02u/%02u/%u", rng_.between(1, 12), rng_.between(1, 28), rng_.between(2000, 2024)));
    }
  }

  const DialogFile* file_ = &kFiles[0];
  std::size_t fileTurn_ = 0;
  int sets_ = 0;
  int printsInFile_ = 0;
  int64_t recordsInSession_ = 0;
  int sessionStep_ = 0;
};

}  // namespace

SyntheticCapture WriteSyntheticCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
