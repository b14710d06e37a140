// The file viewer's commands and the handling of its display's search events.
#include "viewer/file_view.h"

#include <limits>

#include "core/error.h"
#include "core/files.h"
#include "core/input_file.h"
#include "core/text.h"
#include "records/record_file.h"

namespace zv::fileview {

namespace {

const Message kNoPriorSearch{"No Search To Repeat",
                             "There is no prior search to repeat.  You may, however, use the 'Find Text' command or "
                             "'Search' button now, if you like."};
const Message kLastRecord{"Last Record", "No further 'Record - N' style record labels found."};
const Message kTextNotFound{"Text Not Found", "No further occurences of the search text."};
const Message kNotANumber{"Zero or Non-numeric Input Error", "Please choose a number."};
const Message kTooManyLines{"Jump Error", "There aren't that many lines."};
const Message kBelowOne{"Jump Error", "You chose a line less than 1."};
const Message kNoLineSelected{
    "Split File Error",
    "To use the Split command it is necessary first to select the line where the file being viewed will be "
    "split.  The line is selected by clicking on it with the mouse.\r\n\r\nThe segment of the file from the "
    "beginning to the line just before the selected one will be written to the first new file, and the segment "
    "of the file from the selected line to the end will be written to the second new file."};

// A number in a prompt as the number-to-text conversion gives it: a blank before it.
std::string numberText(int64_t n) { return (n >= 0 ? " " : "") + std::to_string(n); }

// The answer read into a 16-bit integer: more than 32767 overflows.
int16_t toInteger(const std::string& answer) {
  const int32_t value = ToLong(answer);
  if (value > std::numeric_limits<int16_t>::max() || value < std::numeric_limits<int16_t>::min())
    throw ZvError(err::kOverflow, ErrorText(err::kOverflow));
  return static_cast<int16_t>(value);
}

}  // namespace

void FindText(FileDisplay& display, FileViewHost& host, std::string& gsSearchText) {
  gsSearchText = host.inputBox("Search text:", "Find Text");
  if (!gsSearchText.empty()) display.setSearchText(gsSearchText);
}

void RepeatSearch(FileDisplay& display, FileViewHost& host, const std::string& gsSearchText) {
  if (gsSearchText.empty()) {
    host.message(kNoPriorSearch);
    return;
  }
  display.setSearchText(gsSearchText);
}

void RecordStepper(FileDisplay& display) { display.setSearchText(std::string(kRecordLabel)); }

void JumpToLine(FileDisplay& display, FileViewHost& host) {
  const std::string prompt = "Jump to what line?\r\n\r\n(1 to" + numberText(display.lineCount()) + ")";
  for (;;) {
    const std::string answer = host.inputBox(prompt, "Jump to Line");
    if (answer.empty()) return;
    if (InstrTbl(1, answer, "0123456789") == 0) {
      host.message(kNotANumber);
      continue;
    }
    const int16_t line = toInteger(answer);
    if (line > display.lineCount()) {
      host.message(kTooManyLines);
      return;
    }
    if (line < 1) {
      host.message(kBelowOne);
      continue;
    }
    display.setTopLine(line);
    return;
  }
}

void Bottom(FileDisplay& display) {
  const int64_t top = display.lineCount() - 20;
  if (top >= 1) display.setTopLine(top);
}

void OnSearchRequest(FileDisplay& display) {
  if (display.searchText() == kRecordLabel) {
    // The stepper goes on from its own place, whatever other searches did since.
    display.setSelStart(display.stepPosition());
    display.setSelStart(display.selStart() + display.selLength() + 1);
    display.setSelLength(0);
    display.setStepPosition(display.selStart());
  } else if (display.selStart() != 0) {
    display.setSelStart(display.selStart() + display.selLength() + 1);
    display.setSelLength(0);
  }
}

std::optional<Message> OnSearchComplete(FileDisplay& display) {
  const bool stepper = display.searchText() == kRecordLabel;
  if (display.selLength() == 0) {
    // A next search begins at the top; so does the stepper's, from its own place.
    display.setSelStart(0);
    if (stepper) display.setStepPosition(0);
    return stepper ? kLastRecord : kTextNotFound;
  }
  if (stepper) display.setStepPosition(display.selStart() + display.selLength());
  return std::nullopt;
}

std::optional<Message> SplitRefusal(const FileDisplay& display) {
  if (display.selLength() == 0 || display.selStart() == 0 || display.selLine() == 0) return kNoLineSelected;
  return std::nullopt;
}

Message ZeroLengthMessage(const std::string& path) { return {"Zero-Length File", path + "\r\n\r\nis a zero-length file."}; }

}  // namespace zv::fileview

namespace zv {

JobResult OpenFileView(CommandContext& context) {
  JobResult result;
  const fileview::ViewFileParams* params = context.get<fileview::ViewFileParams>();
  if (params == nullptr) {
    result.outcome = JobOutcome::NoCommand;
    return result;
  }
  if (Exist(params->path) == 0) {
    result.outcome = JobOutcome::Refused;
    result.message = Message{std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)};
  } else if (FileSize(params->path) == 0) {
    result.outcome = JobOutcome::Refused;
    result.message = fileview::ZeroLengthMessage(params->path);
  }
  return result;
}

}  // namespace zv
