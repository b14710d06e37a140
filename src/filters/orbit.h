// Orbit/Questel filter: each item of a session to one record file.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kOrbitTitle = "Filtering Orbit/Questel Search";

// Command 1100. Writes gsBaseName .PRO and .NDX. Records open on biblio groups and
// hyphen number lines only; otherwise the filter works as FilterSTN.
JobResult FilterOrbit(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
