// One input through every filter and through the index builder, with the rules every
// run must keep: shared by the short mutation run of the tests and the full fuzzing
// runs of tools/fuzz.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace zv::fuzz {

// The command numbers of every filter: those that take a capture alone, and ad hoc,
// DIALOG types and DIALOG separate files with fixed markers and types.
std::vector<int32_t> FilterCommands();
// A filter's command-line name ("dialog-all"), for test names.
std::string FilterName(int32_t command);

// Runs filter `command` on `capture`, written to `dir`/in.log with the outputs in
// `dir` (which is emptied first), and checks what every run must keep:
//  - the job ends Done, ZeroRecords or Failed with an error, and the capture is unchanged;
//  - only Done leaves anything beside the capture: each .PRO with its .NDX (a whole
//    number of records, as many as it says it recognized) and perhaps its .FSC;
//  - every record of the filter's own index reads within the .PRO (the types filters'
//    may say they do not match, by their counting of old);
//  - each .PRO is then indexed as CheckRecordFile says.
// Returns the first rule broken, or "" when all hold.
std::string CheckFilter(int32_t command, const std::string& capture, const std::string& dir);

// Writes `pro` to `dir`/r.PRO, builds its index and checks: fewer than two labels is
// NotARecordFile, labels 1 and 2 on adjacent lines error 62 with its reason, anything
// else an index of one record per label; every record then either reads, or (only for
// a file that is not all CR LF) stops with the reason that the index does not match.
// The .PRO is unchanged and no index is left by a build that did not succeed.
std::string CheckRecordFile(const std::string& pro, const std::string& dir);

// The seeds: every file of `corpusDir` and of `samplesDir`, in name order.
std::vector<std::string> SeedCorpus(const std::string& corpusDir, const std::string& samplesDir);

// Mutations of the seeds, the same for the same seed on every machine: bytes changed,
// inserted, deleted and repeated, line ends changed, lines repeated, long lines,
// tokens the filters look for, pieces of other seeds spliced in, files cut short.
class Mutator {
 public:
  Mutator(uint32_t seed, std::vector<std::string> seeds);
  std::string next();

 private:
  uint32_t below(uint32_t n) { return n == 0 ? 0 : static_cast<uint32_t>(random_() % n); }
  std::size_t at(const std::string& s) { return below(static_cast<uint32_t>(s.size() + 1)); }
  void mutateOnce(std::string& s);

  std::mt19937 random_;  // fully specified by the standard: the same numbers everywhere
  std::vector<std::string> seeds_;
};

}  // namespace zv::fuzz
