// SelectRecordFile: the record file that Query by Form, Rank and Sort read, and its index.
#pragma once

#include <string>
#include <string_view>

#include "core/job.h"
#include "core/job_state.h"
#include "records/build_index.h"

namespace zv {

// The open dialog's filter, and the second line of each tool's refusal of a name that
// is neither a .PRO nor a .NDX.
inline constexpr std::string_view kRecordFileDialogFilter =
    ".PRO & .NDX Files|*.PRO;*.NDX|.PRO Files|*.PRO|.NDX Files|*.NDX|All Files (*.*)|*.*|";
inline constexpr std::string_view kQbfRequirement = "The search requires that you specify";
inline constexpr std::string_view kRankRequirement = "Ranking requires that you specify";
inline constexpr std::string_view kSortRequirement = "Sorting requires that you specify";

// The names a content tool works with once the file is chosen (and indexed).
struct RecordFileChoice {
  std::string inFile;     // gsInFile: the name as chosen
  std::string proFile;    // gsProFile
  std::string indexFile;  // gsIndexFile
  std::string baseName;   // gsBaseName: the stem of the tool's outputs
};
RecordFileChoice ChoiceOf(const JobState& job);
void UseChoice(JobState& job, const RecordFileChoice& choice);

// A path less its last extension (the dot in the file's own name); a name without one
// stays whole. C:\DIR\A.B.NDX gives C:\DIR\A.B.
std::string StemOf(std::string_view path);

// The checks of a chosen name. It must hold ".PRO" or ".NDX" (a case-sensitive search
// of the whole path) and not be of length 0. A name holding ".NDX" is an index, used
// as it stands: gsBaseName is the name less its extension and gsProFile that stem and
// ".PRO". Any other name is the record file, to be indexed: gsBaseName its base name
// in the current directory (JobState::outputPath) and gsIndexFile that and ".NDX".
// Both files must exist. On success sets gsInFile, gsBaseName, gsProFile, gsIndexFile
// and returns true; otherwise fills `refusal`, leaves the four names empty and
// returns false. `requirement` is the tool's line of the first refusal.
[[nodiscard]] bool SelectRecordFile(JobState& job, const std::string& name, std::string_view requirement,
                                    Message& refusal);

// Whether the name SelectRecordFile accepted is an index rather than a record file.
bool IndexWasChosen(const JobState& job);

// BuildIndex for the chosen record file, a job of its own with `progress` as its
// observer: jobStarted with the .PRO's size and the start time, lineDone per line
// (the yield where the interrupt is raised, with no total), recordDone per label,
// jobFinished. Done, Interrupted, Refused (not a record file, with the message) or
// Failed (with the error), and no index but on Done.
JobResult IndexRecordFile(JobState& job, JobProgress& progress);

}  // namespace zv
