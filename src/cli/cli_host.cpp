// Progress bar and input checking for jobs run from the command line.
#include "cli/cli_host.h"

#include <cstdio>
#include <iostream>

namespace zv::cli {

namespace {

// The job Ctrl-C interrupts. Only the atomic flag is touched from the handler.
std::atomic<int16_t>* gInterruptFlag = nullptr;

extern "C" void onInterrupt(int) {
  if (gInterruptFlag != nullptr) gInterruptFlag->store(1);
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
  std::cerr << message.title << ": " << out << '\n';
}

InterruptGuard::InterruptGuard(JobState& job) {
  gInterruptFlag = &job.giInterrupt;
  struct sigaction sa {};
  sa.sa_handler = onInterrupt;
  sigemptyset(&sa.sa_mask);
  sigaction(SIGINT, &sa, &oldInt_);
  sigaction(SIGTERM, &sa, &oldTerm_);
}

InterruptGuard::~InterruptGuard() {
  sigaction(SIGINT, &oldInt_, nullptr);
  sigaction(SIGTERM, &oldTerm_, nullptr);
  gInterruptFlag = nullptr;
}

void PrintError(const ZvError& e, const JobState& job) {
  std::cerr << "Error: Error number" << job.gsErrNumber << '\n' << job.gsErrText;
  if (!e.detail().empty()) std::cerr << " (" << e.detail() << ')';
  std::cerr << '\n';
}

void CliHost::GetInputFile(JobState& job, std::string_view /*dialogFilter*/) {
  Message message;
  if (!CheckInputFile(job, capture_, message)) {
    PrintMessage(message);
    std::cerr << "  (" << capture_ << ")\n";
    refused_ = true;
    job.giCancelOpen = 1;
  }
}

void CliHost::lineRead(int32_t lInLine, int32_t glLineCount) {
  // Looking at the clock on every line would cost more than the line; every 4096th is
  // plenty to keep the bar moving.
  if (!progress_ || (lInLine & 4095) != 1) return;
  const auto now = std::chrono::steady_clock::now();
  if (drawn_ && now - lastDraw_ < kRedrawEvery) return;
  lastDraw_ = now;
  draw(lInLine, glLineCount);
}

void CliHost::draw(int32_t lInLine, int32_t glLineCount) {
  const int64_t pct = glLineCount > 0 ? static_cast<int64_t>(lInLine) * 100 / glLineCount : 100;
  const int filled = static_cast<int>(pct * kBarWidth / 100);
  std::string bar(static_cast<std::size_t>(filled), '#');
  bar.resize(kBarWidth, '.');
  std::fprintf(stderr, "\r[%s] %3lld%%  line %d of %d  records %d", bar.c_str(), static_cast<long long>(pct),
               lInLine, glLineCount, records_);
  std::fflush(stderr);
  drawn_ = true;
}

void CliHost::endProgress() {
  if (!drawn_) return;
  std::fprintf(stderr, "\r%*s\r", kBarWidth + 60, "");
  std::fflush(stderr);
  drawn_ = false;
}

void CliHost::FinishFilter(std::string_view pnlInFile, std::string_view pnlProFile, std::string_view pnlIndexFile) {
  endProgress();
  pnlInFile_ = pnlInFile;
  pnlProFile_ = pnlProFile;
  pnlIndexFile_ = pnlIndexFile;
}

}  // namespace zv::cli
