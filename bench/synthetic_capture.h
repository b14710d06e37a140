// A large, deterministic DIALOG session capture for the throughput benchmarks.
#pragma once

#include <cstdint>
#include <string>

namespace zv::bench {

// What was written, so that a benchmark can check the filter saw all of it.
struct SyntheticCapture {
  std::string path;
  int64_t bytes = 0;
  int64_t lines = 0;     // CR LF lines
  int64_t records = 0;   // record labels, each one a record the DIALOG filter must find
  int64_t labels = 0;    // every label, where the record odometer counts more than the
                         // records kept (the filters of specified types); 0: as records
  int64_t fscLines = 0;       // text lines the DIALOG filter copies to the .FSC
  int64_t fscSeparators = 0;  // blank lines it adds there after each block
};

// Writes a capture of at least `targetBytes` to `path`: sessions of logon banners,
// begin blocks with cost lines, single and combined selects, display sets, prints in
// formats 3, 5, 6, 8, KWIC and 3,K with their labels, blank runs inside records,
// error lines and logoff blocks. The same size always gives the same bytes.
//
// The filter counts .FSC lines in 16 bits, so commands that feed the .FSC stop once
// they would pass a budget well under that limit; the rest of a very large capture is
// selects and prints only. Throws std::runtime_error when the file cannot be written.
SyntheticCapture WriteSyntheticCapture(const std::string& path, int64_t targetBytes);

}  // namespace zv::bench
