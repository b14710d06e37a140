// STN filter: the shared filter with every start test.
#include "filters/stn.h"

#include "filters/stn_family.h"

namespace zv {

JobResult FilterSTN(JobState& job, JobProgress& progress, const FilterInput& input) {
  return RunStnFamilyFilter(job, progress, input, StnFamilyOptions{kStnTitle, true});
}

}  // namespace zv
