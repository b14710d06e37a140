// What the command line shows of a job: a progress bar on stderr, messages, errors.
#pragma once

#include <chrono>
#include <csignal>
#include <cstdint>
#include <string>

#include "core/error.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv::cli {

// The command line's observer of a job: a bar with the line and record odometers on
// stderr, drawn only when stderr is a terminal and at most every 100 ms.
class TerminalProgress final : public JobProgress {
 public:
  explicit TerminalProgress(bool showProgress) : progress_(showProgress) {}
  ~TerminalProgress() override { endProgress(); }

  void jobStarted(const Start& start) override { totalRecords_ = start.totalRecords; }
  void lineDone(int32_t line, int32_t totalLines) override;
  void recordDone(int32_t record) override;
  void caption(std::string_view text) override { caption_ = text; }

  // Clears the progress line, if one was drawn.
  void endProgress();

 private:
  bool due(int32_t n);
  void draw(int32_t done, int32_t total, const char* unit);

  bool progress_;
  bool drawn_ = false;
  int32_t records_ = 0;
  int32_t totalRecords_ = 0;
  std::string caption_;
  std::chrono::steady_clock::time_point lastDraw_{};
};

// Prints a message of the system's own on stderr: its title, then its lines.
void PrintMessage(const Message& message);

// Prints a failed job's error as frmError words it, and the file involved.
void PrintError(const ZvError& error, const JobState& job);

// While it lives, Ctrl-C and SIGTERM raise the job's giInterrupt instead of ending the
// program, so that the job removes its outputs and the program exits with 130. Once the
// job is over they go unanswered until the program ends: a Ctrl-C that comes after the
// outputs were kept must not end the program as if interrupted, with the outputs there.
class InterruptGuard {
 public:
  explicit InterruptGuard(JobState& job);
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;
};

}  // namespace zv::cli
