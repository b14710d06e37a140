// Shared helpers of the test suites: temporary folders, files, a recording job observer.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "core/index_rec.h"
#include "core/input_file.h"
#include "core/job.h"
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

// A parameterized case's name from its position and a text of it: "n03_L1_ANSWER_3_OF_9"
// (letters and digits kept, every other run of bytes one "_", at most 40 of them), so
// that names read as what they test and stay the same from build to build.
std::string CaseName(std::size_t index, std::string_view text);

// The name generator of the suites whose parameter has a `line`.
struct LineCaseName {
  template <class Param>
  std::string operator()(const testing::TestParamInfo<Param>& info) const {
    return CaseName(info.index, info.param.line);
  }
};

// Joins lines with CR LF after each.
std::string CrLf(const std::vector<std::string>& lines);

// An observer that records what a job shows. `onLine` runs inside lineDone, the
// job's yield: tests raise the interrupt there, on `running`.
class RecordingProgress : public JobProgress {
 public:
  void ClearStatusPanels() override { ++clears; }
  void jobStarted(const Start& start) override;
  void lineDone(int32_t line, int32_t totalLines) override;
  void recordDone(int32_t record) override { recordOdometer.push_back(record); }
  void caption(std::string_view text) override { captions.emplace_back(text); }
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;

  std::string title;
  int clears = 0;
  std::string pnlFileSize, pnlStartTime, pnlFileLines, pnlFinishTime, pnlElapsed;
  std::vector<int32_t> recordOdometer;
  std::vector<std::string> captions;
  int32_t lastLine = 0;
  int32_t lineCount = 0;
  std::function<void(int32_t line)> onLine;
  JobState* running = nullptr;  // the job, set by RunFilterOn
};

// The outcome and outputs of one run of a filter on a literal capture.
struct FilterRun {
  JobOutcome outcome = JobOutcome::NoCommand;
  bool threw = false;       // the job failed (outcome Failed)
  int32_t errorNumber = 0;
  JobResult result;
  std::string pro;                  // "" when the file is absent
  std::string fsc;
  bool proExists = false, ndxExists = false, fscExists = false;
  std::vector<IndexRec> ndx;
  std::unique_ptr<JobState> job = std::make_unique<JobState>();  // as the job left it
};

using FilterFn = JobResult (*)(JobState&, JobProgress&, const FilterInput&);

// Writes `capture` to dir/name and runs `filter` on it with outputs in `dir`.
FilterRun RunFilterOn(FilterFn filter, const TempDir& dir, const std::string& capture,
                      const std::string& name = "session.log", RecordingProgress* progress = nullptr);

// The same for a filter that takes more than the capture: `filter` gets the input and
// passes it on with its own parameters.
using FilterCall = std::function<JobResult(JobState&, JobProgress&, const FilterInput&)>;
FilterRun RunFilterWith(const FilterCall& filter, const TempDir& dir, const std::string& capture,
                        const std::string& name = "session.log", RecordingProgress* progress = nullptr);

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
