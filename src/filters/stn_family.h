// The line filter that STN and Orbit/Questel captures share: same hyphen lines, same
// end lines, same folding of blank lines; only the start tests differ.
#pragma once

#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

struct StnFamilyOptions {
  std::string_view title;  // frmFilter's title
  // STN opens records on answer lines (" ANSWER " with " OF " or " of ") and on lines
  // beginning "REFERENCE  " as well; Orbit/Questel only on biblio groups and hyphen
  // number lines.
  bool answerAndReferenceLines = false;
};

// Runs the shared filter in the job frame: .PRO and .NDX, no .FSC.
JobResult RunStnFamilyFilter(JobState& job, JobProgress& progress, const FilterInput& input,
                             const StnFamilyOptions& options);

}  // namespace zv
