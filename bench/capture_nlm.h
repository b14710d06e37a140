// A large, deterministic NLM session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: sessions of the USER:/PROG:
// dialogue, SS prompts with their postings, full and short prints whose citations open
// at a number line ("12 (MEDFILE)", or a bare "12") and close at the service's
// prompts, CONTINUE PRINTING? with its answer, OK, READY TO PRINT FROM, file changes
// and the sign-off. `records` counts the number lines: each is one record of the NLM
// filter. The same size always gives the same bytes. Throws std::runtime_error when
// the file cannot be written.
SyntheticCapture WriteNlmCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
