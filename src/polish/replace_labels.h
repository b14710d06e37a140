// Replace: the labels of a record file replaced by a text, or records set between markers.
#pragma once

#include <string>

#include "core/job.h"
#include "core/job_state.h"
#include "polish/polish_files.h"

namespace zv {

inline constexpr std::string_view kReplaceTitle = "Replace Record Labels";

enum class ReplaceMode {
  Single = 1,    // each label becomes the replacement
  Double = 2,    // each record between a beginning and an ending marker, labels lost
  Surround = 3,  // the same, the labels kept inside the markers
};

// What frmReplaceLabels gathers. The texts may be empty; nothing checks them. Only
// the mode's own texts are read: in Single the ending marker is empty.
struct ReplaceLabelsParams {
  PolishFiles files;
  ReplaceMode mode = ReplaceMode::Single;
  std::string replacement;
  std::string beginMarker;
  std::string endMarker;
};

// ReplaceLabels: Renumber's checks and line-40 test; each "Record -" line replaced as
// the mode says, and the ending marker and an empty line at the end in every mode.
JobResult ReplaceLabels(JobState& state, JobProgress& progress, const ReplaceLabelsParams& params);

}  // namespace zv
