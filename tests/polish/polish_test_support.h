// Helpers of the polishing tools' suites: a TAGed DIALOG record file, and running a
// tool on a literal input with its output read back and its input checked unchanged.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/job.h"
#include "core/job_state.h"
#include "support/test_support.h"

namespace zv::test {

// Two TAGed DIALOG records and a third label without the blank behind its hyphen:
// delimiters, a descriptor field with "||", "_" and "^_", a field going on over two
// lines, runs of blanks, a lower-case tag, a high-bit byte (0xE1) and a tab.
inline const std::vector<std::string> kTaggedLines = {
    "Record - 5",
    "",
    "TI- Rust|in  wheat|",
    "AU- Smith, J.^Jones, K.|",
    "DE- Wheat|Rust||Fungi_Plant^_Disease|",
    "    Crops|",
    "AB- First  line.  Second:  part",
    "      goes on here|",
    "",
    "Record - 2",
    "",
    "TI- Second                    title||",
    "Ab- not a t\xE1g",
    "",
    "Record -x",
    "body\tquoting Record - 9 here",
    "last line",
};

// kTaggedLines as the tools clean them: high bits off, control characters to byte 0.
inline std::vector<std::string> CleanedTaggedLines() {
  std::vector<std::string> lines = kTaggedLines;
  lines[12] = "Ab- not a tag";
  lines[15] = std::string("body\0quoting Record - 9 here", 28);
  return lines;
}

// `count` lines of body text, none of them a label.
inline std::vector<std::string> BodyLines(int count) {
  std::vector<std::string> lines;
  for (int i = 1; i <= count; ++i) lines.push_back("text line " + std::to_string(i));
  return lines;
}

struct ToolRun {
  JobResult result;
  bool outExists = false;
  std::string out;  // the output, when it exists
  std::unique_ptr<JobState> state = std::make_unique<JobState>();
  std::unique_ptr<RecordingProgress> progress = std::make_unique<RecordingProgress>();
};

// What a test hands the tool: the state (outputs named by the tool go to outDir, the
// test's folder), the observer, the input's and the output's paths.
using ToolCall = std::function<JobResult(JobState&, JobProgress&, const std::string& in, const std::string& out)>;

struct ToolOptions {
  std::string inName = "in.PRO";
  std::string outName = "out.txt";
  int32_t interruptAtLine = 0;  // raise the interrupt when this line is done
};

// Writes `input` to dir/inName, runs the tool with dir/outName as the output, reads
// the output back, and checks that the input is as it was.
inline ToolRun RunTool(const TempDir& dir, const std::string& input, const ToolCall& call,
                       const ToolOptions& options = {}) {
  const std::string in = dir.file(options.inName);
  const std::string out = dir.file(options.outName);
  WriteFile(in, input);
  ToolRun run;
  run.state->outDir = dir.path().string();
  JobState& state = *run.state;
  if (options.interruptAtLine > 0)
    run.progress->onLine = [&state, at = options.interruptAtLine](int32_t line) {
      if (line == at) state.giInterrupt = 1;
    };
  run.result = call(state, *run.progress, in, out);
  run.outExists = FileExists(out);
  if (run.outExists) run.out = ReadFile(out);
  EXPECT_EQ(ReadFile(in), input) << "the input was changed";
  return run;
}

}  // namespace zv::test
