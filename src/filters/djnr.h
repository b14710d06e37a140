// DJN/R //TEXT filter: each document of a session, to one record file.
#pragma once

#include <string_view>

#include "core/job_host.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kDjnrTitle = "Filtering DJN/R //TEXT Search";

// Command 800. Writes gsBaseName .PRO and .NDX; no .FSC.
JobOutcome FilterDJ(JobState& job, JobHost& host);

}  // namespace zv
