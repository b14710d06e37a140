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

// Copies record k to `out` through the reader's bounded read (a record the .PRO
// cannot hold is error 62), telling each line written to the job; record 1 gets one
// more CR LF. False when the user interrupted: the rest of the record is read but not
// written.
bool copyRecord(Job& job, RecordReader& pro, int32_t k, const IndexRec& rec, TextOut& out) {
  bool interrupted = false;
  pro.readRecord(k, rec, [&](int64_t n, const std::string& line) {
    if (interrupted) return;
    out.line(line);
    interrupted = job.lineDone(static_cast<int32_t>(n), 0);
  });
  if (interrupted) return false;
  if (rec.recNum == 1) out.blank();
  return true;
}

}  // namespace

JobResult WriteKeptRecords(JobState& state, JobProgress& progress, const WriteKeptInput& input) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    job.start(result, kWritingKeptCaption, 0, 0);
    int16_t written = 0;
    RecordReader pro(input.proFile);
    bool interrupted = false;
    ForEachIndexRec(input.indexFile, [&](int32_t i, IndexRec& rec) {
      if (interrupted || i > input.glRecCount || rec.keepFlag == 0) return false;
      const std::string target = QPTrim(rec.keepFileName());
      Inc16(written, "the records one Write Kept Records writes", {"record", i});
      progress.recordDone(written);
      progress.caption(target);
      refuseOwnFiles(target, input.proFile, input.indexFile);
      job.outputs.appendTo(target);
      TextOut out;
      out.append(target);
      interrupted = !copyRecord(job, pro, i, rec, out);
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
    for (int32_t p = 1; p <= input.glRecCount; ++p) {
      if (static_cast<std::size_t>(p) >= input.glOrder.size()) throw std::out_of_range("glOrder");
      const int32_t k = input.glOrder[static_cast<std::size_t>(p)];
      progress.recordDone(k);
      const IndexRec rec = ndx.get(k);
      pro.checkExtent(k, rec);  // a corrupt end line says so before it counts as a limit
      const int64_t lines = RecordLineCount(rec);
      if (lines > std::numeric_limits<int16_t>::max() || lines < std::numeric_limits<int16_t>::min())
        ThrowOverflow(LimitReason("the lines of a record that Write Order copies", std::numeric_limits<int16_t>::max()) +
                      " Record " + std::to_string(k) + " has " + std::to_string(lines) + ".");
      if (!copyRecord(job, pro, k, rec, ord)) return JobOutcome::Interrupted;
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
