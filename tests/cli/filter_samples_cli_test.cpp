// zorvanta-cli filter NAME on each service's sample session: the subcommand runs that
// filter, names the outputs after the capture and leaves the capture as it was.
#include <gtest/gtest.h>

#include "core/index_rec.h"
#include "filters/brs.h"
#include "filters/datastar.h"
#include "filters/dialmail.h"
#include "filters/djnr.h"
#include "filters/nlm.h"
#include "filters/orbit.h"
#include "filters/ovid.h"
#include "filters/stn.h"
#include "support/process.h"
#include "support/test_support.h"

namespace zv {
namespace {

TEST(CliFilterSamples, EachSubcommandWritesWhatItsDesktopJobWrites) {
  const struct {
    const char* cliName;
    const char* stem;
    test::FilterFn filter;
    std::size_t records;
  } cases[] = {
      {"brs", "brs_session", &FilterBRS, 6},      {"datastar", "datastar_session", &FilterDataStar, 6},
      {"djnr", "djnr_session", &FilterDJ, 8},     {"nlm", "nlm_session", &FilterNLM, 5},
      {"ovid", "ovid_session", &FilterOvid, 5},   {"stn", "stn_session", &FilterSTN, 11},
      {"orbit", "orbit_session", &FilterOrbit, 7},  {"dialmail", "dialmail_session", &FilterDialmail, 4},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.cliName);
    const std::string stem = c.stem;
    const std::string capture = test::ReadFile(ZV_SAMPLES_DIR "/" + stem + ".log");
    test::TempDir dir, ref;
    test::WriteFile(dir.file(stem + ".log"), capture);
    const auto r = test::RunCli({"filter", c.cliName, stem + ".log"}, {.cwd = dir.path().string()});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_NE(r.out.find("Records: " + std::to_string(c.records)), std::string::npos) << r.out;
    EXPECT_EQ(test::ReadFile(dir.file(stem + ".PRO")), test::RunFilterOn(c.filter, ref, capture).pro);
    EXPECT_EQ(test::ReadFile(dir.file(stem + ".NDX")).size(), c.records * kIndexRecLen);
    EXPECT_EQ(test::FileExists(dir.file(stem + ".FSC")), c.filter == &FilterDialmail);
    EXPECT_EQ(test::ReadFile(dir.file(stem + ".log")), capture);
  }
}

}  // namespace
}  // namespace zv
