// STN filter: the shared filter with every start test.
#include "filters/stn.h"

#include "filters/stn_family.h"

namespace zv {

JobOutcome FilterSTN(JobState& job, JobHost& host) {
  return RunStnFamilyFilter(job, host, StnFamilyOptions{kStnTitle, true});
}

}  // namespace zv
