// Split: two outputs of the lines before and from the selected one.
#include "viewer/split.h"

#include <algorithm>
#include <filesystem>
#include <limits>

#include "core/error.h"
#include "core/files.h"
#include "core/line_reader.h"
#include "core/text_out.h"

namespace zv {

namespace {

const Message kSameFile{std::string(kSplitTitle),
                        "The new files must not have the name of the file being split, nor both the same name."};

std::filesystem::path absoluteName(const std::string& path) {
  std::error_code ec;
  std::filesystem::path p = std::filesystem::weakly_canonical(std::filesystem::absolute(path), ec);
  return ec ? std::filesystem::path(path) : p;
}

bool sameName(const std::string& a, const std::string& b) {
  return SameFile(a, b) || absoluteName(a) == absoluteName(b);
}

int32_t progressValue(int64_t n) { return static_cast<int32_t>(std::min<int64_t>(n, std::numeric_limits<int32_t>::max())); }

}  // namespace

SplitResult SplitFile(JobState& state, JobProgress& progress, const SplitParams& params) {
  return RunJob<SplitResult>(state, progress, [&](Job& job, SplitResult& result) {
    if (sameName(params.firstFile, params.inFile) || sameName(params.secondFile, params.inFile) ||
        sameName(params.firstFile, params.secondFile)) {
      result.message = kSameFile;
      return JobOutcome::Refused;
    }
    state.gsInFile = params.inFile;
    LineReader in(params.inFile);
    const int32_t total = LineCount(params.inFile);
    job.start(result, kSplitTitle, FileSize(params.inFile), total);

    std::string line;
    int64_t n = 0;
    bool more = true;
    job.outputs.add(params.firstFile);
    TextOut first(params.firstFile);
    for (; n + 1 < params.atLine && (more = in.readLine(line)); ) {
      first.line(line);
      ++n;
      if (job.lineDone(progressValue(n), total)) return JobOutcome::Interrupted;
    }
    first.close();
    result.firstLines = n;
    job.outputs.add(params.secondFile);
    TextOut second(params.secondFile);
    while (more && in.readLine(line)) {
      second.line(line);
      ++n;
      if (job.lineDone(progressValue(n), total)) return JobOutcome::Interrupted;
    }
    second.close();
    result.secondLines = n - result.firstLines;
    result.lines = progressValue(n);
    job.finish(result);
    return JobOutcome::Done;
  });
}

JobResult SplitFileCommand(CommandContext& context) {
  const SplitParams* params = context.get<SplitParams>();
  if (params == nullptr) {
    JobResult none;
    none.outcome = JobOutcome::NoCommand;
    return none;
  }
  return SplitFile(context.job, context.progress, *params);
}

}  // namespace zv
