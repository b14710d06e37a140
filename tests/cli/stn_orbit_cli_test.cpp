// zorvanta-cli filter stn / orbit on the sample sessions: outputs named after the capture.
#include <gtest/gtest.h>

#include "support/process.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::FileExists;
using test::ReadFile;
using test::RunCli;
using test::TempDir;

TEST(CliStnOrbit, EachFilterWritesTheRecordsOfItsSampleSession) {
  struct Case {
    const char* filter;
    const char* stem;
    const char* records;
  } cases[] = {{"stn", "stn_session", "Records: 11"}, {"orbit", "orbit_session", "Records: 7"}};
  for (const auto& c : cases) {
    TempDir dir;
    const std::string capture = std::string(ZV_SAMPLES_DIR "/") + c.stem + ".log";
    const auto r = RunCli({"filter", c.filter, capture, "--out-dir", dir.path().string()});
    ASSERT_EQ(r.exitCode, 0) << c.filter << ": " << r.err;
    EXPECT_NE(r.out.find(c.records), std::string::npos) << c.filter << ": " << r.out;
    EXPECT_TRUE(FileExists(dir.file(std::string(c.stem) + ".PRO"))) << c.filter;
    EXPECT_TRUE(FileExists(dir.file(std::string(c.stem) + ".NDX"))) << c.filter;
    EXPECT_FALSE(FileExists(dir.file(std::string(c.stem) + ".FSC"))) << c.filter;
    EXPECT_EQ(ReadFile(dir.file(std::string(c.stem) + ".PRO")).rfind("Record - 1\r\n", 0), 0u) << c.filter;
  }
}

}  // namespace
}  // namespace zv
