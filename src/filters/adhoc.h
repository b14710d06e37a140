// Ad hoc filter: records between marker lines the user names, for a capture no other filter fits.
#pragma once

#include <string>
#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kAdHocTitle = "Ad Hoc Filtering";

// What frmFltAdHoc (or the command line) gathers. The markers are taken as they are:
// nothing is trimmed or tested, and an empty one is accepted.
struct AdHocParams {
  FilterInput input;
  std::string sBeginMarker;
  std::string sEndMarker;
  // optBMandEM: records end at a line equal to the ending marker; otherwise
  // (optBMOnly) only at the next beginning marker or the end of the capture.
  bool optBMandEM = false;
};

// Command 1, after its dialog. Writes gsBaseName .PRO and .NDX. A record opens at a
// line equal to the beginning marker; no line that holds that marker is written. An
// empty line is dropped whenever gsPrevLine was empty when the job began (as every
// filter leaves it), and kept when an earlier tool left a line there.
JobResult FilterAdHoc(JobState& job, JobProgress& progress, const AdHocParams& params);

}  // namespace zv
