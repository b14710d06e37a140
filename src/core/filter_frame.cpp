// The filter job frame: the loop, the .PRO/.NDX bookkeeping and the ways out.
#include "core/filter_frame.h"

#include <limits>
#include <new>

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/files.h"
#include "core/text.h"

namespace zv {

namespace {

// Add32 for the counters that move on every line: the same limits, with the sum
// inline and the call, which raises the overflow, made only past them.
inline void add32(int32_t& counter, int64_t amount) {
  const int64_t sum = static_cast<int64_t>(counter) + amount;
  if (sum > std::numeric_limits<int32_t>::max() || sum < std::numeric_limits<int32_t>::min())
    Add32(counter, amount);
  else
    counter = static_cast<int32_t>(sum);
}

}  // namespace

std::string RecordLabel(int32_t recNum) { return "Record - " + std::to_string(recNum); }

void FilterFrame::writeBlank() {
  pro_.blank();
  add32(lOutBytes, 2);
  add32(job.glOutLine, 1);
}

void FilterFrame::writeText(std::string_view line) {
  pro_.line(line);
  UpdateIndex();
}

void FilterFrame::writeText(std::string_view line, int64_t countedLength) {
  pro_.line(line);
  updateIndex(countedLength);
}

void FilterFrame::writeLabel() {
  pro_.line(sLabel);
  UpdateIndex();
}

// Runs after the line has been printed:
//  1. one more output line;
//  2. on the first line of a new record, write its index record, and close the
//     previous one: its end line is the line before, its length stops 2 bytes short
//     of the new label;
//  3. count the printed line's bytes: the label's if this pass labelled, else gsLine's;
//  4. remember which record was indexed last.
void FilterFrame::UpdateIndex() {
  updateIndex(static_cast<int64_t>(iJustLabelled == -1 ? sLabel.size() : job.gsLine.size()));
}

void FilterFrame::updateIndex(int64_t countedLength) {
  add32(job.glOutLine, 1);
  IndexRec& rec = job.gIndexRec;
  if (job.glRecNum != lLastIndexed && iJustLabelled == -1) {
    rec.recNum = job.glRecNum;
    rec.startByte = lOutBytes;
    rec.startLine = job.glOutLine;
    rec.keepFlag = 0;
    rec.setKeepFile("");
    ndx_.put(job.glRecNum, rec);
    if (job.glRecNum > 1) {
      rec = ndx_.get(job.glRecNum - 1);
      rec.endLine = job.glOutLine - 1;
      int32_t len = lOutBytes;
      Add32(len, -static_cast<int64_t>(rec.startByte) - 2);
      rec.byteLen = len;
      ndx_.put(job.glRecNum - 1, rec);
    }
  }
  add32(lOutBytes, countedLength + 2);
  lLastIndexed = job.glRecNum;
}

void FilterFrame::FinishIndex() {
  IndexRec& rec = job.gIndexRec;
  rec = ndx_.get(job.glRecNum);
  rec.endLine = job.glOutLine;
  int32_t len = lOutBytes;
  Add32(len, -static_cast<int64_t>(rec.startByte));
  rec.byteLen = len;
  ndx_.put(job.glRecNum, rec);
}

namespace {

// The trap of a filter's main routine: remember the error as the job's.
ZvError asZvError(const std::exception& e) {
  if (const auto* z = dynamic_cast<const ZvError*>(&e)) return *z;
  if (dynamic_cast<const std::bad_alloc*>(&e)) return ZvError(7, "Out of memory");
  return ZvError(51, "Internal error", e.what());
}

}  // namespace

void LineFilter::atEndOfInput(FilterFrame& frame) {
  if (frame.iInRecord == -1) frame.writeText(frame.job.gsLine);
}

JobOutcome RunLineFilter(JobState& job, JobHost& host, const FilterInfo& info, LineFilter& filter) {
  host.GetInputFile(job, kCaptureDialogFilter);
  if (job.giCancelOpen == 1) {
    job.giCancelOpen = 0;
    return JobOutcome::Cancelled;
  }

  FilterFrame frame(job, host);
  auto cleanUp = [&] {
    job.CleanUp();
    filter.CleanUp();
    frame.lOutBytes = 0;
  };
  // Interrupted: close everything, delete the outputs and the stem's .WRK, clean up.
  auto interrupted = [&] {
    job.giInterrupt = 0;
    frame.in_.reset();
    frame.pro_.abandon();
    frame.fsc_.abandon();
    frame.ndx_.abandon();
    frame.outputs_.discardAll();
    cleanUp();
  };

  try {
    frame.outputs_.alsoOnFailure(job.outputPath(job.gsBaseName + ".WRK"));
    frame.in_ = std::make_unique<LineReader>(job.gsInFile);
    frame.outputs_.add(job.gsProFile);
    frame.pro_.open(job.gsProFile);
    int32_t glExist = 0;
    KillIfExists(job.gsIndexFile, glExist);  // KillIndexFile: no old record outlives the job
    job.glExist = glExist;
    frame.outputs_.add(job.gsIndexFile);
    frame.ndx_.open(job.gsIndexFile);
    if (info.makesFsc) {
      job.gsFscFile = job.outputPath(job.gsBaseName + ".FSC");
      frame.outputs_.add(job.gsFscFile);
      frame.fsc_.open(job.gsFscFile);
    }

    host.ClearStatusPanels();
    const std::string fileSize = std::to_string(FileSize(job.gsInFile));
    const std::string startTime = TimeOfDayText();
    job.glLineCount = LineCount(job.gsInFile);
    host.jobStarted(fileSize, startTime, std::to_string(job.glLineCount));
    host.setFilterTitle(info.title);

    // Three buffers turn round so that no line is copied: at the end of a pass
    // gsPrevLine takes gsLine's buffer, and the next line is read into the one that
    // held the line before.
    std::string next;
    while (frame.in_->readLine(next)) {
      job.gsLine.swap(next);
      CleanLine(job.gsLine);  // LowAscii, then RemCtrl with character 0
      filter.afterCleaning(frame);
      add32(frame.lInLine, 1);
      host.lineRead(frame.lInLine, job.glLineCount);
      filter.onLine(frame);
      job.gsPrevLine.swap(job.gsLine);  // gsPrevLine = gsLine
      if (job.giInterrupt == 1) {
        interrupted();
        return JobOutcome::Interrupted;
      }
    }
    frame.in_.reset();
    job.gsLine = job.gsPrevLine;  // the last line, as what follows the loop expects

    const std::string finishTime = TimeOfDayText();
    host.jobFinished(finishTime, ShowElapsed(startTime, finishTime));

    if (job.glRecNum == 0) {
      frame.pro_.abandon();
      frame.ndx_.abandon();
      frame.fsc_.abandon();
      frame.outputs_.discardOutputs();  // ZeroRecords
      cleanUp();
      return JobOutcome::ZeroRecords;
    }

    filter.atEndOfInput(frame);
    frame.FinishIndex();
    // The outputs are flushed here, inside the trap, so that a disk that fills at the
    // very end fails the job instead of handing over a cut-off file.
    frame.pro_.close();
    frame.ndx_.close();
    if (info.makesFsc) frame.fsc_.close();
  } catch (const std::exception& e) {
    ZvError error = asZvError(e);
    job.gsErrNumber = ErrNumberText(error.number());
    job.gsErrText = error.text();
    interrupted();
    throw error;
  }

  frame.outputs_.commit();
  host.FinishFilter(" " + job.gsInFile, " " + job.gsProFile, " " + job.gsIndexFile);
  if (info.makesFsc && filter.fscLines() == 0) {
    int32_t glExist = 0;
    KillIfExists(job.gsFscFile, glExist);
    job.glExist = glExist;
  }
  cleanUp();
  return JobOutcome::Done;
}

}  // namespace zv
