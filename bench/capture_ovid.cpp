// Generator of a large Ovid session capture with the line shapes of real sessions.
#include "capture_ovid.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

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

constexpr sv kMargin = "         ";  // 9 columns

class Generator : CaptureGenerator {
 public:
  Generator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0x0F1D0F1Du, kWords, {.maxWidth = 70}) {}

  SyntheticCapture run() {
    logon();
    while (out_.bytes() < target_) {
      if (printsInSession_ >= 400) {
        logoff();
        logon();
      }
      searchAndPrint();
    }
    logoff();
    return out_.finish(result_);
  }

 private:
  using CaptureGenerator::text;  // beside the text(minLines, maxLines) of a print

  void body(sv s) { out_.line(kMargin, s); }

  std::string clock() { return clock_.next(rng_); }

  void logon() {
    out_.line("ATDT 5550147");
    out_.line("CONNECT 9600");
    out_.blank();
    out_.line("Welcome to the Ovid online search service.");
    out_.line(CaptureFormat("Username: ZV%04u", rng_.below(10000)));
    out_.line("Password:");
    out_.line("Session begun " + clock() + " on 14-MAR-97.");
    out_.blank();
    printsInSession_ = 0;
  }

  void logoff() {
    out_.blank();
    out_.line("Enter Ovid Syntax, a set number, or \"..\" for commands: ..logoff");
    out_.blank();
    out_.line(CaptureFormat("Session ended %s.  Connect time 0:%02u:%02u.", clock().c_str(), rng_.below(60), rng_.below(60)));
    out_.line(CaptureFormat("Estimated cost of this session: $%u.%02u", rng_.between(5, 200), rng_.below(100)));
    out_.line("Thank you for using Ovid.  Good-bye.");
    out_.blank();
    out_.line("NO CARRIER");
  }

  // A search history under its database line, then a print of some of its citations.
  void searchAndPrint() {
    out_.line("Database: " + std::string(rng_.pick(kDatabases)));
    out_.line("Set   Search                                                Results");
    out_.line("------------------------------------------------------------------");
    const uint32_t sets = rng_.between(2, 6);
    for (uint32_t s = 1; s <= sets; ++s)
      out_.line(CaptureFormat("%2u    %-50s %6u", s, std::string(rng_.pick(kTerms)).c_str(), rng_.between(1, 9000)));
    out_.blank();
    const uint32_t citations = rng_.between(1, 40);
    out_.line(CaptureFormat("Enter Ovid Syntax, a set number, or \"..\" for commands: ..pr %u/1-%u doc=cit,ab", sets, citations));
    out_.blank();
    out_.line("Press Enter once screen capture is on, or Q to return.");
    out_.blank();
    for (uint32_t n = 1; n <= citations; ++n) citation(n);
    // Most prints end with the notices; some run straight into the next database line.
    if (rng_.chance(800)) {
      out_.blank();
      out_.line("Transmission complete ...");
      out_.line("Turn off screen capture.");
      out_.blank();
    }
    ++printsInSession_;
  }

  // The running page: a footer after about every 60 lines of a print.
  void paged() {
    if (++pageLines_ < 60) return;
    pageLines_ = 0;
    out_.blank();
    out_.line(CaptureFormat("                                                    Page Number : %u", ++page_));
    out_.blank();
  }

  void field(sv name) {
    out_.line(name);
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
    out_.line(rng_.chance(100) ? CaptureFormat("   <%u>   ", n) : CaptureFormat("<%u>", n));
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
    body(CaptureFormat("%s. %u(%u):%u-%u, %u.", rng_.pick(kJournals).data(), rng_.between(1, 30), rng_.between(1, 4),
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
    out_.blank();
  }

  int printsInSession_ = 0;
  int pageLines_ = 0;
  uint32_t page_ = 0;
};

}  // namespace

SyntheticCapture WriteOvidCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
