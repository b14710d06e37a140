// The file viewer on a capture of ZV_BENCH_VIEWER_MB (2 GB by default): the line index
// beside a memchr scan of the same mapped file, the index's memory, jumps and Bottom,
// the search beside memchr and memmem, and, with the desktop program built, the first
// screen drawn offscreen beside that of a 1 MB file and the window's answer to a key
// while the index is built. The files are written under ZV_BENCH_DIR, $TMPDIR or /tmp
// and deleted at the end.
//
// A plain main() with its own clock rather than Google Benchmark's loop: each figure
// is the best (or the worst, for the latencies) of ZV_BENCH_REPS runs in this process,
// with the file in the page cache, and every figure is checked against what the
// generator wrote.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "bench_harness.h"
#include "synthetic_capture.h"
#include "viewer/file_display.h"
#include "viewer/line_index.h"
#include "viewer/mapped_file.h"
#include "viewer/text_search.h"

#if defined(ZV_BENCH_GUI)
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QScrollBar>

#include "forms/file_display_widget.h"
#endif

namespace {

using namespace zv::bench;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }
double ms(double seconds) { return seconds * 1000.0; }
double gbPerSecond(int64_t bytes, double seconds) { return static_cast<double>(bytes) / 1e9 / seconds; }

// Anonymous resident memory, KB: what the process holds beyond the mapped file's pages.
long rssAnonKb() {
  std::ifstream status("/proc/self/status");
  std::string key;
  long value = 0;
  while (status >> key) {
    if (key == "RssAnon:") {
      status >> value;
      return value;
    }
    status.ignore(1 << 12, '\n');
  }
  return -1;
}

template <class Fn>
double best(int reps, Fn&& fn) {
  double b = 1e30;
  for (int i = 0; i < reps; ++i) {
    const auto t0 = Clock::now();
    fn();
    b = std::min(b, secondsSince(t0));
  }
  return b;
}

bool gFailed = false;
void check(bool ok, const char* what) {
  if (ok) return;
  std::printf("  FAILED: %s\n", what);
  gFailed = true;
}

struct Figures {
  double memchrGBs = 0, indexGBs = 0, indexRatio = 0;
  double marksPercent = 0, anonPercent = 0;
  double jumpWorstMs = 0, jumpSmallMs = 0, bottomMs = 0;
  double searchGBs = 0, memmemGBs = 0;
  double firstScreenMs = -1, firstScreenSmallMs = -1, answerWorstMs = -1;
};

#if defined(ZV_BENCH_GUI)
// From setting the file name to the first paint that shows text, offscreen.
double firstScreen(zv::forms::FileDisplayWidget& w, const std::string& path, int reps) {
  double b = 1e30;
  for (int i = 0; i < reps; ++i) {
    w.setFileName(QString());
    QApplication::processEvents();
    QElapsedTimer clock;
    clock.start();
    w.setFileName(QString::fromStdString(path));
    while (!w.firstScreenShown()) QApplication::processEvents(QEventLoop::AllEvents, 5);
    b = std::min(b, static_cast<double>(clock.nsecsElapsed()) / 1e9);
  }
  return b;
}

// The longest wait for a Page Down to be drawn while the index is built.
double answerWhileIndexing(zv::forms::FileDisplayWidget& w, const std::string& path, int64_t& keys) {
  w.setFileName(QString());
  w.setFileName(QString::fromStdString(path));
  double worst = 0;
  keys = 0;
  while (!w.display().loadComplete()) {
    QElapsedTimer clock;
    clock.start();
    QKeyEvent down(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
    QApplication::sendEvent(&w, &down);
    w.viewport()->repaint();
    QApplication::processEvents();
    worst = std::max(worst, static_cast<double>(clock.nsecsElapsed()) / 1e9);
    ++keys;
  }
  return worst;
}
#endif

}  // namespace

