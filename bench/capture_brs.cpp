// Generator of a large BRS .. (dot dot) session capture with the line shapes of real sessions.
#include "capture_brs.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

// Words of the running text. No two of them make a prompt, cost or sign-off text of
// the service ("END OF ", "SEARCH  ", "ANSWER "...), upper-cased or not.
constexpr std::array<sv, 56> kWords = {
    "water", "table", "peat", "bog", "fen", "drain", "ditch", "dam", "surface", "sites", "season",
    "plots", "cover", "carbon", "methane", "nitrogen", "flux", "soil", "sediment", "restored",
    "rewetted", "drained", "reference", "years", "after", "before", "within", "between", "mean",
    "rose", "fell", "measured", "followed", "compared", "showed", "variation", "growing", "moss",
    "sedge", "grazing", "cattle", "the", "of", "and", "in", "on", "by", "was", "were", "a", "to",
    "from", "with", "field", "study", "levels"};

constexpr std::array<sv, 16> kAuthors = {
    "Varga T.", "Holm-Lindqvist E.", "Okafor-Reyes P.", "Brandvold K.", "Szabo-Merin A.", "Lindqvist J.",
    "Achterberg L.", "Moreau-Castell D.", "Faltin R.", "Oyelaran S.", "Ekwall M.", "Petrakis N.",
    "Aldana-Ruiz C.", "Rautio H.", "Gallacher S.", "Ndiaye F."};

constexpr std::array<sv, 6> kJournals = {
    "Journal of Applied Mire Science", "Wetland Biogeochemistry Letters", "Journal of River Landscapes",
    "Fen and Marsh Studies", "Soil Water Quarterly", "Journal of Peatland Engineering"};

struct DataBase {
  sv code;
  sv banner;
};

constexpr std::array<DataBase, 4> kBases = {{
    {"AQUA", "BRS - AQUATIC AND WETLAND SCIENCES - 1979 - MAR 2024 WEEK 2"},
    {"SOIL", "BRS - SOIL AND SEDIMENT ABSTRACTS - 1984 - FEB 2024"},
    {"LAND", "BRS - LAND USE AND PLANNING DIGEST - 1988 - MAR 2024"},
    {"HYDR", "BRS - HYDROLOGY INDEX - 1972 - JAN 2024"},
}};

constexpr std::array<sv, 12> kTerms = {
    "PEAT ADJ RESTORATION", "DITCH$ ADJ BLOCK$", "METHANE AND FLUX$", "WATER ADJ TABLE",
    "SPHAGNUM", "REWET$", "SUBSIDENCE AND PEAT$", "FEN$ AND GRAZING", "CARBON ADJ STORE$",
    "SEDIMENT$ AND NITROGEN", "BOG$ SAME DAM$", "HYDROLOGY AND MIRE$"};

