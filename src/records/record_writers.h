// The sifter's two writers: kept records to their keep files, all records in order.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr std::string_view kWritingKeptCaption = "Writing Kept Records";
inline constexpr std::string_view kWritingOrderCaption = "Writing Reordered Records";

// The record file and its index, and how many of its records are looked at.
struct WriteKeptInput {
  std::string proFile;
  std::string indexFile;
  int32_t glRecCount = 0;
};

// Write Kept Records, a job titled kWritingKeptCaption. For each record of the index,
// in ascending order, whose keepFlag is not 0: its lines (endLine - startLine + 1 of
// them, read from 0 for record 1, else from startByte) are appended with CR LF to its
// keepFile, trimmed of blanks, which is created if missing; record 1 gets one more
// CR LF. Then every mark in the index is cleared.
//
// The observer hears each record written (recordDone with the written count), the
// keep file (caption) and each line (lineDone with its number in the record, the
// interrupt looked at after it). `records` of the result is the written count, a
// 16-bit number: a run that keeps more than 32767 records fails with error 6.
//
// On every way out but Done each keep file is put back as it was (cut back to its old
// length, or deleted if the run made it) and the marks stay in the index.
JobResult WriteKeptRecords(JobState& job, JobProgress& progress, const WriteKeptInput& input);

struct WriteOrderInput {
  std::string proFile;
  std::string indexFile;
  std::string ordFile;              // gsBaseName + ".ORD", replaced
  std::span<const int32_t> glOrder;  // positions 1 to glRecCount; must outlive the job
  int32_t glRecCount = 0;
};

// Write Order, a job titled kWritingOrderCaption: every record in the order of
// glOrder, in the same line form as a keep file, record 1 followed by one more CR LF,
// and one CR LF closing the file. A record of 32768 lines or more fails with error 6,
// as its count is 16-bit.
//
// The observer hears the .ORD's name (caption), each record (recordDone with its
// number) and each line (lineDone, the interrupt looked at after it). `records` of
// the result is the count written. On every way out but Done no .ORD is left.
JobResult WriteOrder(JobState& job, JobProgress& progress, const WriteOrderInput& input);

}  // namespace zv
