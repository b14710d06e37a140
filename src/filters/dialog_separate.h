// DIALOG filter, specified types to separate files: each wanted type to a record file of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"
#include "filters/dialog_family.h"

namespace zv {

inline constexpr std::string_view kDialogSepTitle = "Specified DIALOG Types to Separate Files";

// One output: the type it takes and the base name of its files, to which ".PRO" and
// ".NDX" are added (a name holding a dot keeps it).
struct SepOutput {
  std::string type;
  std::string file;
};

// What frmSepTypes (or the command line) gathers: the capture and 1 to 5 outputs, in
// the dialog's order. The first output whose type equals a label's takes its record.
struct SepTypesParams {
  FilterInput input;
  std::vector<SepOutput> outputs;
};

// The file fields' rules, for the dialog and the command line alike.
inline constexpr std::size_t kMaxFileNameLength = 250;
inline constexpr std::string_view kFileNameTooLongTitle = "File Specification Error";
inline constexpr std::string_view kFileNameTooLongText = "Your file name now has over 250 characters.";
inline constexpr std::string_view kFileLeftBlankText =
    "One of the files has been left blank.  For this filtering to work properly, it is necessary to fill as many of "
    "the filenames as the number of types specified.";
// Two types that would write the same file would each replace what the other wrote.
inline constexpr std::string_view kSameFileTitle = "File Specification Error";
inline constexpr std::string_view kSameFileText =
    "Two of the types have been given the same file.  For this filtering to work properly, each type must have a "
    "file of its own.";

// Whether a file field refuses the character: codes 0 to 7, 9 to 21, and " * / : < > ? \ |.
bool RefusedInFileName(char c);
// The message for a refused character: the character and " is not a valid character
// in a file name". It has no title of its own.
std::string RefusedCharacterText(char c);

// The checks of the outputs before anything is written: 1 to 5 of them, no type and
// no name empty, no name over 250 characters or holding a refused character, no two
// names giving the same file, and no name giving a file that is the capture. Output
// names are those of `job.outputPath`. On a refusal fills `message` (an empty title
// for a refused character) and returns false.
[[nodiscard]] bool CheckSepOutputs(const JobState& job, const SepTypesParams& params, Message& message);

// Command 301 (300 is its dialog). Writes NAME.PRO and NAME.NDX for every output that
// got a record, each numbered from 1 with an index of its own, and gsBaseName .FSC.
// The labels of outputs 3 and 4 have two blanks after the hyphen. A refused output
// list (CheckSepOutputs) ends as Refused before anything is written. No record of the
// types: ZeroRecords with kNoTypesText. The record odometer counts every label of the
// capture; a TypeProgress observer also sees each output's count.
JobResult FilterDialogSep(JobState& job, JobProgress& progress, const SepTypesParams& params);

}  // namespace zv
