// The filter job frame: the loop, the outputs and the ways out of every line filter.
#include "core/filter_frame.h"

#include "core/error.h"
#include "core/byte_scan.h"
#include "core/files.h"
#include "core/text.h"

namespace zv {

void FilterFrame::openRecord(const Opening& opening) {
  iJustLabelled = -1;
  iInRecord = -1;
  Add32(job.glRecNum, 1, "the records of a capture (glRecNum)", {"input line", lInLine});
  for (int i = 0; i < opening.blanksBefore; ++i) writeBlank();
  sLabel = opening.label.empty() ? RecordLabel(job.glRecNum) : opening.label;
  pro.writeText(sLabel, job.glRecNum, true, static_cast<int64_t>(sLabel.size()));
  if (!opening.flagForPass) iJustLabelled = 0;
  if (opening.blankAfter) writeBlank();
  progress.recordDone(job.glRecNum);
}

bool LineFilter::foundRecords(const FilterFrame& frame) const { return frame.job.glRecNum > 0; }

void LineFilter::atEndOfInput(FilterFrame& frame) {
  if (frame.iInRecord == -1) frame.writeText(frame.gsLine);
}

Message LineFilter::zeroRecordsMessage() const {
  return {std::string(kZeroRecordsTitle), std::string(kZeroRecordsText)};
}

JobResult RunLineFilter(JobState& job, JobProgress& progress, const FilterInput& input, const FilterInfo& info,
                           LineFilter& filter) {
  return RunLineFilter(job, progress, input, info, filter, &RunLines<LineFilter>);
}

JobResult RunLineFilter(JobState& job, JobProgress& progress, const FilterInput& input, const FilterInfo& info,
                           LineFilter& filter, LineLoop loop) {
  job.outDir = input.outDir;
  auto body = [&](Job& frameJob, JobResult& result) -> JobOutcome {
    Message refusal;
    if (!CheckInputFile(job, input.gsInFile, refusal)) {
      result.message = refusal;
      return JobOutcome::Refused;
    }

    FilterFrame frame(frameJob, info);
    // The job's names and lines are emptied on every way out: the desktop's job state
    // outlives the job. (The filter and the frame go with it.)
    struct CleanUp {
      JobState& job;
      ~CleanUp() { job.CleanUp(); }
    } cleanUp{job};

    // The stem's bookmark belonged to the .PRO that an interrupted or failed job
    // throws away (a filter that makes no such .PRO leaves it alone).
    if (info.makesPro) frameJob.outputs.alsoOnFailure(job.outputPath(job.gsBaseName + ".WRK"));
    frame.in_ = std::make_unique<CleanLineReader>(job.gsInFile);
    frame.in_->setPrevious(job.gsPrevLine);
    frame.in_->setMarked(info.markedBytes, info.marksCapitals);
    if (info.makesPro) {
      frame.pro.open(frameJob.outputs, job.gsProFile, job.gsIndexFile);
    }
    if (info.makesFsc) {
      job.gsFscFile = job.outputPath(job.gsBaseName + ".FSC");
      frameJob.outputs.add(job.gsFscFile);
      frame.fsc_.open(job.gsFscFile);
    }
    filter.begin(frame);

    // The count reads the whole capture before its first line is filtered, seconds on
    // a large one: the job's title goes up first, and the window is told again after
    // every block counted, so that it can go on painting.
    const std::string_view countingTitle = info.countingTitle.empty() ? info.title : info.countingTitle;
    progress.caption(countingTitle);
    job.glLineCount = LineCount(job.gsInFile, [&] { progress.caption(countingTitle); });
    // Cancel pressed while counting: nothing was read, and nothing stays.
    if (frameJob.interrupted()) return JobOutcome::Interrupted;
    frameJob.start(result, info.title, FileSize(job.gsInFile), job.glLineCount);

    // The reader shows each line cleaned (LowAscii, then RemCtrl with character 0) in
    // its block, and the line before it where it stood.
    if (!loop(frame, filter)) return JobOutcome::Interrupted;
    // The last line, as what follows the loop expects: in gsPrevLine, as the last
    // pass left it, and in gsLine.
    job.gsPrevLine.assign(frame.in_->line());
    job.gsLine = job.gsPrevLine;
    frame.gsLine = job.gsLine;
    frame.gsPrevLine = job.gsPrevLine;
    frame.in_.reset();
    result.lines = frame.lInLine;
    frameJob.finish(result);

    if (!filter.foundRecords(frame)) {
      result.message = filter.zeroRecordsMessage();
      return JobOutcome::ZeroRecords;
    }

    filter.atEndOfInput(frame);
    if (info.makesPro) frame.FinishIndex();
    result.records = job.glRecNum;
    // The outputs are flushed here, inside the trap, so that a disk that fills at the
    // very end fails the job instead of handing over a cut-off file.
    if (info.makesPro) frame.pro.close();
    filter.close(frame);
    if (info.makesFsc) {
      frame.fsc_.close();
      if (filter.fscLines() == 0) KillIfExists(job.gsFscFile);
    }
    return JobOutcome::Done;
  };
  return RunJob(job, progress, body);
}

}  // namespace zv
