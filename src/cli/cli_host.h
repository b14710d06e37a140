// The job host of the command line: the capture named on it, progress on stderr.
#pragma once

#include <chrono>
#include <csignal>
#include <cstdint>
#include <string>

#include "core/error.h"
#include "core/job_host.h"

namespace zv::cli {

class CliHost final : public JobHost {
 public:
  // `capture` is the file named on the command line; `showProgress` draws a bar on
  // stderr (when it is a terminal).
  CliHost(std::string capture, bool showProgress) : capture_(std::move(capture)), progress_(showProgress) {}

  void GetInputFile(JobState& job, std::string_view dialogFilter) override;
  void lineRead(int32_t lInLine, int32_t glLineCount) override;
  void recordLabelled(int32_t glRecNum) override { records_ = glRecNum; }
  void FinishFilter(std::string_view pnlInFile, std::string_view pnlProFile, std::string_view pnlIndexFile) override;

  // True when the named capture was refused (the message is already on stderr).
  bool inputRefused() const noexcept { return refused_; }
  // Clears the progress line, if one was drawn.
  void endProgress();
  void jobFinished(std::string_view /*finishTime*/, std::string_view elapsed) override { elapsed_ = elapsed; }

  // The hand-over panels of a finished job, each with its leading blank.
  const std::string& pnlInFile() const noexcept { return pnlInFile_; }
  const std::string& pnlProFile() const noexcept { return pnlProFile_; }
  const std::string& pnlIndexFile() const noexcept { return pnlIndexFile_; }
  const std::string& elapsed() const noexcept { return elapsed_; }
  int32_t records() const noexcept { return records_; }

 private:
  void draw(int32_t lInLine, int32_t glLineCount);

  std::string capture_;
  bool progress_;
  bool refused_ = false;
  bool drawn_ = false;
  int32_t records_ = 0;
  std::chrono::steady_clock::time_point lastDraw_{};
  std::string pnlInFile_, pnlProFile_, pnlIndexFile_, elapsed_;
};

// Prints a message of the system's own on stderr: its title, then its lines.
void PrintMessage(const Message& message);

// Prints a failed job's error as frmError words it, and the file involved.
void PrintError(const ZvError& error, const JobState& job);

// While it lives, Ctrl-C and SIGTERM raise the job's giInterrupt instead of ending the
// program, so that the job removes its outputs and the program exits with 130.
class InterruptGuard {
 public:
  explicit InterruptGuard(JobState& job);
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

 private:
  struct sigaction oldInt_ {};
  struct sigaction oldTerm_ {};
};

}  // namespace zv::cli