class Generator : CaptureGenerator {
 public:
  Generator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0xB125D07Du, kWords) {
    titles_.reserve(1024);
    for (std::size_t i = 0; i < 1024; ++i) {
      std::string t = pool_[i];
      for (char& c : t) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
      titles_.push_back(std::move(t) + ".");
    }
  }

  SyntheticCapture run() {
    logon();
    while (out_.bytes() < target_) {
      if (searches_ > 400) {
        signOff();
        logon();
      } else if (printsInBase_ > 40) {
        changeBase();
      }
      searchAndPrint();
    }
    signOff();
    return out_.finish(result_);
  }

 private:
  const std::string& text() { return rng_.pick(pool_); }
  const std::string& title() { return rng_.pick(titles_); }

  std::string clock() { return clock_.next(rng_); }

  void logon() {
    out_.line("CONNECTED TO PACKET NETWORK 3106 NODE 41A");
    out_.line("ENTER SERVICE NAME: BRS");
    out_.line("BRS/SEARCH SERVICE - LOGON AT " + clock() + " ON 03/14/24");
    out_.line("ENTER PASSWORD:");
    out_.line(" ********");
    out_.line("BRS/WELCOME - FOUR NEW DATA BASES THIS MONTH. TYPE ..NEWS FOR DETAILS.");
    out_.blank();
    base_ = &kBases[baseTurn_++ % kBases.size()];
    out_.line("ENTER DATA BASE NAME_: " + std::string(base_->code));
    enterBase();
    searches_ = 0;
  }

  void enterBase() {
    out_.line(base_->banner);
    out_.line("ENTER SEARCH TERMS, COMMAND, OR .. (DOT DOT) COMMAND");
    set_ = 0;
    printsInBase_ = 0;
  }

  std::string prompt() { return CaptureFormat("BRS/%s - SEARCH  %d      --> ", base_->code.data(), ++set_); }

  void changeBase() {
    base_ = &kBases[baseTurn_++ % kBases.size()];
    out_.line(prompt() + "..CHANGE " + std::string(base_->code));
    enterBase();
  }

  void signOff() {
    out_.line(prompt() + "..OFF");
    out_.line(CaptureFormat("*CONNECT TIME  0:%02u:%02u HH:MM:SS  0.%03u DEC HRS  SESSION %u", rng_.below(60),
                            rng_.below(60), rng_.below(1000), rng_.between(1000, 9999)));
    out_.line("*SIGN OFF  " + clock());
    out_.line(CaptureFormat("ESTIMATED TOTAL SESSION COST: $%u.%02u (DATA BASE $%u.%02u, NETWORK $%u.%02u)",
                            rng_.between(5, 90), rng_.below(100), rng_.between(4, 80), rng_.below(100),
                            rng_.below(5), rng_.below(100)));
    out_.line("BRS DISCONNECTED AT " + clock());
    out_.blank();
  }

  // A search or two, their answer counts, then a print of some of the answers.
  void searchAndPrint() {
    ++searches_;
    const uint32_t answers = rng_.chance(50) ? rng_.between(100, 99999) : rng_.between(1, 400);
    out_.line(prompt() + std::string(rng_.pick(kTerms)));
    out_.line(CaptureFormat("ANSWER %d %12u DOCUMENTS FOUND", set_, answers));
    const int printed = set_;
    if (rng_.chance(80)) {
      out_.line(prompt() + std::string(rng_.pick(kTerms)));
      out_.line(CaptureFormat("ANSWER %d %12u DOCUMENTS FOUND", set_, 0u));
    }
    const uint32_t first = rng_.chance(700) ? 1 : rng_.between(1, answers);
    const uint32_t last = std::min(answers, first + rng_.between(0, 30));
    out_.line(prompt() + CaptureFormat("..PRINT %d TI,AU,SO,AB/DOC=%u-%u", printed, first, last));
    if (rng_.chance(300)) out_.blank();
    for (uint32_t n = first; n <= last; ++n) document(n);
    out_.line(last == answers ? "END OF DOCUMENTS IN LIST" : "END OF PRINT REQUEST");
    if (rng_.chance(100)) {
      out_.line("ENTER ANSWER NUMBER--> " + std::to_string(rng_.between(1, 9)));
      out_.line("ENTER SEARCH TERMS, COMMAND, OR .. (DOT DOT) COMMAND");
    }
    ++printsInBase_;
  }

  void document(uint32_t number) {
    out_.line(CaptureFormat("%8u", number));
    ++result_.records;
    out_.line(CaptureFormat("AN  %02u-%05u.  %02u%02u.", rng_.below(25), rng_.below(100000), rng_.below(25),
                            rng_.between(1, 12)));
    std::string authors = "AU  ";
    const uint32_t n = rng_.between(1, 4);
    for (uint32_t i = 0; i < n; ++i) {
      if (i) authors += ' ';
      authors += rng_.pick(kAuthors);
    }
    out_.line(authors);
    out_.line("TI  " + title());
    if (rng_.chance(300)) out_.line("    " + title());
    out_.line(CaptureFormat("SO  %s. %u(%u): %u-%u, %u.", rng_.pick(kJournals).data(), rng_.between(1, 40),
                            rng_.between(1, 12), rng_.between(1, 400), rng_.between(401, 420),
                            rng_.between(1980, 2024)));
    const uint32_t paragraphs = rng_.between(1, 3);
    for (uint32_t p = 0; p < paragraphs; ++p) {
      if (p > 0) {
        out_.blank();  // empty lines inside a document: the filter drops them
        if (rng_.chance(200)) out_.blank();
      }
      out_.line((p == 0 ? "AB  " : "    ") + text());
      const uint32_t lines = rng_.between(2, 8);
      for (uint32_t i = 0; i < lines; ++i) out_.line("    " + text());
    }
    if (rng_.chance(100)) out_.line("    ");  // a line of blanks is kept
  }

  std::vector<std::string> titles_;
  const DataBase* base_ = &kBases[0];
  std::size_t baseTurn_ = 0;
  int set_ = 0;
  int searches_ = 0;
  int printsInBase_ = 0;
};

}  // namespace

SyntheticCapture WriteBrsCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
