// A large, deterministic Orbit/Questel session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: sessions of network logon,
// "SS n /C?" prompts with their USER: and PROG: lines, searches, prints of items
// opened by hyphen number lines in full and title formats, biblio groups, invalid
// formats, file changes with elapsed time and cost, and logoffs. `records` is the
// number of records FilterOrbit must find. The same size always gives the same bytes.
// Throws std::runtime_error when the file cannot be written.
SyntheticCapture WriteOrbitCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
