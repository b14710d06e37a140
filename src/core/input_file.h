// The checks of a capture chosen for a filter, and the names of its outputs.
#pragma once

#include <string>
#include <string_view>

#include "core/job.h"
#include "core/job_state.h"

namespace zv {

// What a front end gathers for a filter: the capture, and where the outputs go.
struct FilterInput {
  std::string gsInFile;  // the capture, as chosen or named
  std::string outDir;    // empty: the current directory
};

// The file dialog filter of the filters' open dialog.
inline constexpr std::string_view kCaptureDialogFilter =
    "All Files (*.*)|*.*|.REF Files|*.REF|.LOG Files|*.LOG|.CAP Files|*.CAP|";

inline constexpr std::string_view kFileNotFoundText = "File not found.";
inline constexpr std::string_view kFileNotFoundTitle = "File Open Error";
inline constexpr std::string_view kProInputText = "Input file must not have .PRO extension.";
inline constexpr std::string_view kProInputTitle = "Open File Error";
// Refuses an input that one of the job's outputs would replace (a capture named
// x.NDX in the output folder, say): the job would otherwise destroy its own input.
inline constexpr std::string_view kInputIsOutputText = "Input file would be overwritten by an output file.";

// What ZeroRecords shows when a job recognized no record.
inline constexpr std::string_view kZeroRecordsTitle = "Zero Records";
inline constexpr std::string_view kZeroRecordsText =
    "The filter has recognized no\r\nrecords.  This can be caused\r\nby mis-matching filters and\r\nsystems.";

// The checks of GetInputFile once a name was chosen: the file exists, its path holds
// no ".PRO", and no output would replace it. On success sets gsInFile, gsBaseName,
// gsProFile and gsIndexFile and returns true; otherwise leaves the job as it was,
// fills `message` with the warning to show, and returns false.
[[nodiscard]] bool CheckInputFile(JobState& job, const std::string& path, Message& message);

}  // namespace zv
