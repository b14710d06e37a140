// NLM filter: each citation of a session, to one record file.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kNlmTitle = "Filtering NLM Search";

// Command 900. Writes gsBaseName .PRO and .NDX; no .FSC.
JobResult FilterNLM(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
