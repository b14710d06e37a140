// Error numbers, their texts, and the message forms built from them.
#include "core/error.h"

#include <cerrno>
#include <limits>

namespace zv {

ZvError::ZvError(int32_t number, std::string text, std::string detail)
    : std::runtime_error(text), number_(number), text_(std::move(text)), detail_(std::move(detail)) {}

std::string ErrorText(int32_t number) {
  switch (number) {
    case err::kInvalidCall: return "Invalid procedure call or argument";
    case err::kOverflow: return "Overflow";
    case err::kDivisionByZero: return "Division by zero";
    case err::kBadFileNumber: return "Bad file name or number";
    case err::kFileNotFound: return "File not found";
    case err::kDeviceIo: return "Device I/O error";
    case err::kDiskFull: return "Disk full";
    case err::kPastEnd: return "Input past end of file";
    case err::kPermissionDenied: return "Permission denied";
    case err::kPathFileAccess: return "Path/File access error";
    case err::kPathNotFound: return "Path not found";
    case err::kCancel: return "Cancel was selected.";
    default: return "Application-defined or object-defined error";
  }
}

std::string ErrNumberText(int32_t number) {
  std::string s = std::to_string(number);
  return number >= 0 ? " " + s : s;
}

[[noreturn]] void ThrowSystemError(int errnoValue, const std::string& path) {
  int32_t number = err::kDeviceIo;
  switch (errnoValue) {
    case ENOSPC:
    case EFBIG:
    case EDQUOT: number = err::kDiskFull; break;
    case EACCES:
    case EPERM:
    case EROFS: number = err::kPermissionDenied; break;
    case ENOENT: number = err::kFileNotFound; break;
    case ENOTDIR: number = err::kPathNotFound; break;
    case ENAMETOOLONG: number = err::kBadFileNumber; break;  // "Bad file name or number"
    case EISDIR:
    case ETXTBSY:
    case EBUSY: number = err::kPathFileAccess; break;
    case EBADF: number = err::kBadFileNumber; break;
    case ENOMEM: number = 7; break;
    default: break;
  }
  std::string text = number == 7 ? "Out of memory" : ErrorText(number);
  ZvError error(number, text, path);
  if (errnoValue == ENAMETOOLONG) error.setReason("The file name is longer than the file system allows.");
  throw error;
}

std::string MessageBoxErrorText(const std::string& gsErrNumber, const std::string& gsErrText) {
  return "Error number " + gsErrNumber + "\r" + gsErrText;
}

std::string ErrorFormText(const std::string& gsErrNumber, const std::string& gsErrText, const std::string& reason) {
  std::string text = "Error number" + gsErrNumber + "\r\n" + gsErrText;
  if (!reason.empty()) text += "\r\n" + reason;
  return text;
}

std::string LimitReason(std::string_view what, int64_t limit, LimitAt where) {
  std::string reason = "Limit reached: ";
  reason += what;
  reason += " can be at most " + std::to_string(limit);
  if (!where.unit.empty()) {
    reason += "; passed at ";
    reason += where.unit;
    reason += " " + std::to_string(where.at);
  }
  reason += '.';
  return reason;
}

[[noreturn]] void ThrowOverflow(std::string reason, std::string detail) {
  ZvError error(err::kOverflow, ErrorText(err::kOverflow), std::move(detail));
  error.setReason(std::move(reason));
  throw error;
}

void Inc16(int16_t& counter, std::string_view what, LimitAt where) {
  constexpr int16_t kMax = std::numeric_limits<int16_t>::max();
  if (counter == kMax) {
    if (what.empty()) throw ZvError(err::kOverflow, ErrorText(err::kOverflow));
    ThrowOverflow(LimitReason(what, kMax, where));
  }
  ++counter;
}

void Add32(int32_t& counter, int64_t amount, std::string_view what, LimitAt where) {
  const int64_t sum = static_cast<int64_t>(counter) + amount;
  if (sum > std::numeric_limits<int32_t>::max() || sum < std::numeric_limits<int32_t>::min()) {
    if (what.empty()) throw ZvError(err::kOverflow, ErrorText(err::kOverflow));
    ThrowOverflow(LimitReason(what, std::numeric_limits<int32_t>::max(), where));
  }
  counter = static_cast<int32_t>(sum);
}

}  // namespace zv
