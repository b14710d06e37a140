// What the polishing tools share: the files a front end chooses, their checks and the
// system's messages about them, and the two open files of a line tool.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/files.h"
#include "core/job.h"
#include "core/line_reader.h"
#include "core/text_out.h"

namespace zv {

// The input and the output a user names for Renumber, Replace, Delete and Undelimit.
struct PolishFiles {
  std::string inFile;
  std::string outFile;
};

// The input alone, for the tools that name their outputs themselves (line breaks,
// divide).
struct PolishInput {
  std::string inFile;
};

// The label test of every tool but page breaks: no blank behind the hyphen, so
// "Record -" alone and "Record -x" are labels too.
inline constexpr std::string_view kLabelStem = "Record -";

// The file dialogs' filters.
inline constexpr std::string_view kRenumberOpenFilter =
    "All Files (*.*)|*.*|.PRO Files|*.PRO|.ORD Files|*.ORD|.BRK Files|*.BRK|.FMT Files|*.FMT|.QRY Files|*.QRY";
inline constexpr std::string_view kRenumberSaveFilter =
    "All Files (*.*)|*.*|.REF Files|*.REF|.LOG Files|*.LOG|.CAP Files|*.CAP|.PRO Files|*.PRO|";
// Replace, Delete, Undelimit and Divide: the .RNK and .SRT entries have no "*".
inline constexpr std::string_view kRecordFilesFilter =
    "All Files (*.*)|*.*|.PRO Files|*.PRO|.ORD Files|*.ORD|.RNK Files|.RNK|.SRT Files|.SRT|.BRK Files|*.BRK|"
    ".FMT Files|*.FMT|.QRY Files|*.QRY";
inline constexpr std::string_view kAllFilesFilter = "All Files (*.*)|*.*|";
inline constexpr std::string_view kLineBreaksFilter = ".PRO Files |*.PRO|All Files (*.*)|*.*|";
inline constexpr std::string_view kPageBreaksFilter = ".PRO Files |*.PRO|All Files (*.*)|*.*";

// The refusals of a file chosen.
inline constexpr std::string_view kOpenFileErrorTitle = "Open File Error";
inline constexpr std::string_view kZeroLengthTitle = "Zero-Length File";
inline constexpr std::string_view kZeroLengthText = "is a zero-length file.";
inline constexpr std::string_view kOutputIsInputTitle = "Save File Error";
inline constexpr std::string_view kOutputIsInputText = "Output file must not be the\r\nsame as the input file.";
inline constexpr std::string_view kOutputExistsTitle = "File Save Error";
inline constexpr std::string_view kOutputExistsText = "already exits and would be overwritten.";
inline constexpr std::string_view kFormatErrorTitle = "File Format Error";
inline constexpr std::string_view kNotFilteredText = "This does not appear to be a filtered record file.";

// How a tool words the refusals: the line breaks between the file's name and the
// text of the zero-length and the existing-output messages.
struct FileWording {
  int zeroLengthBreaks = 1;
  int existsBreaks = 2;
};
inline constexpr FileWording kRenumberWording{2, 2};
inline constexpr FileWording kLabelToolWording{1, 2};  // Replace and Delete
inline constexpr FileWording kUndelimitWording{1, 1};

// The checks of the open dialog's answer: the file is there ("File not found.") and
// not empty. Nothing when it passes.
[[nodiscard]] std::optional<Message> CheckPolishInput(const std::string& inFile, const FileWording& wording);
// The checks of the save dialog's answer: not the input, and no file of that name
// (these tools never overwrite).
[[nodiscard]] std::optional<Message> CheckPolishOutput(const std::string& inFile, const std::string& outFile,
                                                       const FileWording& wording);

// Both checks, the input's first: what a line tool refuses before it opens anything.
[[nodiscard]] std::optional<Message> CheckPolishFiles(const PolishFiles& files, const FileWording& wording);

// The output of the line and page break tools: the base name (no folder) and `ext`
// when the input's path holds a ".", otherwise the input's whole path and `ext`.
std::string DerivedOutputName(const std::string& inFile, std::string_view ext);

// The refusal of an input that an output of the job would replace.
Message InputIsOutputMessage();

// The format refusal of the line-40 tests and of Divide's first line.
Message NotRecordFileMessage();

// The input and the output of a line tool, open. The output is registered with the
// job (removed on every way out but success) before it is created, and the input's
// lines are counted for the bar.
struct LineToolFiles {
  LineToolFiles(Job& job, const std::string& inFile, const std::string& outFile);

  int32_t lineCount;
  LineReader in;
  TextOut out;
};

// The frame of the tools that copy a record file line by line into a new one: both
// names checked, the files opened and the job started; `loop(job, result, io)` reads
// and writes the lines and says how it ended, and when it is Done the output is
// closed and the job finished.
template <class Loop>
JobResult RunLineTool(JobState& state, JobProgress& progress, const PolishFiles& files, const FileWording& wording,
                      std::string_view title, Loop&& loop) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    if (auto refusal = CheckPolishFiles(files, wording)) {
      result.message = *refusal;
      return JobOutcome::Refused;
    }
    LineToolFiles io(job, files.inFile, files.outFile);
    job.start(result, title, FileSize(files.inFile), io.lineCount);
    const JobOutcome outcome = loop(job, result, io);
    if (outcome != JobOutcome::Done) return outcome;
    io.out.close();
    job.finish(result);
    return JobOutcome::Done;
  });
}

}  // namespace zv
