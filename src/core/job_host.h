// What a job asks of whoever runs it: the input file, and somewhere to show progress.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/job_state.h"

namespace zv {

// The desktop program and the command line each implement this. The job calls it and
// never shows anything itself: the host paints panels, answers the file dialog, and
// lets the user raise JobState::giInterrupt during lineRead, the job's one yield.
class JobHost {
 public:
  virtual ~JobHost() = default;

  // Chooses the capture to filter. Sets gsInFile and the output names through
  // CheckInputFile, or sets giCancelOpen to 1 when no file was chosen. The dialog
  // filter text is the one the filter offers.
  virtual void GetInputFile(JobState& job, std::string_view dialogFilter) = 0;

  // frmFilter's title.
  virtual void setFilterTitle(std::string_view /*title*/) {}
  // Empties the five timing panels.
  virtual void ClearStatusPanels() {}
  // pnlFileSize, pnlStartTime, pnlFileLines, as the job fills them at its start.
  virtual void jobStarted(std::string_view /*fileSize*/, std::string_view /*startTime*/,
                          std::string_view /*fileLines*/) {}
  // Once per input line, after the line was read: pnlLineOdom and pnlProgress. This is
  // also the job's yield: the interrupt may be raised here, and the job looks at it
  // right after the line in hand.
  virtual void lineRead(int32_t /*lInLine*/, int32_t /*glLineCount*/) {}
  // pnlRecOdom, when a record label was written.
  virtual void recordLabelled(int32_t /*glRecNum*/) {}
  // pnlFinishTime and pnlElapsed.
  virtual void jobFinished(std::string_view /*finishTime*/, std::string_view /*elapsed*/) {}
  // The end-of-job hand-over: the three names, each with one leading blank.
  virtual void FinishFilter(std::string_view /*pnlInFile*/, std::string_view /*pnlProFile*/,
                            std::string_view /*pnlIndexFile*/) {}
};

// A message of the system's own: a title and a text (lines joined by CR LF).
struct Message {
  std::string title;
  std::string text;
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

// The time of day as the timing panels show it, "hh:mm:ss".
std::string TimeOfDayText();

// ShowElapsed: Num2Time of the finish text's seconds minus the start text's.
std::string ShowElapsed(std::string_view pnlStartTime, std::string_view pnlFinishTime);

}  // namespace zv