int main(int argc, char** argv) {
  PrintBanner("file viewer benchmark");
  const int64_t megabytes = EnvInt("ZV_BENCH_VIEWER_MB", 2048);
  const int reps = static_cast<int>(EnvInt("ZV_BENCH_REPS", 3));
  const std::string dir = MakeBenchDir("zv_viewer_bench_");
  if (dir.empty()) return 1;
  const std::string bigPath = dir + "/big.log";
  const std::string smallPath = dir + "/small.log";

  std::printf("writing a capture of %lld MB in %s ...\n", static_cast<long long>(megabytes), dir.c_str());
  const SyntheticCapture big = WriteSyntheticCapture(bigPath, megabytes << 20);
  const SyntheticCapture small = WriteSyntheticCapture(smallPath, 1 << 20);
  Figures f;
  {
    zv::MappedFile file(bigPath);
    const std::string_view bytes = file.bytes();
    const int64_t size = file.size();
    std::printf("capture: %.1f MB, %lld lines\n\n", static_cast<double>(size) / kMiB,
                static_cast<long long>(big.lines));

    // --- the index beside memchr ------------------------------------------------------
    int64_t newlines = 0;
    const double memchrSeconds = best(reps, [&] {
      newlines = 0;
      const char* p = bytes.data();
      const char* end = p + size;
      while ((p = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)))) != nullptr) {
        ++newlines;
        ++p;
      }
    });
    check(newlines == big.lines, "memchr counts the lines written");
    long anonBefore = 0, anonAfter = 0;
    std::size_t marks = 0;
    int64_t indexedLines = 0;
    const double indexSeconds = best(reps, [&] {
      anonBefore = rssAnonKb();
      zv::LineIndex index(bytes);
      index.start();
      index.wait();
      anonAfter = rssAnonKb();
      marks = index.memoryBytes();
      indexedLines = index.lineCount();
    });
    check(indexedLines == big.lines, "the index counts the lines written");
    f.memchrGBs = gbPerSecond(size, memchrSeconds);
    f.indexGBs = gbPerSecond(size, indexSeconds);
    f.indexRatio = indexSeconds / memchrSeconds;
    f.marksPercent = 100.0 * static_cast<double>(marks) / static_cast<double>(size);
    f.anonPercent = 100.0 * static_cast<double>(std::max(0L, anonAfter - anonBefore)) * 1024.0 / static_cast<double>(size);
    std::printf("  %-40s %8.2f GB/s  %8.1f ms\n", "memchr scan of the mapped file", f.memchrGBs, ms(memchrSeconds));
    std::printf("  %-40s %8.2f GB/s  %8.1f ms  (%.2fx memchr's time)\n", "line index, background thread", f.indexGBs,
                ms(indexSeconds), f.indexRatio);
    std::printf("  %-40s %8.3f %%  (%zu bytes of marks)\n", "index marks / file size", f.marksPercent, marks);
    std::printf("  %-40s %8.3f %%  (%ld KB)\n", "anonymous memory grown / file size", f.anonPercent,
                anonAfter - anonBefore);

    // --- jumps and Bottom ------------------------------------------------------------
    zv::LineIndex index(bytes);
    index.build();
    std::mt19937_64 random(3);
    std::uniform_int_distribution<int64_t> anyLine(1, index.lineCount());
    double worst = 0;
    std::vector<double> jumps;
    for (int i = 0; i < 2000; ++i) {
      const int64_t n = anyLine(random);
      const auto t0 = Clock::now();
      // A jump: the line's start and the screen of lines below it.
      zv::LineSpan s = index.lineSpan(n);
      for (int row = 0; row < 60 && s.valid() && s.next >= 0 && s.next < size; ++row) s = index.spanAt(n + row + 1, s.next);
      jumps.push_back(secondsSince(t0));
      worst = std::max(worst, jumps.back());
      check(s.valid(), "every jump finds its line");
    }
    std::sort(jumps.begin(), jumps.end());
    const double jumpMedianMs = ms(jumps[jumps.size() / 2]);
    f.jumpWorstMs = ms(worst);
    const int64_t bottom = index.lineCount() - 20;
    f.bottomMs = ms(best(reps, [&] {
      zv::LineSpan s = index.lineSpan(bottom);
      for (int row = 0; row < 20 && s.valid(); ++row) s = index.spanAt(bottom + row + 1, s.next);
      check(s.valid() && s.next == size, "Bottom reaches the end of the file");
    }));
    {
      zv::MappedFile smallFile(smallPath);
      zv::LineIndex smallIndex(smallFile.bytes());
      smallIndex.build();
      double smallWorst = 0;
      std::uniform_int_distribution<int64_t> smallLine(1, smallIndex.lineCount());
      for (int i = 0; i < 2000; ++i) {
        const auto t0 = Clock::now();
        zv::LineSpan s = smallIndex.lineSpan(smallLine(random));
        smallWorst = std::max(smallWorst, secondsSince(t0));
        check(s.valid(), "every jump in the small file finds its line");
      }
      f.jumpSmallMs = ms(smallWorst);
    }
    std::printf("  %-40s %8.3f ms   (median %.3f ms; 1 MB file, worst: %.3f ms)\n", "jump to a line, worst of 2000",
                f.jumpWorstMs, jumpMedianMs, f.jumpSmallMs);
    std::printf("  %-40s %8.3f ms\n", "Bottom", f.bottomMs);

    // --- search ------------------------------------------------------------------------
    const std::string absent = "Record - wetland ditch blocking 1999";
    int64_t hit = 0;
    const double searchSeconds = best(reps, [&] { hit = zv::FindText(bytes, absent, 0); });
    check(hit == -1, "the absent text is not found");
    const double memmemSeconds = best(reps, [&] {
      benchmark::DoNotOptimize(::memmem(bytes.data(), bytes.size(), absent.data(), absent.size()));
    });
    f.searchGBs = gbPerSecond(size, searchSeconds);
    f.memmemGBs = gbPerSecond(size, memmemSeconds);
    std::printf("  %-40s %8.2f GB/s  (%.2fx memchr's time; memmem %.2f GB/s)\n", "search for a text not there",
                f.searchGBs, searchSeconds / memchrSeconds, f.memmemGBs);
    // Repeat Search through the whole file: every occurrence of a word the capture
    // is full of, counted against memmem's.
    const std::string word = "DIALOG";
    int64_t found = 0, expected = 0;
    const double everySeconds = best(1, [&] {
      found = 0;
      for (int64_t at = zv::FindText(bytes, word, 0); at >= 0; at = zv::FindText(bytes, word, at + 1)) ++found;
    });
    for (const char* p = bytes.data(); (p = static_cast<const char*>(::memmem(p, static_cast<std::size_t>(bytes.data() + size - p),
                                                                           word.data(), word.size()))) != nullptr;
         ++p)
      ++expected;
    check(found == expected && found > 0, "the search finds every occurrence memmem finds");
    std::printf("  %-40s %8.2f GB/s  (%lld found)\n", "search for every \"DIALOG\"", gbPerSecond(size, everySeconds),
                static_cast<long long>(found));
  }

