// DJN/R //TEXT filter: each document of a session, to one record file.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kDjnrTitle = "Filtering DJN/R //TEXT Search";

// Command 800. Writes gsBaseName .PRO and .NDX; no .FSC.
JobResult FilterDJ(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
