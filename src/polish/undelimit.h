// Undelimit: a copy of a file without the "|" delimiters DIALOG leaves at line ends.
#pragma once

#include "core/job.h"
#include "core/job_state.h"
#include "polish/polish_files.h"

namespace zv {

inline constexpr std::string_view kUndelimitTitle = "Undelimit Dialog Records";

// UndelimitRecords: each line cleaned, at most two "|" cut from its very end, and
// written. Its line-40 test looks at a counter nothing raises, so it never fires:
// any file passes. The output must not exist.
JobResult UndelimitRecords(JobState& state, JobProgress& progress, const PolishFiles& files);

}  // namespace zv
