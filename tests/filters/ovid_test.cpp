// FilterOvid: start lines, end lines, the margin cut, and the index's byte count.
#include "filters/ovid.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::RunFilterOn;
using test::TempDir;

const std::string kMargin(9, ' ');

constexpr auto Filter = test::RunFilterOnLines<&FilterOvid>;

// The filter counts the lines it writes without cutting their margin 9 bytes short.
std::function<int32_t(std::string_view)> NineShortWhen(std::function<bool(std::string_view)> uncut) {
  return [uncut](std::string_view l) { return uncut(l) ? 9 : 0; };
}

TEST(OvidSample, FindsEveryCitationAndIndexesItWithTheCountShortfall) {
  TempDir dir;
  test::RecordingProgress host;
  const auto run = RunFilterOn(&FilterOvid, dir, test::ReadFile(ZV_SAMPLES_DIR "/ovid_session.log"), "s.log", &host);
  ASSERT_EQ(run.outcome, JobOutcome::Done);
  EXPECT_EQ(host.title, "Filtering Ovid Search");
  EXPECT_EQ(host.recordOdometer, (std::vector<int32_t>{1, 2, 3, 4, 5}));
  EXPECT_FALSE(run.fscExists);
  ASSERT_EQ(run.ndx.size(), 5u);
  // The field names stand in the margin on lines of their own, short enough to be
  // written whole; "Institution" and "Conference" are longer and lose 9 columns.
  const std::set<std::string_view> uncut = {"Authors", "Title", "Source", "Abstract", "Publisher"};
  EXPECT_TRUE(
      test::IndexAgreesWithPro(run.pro, run.ndx, NineShortWhen([&](std::string_view l) { return uncut.contains(l); })));
  EXPECT_NE(run.pro.find("\r\non\r\nLowland Waters Research Station"), std::string::npos);
  EXPECT_NE(run.pro.find("\r\ne\r\nFourth Meeting"), std::string::npos);
  EXPECT_EQ(run.pro.find("Page Number"), std::string::npos);
  EXPECT_NE(run.pro.find("in the Database: 1985 onward"), std::string::npos);
  EXPECT_EQ(run.pro.find("Set   Search"), std::string::npos);
  EXPECT_EQ(run.pro.find("Transmission"), std::string::npos);
  EXPECT_TRUE(run.pro.ends_with("Source\r\nWeir and Sluice. 22:77-84, 1994.\r\n"));
}

// Each candidate stands after a database line, followed by one body line.
struct StartCase {
  const char* line;
  bool start;
};

class OvidStartTest : public testing::TestWithParam<StartCase> {};

TEST_P(OvidStartTest, TakesOnlyDigitsInAngleBracketsAloneOnTheLine) {
  TempDir dir;
  const auto run = Filter(dir, {"Database: Verdant Index", GetParam().line, kMargin + "BODY LINE"});
  if (GetParam().start) {
    ASSERT_EQ(run.outcome, JobOutcome::Done) << GetParam().line;
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "BODY LINE", kMargin + "BODY LINE"}));
  } else {
    EXPECT_EQ(run.outcome, JobOutcome::ZeroRecords) << GetParam().line;
    EXPECT_FALSE(run.proExists || run.ndxExists || run.fscExists);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, OvidStartTest,
    testing::Values(StartCase{"<1>", true}, StartCase{"   <123>   ", true}, StartCase{"<>", true},
                    StartCase{"<98765432109876543210>", true},  // no number is made of it
                    StartCase{"<1a>", false}, StartCase{"<1> Title", false}, StartCase{"1>", false},
                    StartCase{"<1", false}, StartCase{"<", false}, StartCase{"< 1>", false}, StartCase{"<-1>", false},
                    StartCase{"\t<1>", false},            // a tab becomes character 0, which is no blank
                    StartCase{"\xBC" "7\xBE", true}),  // high bits cleared: "<7>"
    test::LineCaseName());

TEST(OvidEndTests, EachNoticeEndsTheCitationAndIsNotWritten) {
  for (const char* end : {"Database: Other Index", "xx Transmission complete ... yy", "Please Turn off screen capture. Now",
                          "Press Enter once screen capture is on."}) {
    TempDir dir;
    const auto run = Filter(dir, {"<1>", kMargin + "AAAA", end, kMargin + "DROPPED", "", "<2>", kMargin + "BBBB", end});
    EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "AAAA", "", "Record - 2", "", "BBBB"})) << end;
  }
}

