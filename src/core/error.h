// The one error type of the program: a number and a text, as the error traps store them.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

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
//
// `reason` is one line in the user's words for what the number alone cannot say: which
// limit a count reached and where, which labels stand where, that an index does not
// match its record file. Both front ends show it after the system's message (the
// command line on stderr, the desktop in frmError); most errors have none.
class ZvError : public std::runtime_error {
 public:
  ZvError(int32_t number, std::string text, std::string detail = {});

  int32_t number() const noexcept { return number_; }
  const std::string& text() const noexcept { return text_; }
  const std::string& detail() const noexcept { return detail_; }
  const std::string& reason() const noexcept { return reason_; }

  ZvError& setReason(std::string reason) {
    reason_ = std::move(reason);
    return *this;
  }

 private:
  int32_t number_;
  std::string text_;
  std::string detail_;
  std::string reason_;
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

// The text of frmError: "Error number" + gsErrNumber + CR LF + gsErrText, and the
// error's reason on a line of its own when it has one.
std::string ErrorFormText(const std::string& gsErrNumber, const std::string& gsErrText,
                          const std::string& reason = {});

// Where a count ran past its limit, for the reason line: "input line" 119523,
// "record" 40000. Cheap to pass on every call: the text is made only on failure.
struct LimitAt {
  std::string_view unit;
  int64_t at = 0;
};

// The reason line of a limit: "Limit reached: <what> can be at most <limit>; passed at
// <unit> <at>." (without the last part when `where` has no unit).
std::string LimitReason(std::string_view what, int64_t limit, LimitAt where = {});

// Error 6 "Overflow" with `reason` as its reason line.
[[noreturn]] void ThrowOverflow(std::string reason, std::string detail = {});

// 16-bit counters of the jobs overflow past 32,767 and 32-bit ones past 2,147,483,647,
// and abandon the job, as the program has always done: these helpers raise error 6
// instead of wrapping. `what` names the count for the reason line (its variable in
// brackets), `where` the input line or record the job had reached.
void Inc16(int16_t& counter, std::string_view what = {}, LimitAt where = {});
void Add32(int32_t& counter, int64_t amount, std::string_view what = {}, LimitAt where = {});
// Add32 with the sum inline, for the counters that move on every line: Add32 itself,
// which makes the reason line and raises the overflow, is called only past the limits.
inline void Count32(int32_t& counter, int64_t amount, std::string_view what = {}, LimitAt where = {}) {
  const int64_t sum = static_cast<int64_t>(counter) + amount;
  if (sum > INT32_MAX || sum < INT32_MIN) [[unlikely]]
    Add32(counter, amount, what, where);
  else
    counter = static_cast<int32_t>(sum);
}

}  // namespace zv
