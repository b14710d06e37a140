// Split: the viewed file cut at a line into two new files; the file itself stays as it was.
#pragma once

#include <cstdint>
#include <string>

#include "core/dispatcher.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

struct SplitParams {
  std::string inFile;      // the file the viewer shows (gsInFile)
  int64_t atLine = 0;      // the selected line: the first line of the second file
  std::string firstFile;   // gsSplitFile1: the lines before it
  std::string secondFile;  // gsSplitFile2: that line and the rest
};

struct SplitResult : JobResult {
  int64_t firstLines = 0;
  int64_t secondLines = 0;
};

// The title of the split's progress and of its refusals.
inline constexpr std::string_view kSplitTitle = "Split File";

// Reads the input line by line, as every reader of the program does (a line ends at
// CR LF, LF or a lone CR; a last line without one is a line), and writes lines 1 to
// atLine - 1 to the first file and the rest to the second, each line as it stands,
// ended with CR LF. A line beyond the last gives an empty second file, line 1 an
// empty first file. Existing files of those names are replaced; a name that is the
// input itself, or both names alike, is refused, since writing would destroy the
// input or the first segment. Progress: a line at a time against the input's line
// count; an interrupt or an error removes both outputs.
SplitResult SplitFile(JobState& state, JobProgress& progress, const SplitParams& params);

// Command 2901: SplitFile on the SplitParams in the context.
JobResult SplitFileCommand(CommandContext& context);

}  // namespace zv
