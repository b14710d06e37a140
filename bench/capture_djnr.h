// A large, deterministic DJN/R //TEXT session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: sessions of logon, //TEXT,
// "..s" searches with their result and CURRENT lines, full prints whose documents open
// at "DOCUMENT=" or "  DOCUMENT  " and close at the service's end notices (and now and
// then at nothing, running into the next), DOC+1 and doc= paging, "Press ENTER"
// prompts and disconnects. `records` counts the marker lines: each is one record of
// the DJN/R filter. The same size always gives the same bytes. Throws
// std::runtime_error when the file cannot be written.
SyntheticCapture WriteDjnrCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
