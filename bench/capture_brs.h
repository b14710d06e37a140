// A large, deterministic BRS .. (dot dot) session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: logons, data base changes,
// searches with their answer counts, prints whose documents open at their answer
// number in eight columns, with empty lines and lines of blanks inside, the ends of
// print requests and lists, and sign-offs with connect time and session cost.
// `records` counts the documents, each one a record FilterBRS must find; no .FSC.
// The same size always gives the same bytes. Throws std::runtime_error when the file
// cannot be written.
SyntheticCapture WriteBrsCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
