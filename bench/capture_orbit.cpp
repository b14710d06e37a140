// Generator of a large Orbit/Questel session capture with the line shapes of real sessions.
#include "capture_orbit.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

constexpr std::array<sv, 3> kFiles = {"PATDOC", "CHEMREF", "WPAT"};
constexpr std::array<sv, 8> kTerms = {"membrane?", "gas separation", "polyimide?", "hollow fib?",
                                      "carbon dioxide", "permeance", "mixed matrix", "free volume"};
// Titles for the hyphen number lines: no hyphen, no bracket of their own.
constexpr std::array<sv, 6> kTitles = {
    "Gas separation membrane of crosslinked polyimide", "Spinning dope for asymmetric hollow fibres",
    "Potting compound for fibre bundles", "Membrane contactor for biogas upgrading",
    "Cleaning of fouled gas separation modules", "Thin film composite of a glassy polymer"};

class OrbitGenerator : CaptureGenerator {
 public:
  OrbitGenerator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0x0E817u, kMembraneWords, {.count = 2048, .maxWidth = 72, .indent = 6}) {}

  SyntheticCapture run() {
    logon();
    while (out_.bytes() < target_) {
      if (itemsInSession_ > 50000) {
        logoff();
        logon();
      } else if (searches_ % 40 == 39) {
        changeFile();
      }
      searchAndPrint();
    }
    logoff();
    return out_.finish(result_);
  }

 private:
  // The prompt, the user's command and the program's answer line.
  void command(const std::string& typed) {
    out_.line(CaptureFormat("SS %d /C?", ss_));
    out_.line("USER:");
    out_.line(typed);
    out_.line("PROG:");
  }

  void logon() {
    out_.line("please type your terminal identifier");
    out_.line("-2468-007-");
    out_.line("please log in: orbit4");
    out_.line("ORBIT SEARCH SERVICE, 14 MAR 2024  10:02:15  PLEASE ENTER YOUR USER ID");
    out_.blank();
    out_.line("USER:");
    out_.line("ssnb0417");
    out_.line("PROG:");
    out_.line("HELLO FROM ORBIT SEARCH SERVICE.  YOU ARE NOW CONNECTED TO THE PATDOC DATABASE.");
    out_.line("PATDOC COVERS 1970 THRU WEEK 2024-10 (UPDATE 2024-10).");
    out_.blank();
    file_ = kFiles[0];
    ss_ = 1;
    itemsInSession_ = 0;
  }

  void changeFile() {
    const sv old = file_;
    file_ = rng_.pick(kFiles);
    command("file " + std::string(file_));
    out_.line(CaptureFormat("ELAPSED TIME ON %s: 0.%02u HRS.", old.data(), rng_.below(100)));
    out_.line(CaptureFormat("$%u.%02u ESTIMATED COST THIS FILE", rng_.below(90), rng_.below(100)));
    out_.line("YOU ARE NOW CONNECTED TO THE " + std::string(file_) + " DATABASE.");
    out_.blank();
    ss_ = 1;
  }

  void searchAndPrint() {
    ++searches_;
    command(std::string(rng_.pick(kTerms)) + " and " + std::string(rng_.pick(kTerms)));
    const uint32_t hits = rng_.between(3, 60);
    out_.line(CaptureFormat("SS %d PSTG (%u)", ss_, hits));
    out_.blank();
    ++ss_;
    const uint32_t kind = rng_.below(100);
    if (kind < 65) print(hits, true);
    else if (kind < 85) print(hits, false);
    else if (kind < 95) biblioGroup();
    else {
      command("prt 1 xyz");
      out_.line("XYZ IS NOT A VALID FORMAT");
    }
  }

  void hyphenLine(uint32_t n) {
    out_.line(CaptureFormat("-%u- %s (%s)", n, rng_.pick(kTitles).data(), file_.data()));
  }

  void print(uint32_t hits, bool full) {
    const uint32_t n = std::min(hits, rng_.between(1, 25));
    command(CaptureFormat("prt 1-%u %s", n, full ? "ful" : "ti"));
    for (uint32_t i = 1; i <= n; ++i) {
      hyphenLine(i);
      ++result_.records;
      ++itemsInSession_;
      if (!full) {
        out_.line("TI  - " + text().substr(6));
        continue;
      }
      out_.line(CaptureFormat("AN  - 2024-%06u", rng_.below(1000000)));
      out_.line("TI  - " + text().substr(6));
      out_.line(text());
      out_.line("PA  - (NORR) NORRHAVEN MEMBRANE WORKS");
      out_.line("IN  - " + std::string(rng_.pick(kMembraneAuthors)));
      out_.line(CaptureFormat("PN  - XA %010u A1 2023%02u%02u", rng_.below(2000000000), rng_.between(1, 12),
                       rng_.between(1, 28)));
      out_.line("AB  - " + text().substr(6));
      const uint32_t paragraphs = rng_.between(1, 3);
      for (uint32_t p = 0; p < paragraphs; ++p) {
        for (uint32_t l = rng_.between(2, 7); l > 0; --l) out_.line(text());
        // Runs of blank lines inside an item: the filter keeps the first.
        for (uint32_t b = rng_.below(4); b > 0; --b) out_.blank();
      }
      if (rng_.chance(100)) out_.line("-AB- Abstract continues in the full text (" + std::string(file_) + ")");
    }
    out_.blank();
  }

  // The group opens a record and the hyphen line below it is left out.
  void biblioGroup() {
    command("prt 1 biblio");
    out_.line("*** BIBLIO GROUP ***");
    ++result_.records;
    ++itemsInSession_;
    hyphenLine(1);
    out_.line(CaptureFormat("AN  - 2023-%06u", rng_.below(1000000)));
    out_.line("TI  - " + text().substr(6));
    out_.line("PA  - (OKAF) OKAFOR REYES COATINGS");
  }

  void logoff() {
    command("logoff");
    out_.line("SESSION FINISHED 14 MAR 2024  10:21:48");
    out_.line(CaptureFormat("ELAPSED TIME ON %s: 0.%02u HRS.", file_.data(), rng_.below(100)));
    out_.line(CaptureFormat("YOUR SESSION COST $%u.%02u (ESTIMATED)", rng_.below(900), rng_.below(100)));
    out_.line("TYMNET: call cleared by request");
  }

  sv file_ = kFiles[0];
  int ss_ = 1;
  int64_t searches_ = 0;
  int64_t itemsInSession_ = 0;
};

}  // namespace

SyntheticCapture WriteOrbitCapture(const std::string& path, int64_t targetBytes) {
  OrbitGenerator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
