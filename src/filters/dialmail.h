// DIALMAIL filter: DIALOG offline prints that came back by mail.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kDialmailTitle = "Filtering DIALMAILed Offline Prints";
// The title while the capture is counted, before the one above replaces it.
inline constexpr std::string_view kDialmailCountingTitle = "Filtering DIALMAILed Prints";

// Command 400. Writes gsBaseName .PRO, .NDX and .FSC (the begin and sets blocks; the
// logoff block never opens in a mailed print).
JobResult FilterDialmail(JobState& job, JobProgress& progress, const FilterInput& input);

}  // namespace zv
