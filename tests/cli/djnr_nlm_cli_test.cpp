// zorvanta-cli filter djnr / nlm on the sample sessions: exit code and outputs.
#include <gtest/gtest.h>

#include "support/process.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::FileExists;
using test::TempDir;

void runOnSample(const std::string& cliName, const std::string& sample, const std::string& records) {
  TempDir dir;
  test::WriteFile(dir.file(sample), test::ReadFile(std::string(ZV_SAMPLES_DIR "/") + sample));
  const auto r = test::RunCli({"filter", cliName, sample}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Records: " + records), std::string::npos) << r.out;
  const std::string stem = dir.file(sample.substr(0, sample.rfind('.')));
  EXPECT_TRUE(FileExists(stem + ".PRO"));
  EXPECT_TRUE(FileExists(stem + ".NDX"));
  EXPECT_FALSE(FileExists(stem + ".FSC"));
}

TEST(CliFilterDjnr, FiltersTheSampleSession) { runOnSample("djnr", "djnr_session.log", "8"); }

TEST(CliFilterNlm, FiltersTheSampleSession) { runOnSample("nlm", "nlm_session.log", "5"); }

}  // namespace
}  // namespace zv