TEST(OvidEndTests, NearMissesAreBodyLines) {
  TempDir dir;
  const auto run = Filter(dir, {"<1>", " Database: moved one column", "Database:ABC", "database: lower case",
                                "transmission complete ...", "Transmission complete ..", "turn off screen capture.",
                                "Turn off screen capture", "Press enter once screen", "Page Number :3",
                                "Transmission complete ..."});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", ": moved one column", "ABC", " lower case", "ion complete ...",
                           "ion complete ..", "screen capture.", "screen capture", "er once screen", "er :3"}));
}

TEST(OvidWriting, CutsNineColumnsWhateverTheyHoldFromLongerLinesOnly) {
  TempDir dir;
  const auto run = Filter(dir, {"<1>", "ABCDEFGHIJKL", "Conference", "Publisher", "x", std::string(11, ' ') + "x",
                                kMargin + "a\x01" "b", "Database: end"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "JKL", "e", "Publisher", "x", "  x", std::string("a\0b", 3)}));
}

TEST(OvidWriting, DropsBlankLinesAndPageFootersWithoutEndingTheCitation) {
  TempDir dir;
  const auto run = Filter(dir, {"<1>", "", kMargin + "FIRST", "", "    ", "", "               Page Number : 12",
                                "Page Number : ", kMargin + "SECOND", "Database: end"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "FIRST", "SECOND"}));
}

TEST(OvidWriting, OneBlankLineBeforeEachLaterLabelEvenAfterAnEmptyCitation) {
  TempDir dir;
  const auto run = Filter(dir, {"<1>", "<2>", kMargin + "B", "Database: x", "text outside", "<3>", kMargin + "C",
                                "Transmission complete ..."});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "", "Record - 2", "", "B", "", "Record - 3", "", "C"}));
  EXPECT_TRUE(test::IndexAgreesWithPro(run.pro, run.ndx));
}

TEST(OvidIndex, ShortBodyLinesLeaveTheByteCountBehind) {
  TempDir dir;
  const auto run = Filter(dir, {"<1>", "AAAAAAAA", "BBBBBBBB", "CCCCCCCC", "<2>", kMargin + "LONG LINE", "<3>", "X",
                                "Database: end"});
  ASSERT_EQ(run.ndx.size(), 3u);
  // The label of record 2 stands at byte 46; three lines of 8 were counted 9 short each.
  ASSERT_EQ(run.pro.find("Record - 2"), 46u);
  EXPECT_EQ(run.ndx[1].startByte, 46 - 27);
  // A cut line is counted at what was written: record 2 falls no further behind; the
  // single X of record 3, written whole, is counted 9 short again.
  EXPECT_EQ(run.ndx[2].byteLen, static_cast<int32_t>(run.pro.size()) - 27 - 9 - run.ndx[2].startByte);
  EXPECT_TRUE(
      test::IndexAgreesWithPro(run.pro, run.ndx, NineShortWhen([](std::string_view l) { return l.size() < 9; })));
}

TEST(OvidEndOfInput, TheLastLineOfAnOpenCitationComesTwiceTheSecondTimeUncut) {
  TempDir dir;
  auto run = Filter(dir, {"<1>", kMargin + "AAAA", kMargin + "LAST LINE"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "AAAA", "LAST LINE", kMargin + "LAST LINE"}));
  ASSERT_EQ(run.ndx.size(), 1u);
  EXPECT_EQ(run.ndx[0].endLine, 5);
  EXPECT_EQ(run.ndx[0].byteLen, static_cast<int32_t>(run.pro.size()) - 9);

  TempDir blank;  // a blank last line comes out as one extra empty line
  run = Filter(blank, {"<1>", kMargin + "AAAA", "   "});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "AAAA", "   "}));
  ASSERT_EQ(run.ndx.size(), 1u);
  EXPECT_EQ(run.ndx[0].byteLen, static_cast<int32_t>(run.pro.size()) - 9);

  TempDir label;  // a start line on the very last line stands there raw
  run = Filter(label, {"<1>", kMargin + "AAAA", " <2>"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "AAAA", "", "Record - 2", "", " <2>"}));
  EXPECT_TRUE(
      test::IndexAgreesWithPro(run.pro, run.ndx, NineShortWhen([](std::string_view l) { return l == " <2>"; })));

  TempDir closed;  // nothing is repeated after an end line
  run = Filter(closed, {"<1>", kMargin + "AAAA", "Turn off screen capture.", "after"});
  EXPECT_EQ(run.pro, CrLf({"Record - 1", "", "AAAA"}));
  EXPECT_EQ(run.ndx[0].byteLen, static_cast<int32_t>(run.pro.size()));
}

}  // namespace
}  // namespace zv
