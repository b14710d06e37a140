// Delete: a copy of a record file without its labels.
#pragma once

#include "core/job.h"
#include "core/job_state.h"
#include "polish/polish_files.h"

namespace zv {

inline constexpr std::string_view kDeleteTitle = "Delete Record Labels";

// DeleteLabels: every line that begins with "Record -" is dropped with the line behind
// it, whatever that holds; all else is copied, cleaned. No format test: any text file
// passes. The output must not exist.
JobResult DeleteLabels(JobState& state, JobProgress& progress, const PolishFiles& files);

}  // namespace zv
