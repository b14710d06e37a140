// Delete: labels dropped with the line behind each.
#include "polish/delete_labels.h"

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/files.h"

namespace zv {

JobResult DeleteLabels(JobState& state, JobProgress& progress, const PolishFiles& files) {
  return RunLineTool(state, progress, files, kLabelToolWording, kDeleteTitle,
                     [&](Job& job, JobResult& result, LineToolFiles& io) -> JobOutcome {
    int32_t n = 0;
    int32_t labels = 0;
    std::string& line = state.gsLine;
    while (io.in.readLine(line)) {
      CleanLine(line);
      Add32(n, 1);
      if (line.starts_with(kLabelStem)) {
        Add32(labels, 1);
        job.progress.recordDone(labels);
        // The empty line every filter writes behind a label goes with it, even when
        // a tool before took that line out and it holds the record's first text.
        if (!io.in.readLine(line)) break;
        Add32(n, 1);
      } else {
        io.out.line(line);
      }
      if (job.lineDone(n, io.lineCount)) return JobOutcome::Interrupted;
    }
    result.lines = n;
    result.records = labels;
    return JobOutcome::Done;
  });
}

}  // namespace zv
