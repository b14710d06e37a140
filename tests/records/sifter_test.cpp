// The sifter's commands driven through RunCommand with a scripted window.
#include "records/sifter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

#include "core/index_rec.h"
#include "filters/stn.h"
#include "records/fake_sift_view.h"
#include "records/record_file.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::WriteFile;
using P = SiftPanel;

const std::string kExample = CrLf({"Record - 1", "", "AAA", "", "Record - 2", "", "BBB", "", "Record - 3", "", "CCC",
                                   "", "Record - 4", "", "DDD"});

class Sifter : public ::testing::Test {
 protected:
  void SetUp() override {
    job.outDir = dir.path().string();
    WriteFile(dir.file("r.PRO"), kExample);
    // Keep files are named without a folder and land in the current directory.
    previous = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
  }
  void TearDown() override { std::filesystem::current_path(previous); }

  JobResult Run(int32_t n) {
    CommandContext context{job, NoProgress(), static_cast<SiftView*>(&view)};
    return RunCommand(n, context, CommandTable());
  }
  void Open(const std::string& name) {
    view.files.emplace_back(dir.file(name));
    ASSERT_EQ(Run(kOpenSifter).outcome, JobOutcome::Done) << view.lastBox();
    ASSERT_TRUE(view.sifterShown);
  }
  std::vector<IndexRec> Index() { return ReadIndexFile(dir.file("r.NDX")); }

  test::TempDir dir;
  JobState job;
  test::FakeSiftView view{job};
  SiftState& s = view.sift;
  std::filesystem::path previous;
};

TEST_F(Sifter, OpeningThroughTheProBuildsTheIndexIgnoresTheBookmarkAndShowsRecordOne) {
  WriteFile(dir.file("r.WRK"), "3\r\n");
  Open("r.PRO");
  EXPECT_EQ(RecordCount(dir.file("r.NDX")), 4);
  EXPECT_EQ(s.glCurRec, 1);
  EXPECT_EQ(s.glOrder, (std::vector<int32_t>{0, 1, 2, 3, 4, 0}));
  EXPECT_EQ(view.text, kExample.substr(0, 19));
  EXPECT_EQ(view.panel(P::pnlProFileName), dir.file("r.PRO"));
  EXPECT_EQ(view.panel(P::pnlTotRecs), " 4 ");
  EXPECT_EQ(view.panel(P::pnlRecToView), " 1 ");
  EXPECT_EQ(view.panel(P::pnlOrder), " 1 ");
  EXPECT_EQ(view.indexing.lastLine, 15);
  EXPECT_TRUE(view.boxes.empty());
}

TEST_F(Sifter, RefusedNamesBringTheDialogBackAndCancelLeavesSilently) {
  WriteFile(dir.file("MYFILE.pro"), kExample);
  WriteFile(dir.file("z.PRO"), "");
  WriteFile(dir.file("o.NDX"), std::string(277, '\0'));
  for (const char* name : {"MYFILE.pro", "z.PRO", "o.NDX"}) view.files.emplace_back(dir.file(name));
  EXPECT_EQ(Run(kOpenSifter).outcome, JobOutcome::Cancelled);
  ASSERT_EQ(view.boxes.size(), 3u);
  EXPECT_EQ(view.boxes[0].title, "Not a .PRO or .NDX File");
  EXPECT_EQ(view.boxes[0].text, "The file you specified is\r\n" + dir.file("MYFILE.pro") +
                                    "\r\n\r\nThe sifter requires that you specify\r\na .PRO (processed by filter) "
                                    "file\r\nor a .NDX (index of a .PRO) file.");
  EXPECT_EQ(view.boxes[1].title + "|" + view.boxes[1].text, "Zero-Length File|" + dir.file("z.PRO") +
                                                                "\r\nis a zero-length file.");
  EXPECT_EQ(view.boxes[2].title + "|" + view.boxes[2].text, "File Open Error|.PRO file not found.");
  EXPECT_FALSE(view.sifterShown);
  EXPECT_FALSE(FileExists(dir.file("MYFILE.NDX")));
  EXPECT_EQ(job.gsProFile, "");
}

