// Undelimit: up to two trailing "|" cut from every line.
#include "polish/undelimit.h"

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/files.h"

namespace zv {

JobResult UndelimitRecords(JobState& state, JobProgress& progress, const PolishFiles& files) {
  return RunLineTool(state, progress, files, kUndelimitWording, kUndelimitTitle,
                     [&](Job& job, JobResult& result, LineToolFiles& io) -> JobOutcome {
    int32_t lInLine = 0;
    int32_t labels = 0;
    std::string& line = state.gsLine;
    while (io.in.readLine(line)) {
      CleanLine(line);
      Add32(lInLine, 1);
      if (line.starts_with(kLabelStem)) {
        Add32(labels, 1);
        job.progress.recordDone(labels);
      }
      // The very last character only: "abc| " keeps its delimiter, "abc|||" one of three.
      if (line.ends_with('|')) line.pop_back();
      if (line.ends_with('|')) line.pop_back();
      io.out.line(line);
      if (job.lineDone(lInLine, io.lineCount)) return JobOutcome::Interrupted;
    }
    result.lines = lInLine;
    result.records = labels;
    return JobOutcome::Done;
  });
}

}  // namespace zv
