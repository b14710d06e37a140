// Renumber: a copy of a record file whose labels run from 1 in the order they stand.
#pragma once

#include "core/job.h"
#include "core/job_state.h"
#include "polish/polish_files.h"

namespace zv {

inline constexpr std::string_view kRenumberTitle = "Renumber Record File";

// RenumberLabels: every line that begins with "Record -" becomes "Record - N", N
// counting the labels; every other line is copied, cleaned. A file with no label on
// its first 39 lines is refused at line 40. The output must not exist.
JobResult RenumberLabels(JobState& state, JobProgress& progress, const PolishFiles& files);

}  // namespace zv
