// STN filter: each answer of a session to one record file.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kStnTitle = "Filtering STN Search";

// Command 1300. Writes gsBaseName .PRO and .NDX. Records open on answer lines,
// "REFERENCE  " lines, biblio groups and hyphen number lines.
JobResult FilterSTN(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
