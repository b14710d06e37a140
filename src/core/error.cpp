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
    case EISDIR:
    case ETXTBSY:
    case EBUSY: number = err::kPathFileAccess; break;
    case EBADF: number = err::kBadFileNumber; break;
    case ENOMEM: number = 7; break;
    default: break;
  }
  std::string text = number == 7 ? "Out of memory" : ErrorText(number);
  throw ZvError(number, text, path);
}

std::string MessageBoxErrorText(const std::string& gsErrNumber, const std::string& gsErrText) {
  return "Error number " + gsErrNumber + "\r" + gsErrText;
}

std::string ErrorFormText(const std::string& gsErrNumber, const std::string& gsErrText) {
  return "Error number" + gsErrNumber + "\r\n" + gsErrText;
}

void Inc16(int16_t& counter) {
  if (counter == std::numeric_limits<int16_t>::max()) throw ZvError(err::kOverflow, ErrorText(err::kOverflow));
  ++counter;
}

void ThrowOverflow() { throw ZvError(err::kOverflow, ErrorText(err::kOverflow)); }

}  // namespace zv
