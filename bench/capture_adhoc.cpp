// Generator of a large marked capture for the ad hoc filter.
#include "capture_adhoc.h"

#include <string>
#include <vector>

#include "capture_stream.h"

namespace zv::bench {

namespace {

using sv = std::string_view;

constexpr std::array<sv, 40> kWords = {
    "harbour", "ice", "ferry", "ports", "berths", "tug", "escorts", "bubble", "curtains", "quay", "loads",
    "strain", "gauges", "spring", "break", "convoy", "route", "waiting", "time", "winter", "cold", "fuel",
    "kept", "open", "recorded", "peak", "model", "cut", "during", "through", "the", "of", "and", "in", "on",
    "by", "was", "were", "a", "to"};

class Generator : CaptureGenerator {
 public:
  Generator(const std::string& path, int64_t target)
      : CaptureGenerator(path, target, 0xAD40C0DEu, kWords) {}

  SyntheticCapture run() {
    while (out_.bytes() < target_) session();
    return out_.finish(result_);
  }

 private:
  void session() {
    out_.line("NORDLINK ONLINE RETRIEVAL   Host 4   Port 17");
    out_.line("Enter user code: LK-22087");
    out_.line("Password accepted.  Welcome to NORDLINK.");
    out_.blank();
    const int searches = static_cast<int>(rng_.between(20, 200));
    for (int s = 0; s < searches; ++s) search();
    out_.line("NORDLINK> COST");
    out_.line(CaptureFormat("    Session: %s   Charges: NOK %u.%02u", clock_.next(rng_).c_str(), rng_.below(900),
                            rng_.below(100)));
    out_.line("NORDLINK> BYE");
    out_.line("Disconnected from NORDLINK.");
  }

  void search() {
    const int hits = static_cast<int>(rng_.between(1, 25));
    out_.line("NORDLINK> FIND " + text().substr(0, 20));
    out_.line(CaptureFormat("    HITS: %d in ARCTIC TRANSPORT DIGEST", hits));
    out_.line(CaptureFormat("NORDLINK> SHOW 1-%d FULL", hits));
    for (int d = 1; d <= hits; ++d) {
      document(d, hits);
      if (d % 4 == 0) out_.line(CaptureFormat("NORDLINK> (page %d)  press RETURN", d / 4));
    }
  }

  void document(int d, int of) {
    out_.line(kAdHocBegin);
    ++result_.records;
    out_.line(CaptureFormat("Document %d of %d              ARCTIC TRANSPORT DIGEST", d, of));
    out_.line("Title:   " + text());
    const uint32_t paragraphs = rng_.between(1, 3);
    for (uint32_t p = 0; p < paragraphs; ++p) {
      const uint32_t run = rng_.between(1, 2);
      for (uint32_t i = 0; i < run; ++i) out_.blank();
      out_.line("Summary: " + text());
      const uint32_t lines = rng_.between(2, 8);
      for (uint32_t i = 1; i < lines; ++i) out_.line("         " + text());
    }
    // A marker typed with a blank behind it starts nothing and is dropped.
    if (rng_.chance(20)) out_.line(std::string(kAdHocBegin) + " ");
    out_.line(kAdHocEnd);
  }
};

}  // namespace

SyntheticCapture WriteAdHocCapture(const std::string& path, int64_t targetBytes) {
  Generator generator(path, targetBytes);
  return generator.run();
}

}  // namespace zv::bench
