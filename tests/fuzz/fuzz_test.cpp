// A short fuzzing run in the test suite: every filter and the index builder on the
// seeds (tests/fuzz/corpus and the samples) and a fixed set of their mutations. In the
// sanitizer build a crash or a sanitizer report fails the run; in every build a rule
// of fuzz_harness.h broken does. The long runs are tools/fuzz.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "fuzz/fuzz_harness.h"
#include "support/test_support.h"

namespace zv {
namespace {

// The seed of the mutations and how many: fixed, so that every run tries the same
// inputs, and few enough for a few seconds per filter under the sanitizers.
constexpr uint32_t kSeed = 20240611;
constexpr int kMutations = 240;

const std::vector<std::string>& Inputs() {
  static const std::vector<std::string> inputs = [] {
    std::vector<std::string> all = fuzz::SeedCorpus(ZV_FUZZ_CORPUS_DIR, ZV_SAMPLES_DIR);
    fuzz::Mutator mutator(kSeed, all);
    for (int i = 0; i < kMutations; ++i) all.push_back(mutator.next());
    return all;
  }();
  return inputs;
}

// A failing input is kept where the message says, to be run again by hand
// (tools/fuzz/run.sh --one FILE).
std::string keepFailingInput(const std::string& what, std::size_t i, const std::string& bytes) {
  const auto path = std::filesystem::temp_directory_path() / ("zv_fuzz_" + what + "_" + std::to_string(i) + ".bin");
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return path.string();
}

TEST(FuzzInputs, AreTheSeedsAndTheSameMutationsEveryRun) {
  const std::vector<std::string> seeds = fuzz::SeedCorpus(ZV_FUZZ_CORPUS_DIR, ZV_SAMPLES_DIR);
  ASSERT_GE(seeds.size(), 16u);  // the samples of every service and the record file seeds
  fuzz::Mutator again(kSeed, seeds);
  for (std::size_t i = seeds.size(); i < seeds.size() + 20; ++i) EXPECT_EQ(again.next(), Inputs()[i]);
  fuzz::Mutator other(kSeed + 1, seeds);
  EXPECT_NE(other.next() + other.next(), Inputs()[seeds.size()] + Inputs()[seeds.size() + 1]);
}

class FuzzFilter : public ::testing::TestWithParam<int32_t> {};

TEST_P(FuzzFilter, KeepsItsRulesOnEveryInput) {
  test::TempDir dir;
  const std::string name = fuzz::FilterName(GetParam());
  const auto& inputs = Inputs();
  int failures = 0;
  for (std::size_t i = 0; i < inputs.size() && failures < 3; ++i) {
    const std::string problem = fuzz::CheckFilter(GetParam(), inputs[i], dir.file("run"));
    if (problem.empty()) continue;
    ++failures;
    ADD_FAILURE() << name << ", input " << i << ": " << problem << " (input kept in "
                  << keepFailingInput(name, i, inputs[i]) << ")";
  }
}

INSTANTIATE_TEST_SUITE_P(EveryFilter, FuzzFilter, ::testing::ValuesIn(fuzz::FilterCommands()),
                         [](const ::testing::TestParamInfo<int32_t>& param) {
                           std::string n = fuzz::FilterName(param.param);
                           for (char& c : n)
                             if (c == '-') c = '_';
                           return n;
                         });

TEST(FuzzIndex, KeepsItsRulesOnEveryInputAsARecordFile) {
  test::TempDir dir;
  const auto& inputs = Inputs();
  int failures = 0;
  for (std::size_t i = 0; i < inputs.size() && failures < 3; ++i) {
    const std::string problem = fuzz::CheckRecordFile(inputs[i], dir.file("run"));
    if (problem.empty()) continue;
    ++failures;
    ADD_FAILURE() << "input " << i << ": " << problem << " (input kept in " << keepFailingInput("index", i, inputs[i])
                  << ")";
  }
}

}  // namespace
}  // namespace zv
