// Renumber: labels from 1 upward in the order they stand.
#include "polish/renumber.h"

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/files.h"

namespace zv {

JobResult RenumberLabels(JobState& state, JobProgress& progress, const PolishFiles& files) {
  return RunLineTool(state, progress, files, kRenumberWording, kRenumberTitle,
                     [&](Job& job, JobResult& result, LineToolFiles& io) -> JobOutcome {
    int32_t labels = 0;
    std::string& line = state.gsLine;
    for (int32_t n = 1; n <= io.lineCount; ++n) {
      if (n == 40 && labels == 0) {
        result.message = NotRecordFileMessage();
        return JobOutcome::Refused;
      }
      if (!io.in.readLine(line)) break;
      CleanLine(line);
      result.lines = n;
      if (line.starts_with(kLabelStem)) {
        // Whatever stood behind "Record -" goes: the label is made anew.
        Add32(labels, 1);
        job.progress.recordDone(labels);
        io.out.line("Record - " + std::to_string(labels));
      } else {
        io.out.line(line);
      }
      if (job.lineDone(n, io.lineCount)) return JobOutcome::Interrupted;
    }
    result.records = labels;
    return JobOutcome::Done;
  });
}

}  // namespace zv
