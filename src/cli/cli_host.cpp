// Progress bar and input checking for jobs run from the command line.
#include "cli/cli_host.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace zv::cli {

namespace {

// The job Ctrl-C interrupts. Only the atomic flag is touched from the handler.
std::atomic<std::atomic<int16_t>*> gInterruptFlag{nullptr};

extern "C" void onInterrupt(int) {
  if (std::atomic<int16_t>* flag = gInterruptFlag.load()) flag->store(1);
}

constexpr auto kRedrawEvery = std::chrono::milliseconds(100);
constexpr int kBarWidth = 30;
}  // namespace

void PrintMessage(const Message& message) {
  std::string text = message.text;
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') {
      out += '\n';
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else {
      out += text[i];
    }
  }
  // A message with no title of its own is its text alone.
  if (!message.title.empty()) std::cerr << message.title << ": ";
  std::cerr << out << '\n';
}

InterruptGuard::InterruptGuard(JobState& job) {
  gInterruptFlag = &job.giInterrupt;
  struct sigaction sa {};
  sa.sa_handler = onInterrupt;
  sigemptyset(&sa.sa_mask);
  sigaction(SIGINT, &sa, nullptr);
  sigaction(SIGTERM, &sa, nullptr);
}

// The handler stays: with no job to tell, it does nothing.
InterruptGuard::~InterruptGuard() { gInterruptFlag = nullptr; }

void PrintError(const ZvError& e, const JobState& job) {
  std::cerr << "Error: Error number" << job.gsErrNumber << '\n' << job.gsErrText;
  if (!e.detail().empty()) std::cerr << " (" << e.detail() << ')';
  std::cerr << '\n';
  if (!e.reason().empty()) std::cerr << e.reason() << '\n';
}

bool TerminalProgress::due(int32_t n) {
  // Looking at the clock on every line would cost more than the line; every 4096th is
  // plenty to keep the bar moving.
  if (!progress_ || (n & 4095) != 1) return false;
  const auto now = std::chrono::steady_clock::now();
  if (drawn_ && now - lastDraw_ < kRedrawEvery) return false;
  lastDraw_ = now;
  return true;
}

void TerminalProgress::lineDone(int32_t line, int32_t totalLines) {
  // A job measured by its records (lines counted within each record) has its bar
  // moved by recordDone.
  if (totalLines <= 0 && totalRecords_ > 0) return;
  if (due(line)) draw(line, totalLines, "line");
}

void TerminalProgress::recordDone(int32_t record) {
  records_ = record;
  // A job that counts records only (no lines) moves the bar by its records.
  if (totalRecords_ > 0 && due(record)) draw(record, totalRecords_, "record");
}

void TerminalProgress::draw(int32_t done, int32_t total, const char* unit) {
  if (total <= 0) {
    // A job that does not know its end beforehand (the index builder) shows counts only.
    std::fprintf(stderr, "\r%s %d  records %d %s", unit, done, records_, caption_.c_str());
  } else {
    const int64_t pct = static_cast<int64_t>(done) * 100 / total;
    const int filled = static_cast<int>(std::min<int64_t>(pct, 100) * kBarWidth / 100);
    std::string bar(static_cast<std::size_t>(filled), '#');
    bar.resize(kBarWidth, '.');
    std::fprintf(stderr, "\r[%s] %3lld%%  %s %d of %d  records %d %s", bar.c_str(), static_cast<long long>(pct), unit,
                 done, total, records_, caption_.c_str());
  }
  std::fflush(stderr);
  drawn_ = true;
}

void TerminalProgress::endProgress() {
  if (!drawn_) return;
  std::fprintf(stderr, "\r%*s\r", kBarWidth + 80, "");
  std::fflush(stderr);
  drawn_ = false;
}

}  // namespace zv::cli
