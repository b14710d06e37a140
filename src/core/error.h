// The one error type of the program: a number and a text, as the error traps store them.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace zv {

// Error numbers the program raises. They follow the numbering its users know from
// the message "Error number  61" and the like.
namespace err {
inline constexpr int32_t kInvalidCall = 5;     // "Invalid procedure call or argument"
inline constexpr int32_t kOverflow = 6;        // "Overflow"
inline constexpr int32_t kDivisionByZero = 11;
inline constexpr int32_t kBadFileNumber = 52;  // "Bad file name or number"
inline constexpr int32_t kFileNotFound = 53;
inline constexpr int32_t kDeviceIo = 57;       // "Device I/O error"
inline constexpr int32_t kDiskFull = 61;
inline constexpr int32_t kPastEnd = 62;        // "Input past end of file"
inline constexpr int32_t kPermissionDenied = 70;
inline constexpr int32_t kPathFileAccess = 75; // "Path/File access error"
inline constexpr int32_t kPathNotFound = 76;
inline constexpr int32_t kCancel = 32755;      // the file dialog's cancel; never reported
}  // namespace err

// Thrown by tools for failures the user must be told about. RunCommand is where it
// is caught. `detail` names the file or routine involved; it is shown on the
// command line and kept out of the system's own message texts.
class ZvError : public std::runtime_error {
 public:
  ZvError(int32_t number, std::string text, std::string detail = {});

  int32_t number() const noexcept { return number_; }
  const std::string& text() const noexcept { return text_; }
  const std::string& detail() const noexcept { return detail_; }

 private:
  int32_t number_;
  std::string text_;
  std::string detail_;
};

// The standard description of an error number ("Disk full" for 61).
std::string ErrorText(int32_t number);

// `gsErrNumber` as the traps store it: the number-to-text conversion, with the
// leading blank a non-negative number gets (" 61").
std::string ErrNumberText(int32_t number);

// An error from a failed system call on `path`, numbered as the user expects
// (ENOSPC is 61 "Disk full", EACCES 70, ENOENT 53...).
[[noreturn]] void ThrowSystemError(int errnoValue, const std::string& path);

// The message a message box shows: "Error number " + gsErrNumber + CR + gsErrText.
std::string MessageBoxErrorText(const std::string& gsErrNumber, const std::string& gsErrText);

// The text of frmError: "Error number" + gsErrNumber + CR LF + gsErrText.
std::string ErrorFormText(const std::string& gsErrNumber, const std::string& gsErrText);

// 16-bit counters of the jobs overflow past 32,767 and abandon the job, as the
// program has always done: these helpers raise error 6 instead of wrapping.
void Inc16(int16_t& counter);
// Error 6, "Overflow".
[[noreturn]] void ThrowOverflow();
// Inline: the counters of the line loops move on every line.
inline void Add32(int32_t& counter, int64_t amount) {
  const int64_t sum = static_cast<int64_t>(counter) + amount;
  if (sum > INT32_MAX || sum < INT32_MIN) [[unlikely]]
    ThrowOverflow();
  counter = static_cast<int32_t>(sum);
}

}  // namespace zv
