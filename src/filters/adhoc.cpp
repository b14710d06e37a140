// Ad hoc filter: whole-line markers open and close records.
#include "filters/adhoc.h"

#include "core/filter_frame.h"
#include "core/text.h"

namespace zv {

namespace {

using sv = std::string_view;

class AdHoc final : public LineFilter {
 public:
  explicit AdHoc(const AdHocParams& params) : p_(params) {}

  void begin(FilterFrame& f) override {
    // This filter never sets gsPrevLine: what stood there when the job began decides
    // for the whole job whether empty lines are written.
    prevLineEmpty_ = f.gsPrevLine.empty();
  }

  void onLine(FilterFrame& f) override {
    const sv line = f.gsLine;
    // The start line equals the marker exactly: same length, same case, no trimming.
    if (line == p_.sBeginMarker)
      f.openRecord({.blanksBefore = f.job.glRecNum > 0 ? 1 : 0, .blankAfter = true, .flagForPass = false});
    if (p_.optBMandEM && line == p_.sEndMarker) f.iInRecord = 0;
    if (f.iInRecord == -1) {
      // Any line holding the beginning marker is dropped: the start line, and a body
      // line that happens to hold the marker's text.
      if (Holds(line, p_.sBeginMarker)) return;
      if (prevLineEmpty_ && line.empty()) return;
      f.writeText(line);
    }
  }

 private:
  const AdHocParams& p_;
  bool prevLineEmpty_ = true;
};

}  // namespace

JobResult FilterAdHoc(JobState& job, JobProgress& progress, const AdHocParams& params) {
  AdHoc filter(params);
  return RunLineFilter(job, progress, params.input, FilterInfo{kAdHocTitle}, filter);
}

}  // namespace zv
