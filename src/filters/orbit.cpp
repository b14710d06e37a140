// Orbit/Questel filter: the STN filter without its answer and reference start tests.
#include "filters/orbit.h"

#include "filters/stn_family.h"

namespace zv {

JobResult FilterOrbit(JobState& job, JobProgress& progress, const FilterInput& input) {
  return RunStnFamilyFilter(job, progress, input, StnFamilyOptions{kOrbitTitle, false});
}

}  // namespace zv
