// File primitives: tests by name, and byte-exact access by handle.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zv {

// -1 if `fileName` names an existing regular file, 0 if not (a directory is not a file).
int32_t Exist(const std::string& fileName);

// Size in bytes of an existing file (0 if it cannot be read).
int64_t FileSize(const std::string& fileName);

// Number of text lines, by the same rules the filters read lines with: a line ends at
// CR LF, at a lone LF or at a lone CR, and a last line without a line end counts.
// Throws ZvError when the file cannot be read. `afterEachBlock`, when given, is called
// after each block of the file is counted (a megabyte at a time), so that a window
// can go on painting through the count of a large file.
int32_t LineCount(const std::string& fileName, const std::function<void()>& afterEachBlock = {});

// Whether two names lead to the same existing file (false when either is missing).
bool SameFile(const std::string& a, const std::string& b);

// By-handle access. Handles are small positive numbers, valid until FClose.
// Every failure throws ZvError with the file's name as detail.

// Makes an empty file (truncating one that exists).
void FCreate(const std::string& fileName);
// Opens an existing file for reading and writing and returns its handle. A file that
// may only be read (read-only media) is opened for reading; FPut to it is error 70.
int32_t CSFOpen(const std::string& fileName);
void FClose(int32_t handle);
// Sets the position to a byte offset from the file's start, 0 being the first byte.
void FSeek(int32_t handle, int64_t offset);
// In place: fills `buffer` with as many bytes as it is long. Reading past the end of
// the file is error 62.
void FGet(int32_t handle, std::string& buffer);
// Writes the text's bytes as they are; callers add their own CR LF.
void FPut(int32_t handle, std::string_view text);
// Reads one line from the current position and returns it without its line end
// (CR LF, LF or CR). At the end of the file it is error 62.
std::string FLInput(int32_t handle);

}  // namespace zv
