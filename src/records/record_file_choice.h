// The checks of a record file chosen for the sifter (or named on the command line).
#pragma once

#include <string>

#include "core/job.h"
#include "core/job_state.h"

namespace zv {

// The chosen name must hold ".PRO" or ".NDX" (a case-sensitive search of the whole
// path), must not be empty, and the file it leads to must exist beside it: the .PRO
// of a chosen .NDX, named from the base name in the current directory
// (JobState::outputPath). On success sets gsInFile, gsBaseName, gsProFile and
// gsIndexFile and returns true. Otherwise fills `refusal` with the message to show,
// leaves those four names empty and returns false.
[[nodiscard]] bool ChooseRecordFile(JobState& job, const std::string& name, Message& refusal);

// Empties gsInFile, gsBaseName, gsProFile and gsIndexFile: the choice is forgotten.
void ForgetRecordFile(JobState& job);

// Whether the name that ChooseRecordFile accepted is an index (to use as it stands)
// rather than a record file (to index first).
inline bool IndexChosen(const JobState& job) { return job.gsInFile.find(".NDX") != std::string::npos; }

}  // namespace zv
