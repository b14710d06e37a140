// Write Kept Records and Write Order: whole records, line by line, through the index.
#include "records/record_writers.h"

#include <limits>
#include <stdexcept>

#include "core/error.h"
#include "core/files.h"
#include "core/index_rec.h"
#include "core/text.h"
#include "core/text_out.h"
#include "records/record_file.h"

namespace zv {

namespace {

// A keep file or an .ORD named like the record file or its index would be written
// into while it is read.
void refuseOwnFiles(const std::string& target, const std::string& proFile, const std::string& indexFile) {
  if (SameFile(target, proFile) || SameFile(target, indexFile))
    throw ZvError(err::kPathFileAccess, ErrorText(err::kPathFileAccess), target);
}

// Copies the `count` lines of record `rec` to `out`, telling each line to the job.
// False when the user interrupted.
bool copyRecord(Job& job, RecordReader& pro, const IndexRec& rec, int64_t count, TextOut& out, std::string& line) {
  pro.seek(RecordStart(rec.recNum, rec));
  for (int64_t n = 1; n <= count; ++n) {
    pro.readLine(line);
    out.line(line);
    if (job.lineDone(static_cast<int32_t>(n), 0)) return false;
  }
  if (rec.recNum == 1) out.blank();
  return true;
}

}  // namespace

JobResult WriteKeptRecords(JobState& state, JobProgress& progress, const WriteKeptInput& input) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    job.start(result, kWritingKeptCaption, 0, 0);
    int16_t written = 0;
    RecordReader pro(input.proFile);
    std::string line;
    bool interrupted = false;
    ForEachIndexRec(input.indexFile, [&](int32_t i, IndexRec& rec) {
      if (interrupted || i > input.glRecCount || rec.keepFlag == 0) return false;
      const std::string target = QPTrim(rec.keepFileName());
      Inc16(written);
      progress.recordDone(written);
      progress.caption(target);
      refuseOwnFiles(target, input.proFile, input.indexFile);
      job.outputs.appendTo(target);
      TextOut out;
      out.append(target);
      interrupted = !copyRecord(job, pro, rec, RecordLineCount(rec), out, line);
      if (!interrupted) out.close();
      return false;
    });
    if (interrupted) return JobOutcome::Interrupted;
    ClearAllMarks(input.indexFile);
    result.records = written;
    job.finish(result);
    return JobOutcome::Done;
  });
}

JobResult WriteOrder(JobState& state, JobProgress& progress, const WriteOrderInput& input) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    IndexFile ndx;
    ndx.openRead(input.indexFile);
    refuseOwnFiles(input.ordFile, input.proFile, input.indexFile);
    job.outputs.add(input.ordFile);
    TextOut ord(input.ordFile);
    RecordReader pro(input.proFile);
    job.start(result, kWritingOrderCaption, 0, 0, input.glRecCount);
    progress.caption(input.ordFile);
    std::string line;
    for (int32_t p = 1; p <= input.glRecCount; ++p) {
      if (static_cast<std::size_t>(p) >= input.glOrder.size()) throw std::out_of_range("glOrder");
      const int32_t k = input.glOrder[static_cast<std::size_t>(p)];
      progress.recordDone(k);
      const IndexRec rec = ndx.get(k);
      const int64_t lines = RecordLineCount(rec);
      if (lines > std::numeric_limits<int16_t>::max() || lines < std::numeric_limits<int16_t>::min())
        throw ZvError(err::kOverflow, ErrorText(err::kOverflow));
      if (!copyRecord(job, pro, rec, lines, ord, line)) return JobOutcome::Interrupted;
      result.records = p;
    }
    ord.blank();
    ord.close();
    ndx.close();
    job.finish(result);
    return JobOutcome::Done;
  });
}

}  // namespace zv
