// Replace: labels replaced by the user's text, or records set between markers.
#include "polish/replace_labels.h"

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/files.h"

namespace zv {

JobResult ReplaceLabels(JobState& state, JobProgress& progress, const ReplaceLabelsParams& params) {
  const ReplaceMode mode = params.mode;
  const std::string& begin = params.beginMarker;
  // Single mode reads the replacement alone: its ending marker stays empty.
  const std::string end = mode == ReplaceMode::Single ? std::string() : params.endMarker;
  return RunLineTool(state, progress, params.files, kLabelToolWording, kReplaceTitle,
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
        Add32(labels, 1);
        job.progress.recordDone(labels);
        if (mode == ReplaceMode::Single) {
          io.out.line(params.replacement);
        } else {
          if (labels > 1) {
            io.out.line(end);
            io.out.blank();
          }
          io.out.line(begin);
          if (mode == ReplaceMode::Surround) io.out.line(line);
        }
      } else {
        io.out.line(line);
      }
      if (job.lineDone(n, io.lineCount)) return JobOutcome::Interrupted;
    }
    io.out.line(end);
    io.out.blank();
    result.records = labels;
    return JobOutcome::Done;
  });
}

}  // namespace zv
