// File primitives: tests by name. Files are read and written through the classes that
// own them: LineReader (line input), TextOut (CR LF output), IndexFile (the .NDX),
// RecordReader (a .PRO through its index).
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

}  // namespace zv