TEST_F(Sifter, TheBookmarkIsTakenOnlyThroughTheIndexAndOnlyWhenInRange) {
  Open("r.PRO");
  struct Case {
    std::string wrk;
    int32_t glCurRec;
    bool wrkStays;
  } cases[] = {{"3\r\n", 3, true}, {"9\r\n", 1, true}, {"0\r\n", 1, true}, {"", 1, false}};
  for (const Case& c : cases) {
    WriteFile(dir.file("r.WRK"), c.wrk);
    Open("r.NDX");
    EXPECT_EQ(s.glCurRec, c.glCurRec) << c.wrk;
    EXPECT_EQ(FileExists(dir.file("r.WRK")), c.wrkStays) << c.wrk;
  }
  WriteFile(dir.file("r.WRK"), "three\r\n");
  view.files.emplace_back(dir.file("r.NDX"));
  const JobResult r = Run(kOpenSifter);
  ASSERT_TRUE(r.error);
  EXPECT_EQ(r.error->number(), 13);
  EXPECT_FALSE(view.sifterShown);
}

TEST_F(Sifter, AOneRecordFileIsRefusedThroughTheProButOpensThroughItsFiltersIndex) {
  WriteFile(dir.file("one.PRO"), CrLf({"Record - 1", "", "ONLY"}));
  IndexRec r;
  r.recNum = 1;
  r.byteLen = 20;
  r.startLine = 1;
  r.endLine = 3;
  PutIndexRec(dir.file("one.NDX"), 1, r);
  view.files.emplace_back(dir.file("one.PRO"));
  EXPECT_EQ(Run(kOpenSifter).outcome, JobOutcome::Cancelled);
  ASSERT_EQ(view.boxes.size(), 1u);
  EXPECT_EQ(view.lastBox(), "File Format Error: This does not appear to be a filtered record file.");
  EXPECT_EQ(view.boxes[0].icon, MsgIcon::Stop);
  EXPECT_FALSE(FileExists(dir.file("one.NDX")));
  EXPECT_EQ(job.giInterrupt, 0);

  PutIndexRec(dir.file("one.NDX"), 1, r);
  Open("one.NDX");
  EXPECT_EQ(view.text, CrLf({"Record - 1", "", "ONLY"}));
  SiftNext(job, view);
  SiftPrevious(job, view);
  ASSERT_EQ(view.boxes.size(), 3u);
  EXPECT_EQ(view.boxes[1].title + ": " + view.boxes[1].text, "Last Record: You have reached the last record.");
  EXPECT_EQ(view.lastBox(), "First Record: You have reached the first record.");
}

// The STN filter writes a REFERENCE record followed at once by another with their
// labels on adjacent lines. Opened through its .PRO, such a file is indexed, shown,
// kept and reordered like any other: a record of its label line alone.
TEST_F(Sifter, AnStnFileWithLabelsUnderEachOtherOpensThroughItsProAndKeepsAndOrders) {
  WriteFile(dir.file("stn.log"), CrLf({"=> d l1 1-4", "L1  ANSWER 1 OF 4", "A", "REFERENCE  2", "REFERENCE  3",
                                       "REFERENCE  4", "DDD", "=> logoff"}));
  test::RecordingProgress quiet;
  ASSERT_EQ(FilterSTN(job, quiet, FilterInput{dir.file("stn.log"), dir.path().string()}).outcome, JobOutcome::Done);
  ASSERT_EQ(ReadFile(dir.file("stn.PRO")), CrLf({"Record - 1", "", "A", "Record - 2", "Record - 3", "Record - 4", "DDD"}));
  Open("stn.PRO");
  EXPECT_EQ(view.panel(P::pnlTotRecs), " 4 ");
  SiftNext(job, view);
  EXPECT_EQ(view.text, "Record - 2\r\n");
  view.keepFiles = {"k.kep"};
  Run(kKeep);         // record 2, on to 3
  Run(kKeepExpress);  // record 3, on to 4
  Run(kWriteKept);
  EXPECT_EQ(ReadFile(dir.file("k.kep")), CrLf({"Record - 2", "Record - 3"}));
  view.inputs = {"1"};
  Run(kOrder);  // record 4 first
  Run(kWriteOrder);
  EXPECT_EQ(ReadFile(dir.file("stn.ORD")),
            CrLf({"Record - 4", "DDD", "", "Record - 1", "", "", "Record - 2", "Record - 3", ""}));
  EXPECT_TRUE(view.errorForms.empty());
}

