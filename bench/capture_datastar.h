// A large, deterministic Data-Star session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: logons, database changes,
// searches with their results, prints whose documents open at start lines of all
// three widths, with "TX" and indented page lines and empty lines inside, "END OF
// DOCUMENT" after each, happy hour notices and logoffs. `records` counts the
// documents, each one a record FilterDataStar must find; no .FSC. The same size
// always gives the same bytes. Throws std::runtime_error when the file cannot be
// written.
SyntheticCapture WriteDataStarCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
