// A large, deterministic Ovid session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: sessions of logons, search
// histories under "Database: " lines, prints of citations numbered "<n>" (some with
// blanks around the number) whose field names stand in the 9-column margin and whose
// text is indented by it, page footers inside citations, transmission and
// screen-capture notices, and logoffs with costs. `records` is the number of
// citations; there is no .FSC. The same size always gives the same bytes. Throws
// std::runtime_error when the file cannot be written.
SyntheticCapture WriteOvidCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