TEST_F(Sifter, NavigationStopsAtTheEndsAndRedrawsOnlyWhereItShould) {
  Open("r.PRO");
  SiftLast(job, view);
  EXPECT_EQ(view.text, kExample.substr(63));
  const int draws = view.textSets;
  SiftNext(job, view);
  SiftLast(job, view);
  EXPECT_EQ(s.glCurRec, 4);
  EXPECT_EQ(view.textSets, draws);
  EXPECT_EQ(view.lastBox(), "Last Record: You have reached the last record.");
  SiftFirst(job, view);
  SiftFirst(job, view);  // First on the first record redraws
  EXPECT_EQ(view.textSets, draws + 2);

  view.inputs = {"1", "9", "0", "", "3"};
  for (int i = 0; i < 5; ++i) Run(kJump);
  EXPECT_EQ(view.prompts.front(), "Jump to Record|Jump to what record?\r\n\r\n(1 to 4)");
  ASSERT_EQ(view.boxes.size(), 3u);  // nothing for the current record or an empty answer
  EXPECT_EQ(view.boxes[1].title + ": " + view.boxes[1].text, "Jump Error: There aren't that many records.");
  EXPECT_EQ(view.lastBox(), "Jump Error: Numbers less than 1 not valid.");
  EXPECT_EQ(view.textSets, draws + 3);
  EXPECT_EQ(view.panel(P::pnlRecToView), " 3 ");

  view.inputs = {"three"};  // no number: the general error path ends the session
  const JobResult r = Run(kJump);
  ASSERT_TRUE(r.error);
  EXPECT_EQ(view.errorForms.size(), 0u);  // RunCommand reports it to its caller
  EXPECT_EQ(job.gsErrNumber, " 13");
  EXPECT_FALSE(view.sifterShown);
}

TEST_F(Sifter, ALongRecordIsShownInPart) {
  const std::string big = "Record - 2\r\n" + std::string(40000, 'x') + "\r\n";
  WriteFile(dir.file("r.PRO"), CrLf({"Record - 1", "", "A", ""}) + big + CrLf({"", "Record - 3", "", "C"}));
  Open("r.PRO");
  EXPECT_FALSE(view.partial);
  SiftNext(job, view);
  EXPECT_TRUE(view.partial);
  EXPECT_EQ(view.text.size(), 32760u);
  EXPECT_EQ(view.text.substr(0, 12), "Record - 2\r\n");
}

TEST_F(Sifter, KeepingToTwoFilesWritesEachRecordToItsOwnAppendedFile) {
  WriteFile(dir.file("a.kep"), "OLD\r\n");
  Open("r.PRO");
  Run(kKeepExpress);
  EXPECT_EQ(view.lastBox(),
            "No Keep File: There is no current keep file.  You must use Keep at least once before using Keep Express.");
  view.keepFiles = {std::nullopt, "   ", "a.kep", "b.kep"};
  Run(kKeep);  // cancelled
  Run(kKeep);  // blanks only
  EXPECT_EQ(s.glCurRec, 1);
  EXPECT_EQ(s.giSiftKeepFlag, 0);
  ToggleKeepList(job, view);
  Run(kKeep);         // record 1 to a.kep, on to 2
  Run(kKeepExpress);  // record 2 to a.kep, on to 3
  Run(kKeep);         // record 3 to b.kep, on to 4
  Run(kKeepExpress);  // record 4 to b.kep, then the last record's message
  EXPECT_EQ(view.lastBox(), "Last Record: You have reached the last record.");
  EXPECT_EQ(view.panel(P::pnlCurrentKeepFile), "b.kep");
  EXPECT_EQ(view.keepItems, (std::vector<std::string>{"1", "2", "3", "4"}));
  EXPECT_EQ(s.giSiftKeepFlag, 1);

  Run(kUnkeep);  // stays on record 4, and the list is not refreshed
  EXPECT_EQ(view.panel(P::pnlKeptFileName), "");
  EXPECT_EQ(view.keepItems.size(), 4u);
  EXPECT_EQ(Index()[3].keepFlag, 0);

  Run(kWriteKept);
  EXPECT_EQ(view.writing.files, (std::vector<std::string>{"a.kep", "a.kep", "b.kep"}));
  EXPECT_TRUE(ReadFile(dir.file("a.kep")).starts_with("OLD\r\nRecord - 1"));
  EXPECT_EQ(s.gsKeepFile, "");
  EXPECT_EQ(s.giSiftKeepFlag, 0);
  for (const IndexRec& r : Index()) EXPECT_EQ(r.keepFlag, 0);
}

