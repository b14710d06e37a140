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
// What the command line can name that the open dialog never offers, each refused
// under kFileNotFoundTitle with its real cause rather than "File not found.".
inline constexpr std::string_view kInputIsDirectoryText = "Input file is a directory, not a file.";
// A filter reads its input twice (the line count, then the lines): a pipe would be
// empty the second time.
inline constexpr std::string_view kInputNotRegularText =
    "Input file is not a regular file (a pipe, a device or a socket); a filter must read it twice.";
// Followed by the system's words for the cause, as "(Permission denied)."
inline constexpr std::string_view kInputUnreadableText = "Input file cannot be read";
// Under kProInputTitle, followed by the name that does not fit.
inline constexpr std::string_view kOutputNameTooLongText = "Output file name too long for the file system: ";

// What ZeroRecords shows when a job recognized no record.
inline constexpr std::string_view kZeroRecordsTitle = "Zero Records";
inline constexpr std::string_view kZeroRecordsText =
    "The filter has recognized no\r\nrecords.  This can be caused\r\nby mis-matching filters and\r\nsystems.";

// The checks of GetInputFile once a name was chosen: the file exists (and is a regular
// file that can be read), its path holds no ".PRO", no output would replace it, and
// the outputs' names fit the file system. On success sets gsInFile, gsBaseName,
// gsProFile and gsIndexFile and returns true; otherwise leaves the job as it was,
// fills `message` with the warning to show, and returns false.
[[nodiscard]] bool CheckInputFile(JobState& job, const std::string& path, Message& message);

}  // namespace zv
