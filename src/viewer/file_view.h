// The file viewer's commands over its display: Find Text, Repeat Search, the Record
// Stepper, Jump to Line, Bottom, the two search events, and the checks before Open and
// Split. The window gathers the answers and shows the messages; nothing here draws.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/dispatcher.h"
#include "core/job.h"
#include "viewer/file_display.h"

namespace zv {

inline constexpr int32_t kOpenFileView = 2900;
inline constexpr int32_t kSplitFile = 2901;

namespace fileview {

// The text the Record Stepper looks for: the head of every record label.
inline constexpr std::string_view kRecordLabel = "Record - ";

// What the commands ask of the viewer's window.
class FileViewHost {
 public:
  virtual ~FileViewHost() = default;
  // An input box: the text typed, or "" for Cancel.
  virtual std::string inputBox(std::string_view prompt, std::string_view title) = 0;
  virtual void message(const Message& message) = 0;
};

// Find Text: the answer becomes gsSearchText (the sifter's too) and, unless empty, the
// display's search text.
void FindText(FileDisplay& display, FileViewHost& host, std::string& gsSearchText);
// Repeat Search: gsSearchText again, or the message that there is none.
void RepeatSearch(FileDisplay& display, FileViewHost& host, const std::string& gsSearchText);
// Record Stepper: a search for the next record label; gsSearchText is left alone.
void RecordStepper(FileDisplay& display);
// Jump to Line: asks until the answer is empty, too large or a line; the number is a
// 16-bit one, so above 32767 it throws ZvError 6 (Overflow), and text that is no
// number throws 13 (Type mismatch).
void JumpToLine(FileDisplay& display, FileViewHost& host);
// Bottom: 20 lines above the last one, where there are that many.
void Bottom(FileDisplay& display);

// The display's SearchRequest: each search goes on behind the last match, and the
// stepper from its own place.
void OnSearchRequest(FileDisplay& display);
// The display's SearchComplete: the message when nothing was found (the window shows
// it, repaints and focuses the display), and the stepper's place after a label.
std::optional<Message> OnSearchComplete(FileDisplay& display);

// Split's refusal while no line is selected, or nothing when Split may go on.
std::optional<Message> SplitRefusal(const FileDisplay& display);

// The parameters of command 2900: the file the open dialog chose.
struct ViewFileParams {
  std::string path;
};

// The refusal of a file of no bytes: its name, two line breaks, "is a zero-length file."
Message ZeroLengthMessage(const std::string& path);

}  // namespace fileview

// Command 2900: the check of a file chosen for viewing. Done for a file to show;
// Refused with the zero-length message, or with "File not found." for a name that
// is not there (the dialog takes any name typed).
JobResult OpenFileView(CommandContext& context);

}  // namespace zv
