// BuildIndex in one streaming pass, with the numbers of the program's three-pass builder.
#include "records/build_index.h"

#include <string>

#include "core/error.h"
#include "core/files.h"
#include "core/index_rec.h"
#include "core/job.h"
#include "core/line_reader.h"
#include "core/output_files.h"

namespace zv {

// The builder the program has always had made three passes: one writing the running
// byte total after every line to a table ("ByteLine.sOff"), one writing a line number
// for each label to a second table ("RecLine.Num": the label's line for the first
// label, the line before it for every later one), and one walking both tables to
// write the index. What that walk gives, with lab(k) and off(k) the line and byte
// offset of label k, T the file's lines, L its bytes and N the labels:
//
//   record    startByte   byteLen             startLine    endLine
//   1         1           off(2) - 2          lab(1)       lab(2) - 2
//   2..N-2    off(k)      off(k+1) - off(k)   lab(k) - 1   lab(k+1) - 2
//   N-1       off(N-1)    off(N) - off(N-1)   lab(N-1)     lab(N) - 1
//   N         off(N)      L - off(N)          lab(N) - 1   T
//
// and for N = 2, record 1 is 1, off(2) - 2, lab(1) + 1, lab(2) - 1. Offsets count each
// line as its length plus 2, whatever its line end. The walk of the byte table reads
// at least one line for each entry, so it never meets an entry that is not beyond its
// position, and reads past the table's end. Entries rise by lab(k+1) - lab(k) from the
// second on, so only labels 1 and 2 on adjacent lines (entries lab(1) and lab(2) - 1,
// the same line) do that; labels standing directly under each other further on (as
// the STN and Orbit filters write a "REFERENCE" record followed at once by another)
// index like any others, a record of its label line alone. Those numbers are made
// here as the labels are found, which needs no table: a record is written once the
// label two further on is seen, and the last two at the end of the file.
namespace {

constexpr std::string_view kLabel = "Record - ";

struct Label {
  int32_t line = 0;    // lab(k)
  int32_t offset = 0;  // off(k)
};

IndexRec indexRecord(int32_t k, int32_t startByte, int32_t byteLen, int32_t startLine, int32_t endLine) {
  IndexRec rec;
  rec.recNum = k;
  rec.startByte = startByte;
  rec.byteLen = byteLen;
  rec.startLine = startLine;
  rec.endLine = endLine;
  rec.keepFlag = 0;
  rec.setKeepFile("");
  return rec;
}

int32_t diff(int64_t a, int64_t b) {
  int32_t out = 0;
  Add32(out, a - b);
  return out;
}

// Record k when it is neither of the last two (so record 1 of three or more), from its
// label and the label after it.
IndexRec middleRecord(int32_t k, const Label& at, const Label& next) {
  if (k == 1) return indexRecord(1, 1, diff(next.offset, 2), at.line, diff(next.line, 2));
  return indexRecord(k, at.offset, diff(next.offset, at.offset), diff(at.line, 1), diff(next.line, 2));
}

}  // namespace

JobResult BuildIndex(JobState& job, JobProgress& progress) {
  return RunJob(job, progress, [&](Job& frame, JobResult& result) -> JobOutcome {
    frame.outputs.add(job.gsIndexFile);  // from here on, whatever happens, no old index survives
    frame.start(result, kIndexingTitle, FileSize(job.gsProFile), 0);
    LineReader pro(job.gsProFile);

    KillIfExists(job.gsIndexFile);  // KillIndexFile: no old record outlives the build
    // An index that could not be deleted would keep its tail behind the new records.
    if (Exist(job.gsIndexFile)) throw ZvError(err::kPermissionDenied, ErrorText(err::kPermissionDenied), job.gsIndexFile);
    IndexFile ndx;
    ndx.open(job.gsIndexFile);

    // The last three labels seen: enough to write record k - 2 when label k comes.
    Label older, previous, current;
    int32_t labels = 0;
    int32_t adjacentAt = 0;  // the line of label 1 when label 2 stands right under it
    int32_t lines = 0;
    int32_t total = 0;  // bytes of the lines read so far: the offset of the next line
    std::string_view line;
    while (pro.readLine(line)) {
      Count32(lines, 1, "the lines of a .PRO", {"line", int64_t{lines} + 1});
      const bool isLabel = line.starts_with(kLabel);
      if (isLabel) {
        Count32(labels, 1, "the records of a .PRO", {"line", lines});
        older = previous;
        previous = current;
        current = {lines, total};
        if (labels == 2 && current.line == previous.line + 1) adjacentAt = previous.line;
        if (labels > 2) ndx.put(labels - 2, middleRecord(labels - 2, older, previous));
        progress.recordDone(labels);
      }
      Count32(total, static_cast<int64_t>(line.size()) + 2, "the bytes of a .PRO (the index holds 32-bit offsets)",
              {"line", lines});
      if (frame.lineDone(lines, 0)) return JobOutcome::Interrupted;
    }
    result.lines = lines;

    if (labels < 2) {
      result.message = {std::string(kFileFormatErrorTitle), std::string(kNotRecordFileText)};
      return JobOutcome::Refused;
    }
    if (adjacentAt > 0) {
      ZvError error(err::kPastEnd, ErrorText(err::kPastEnd), job.gsProFile);
      error.setReason("Labels 1 and 2 stand on adjacent lines (lines " + std::to_string(adjacentAt) + " and " +
                      std::to_string(adjacentAt + 1) + "): the index cannot be built from this file.");
      throw error;
    }

    // Record N-1: its own start line, and an end line at the line before label N.
    const int32_t n = labels;
    IndexRec beforeLast = n == 2 ? indexRecord(1, 1, diff(current.offset, 2), diff(previous.line, -1), diff(current.line, 1))
                                 : indexRecord(n - 1, previous.offset, diff(current.offset, previous.offset),
                                               previous.line, diff(current.line, 1));
    ndx.put(n - 1, beforeLast);
    const int64_t fileBytes = FileSize(job.gsProFile);
    ndx.put(n, indexRecord(n, current.offset, diff(fileBytes, current.offset), diff(current.line, 1), lines));
    ndx.close();
    result.records = n;
    frame.finish(result);
    return JobOutcome::Done;
  });
}

}  // namespace zv
