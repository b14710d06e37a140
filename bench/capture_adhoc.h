// A large, deterministic capture of a service without a filter of its own, with marker lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "synthetic_capture.h"

namespace zv::bench {

// The markers the searcher typed into it, whole lines.
inline constexpr std::string_view kAdHocBegin = "-begin-";
inline constexpr std::string_view kAdHocEnd = "-end-";

// Writes a capture of at least `targetBytes` to `path`: sessions of an invented service
// with searches, hit counts and paging prompts, and documents between `kAdHocBegin` and
// `kAdHocEnd` lines, with empty lines inside and a marker line with a trailing blank now
// and then, which starts nothing. `records` counts the documents, each one a record
// FilterAdHoc with both markers must write; no .FSC. The same size always gives the
// same bytes. Throws std::runtime_error when the file cannot be written.
SyntheticCapture WriteAdHocCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
