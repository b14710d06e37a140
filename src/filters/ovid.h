// Ovid filter: each citation of an Ovid search as a numbered record.
#pragma once

#include <string_view>

#include "core/job_host.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kOvidTitle = "Filtering Ovid Search";

// Command 1200. Writes gsBaseName .PRO and .NDX; no .FSC.
JobOutcome FilterOvid(JobState& job, JobHost& host);

}  // namespace zv
