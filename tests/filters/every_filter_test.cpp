// What every filter shares: a capture with no record of its service leaves no outputs.
#include <gtest/gtest.h>

#include "filters/brs.h"
#include "filters/datastar.h"
#include "filters/dialog_all.h"
#include "filters/djnr.h"
#include "filters/nlm.h"
#include "filters/stn.h"
#include "support/test_support.h"

namespace zv {
namespace {

TEST(EveryFilterZeroRecords, ASessionWithoutStartLinesLeavesNoOutputs) {
  const struct {
    test::FilterFn filter;
    std::vector<std::string> lines;
  } cases[] = {
      {&FilterBRS, {"ENTER SEARCH TERMS, COMMAND, OR ..", "SEARCH  1      --> DIET", "ANSWER 1     0 DOCUMENTS FOUND",
                    "*SIGN OFF  10:00:00"}},
      {&FilterDataStar, {"D-S - SEARCH MODE - ENTER QUERY", "1_: LAKE AND FISH", "1  LAKE  42 DOCUMENTS", "2_: ..off"}},
      {&FilterDialogAll, {"?b 1", "banner", "?s a and b", "S1 2 A AND B", "?logoff", " Logoff: now"}},
      {&FilterDJ, {"ENTER QUERY", "..s kestrel", "End of document.", "DISCONNECTED"}},
      {&FilterNLM, {"USER:", "leadless pacemaker", "PROG:", "SS (1) PSTG (0)", "stop"}},
      {&FilterSTN, {"=> s membrane?", "L1  42 MEMBRANE?", "=> logoff y", "COST IN U.S. DOLLARS"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.lines.front());
    test::TempDir dir;
    const auto run = test::RunFilterOn(c.filter, dir, test::CrLf(c.lines));
    EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords);
    EXPECT_FALSE(run.proExists || run.ndxExists || run.fscExists);
  }
}

TEST(EveryFilterSamples, TheIndexAgreesWithTheRecordFile) {
  for (const auto& [filter, sample] : {std::pair{&FilterBRS, "brs_session.log"}, {&FilterDataStar, "datastar_session.log"}}) {
    SCOPED_TRACE(sample);
    test::TempDir dir;
    const auto run = test::RunFilterOn(filter, dir, test::ReadFile(std::string(ZV_SAMPLES_DIR "/") + sample));
    ASSERT_EQ(run.outcome, JobOutcome::Done);
    EXPECT_EQ(run.ndx.size(), 6u);
    EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
  }
}

}  // namespace
}  // namespace zv
