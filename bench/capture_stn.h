// A large, deterministic STN session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: sessions of logon and news,
// files entered with their cost blocks, searches, answers displayed in full and in
// short formats, reference displays, family displays under biblio groups with their
// hyphen lines, invalid formats and logoffs. `records` is the number of records
// FilterSTN must find. The same size always gives the same bytes. Throws
// std::runtime_error when the file cannot be written.
SyntheticCapture WriteStnCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
