// Generator of a large STN session capture with the line shapes of real sessions.
#include "capture_stn.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

constexpr std::array<sv, 4> kFiles = {"POLYDOC", "MATCITE", "PATINDEX", "CHEMREF"};
constexpr std::array<sv, 10> kTerms = {"membrane?", "gas(w)separation", "polyimide?", "hollow(w)fib?",
                                       "carbon(w)dioxide", "permeance", "ageing", "plasticiz?",
                                       "mixed(w)matrix", "free(w)volume"};

class StnGenerator : CaptureGenerator {
 public:
  StnGenerator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0x57A7u, kMembraneWords, {.count = 2048, .maxWidth = 72, .indent = 5}) {}

  SyntheticCapture run() {
    logon();
    while (out_.bytes() < target_) {
      if (answersInSession_ > 50000) {
        logoff();
        logon();
      }
      if (searches_ % 40 == 0) enterFile();
      searchAndDisplay();
    }
    logoff();
    return out_.finish(result_);
  }

 private:
  void logon() {
    out_.line("Welcome to STN International!  Enter x:x");
    out_.blank();
    out_.line("LOGINID:ssnb0417");
    out_.blank();
    out_.line("PASSWORD:");
    out_.line("TERMINAL (ENTER 1, 2, 3, OR ?):2");
    out_.blank();
    out_.line(" * * * * * * * * * * * * Welcome to STN International * * * * * * * * * * *");
    out_.blank();
    out_.line(" NEWS  1         Web Page for STN Seminar Schedule - Spring 2024");
    out_.line(" NEWS  2  MAR 04 POLYDOC reloaded with revised index terms");
    out_.blank();
    out_.line("FILE 'HOME' ENTERED AT 09:14:02 ON 14 MAR 2024");
    out_.blank();
    answersInSession_ = 0;
    lSet_ = 0;
  }

  void costBlock() {
    out_.line("COST IN U.S. DOLLARS                               SINCE FILE     TOTAL");
    out_.line("                                                        ENTRY   SESSION");
    out_.line(CaptureFormat("FULL ESTIMATED COST                                    %7u.%02u %7u.%02u", rng_.below(90),
                     rng_.below(100), rng_.below(900), rng_.below(100)));
    out_.blank();
  }

  void enterFile() {
    file_ = rng_.pick(kFiles);
    out_.line("=> file " + std::string(file_));
    costBlock();
    out_.line(CaptureFormat("FILE '%s' ENTERED AT 09:%02u:%02u ON 14 MAR 2024", file_.data(), rng_.below(60), rng_.below(60)));
    out_.line("COPYRIGHT (C) 2024 Documentation Cooperative");
    out_.blank();
  }

  void searchAndDisplay() {
    ++searches_;
    ++lSet_;
    out_.line("=> s " + std::string(rng_.pick(kTerms)) + " and " + std::string(rng_.pick(kTerms)));
    out_.line(CaptureFormat("         %5u %s", rng_.between(100, 90000), "TERM"));
    const uint32_t hits = rng_.between(5, 60);
    out_.line(CaptureFormat("L%d       %5u TERM AND TERM", lSet_, hits));
    out_.blank();
    const uint32_t kind = rng_.below(100);
    if (kind < 60) displayAnswers(hits, true);
    else if (kind < 75) displayAnswers(hits, false);
    else if (kind < 85) displayReferences();
    else if (kind < 95) displayFamilies();
    else invalidFormat();
  }

  void answerLine(uint32_t n, uint32_t of) {
    out_.line(CaptureFormat("L%d  ANSWER %u OF %u  %s  COPYRIGHT 2024 on STN", lSet_, n, of, file_.data()));
    ++result_.records;
    ++answersInSession_;
  }

  void displayAnswers(uint32_t hits, bool full) {
    const uint32_t n = std::min(hits, rng_.between(1, 25));
    out_.line(CaptureFormat("=> d l%d 1-%u %s", lSet_, n, full ? "bib abs" : "ti"));
    out_.blank();
    for (uint32_t i = 1; i <= n; ++i) {
      answerLine(i, hits);
      if (!full) {
        out_.line("TI   " + text().substr(5));
        out_.blank();
        continue;
      }
      out_.line(CaptureFormat("AN   2024:%06u  %s", rng_.below(1000000), file_.data()));
      out_.line("TI   " + text().substr(5));
      out_.line(text());
      out_.line("AU   " + std::string(rng_.pick(kMembraneAuthors)) + "; " + std::string(rng_.pick(kMembraneAuthors)));
      out_.line(CaptureFormat("SO   Journal of Separation Polymers (%u), %u(%u), %u", rng_.between(1990, 2024),
                       rng_.between(1, 60), rng_.between(1, 12), rng_.between(1, 900)));
      out_.line("DT   Journal");
      out_.line("LA   English");
      out_.line("AB   " + text().substr(5));
      const uint32_t paragraphs = rng_.between(1, 3);
      for (uint32_t p = 0; p < paragraphs; ++p) {
        for (uint32_t l = rng_.between(2, 7); l > 0; --l) out_.line(text());
        // Runs of blank lines inside an answer: the filter keeps the first.
        for (uint32_t b = rng_.below(4); b > 0; --b) out_.blank();
      }
      if (rng_.chance(100)) out_.line("-5- Stability data (see Table 2)");
      if (rng_.chance(500)) out_.blank();
    }
  }

  void displayReferences() {
    const uint32_t n = rng_.between(1, 12);
    out_.line(CaptureFormat("=> d l%d 1-%u re", lSet_, n));
    out_.blank();
    for (uint32_t i = 1; i <= n; ++i) {
      out_.line(CaptureFormat("REFERENCE  %u", i));
      ++result_.records;
      for (uint32_t l = rng_.between(1, 6); l > 0; --l)
        out_.line(CaptureFormat("RE   %s; Polymer Membrane Letters %u, V%u, P%u", rng_.pick(kMembraneAuthors).data(),
                         rng_.between(1980, 2024), rng_.between(1, 40), rng_.between(1, 999)));
      out_.blank();
    }
  }

  // A biblio group opens a record, and the hyphen line below it is left out; the
  // further hyphen number lines each open one, and "-AB-" lines are left out.
  void displayFamilies() {
    out_.line(CaptureFormat("=> d l%d 1-3 fam", lSet_));
    out_.blank();
    out_.line("*** BIBLIO GROUP ***");
    ++result_.records;
    const uint32_t members = rng_.between(1, 5);
    for (uint32_t m = 1; m <= members; ++m) {
      out_.line(CaptureFormat("-%u- Hollow fibre module with polyimide skin (PATINDEX)", m));
      if (m > 1) ++result_.records;
      out_.line(CaptureFormat("PN   XA %010u A1 2023%02u%02u", rng_.below(2000000000), rng_.between(1, 12), rng_.between(1, 28)));
      out_.line("PA   Norrhaven Membrane Works");
      if (rng_.chance(300)) out_.line("-AB- Family members not shown (PATINDEX)");
    }
    out_.blank();
  }

  void invalidFormat() {
    out_.line(CaptureFormat("=> d l%d 1 xyz", lSet_));
    out_.line("'XYZ' IS NOT A VALID FORMAT FOR FILE '" + std::string(file_) + "'");
    out_.blank();
  }

  void logoff() {
    out_.line("=> logoff y");
    costBlock();
    out_.line("STN INTERNATIONAL LOGOFF AT 09:42:31 ON 14 MAR 2024");
  }

  sv file_ = kFiles[0];
  int lSet_ = 0;
  int64_t searches_ = 0;
  int64_t answersInSession_ = 0;
};

}  // namespace

SyntheticCapture WriteStnCapture(const std::string& path, int64_t targetBytes) {
  StnGenerator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
