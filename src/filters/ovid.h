// Ovid filter: each citation of an Ovid search as a numbered record.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kOvidTitle = "Filtering Ovid Search";

// Command 1200. Writes gsBaseName .PRO and .NDX; no .FSC.
JobResult FilterOvid(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
