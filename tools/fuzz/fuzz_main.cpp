// The libFuzzer target: each input goes through every filter as a capture and through
// the index builder as a record file, under the rules of tests/fuzz/fuzz_harness.h.
// A rule broken aborts, so libFuzzer keeps the input as a crash. Built and run by
// tools/fuzz/run.sh.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "fuzz/fuzz_harness.h"

namespace {

// One folder for the whole run, emptied before each job; removed at exit.
std::string gDir;

void removeFolder() {
  std::error_code ec;
  std::filesystem::remove_all(gDir, ec);
}

void fail(const std::string& what, const std::string& problem) {
  std::fprintf(stderr, "zv_fuzz: %s: %s\n", what.c_str(), problem.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  std::string pattern = (std::filesystem::temp_directory_path() / "zv_fuzz_XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    std::perror("zv_fuzz: mkdtemp");
    std::exit(1);
  }
  gDir = pattern;
  std::atexit(removeFolder);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  for (int32_t command : zv::fuzz::FilterCommands()) {
    const std::string problem = zv::fuzz::CheckFilter(command, input, gDir);
    if (!problem.empty()) fail(zv::fuzz::FilterName(command), problem);
  }
  const std::string problem = zv::fuzz::CheckRecordFile(input, gDir);
  if (!problem.empty()) fail("index", problem);
  return 0;
}
