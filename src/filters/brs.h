// BRS filter: the documents of a search made in the .. (dot dot) command mode.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kBrsTitle = "Filtering BRS .. (dot dot) Search";

// Command 500. Writes gsBaseName .PRO and .NDX; no .FSC.
JobResult FilterBRS(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
