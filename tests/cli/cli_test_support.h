// What the command-line suites share: the test helpers they call by their short names,
// and the look for a message or a line in what the program printed or wrote.
#pragma once

#include <string>

#include "support/process.h"
#include "support/test_support.h"

namespace zv::cli_test {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::RunCli;
using test::TempDir;
using test::WriteFile;

// True when `part` stands anywhere in `text`.
inline bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace zv::cli_test
