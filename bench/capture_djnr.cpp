// Generator of a large DJN/R //TEXT session capture with the line shapes of real sessions.
#include "capture_djnr.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

// Words of news copy, capitals included. None of them, and no line built from them,
// holds a DOCUMENT marker, an end notice or a leading "..".
constexpr std::array<sv, 64> kWords = {
    "Kestrel", "Motors", "Varnel", "Cells", "Harlow", "Vale", "Lundmark", "shares", "rose", "fell", "percent",
    "quarter", "profit", "revenue", "analysts", "said", "Monday", "Tuesday", "plant", "battery", "vans", "order",
    "contract", "council", "board", "chief", "executive", "company", "market", "prices", "expected", "would", "could",
    "the", "of", "and", "in", "on", "by", "was", "were", "a", "to", "from", "with", "than", "for", "its", "after",
    "before", "Inc.", "Ltd.", "crowns", "million", "billion", "exchange", "listing", "yard", "rail", "investors",
    "NEW", "YORK", "(AP)", "spokesman"};

constexpr std::array<sv, 8> kSources = {
    "Valley Business Wire", "Northern Markets Daily", "Quarterly Auto Review", "Harlow Vale Courier",
    "Lundmark Exchange News", "Regional Energy Letter", "The Morning Ledger", "Fleet Operators Weekly"};

constexpr std::array<sv, 12> kBylines = {
    "Imogen Trask", "Osric Pellow", "Felicity Armitage-Kwan", "Tobiah Renquist", "Maren Oduya", "Castor Vell",
    "Ines Halloran", "Piet Marchbank", "Odile Ferreira-Stone", "Hamish Quorra", "Lotte Brannagh", "Yusuf Ellery"};

constexpr std::array<sv, 16> kTerms = {
    "kestrel motors", "varnel cells", "battery", "harlow vale", "fleet order", "rail yard", "listing", "lundmark",
    "electric vans", "chief executive", "plant", "council", "merger", "profit warning", "cell prices",
    "postal service"};

class Generator : CaptureGenerator {
 public:
  // Body text behind the six-blank indent of the TD field.
  Generator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0xD0C0DE11u, kWords, {.minWidth = 50, .maxWidth = 72, .indent = 6}) {}

  SyntheticCapture run() {
    logon();
    int searches = 0;
    while (out_.bytes() < target_) {
      if (++searches % 400 == 0) {
        disconnect();
        logon();
      }
      searchAndPrint();
    }
    disconnect();
    return out_.finish(result_);
  }

 private:
  void logon() {
    out_.line("ATDT 5551804");
    out_.line("CONNECT 9600");
    out_.blank();
    out_.line("WELCOME TO THE NEWS/RETRIEVAL NETWORK");
    out_.line("WHAT SERVICE PLEASE????");
    out_.line("DJNS");
    out_.line("ENTER PASSWORD");
    out_.line("********");
    out_.blank();
    out_.line("        NEWS/RETRIEVAL");
    out_.line("   COPYRIGHT (C) 2024 INVENTED NEWS CO.");
    out_.blank();
    out_.line("ENTER QUERY");
    out_.line("//TEXT");
    out_.blank();
    out_.line("        //TEXT SEARCH SERVICES");
    out_.blank();
    sets_ = 0;
  }

  void disconnect() {
    out_.line("ENTER QUERY");
    out_.line("DISCONNECT");
    out_.line(CaptureFormat("SESSION TIME 00:%02u:%02u   ESTIMATED CHARGE $%u.%02u", rng_.below(60), rng_.below(60),
                rng_.between(5, 90), rng_.below(100)));
    out_.line("DISCONNECTED");
    out_.blank();
  }

  void searchAndPrint() {
    ++sets_;
    const uint32_t found = rng_.between(1, 25);
    out_.line("ENTER QUERY");
    out_.line(CaptureFormat("..s %s and %s", rng_.pick(kTerms).data(), rng_.pick(kTerms).data()));
    out_.line(CaptureFormat("SEARCH %d RETRIEVED %u DOCUMENTS", sets_, found));
    out_.line(CaptureFormat("CURRENT SET_%d: %u DOCUMENTS (NEWS WIRES 1994-2024)", sets_, found));
    out_.line("ENTER QUERY");
    out_.line(CaptureFormat("..p 1-%u full", found));
    out_.blank();
    for (uint32_t doc = 1; doc <= found; ++doc) {
      document(doc, found);
      endOfDocument(doc, found);
    }
  }

  void document(uint32_t doc, uint32_t found) {
    if (rng_.chance(700))
      out_.line(CaptureFormat("    DOCUMENT=%u                                       PAGE 1 OF %u", doc, rng_.between(1, 4)));
    else
      out_.line(CaptureFormat("SEARCH %d          DOCUMENT  %u OF %u", sets_, doc, found));
    ++result_.records;
    out_.line("  HD  " + text().substr(6, 48));
    if (rng_.chance(700)) out_.line(CaptureFormat("  BY  By %s", rng_.pick(kBylines).data()));
    out_.line(CaptureFormat("  SN  %s", rng_.pick(kSources).data()));
    out_.line(CaptureFormat("  PD  %02u %s %u", rng_.between(1, 28), rng_.pick(kCaptureMonths).data(), rng_.between(1994, 2024)));
    out_.line(CaptureFormat("  WC  %u words", rng_.between(80, 1800)));
    out_.blank();
    const uint32_t paragraphs = rng_.between(1, 5);
    for (uint32_t p = 0; p < paragraphs; ++p) {
      if (p) out_.blank();
      std::string first = text();
      if (p == 0) first.replace(0, 6, "  TD  ");
      out_.line(first);
      for (uint32_t i = rng_.between(1, 7); i > 0; --i) out_.line(text());
    }
  }

  // The notice after a document, in the shares a session shows them. A document with
  // none runs straight into the next one.
  void endOfDocument(uint32_t doc, uint32_t found) {
    const uint32_t roll = rng_.below(1000);
    if (doc == found && roll < 300) {
      out_.line("End of documents in list");
    } else if (roll < 450) {
      out_.blank();
      out_.line("* END OF DOCUMENT.");
      out_.blank();
    } else if (roll < 700) {
      out_.line("End of document.");
      out_.blank();
    } else if (roll < 800) {
      out_.line("Press ENTER to see the rest of this document");
      out_.line("ENTER QUERY");
      out_.line("DOC+1");
      out_.blank();
    } else if (roll < 850) {
      out_.line("ENTER QUERY");
      out_.line(CaptureFormat("   doc=%u", doc + 1));
    } else if (roll < 900) {
      out_.line(CaptureFormat("CURRENT SET_%d: DOCUMENT %u OF %u", sets_, doc, found));
    } else if (roll < 950) {
      out_.line("ENTER QUERY");
      out_.line(" ..S");
    }
  }

  int sets_ = 0;
};

}  // namespace

SyntheticCapture WriteDjnrCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
