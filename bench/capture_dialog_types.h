// A large, deterministic DIALOG capture for the filters of specified types.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "synthetic_capture.h"

namespace zv::bench {

// The types the benchmark rows of both filters of specified types ask for, in their
// fields' order. The capture also holds prints of formats 6 and 3,K, which they skip.
inline constexpr std::array<std::string_view, 5> kWantedTypes = {"3", "5", "8", "3,AB", "KWIC"};

// Writes a capture of at least `targetBytes` to `path`: DIALOG sessions with begin
// blocks, single and combined selects, display sets, and prints in formats 3, 5, 8,
// 3,AB, KWIC, 6 and 3,K, every print behind its own prompt and its items one after
// the other. `records` counts the records of the wanted types alone, each one a record
// both filters must write, and `labels` every label (the record odometer's count);
// `fscLines` and `fscSeparators` what goes to the .FSC. The
// same size always gives the same bytes. Throws std::runtime_error when the file
// cannot be written.
SyntheticCapture WriteDialogTypesCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
