// BuildIndex: a .NDX made from a .PRO that already exists, whatever wrote it.
#pragma once

#include <string_view>

#include "core/job_state.h"
#include "core/job.h"

namespace zv {

inline constexpr std::string_view kFileFormatErrorTitle = "File Format Error";
inline constexpr std::string_view kNotRecordFileText = "This does not appear to be a filtered record file.";

inline constexpr std::string_view kIndexingTitle = "Indexing Record File";

// Indexes job.gsProFile into job.gsIndexFile (the caller has derived both from the
// chosen name, as ChooseRecordFile does), as a job of the frame: the observer is told
// the .PRO's size, every line and every label; the interrupt is looked at after every
// line. An existing index of that name is deleted whatever the outcome. The result:
//   Done         the .NDX is written; `records` is the record count, `lines` the lines
//   Refused      fewer than two labels: `message` is kNotRecordFileText under
//                kFileFormatErrorTitle, for the caller to show with the stop icon
//   Interrupted  the user cancelled
//   Failed       `error` holds it (gsErrNumber and gsErrText are set): labels 1 and
//                2 on adjacent lines are error 62, a read past the end of the
//                builder's line table, with a reason line saying so
// and on every way out but Done no .NDX is left.
//
// The numbers are those of the program's three-pass builder, which differ from a
// filter's: record 1 starts at byte 1 and is one line short; records 2 to N-2 start a
// line early and reach the next label; record N-1 starts at its label; record N starts
// a line early and ends at the file's last line (see build_index.cpp for the table).
//
// Memory does not grow with the file: one pass over the .PRO, index records written
// as the labels are found.
JobResult BuildIndex(JobState& job, JobProgress& progress);

}  // namespace zv
