// What every filter shares: a capture with no record of its service leaves no outputs;
// a session of the service gives its records and an index that agrees with them.
#include <gtest/gtest.h>

#include "filters/brs.h"
#include "filters/datastar.h"
#include "filters/dialmail.h"
#include "filters/dialog_all.h"
#include "filters/djnr.h"
#include "filters/nlm.h"
#include "filters/orbit.h"
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
      {&FilterDialmail, {"?b 1", "banner", "?mail", "*** Item   1 ***", "From: File 1 VIA DIALMAIL", "?logoff"}},
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

TEST(EveryFilterSamples, TheSessionGivesItsRecordsWithoutTheServiceLinesAndAnAgreeingIndex) {
  const struct {
    test::FilterFn filter;
    const char* sample;
    const char* title;
    std::size_t records;
    std::vector<const char*> kept, dropped;
  } cases[] = {
      {&FilterBRS, "brs_session.log", "Filtering BRS .. (dot dot) Search", 6, {}, {}},
      {&FilterDataStar, "datastar_session.log", "Filtering Data-Star Search", 6, {}, {}},
      {&FilterDJ, "djnr_session.log", "Filtering DJN/R //TEXT Search", 8, {}, {"ENTER QUERY", "DOCUMENT"}},
      {&FilterNLM, "nlm_session.log", "Filtering NLM Search", 5, {"\r\n      THE registry"},
       {"USER:", "PROG:", "CONTINUE PRINTING?", "(MEDFILE)", "GOOD BYE!"}},
      {&FilterSTN, "stn_session.log", "Filtering STN Search", 11, {}, {"=>", "COST IN U.S. DOLLARS"}},
      {&FilterOrbit, "orbit_session.log", "Filtering Orbit/Questel Search", 7, {}, {"\nSS "}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sample);
    test::TempDir dir;
    test::RecordingProgress host;
    const auto run =
        test::RunFilterOn(c.filter, dir, test::ReadFile(std::string(ZV_SAMPLES_DIR "/") + c.sample), c.sample, &host);
    ASSERT_EQ(run.outcome, JobOutcome::Done);
    EXPECT_EQ(host.title, c.title);
    EXPECT_EQ(run.ndx.size(), c.records);
    EXPECT_EQ(host.recordOdometer.size(), c.records);
    EXPECT_FALSE(run.fscExists);
    EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
    for (const char* text : c.kept) EXPECT_NE(run.pro.find(text), std::string::npos) << text;
    for (const char* text : c.dropped) EXPECT_EQ(run.pro.find(text), std::string::npos) << text;
  }
}

}  // namespace
}  // namespace zv
