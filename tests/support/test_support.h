// Shared helpers of the test suites: temporary folders, files, a recording job host.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/index_rec.h"
#include "core/job_host.h"
#include "core/job_state.h"

namespace zv::test {

// A fresh folder under the system's temporary folder, removed with its contents.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

void WriteFile(const std::string& path, const std::string& bytes);
std::string ReadFile(const std::string& path);
bool FileExists(const std::string& path);

// Joins lines with CR LF after each.
std::string CrLf(const std::vector<std::string>& lines);

// A job host that answers GetInputFile with a fixed path and records what the job
// shows. `onLine` runs inside lineRead, the job's yield: tests raise the interrupt there.
class RecordingHost : public JobHost {
 public:
  explicit RecordingHost(std::string capturePath) : capture(std::move(capturePath)) {}

  void GetInputFile(JobState& job, std::string_view dialogFilter) override;
  void setFilterTitle(std::string_view t) override { title = t; }
  void ClearStatusPanels() override { ++clears; }
  void jobStarted(std::string_view fileSize, std::string_view startTime, std::string_view fileLines) override;
  void lineRead(int32_t lInLine, int32_t glLineCount) override;
  void recordLabelled(int32_t glRecNum) override { recordOdometer.push_back(glRecNum); }
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;
  void FinishFilter(std::string_view in, std::string_view pro, std::string_view ndx) override;

  std::string capture;
  Message refusal;            // the warning of a refused input
  std::string dialogFilter;
  std::string title;
  int clears = 0;
  std::string pnlFileSize, pnlStartTime, pnlFileLines, pnlFinishTime, pnlElapsed;
  std::vector<int32_t> recordOdometer;
  int32_t lastLine = 0;
  int32_t lineCount = 0;
  bool finished = false;
  std::string pnlInFile, pnlProFile, pnlIndexFile;
  std::function<void(int32_t lInLine)> onLine;
  JobState* running = nullptr;  // the job, known from GetInputFile on
};

// The outcome and outputs of one run of a filter on a literal capture.
struct FilterRun {
  JobOutcome outcome = JobOutcome::NoCommand;
  bool threw = false;
  int32_t errorNumber = 0;
  std::string pro;                  // "" when the file is absent
  std::string fsc;
  bool proExists = false, ndxExists = false, fscExists = false;
  std::vector<IndexRec> ndx;
  std::unique_ptr<JobState> job = std::make_unique<JobState>();  // as the job left it
};

using FilterFn = JobOutcome (*)(JobState&, JobHost&);

// Writes `capture` to dir/name and runs `filter` on it with outputs in `dir`.
FilterRun RunFilterOn(FilterFn filter, const TempDir& dir, const std::string& capture,
                      const std::string& name = "session.log", RecordingHost* host = nullptr);

// Runs `filter` on a capture of `lines`, each ended with CR LF.
template <FilterFn filter>
FilterRun RunFilterOnLines(const TempDir& dir, const std::vector<std::string>& lines) {
  return RunFilterOn(filter, dir, CrLf(lines));
}

// What a record of the .PRO is, cut by its index entry: the bytes a reader shows.
std::string RecordBytes(const std::string& pro, const IndexRec& rec);

// Checks the index a filter wrote against the .PRO beside it: one entry per label
// line, numbered in order, each starting at its label's byte and line, reaching two
// bytes short of the next label (the last one to the end of the file). A filter that
// counts some body lines short names them by `shortfall`, the bytes not counted.
::testing::AssertionResult IndexAgreesWithPro(const std::string& pro, const std::vector<IndexRec>& ndx,
                                              const std::function<int32_t(std::string_view)>& shortfall = {});

}  // namespace zv::test
