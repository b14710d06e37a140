// DIALOG filter: every record typed or printed in a session, to one file.
#pragma once

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kDialogAllTitle = "Filtering All DIALOG Types to One File";

// Command 100. Writes gsBaseName .PRO, .NDX and .FSC (the session's begin, display
// sets and combined select blocks, and the logoff block).
JobResult FilterDialogAll(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
