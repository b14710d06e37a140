// BuildIndex: a .NDX made from a .PRO that already exists, whatever wrote it.
#pragma once

#include <string_view>

#include "core/job_state.h"
#include "records/index_progress.h"

namespace zv {

inline constexpr std::string_view kFileFormatErrorTitle = "File Format Error";
inline constexpr std::string_view kNotRecordFileText = "This does not appear to be a filtered record file.";

enum class IndexOutcome {
  Built,           // the .NDX is written; giInterrupt is 0
  Interrupted,     // the user cancelled; no .NDX; giInterrupt is left at 1
  NotARecordFile,  // fewer than two labels: the caller shows kNotRecordFileText under
                   // kFileFormatErrorTitle with the stop icon; no .NDX; giInterrupt at 1
};

// Indexes job.gsProFile into job.gsIndexFile (the caller has derived both from the
// chosen name). An existing index of that name is deleted whatever the outcome.
//
// The numbers are those of the program's three-pass builder, which differ from a
// filter's: record 1 starts at byte 1 and is one line short; records 2 to N-2 start a
// line early and reach the next label; record N-1 starts at its label; record N starts
// a line early and ends at the file's last line (see build_index.cpp for the table).
// Fewer than two labels is NotARecordFile. Two labels on adjacent lines are a read
// past the end of the builder's line table: error 62, thrown.
//
// Memory does not grow with the file: one pass over the .PRO, index records written
// as the labels are found. The interrupt is looked at after every line. Errors throw
// ZvError after the .NDX was deleted, with job.gsErrNumber and gsErrText set.
IndexOutcome BuildIndex(JobState& job, IndexProgress& progress);

}  // namespace zv
