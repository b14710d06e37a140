// zorvanta-cli filter datastar on the sample session: the outputs the desktop job writes.
#include <gtest/gtest.h>

#include "core/index_rec.h"
#include "filters/datastar.h"
#include "support/process.h"
#include "support/test_support.h"

namespace zv {
namespace {

TEST(CliFilterDataStar, TheSampleSessionGivesTheRecordFileAndIndexOfTheJob) {
  const std::string capture = test::ReadFile(ZV_SAMPLES_DIR "/datastar_session.log");
  test::TempDir dir, ref;
  test::WriteFile(dir.file("datastar_session.log"), capture);
  const auto r = test::RunCli({"filter", "datastar", "datastar_session.log"}, {.cwd = dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Records: 6"), std::string::npos) << r.out;
  const auto job = test::RunFilterOn(&FilterDataStar, ref, capture);
  EXPECT_EQ(test::ReadFile(dir.file("datastar_session.PRO")), job.pro);
  EXPECT_EQ(test::ReadFile(dir.file("datastar_session.NDX")).size(), 6 * kIndexRecLen);
  EXPECT_FALSE(test::FileExists(dir.file("datastar_session.FSC")));
  EXPECT_EQ(test::ReadFile(dir.file("datastar_session.log")), capture);
}

}  // namespace
}  // namespace zv
