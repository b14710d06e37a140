// zorvanta-cli filter ovid on the sample session.
#include <gtest/gtest.h>

#include "support/process.h"
#include "support/test_support.h"

namespace zv {
namespace {

TEST(CliOvid, FiltersTheSampleSessionIntoOutputsNamedAfterIt) {
  test::TempDir dir;
  const std::string capture = test::ReadFile(ZV_SAMPLES_DIR "/ovid_session.log");
  test::WriteFile(dir.file("ovid_session.log"), capture);
  const auto r = test::RunCli({"filter", "ovid", "ovid_session.log"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Records: 5"), std::string::npos) << r.out;
  EXPECT_TRUE(test::ReadFile(dir.file("ovid_session.PRO")).starts_with("Record - 1\r\n\r\nAuthors\r\n"));
  EXPECT_EQ(test::ReadFile(dir.file("ovid_session.NDX")).size(), 5u * kIndexRecLen);
  EXPECT_FALSE(test::FileExists(dir.file("ovid_session.FSC")));
  EXPECT_EQ(test::ReadFile(dir.file("ovid_session.log")), capture);
}

}  // namespace
}  // namespace zv
