// Data-Star filter: the documents of a Data-Star search.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kDataStarTitle = "Filtering Data-Star Search";

// Command 600. Writes gsBaseName .PRO and .NDX; no .FSC.
JobResult FilterDataStar(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
