// Generator of a large NLM session capture with the line shapes of real sessions.
#include "capture_nlm.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

// Words of abstracts. Every body line is indented or opens with a field tag, so no
// word here can make a line begin like one of the service's prompts.
constexpr std::array<sv, 64> kWords = {
    "patients", "were", "followed", "for", "years", "after", "implant", "device", "leadless", "pacemaker", "battery",
    "registry", "outcomes", "cardiac", "pacing", "older", "adults", "trial", "randomized", "cohort", "mortality",
    "rate", "rates", "compared", "with", "than", "the", "of", "and", "in", "on", "by", "a", "to", "from", "was",
    "higher", "lower", "no", "significant", "difference", "between", "groups", "retrieval", "migration", "infection",
    "complications", "procedure", "second", "lithium", "iodide", "cells", "leakage", "toxicity", "THE", "RESULTS",
    "CONCLUSIONS:", "METHODS:", "(p", "<", "0.05)", "95%", "CI", "months"};

constexpr std::array<sv, 24> kSurnames = {
    "Okonkwo-Lind P", "Brandvold K", "Szabo-Merin A", "Faltin R", "Ekwall M", "Ndiaye F", "Petrakis N",
    "Aldana-Ruiz C", "Rautio H", "Ekholm V", "Gallacher S", "Brook O", "Horvath E", "Tamsin G", "Quarrie B",
    "Voss-Amadi L", "Kettunen R", "Ibarra M", "Varga T", "Holm-Lindqvist E", "Achterberg L", "Moreau-Castell D",
    "Oyelaran S", "Lindqvist J"};

constexpr std::array<sv, 8> kJournals = {
    "Journal of Invented Cardiology", "Pacing Reports", "Heart Device Quarterly", "Invented Toxicology Letters",
    "Hospital Waste Review", "Geriatric Device Studies", "Annals of Implant Surgery", "Clinical Battery Safety"};

constexpr std::array<sv, 16> kTerms = {
    "leadless pacemaker (tw)", "aged", "battery", "lithium iodide", "device removal", "equipment failure",
    "registries", "cardiac pacing", "infection", "toxicity", "implant retrieval", "follow-up studies", "mortality",
    "elderly", "prosthesis", "leakage"};

constexpr std::array<sv, 3> kFiles = {"MEDFILE", "TOXFILE", "BACKFILE"};

class Generator : CaptureGenerator {
 public:
  // Continuation lines behind a six-blank indent.
  Generator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0x4E4C4D01u, kWords, {.minWidth = 50, .maxWidth = 70, .indent = 6}) {}

  SyntheticCapture run() {
    logon();
    int searches = 0;
    while (out_.bytes() < target_) {
      if (++searches % 300 == 0) {
        signOff();
        logon();
      } else if (searches % 40 == 0) {
        changeFile();
      }
      searchAndPrint();
    }
    signOff();
    return out_.finish(result_);
  }

 private:
  const std::string& text() { return rng_.pick(pool_); }
  // A field: its tag, then the first text line, then indented continuations.
  void field(sv tag, uint32_t continuations) {
    out_.line(std::string(tag) + "  - " + text().substr(6));
    for (uint32_t i = 0; i < continuations; ++i) out_.line(text());
  }

  void prompt(sv answer) {
    out_.line("USER:");
    out_.line(answer);
    out_.line("PROG:");
  }

  void logon() {
    out_.line("CONNECT 9600");
    out_.line("MEDICAL RETRIEVAL NETWORK - INVENTED HOST 4");
    out_.line("ENTER USER CODE");
    prompt("QX7741");
    out_.line("WELCOME TO THE MEDICAL RETRIEVAL SERVICE");
    file_ = kFiles[0];
    out_.line(CaptureFormat("FILE %s IS NOW IN USE.  UPDATED 03/11/24.", file_.data()));
    sets_ = 0;
  }

  void changeFile() {
    out_.line(CaptureFormat("SS %d /C?", sets_ + 1));
    file_ = rng_.pick(kFiles);
    prompt(CaptureFormat("file %s", file_.data()));
    out_.line(CaptureFormat("FILE %s IS NOW IN USE.", file_.data()));
    sets_ = 0;
  }

  void signOff() {
    out_.line(CaptureFormat("SS %d /C?", sets_ + 1));
    prompt("stop");
    out_.line(CaptureFormat("TIME 00:%02u:%02u", rng_.below(60), rng_.below(60)));
    out_.line(CaptureFormat("THE COST OF THIS SESSION IS $%u.%02u", rng_.between(2, 80), rng_.below(100)));
    out_.line("GOOD BYE!");
    out_.line("*** DISCONNECTED");
    out_.blank();
  }

  void searchAndPrint() {
    ++sets_;
    const uint32_t found = rng_.between(1, 30);
    out_.line(CaptureFormat("SS %d /C?", sets_));
    prompt(CaptureFormat("%s and %s", rng_.pick(kTerms).data(), rng_.pick(kTerms).data()));
    out_.line(CaptureFormat("SS (%d) PSTG (%u)", sets_, found));
    out_.line(CaptureFormat("SS %d /C?", sets_ + 1));
    const bool full = rng_.chance(700);
    prompt(full ? "print full" : "prt ti so");
    for (uint32_t n = 1; n <= found; ++n) {
      if (n % 10 == 1 && n > 1) {
        out_.line("CONTINUE PRINTING? (YES/NO)");
        prompt("Y");
      }
      out_.blank();
      citation(n, full);
    }
    if (rng_.chance(200)) {
      out_.line(CaptureFormat("READY TO PRINT FROM SS %d ON THE OFFLINE PRINTER.", sets_));
      prompt("n");
    } else {
      out_.line("OK");
    }
  }

  void citation(uint32_t n, bool full) {
    out_.line(full ? CaptureFormat("%u (%s)", n, file_.data()) : std::to_string(n));
    ++result_.records;
    if (full) {
      std::string authors = "AU  - ";
      for (uint32_t i = rng_.between(1, 5); i > 0; --i) {
        authors += rng_.pick(kSurnames);
        if (i > 1) authors += " ; ";
      }
      out_.line(authors);
    }
    field("TI", rng_.between(0, 2));
    out_.line(CaptureFormat("SO  - %s %u %s;%u(%u):%u-%u", rng_.pick(kJournals).data(), rng_.between(1970, 2024),
                rng_.pick(kCaptureMonths).data(), rng_.between(1, 60), rng_.between(1, 12), rng_.between(1, 400),
                rng_.between(401, 480)));
    if (!full) return;
    if (rng_.chance(700)) {
      out_.blank();
      field("AB", rng_.between(3, 12));
    }
    field("MH", rng_.between(0, 2));
  }

  sv file_ = kFiles[0];
  int sets_ = 0;
};

}  // namespace

SyntheticCapture WriteNlmCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