#if defined(ZV_BENCH_GUI)
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  {
    QApplication app(argc, argv);
    zv::forms::FileDisplayWidget w;
    w.resize(800, 600);
    w.show();
    QApplication::processEvents();
    f.firstScreenSmallMs = ms(firstScreen(w, smallPath, reps));
    f.firstScreenMs = ms(firstScreen(w, bigPath, reps));
    int64_t keys = 0;
    f.answerWorstMs = ms(answerWhileIndexing(w, bigPath, keys));
    std::printf("  %-40s %8.2f ms   (1 MB file: %.2f ms)\n", "first screen, name set to text painted", f.firstScreenMs,
                f.firstScreenSmallMs);
    std::printf("  %-40s %8.2f ms   (%lld keys while indexing)\n", "Page Down drawn while indexing, worst",
                f.answerWorstMs, static_cast<long long>(keys));
    w.setFileName(QString());
  }
#else
  (void)argc;
  (void)argv;
  std::printf("  (the desktop program is not built: no first-screen figures)\n");
#endif

  std::filesystem::remove_all(dir);

  std::printf("\nTargets:\n");
  PrintVerdict("line index speed", f.indexGBs, "GB/s", ">= 1", f.indexGBs >= 1.0);
  PrintVerdict("index marks, share of the file", f.marksPercent, "%", "<= 1", f.marksPercent <= 1.0);
  PrintVerdict("anonymous memory grown, share of the file", f.anonPercent, "%", "<= 1", f.anonPercent <= 1.0);
  PrintVerdict("jump to any line, worst", f.jumpWorstMs, "ms", "< 50", f.jumpWorstMs < 50);
  PrintVerdict("Bottom", f.bottomMs, "ms", "< 50", f.bottomMs < 50);
  PrintVerdict("search for a plain text", f.searchGBs, "GB/s", ">= 1", f.searchGBs >= 1.0);
  if (f.firstScreenMs >= 0) {
    PrintVerdict("first screen of the capture", f.firstScreenMs, "ms", "< 100", f.firstScreenMs < 100);
    PrintVerdict("Page Down while indexing, worst", f.answerWorstMs, "ms", "< 100", f.answerWorstMs < 100);
  }
  return gFailed ? 1 : 0;
}