TEST_F(Sifter, OrderMovesByPositionAndTheToggleMapsBetweenTheViews) {
  Open("r.PRO");
  view.inputs = {"9", "0", "3", "3"};
  Run(kOrder);
  Run(kOrder);
  EXPECT_EQ(view.prompts.front(), "Reorder Records|lOrder: (1 to 4)");
  EXPECT_EQ(view.lastBox(), "Reordering Error: Numbers less than 1 not valid.");
  EXPECT_EQ(s.giSiftOrderFlag, 0);
  Run(kOrder);  // record 1 to position 3
  EXPECT_EQ(s.glOrder, (std::vector<int32_t>{0, 2, 3, 1, 4, 0}));
  EXPECT_EQ(view.panel(P::pnlOrder), " 3 ");
  Run(kWriteOrder);
  EXPECT_EQ(s.giSiftOrderFlag, 0);
  EXPECT_EQ(view.writing.records, (std::vector<int32_t>{2, 3, 1, 4}));
  EXPECT_TRUE(FileExists(dir.file("r.ORD")));
  Run(kOrder);  // to the position it has: nothing moves, but the flag is set
  EXPECT_EQ(s.glOrder, (std::vector<int32_t>{0, 2, 3, 1, 4, 0}));
  EXPECT_EQ(s.giSiftOrderFlag, 1);

  OrderToggle(job, view);
  EXPECT_EQ(view.viewMode, ".ORD View");
  EXPECT_EQ(view.viewColor, 0x80FFFFu);
  EXPECT_EQ(s.glCurRec, 3);  // record 1 stands at position 3
  EXPECT_EQ(view.panel(P::pnlRecToView), " 3 ");
  OrderMenu(job, view);
  EXPECT_EQ(view.lastBox(), "Command Not Available: This command not available in .ORD View");
  SiftFirst(job, view);  // position 1 holds record 2
  EXPECT_EQ(view.text, kExample.substr(21, 21));
  EXPECT_EQ(view.panel(P::pnlOrder), " 1 ");
  OrderToggle(job, view);
  EXPECT_EQ(s.glCurRec, 2);
  EXPECT_EQ(view.viewColor, 0xFFFFFFu);
}

TEST_F(Sifter, KeepInTheOrderViewPutsTheShownRecordsEntryInThePositionsSlot) {
  Open("r.PRO");
  view.inputs = {"4"};
  Run(kOrder);  // order 2 3 4 1
  OrderToggle(job, view);
  SiftFirst(job, view);  // position 1 shows record 2
  view.keepFiles = {"k.kep"};
  Run(kKeep);
  const IndexRec slot1 = Index()[0];
  EXPECT_EQ(slot1.recNum, 2);
  EXPECT_EQ(slot1.startByte, 21);
  EXPECT_EQ(slot1.keepFlag, 1);
  EXPECT_EQ(s.glCurRec, 2);  // Next moved on by position
  Run(kWriteKept);
  EXPECT_TRUE(ReadFile(dir.file("k.kep")).starts_with("Record - 2\r\n\r\nBBB"));
}

