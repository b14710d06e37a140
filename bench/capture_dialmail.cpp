// Generator of a large capture of DIALMAILed prints with the line shapes of the mail box.
#include "capture_dialmail.h"

#include <string>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

// Words of the running text: single blanks between them, so that no line holds the
// mail menu's words with their run of blanks behind.
constexpr std::array<sv, 40> kWords = {
    "peat", "rewetted", "meadow", "fen", "bog", "carbon", "dioxide", "methane", "uptake", "emissions",
    "summer", "winter", "plots", "sphagnum", "spread", "wettest", "dissolved", "organic", "export", "drained",
    "years", "first", "second", "third", "after", "before", "the", "of", "and", "in", "on", "by", "was",
    "were", "a", "to", "from", "with", "field", "trial"};

class Generator : DialogCaptureGenerator {
 public:
  Generator(const std::string& path, int64_t target)
      : DialogCaptureGenerator(path, target, 0xD1A1A11Eu, kWords, 20) {}

  SyntheticCapture run() {
    while (out_.bytes() < target_) session();
    return out_.finish(result_);
  }

 private:
  void session() {
    for (sv line : {"Trying 31060000447...Open", "DIALOG INFORMATION SERVICES", "PLEASE LOGON:", " *******",
                    "Welcome to DIALOG", ""})
      out_.line(line);
    if (affordable()) {
      fscBlock([&] {
        out_.line("?b 155");
        out_.line(CaptureFormat("       08may24 %s User208841 Session D4418.1", clock_.next(rng_).c_str()));
        out_.line("File 155:BioMed Abstracts 1966-2024/May W1");
        out_.line("      Set  Items  Description");
      });
      fscBlock([&] {
        out_.line("?s peat? and rewet?");
        out_.line(CaptureFormat("      S1  %6u  PEAT? AND REWET?", rng_.between(1, 900)));
      });
    }
    out_.line("?mail");
    out_.blank();
    out_.line("DIALMAIL");
    const int items = static_cast<int>(rng_.between(5, 40));
    out_.line(CaptureFormat("   %d messages in your in-box.", items));
    out_.blank();
    out_.line("Dialmail defaults: Scan by date, newest first");
    out_.blank();
    out_.line("?read 1-" + std::to_string(items));
    for (int item = 1; item <= items; ++item) mailItem(item);
    out_.line("Scan     Read     Create   Answer   Delete   Help     CLear    EXit");
    out_.line("** For more commands, enter HELP DIALMAIL");
    out_.line("?logoff");
    out_.line(CaptureFormat("     $%u.%02u  Estimated total session cost", rng_.below(90), rng_.below(100)));
    out_.blank();
    out_.line(CaptureFormat(" Logoff: level 24.05.02 D %s", clock_.next(rng_).c_str()));
  }

  void mailItem(int item) {
    out_.blank();
    out_.line(CaptureFormat("*** Item %3d ***", item));
    out_.line(CaptureFormat("From: File 155 Print Request P%u VIA DIALMAIL", rng_.between(100, 999)));
    out_.line("Date: 08may24 " + clock_.next(rng_));
    out_.blank();
    out_.line("Files(s) searched: 155");
    out_.line("Sets selected: S1");
    out_.line("Set     Items   Description");
    out_.line("S1         64   PEAT? AND REWET?");
    const int prints = static_cast<int>(rng_.between(1, 30));
    out_.line("Prints requested (* indicates user print cancellation):");
    out_.line(CaptureFormat("   S1/5/1-%d", prints));
    out_.blank();
    for (int n = 1; n <= prints; ++n) print(n);
  }

  void print(int n) {
    out_.line(CaptureFormat("  Record - %d", n));
    ++result_.records;
    out_.line("DIALOG(R)File 155:BioMed Abstracts");
    out_.line("(c) format only 2024 Dialog. All rts. reserv.");
    out_.blank();
    out_.line(CaptureFormat("%08u   PMID: %08u", rng_.between(10000000, 99999999), rng_.between(10000000, 99999999)));
    out_.line("  " + text());
    const uint32_t paragraphs = rng_.between(1, 3);
    for (uint32_t p = 0; p < paragraphs; ++p) {
      // The print's blank lines stand in the record as they came.
      const uint32_t run = rng_.between(1, 3);
      for (uint32_t i = 0; i < run; ++i) out_.blank();
      const uint32_t lines = rng_.between(3, 9);
      out_.line("  " + text());
      for (uint32_t i = 1; i < lines; ++i) out_.line(text());
    }
  }
};

}  // namespace

SyntheticCapture WriteDialmailCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
