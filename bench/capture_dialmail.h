// A large, deterministic DIALOG capture of offline prints read back from DIALMAIL.
#pragma once

#include <cstdint>
#include <string>

#include "synthetic_capture.h"

namespace zv::bench {

// Writes a capture of at least `targetBytes` to `path`: sessions with begin blocks and
// combined selects, print requests, the mail box, items with their header and summary
// lines, prints under "Record - N" lines with blank lines of their own, the mail menu
// and logoffs. `records` counts the "Record -" lines, each one a record FilterDialmail
// must find; `fscLines` and `fscSeparators` the begin and sets blocks of the .FSC. The
// same size always gives the same bytes. Throws std::runtime_error when the file
// cannot be written.
SyntheticCapture WriteDialmailCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