TEST_F(Sifter, LeavingAsksAboutUnwrittenWorkAndKeepsTheBookmarkRules) {
  Open("r.PRO");
  view.keepFiles = {"k.kep"};
  Run(kKeep);
  view.inputs = {"1"};
  Run(kOrder);
  view.keepList = true;
  view.answers = {false, true};  // no to the kept records, yes to the order
  LeaveSifter(job, view);
  ASSERT_EQ(view.questions.size(), 2u);
  EXPECT_EQ(view.questions[0].title, "Keeping Oversight");
  EXPECT_EQ(view.questions[0].icon, MsgIcon::Warning);
  EXPECT_EQ(view.questions[0].text,
            "You have done some keeping either without using Write Kept Records or since the last time you used Write "
            "Kept Records, and are now exiting the sifter.  On exiting, the keeping information will be lost.\r\n\r\n"
            "Would you like to use Write Kept Records now?");
  EXPECT_EQ(view.questions[1].title, "Reordering Oversight");
  EXPECT_EQ(view.questions[1].text,
            "You have done some reordering either without using Write Order or since the last time you used Write "
            "Order, and are now exiting the sifter.  On exiting, the reordering information will be lost.\r\n\r\n"
            "Would you like to use Write Order now?");
  EXPECT_FALSE(FileExists(dir.file("k.kep")));
  EXPECT_TRUE(FileExists(dir.file("r.ORD")));
  EXPECT_EQ(Index()[0].keepFlag, 0);
  EXPECT_FALSE(view.keepList);
  EXPECT_FALSE(view.sifterShown);
  EXPECT_EQ(ReadFile(dir.file("r.WRK")), "2\r\n");
  EXPECT_EQ(s.gsKeepFile, "k.kep");  // a later session's Keep Express still uses it
  EXPECT_TRUE(s.glOrder.empty());

  for (int32_t at : {4, 1}) {  // the last record and the first leave no bookmark
    WriteFile(dir.file("r.WRK"), "2\r\n");
    Open("r.NDX");
    s.glCurRec = at;
    LeaveSifter(job, view);
    EXPECT_FALSE(FileExists(dir.file("r.WRK"))) << at;
  }
  EXPECT_EQ(view.questions.size(), 2u);  // nothing asked when nothing was done
}

TEST_F(Sifter, FindSearchesOnlyTheShownTextFromBehindTheSelection) {
  Open("r.PRO");
  SiftNext(job, view);  // "Record - 2\r\n\r\nBBB\r\n\r\n"
  Run(kRepeatSearch);
  EXPECT_EQ(view.lastBox(), "Null Search Text: The search text is null.");
  view.inputs = {"b", "", "B"};
  Run(kFindText);
  EXPECT_EQ(view.lastBox(), ": Search text not iFound.");
  Run(kFindText);
  EXPECT_EQ(view.lastBox(), "Null Search Text: The search text is null.");
  Run(kFindText);
  EXPECT_EQ(view.selStart_, 14);
  EXPECT_EQ(view.selLength_, 1);
  Run(kRepeatSearch);
  Run(kRepeatSearch);
  EXPECT_EQ(view.selStart_, 16);
  Run(kRepeatSearch);
  EXPECT_EQ(view.lastBox(), ": No further occurences of search text.");
  EXPECT_EQ(view.selStart_, 16);
}

TEST_F(Sifter, AFailureResetsTheSessionAndOnlyTheSiftersWindowAnswers) {
  Open("r.PRO");
  view.keepFiles = {"k.kep"};
  Run(kKeep);
  OrderToggle(job, view);
  std::filesystem::remove(dir.file("r.PRO"));
  SiftNext(job, view);
  ASSERT_EQ(view.errorForms.size(), 1u);
  EXPECT_EQ(view.errorForms[0], "Error number 53\r\nFile not found");
  EXPECT_FALSE(view.sifterShown);
  EXPECT_EQ(view.viewMode, ".PRO View");
  EXPECT_EQ(view.panel(P::pnlCurrentKeepFile), "");
  EXPECT_EQ(Index()[0].keepFlag, 0);
  EXPECT_TRUE(s.glOrder.empty());
  EXPECT_FALSE(FileExists(dir.file("r.WRK")));

  CommandContext withoutSifter{job, NoProgress(), FilterInput{}};
  EXPECT_EQ(RunCommand(kOpenSifter, withoutSifter, CommandTable()).outcome, JobOutcome::NoCommand);
}

}  // namespace
}  // namespace zv
