// Divide: each record of a record file to a file of its own, BASE.001 to BASE.999.
#pragma once

#include <cstdint>
#include <string>

#include "core/job.h"
#include "core/job_state.h"
#include "polish/polish_files.h"

namespace zv {

inline constexpr std::string_view kDivideTitle = "Divide Records To Files";
inline constexpr int16_t kMostDividedFiles = 999;
inline constexpr std::string_view kFilesLimitTitle = "Files Limit";
inline constexpr std::string_view kFilesLimitText =
    "There have been 999 files created, which is the limit.  To divide more records into separate files, first "
    "split the input file.";

// The name of the n-th file: the stem, ".", and n in three digits.
std::string DividedFileName(const std::string& baseName, int16_t n);

// DivideRecords: the stem is BaseName of the input (no folder) when its path holds a
// ".", the whole path otherwise. The file's first line must be a label. Each label
// closes the file in hand; the two lines behind it are read unseen and uncleaned, the
// first dropped, the second opening the next file, which then takes every line up to
// the next label. A label on the last line makes no file; on the second-last it reads
// past the end (error 62). The 1000th record is not written: the job ends with the
// "Files Limit" warning in `message` and 999 files.
//
// The abandoning of a job that has made files never deletes them: its loop fails on
// its first pass, so an interrupt or an error after the first file ends as error 13
// "Type mismatch" with every file made kept. Before the first file an interrupt is
// quiet and an error is reported as it is.
JobResult DivideRecords(JobState& state, JobProgress& progress, const PolishInput& input);

}  // namespace zv
