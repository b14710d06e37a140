// Orbit/Questel filter: the STN filter without its answer and reference start tests.
#include "filters/orbit.h"

#include "filters/stn_family.h"

namespace zv {

JobOutcome FilterOrbit(JobState& job, JobHost& host) {
  return RunStnFamilyFilter(job, host, StnFamilyOptions{kOrbitTitle, false});
}

}  // namespace zv
