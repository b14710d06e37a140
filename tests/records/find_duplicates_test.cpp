// Find Duplicates as a job: the record file it writes, its report, its refusals and
// what an interrupt leaves.
#include "records/find_duplicates.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::RecordingProgress;
using test::TempDir;
using test::WriteFile;

// The same article from MEDLINE on NLM and on Ovid, and from a DIALOG file twice.
const std::string kNlm = CrLf({"Record - 1", "", "AU  - Varga T ; Holm E",
                               "TI  - Hydrological recovery of drained peatlands after ditch blocking.",
                               "SO  - Journal of Applied Mire Science 2024 Jan;61(1):88-104", "", "Record - 2", "",
                               "AU  - Faltin R", "TI  - Seed bank persistence in wet grassland.",
                               "SO  - Plant Ecology 2023;44(3):215-27"});
const std::string kOvid = CrLf({"Record - 1", "", "Authors", "Varga, Tamas.  Holm, Erik.", "Title",
                                "HYDROLOGICAL RECOVERY OF DRAINED PEATLANDS AFTER DITCH BLOCKING: A FIVE-YEAR STUDY.",
                                "Source", "Journal of Applied Mire Science. 61(1):88-104, 2024 Jan.", "",
                                "Record - 7", "", "Authors", "Okafor P.", "Title", "Methane from rewetted fens.", "Source",
                                "Wetland Letters. 18(4):301-12, 2023.", "", "Record - 8", "", "Authors", "Okafor P.",
                                "Title", "Methane from rewetted fens.", "Source", "Wetland Letters. 18(4):301-12, 2023."});

TEST(FindDuplicates, KeepsTheFirstOfEachWorkWithItsLabelAndReportsWhy) {
  TempDir dir;
  WriteFile(dir.file("nlm.PRO"), kNlm);
  WriteFile(dir.file("ovid.PRO"), kOvid);
  DedupSummary summary;
  RecordingProgress progress;
  JobState job;
  const JobResult r = FindDuplicates(
      job, progress, DedupParams{{dir.file("nlm.PRO"), dir.file("ovid.PRO")}, dir.file("out.PRO"), dir.file("out.txt"), &summary});
  ASSERT_TRUE(r.done()) << (r.message ? r.message->text : "");
  EXPECT_EQ(summary.records, 5);
  EXPECT_EQ(summary.groups, 2);
  EXPECT_EQ(summary.removed, 2);
  EXPECT_EQ(r.records, 3);
  EXPECT_EQ(r.files, (std::vector<std::string>{dir.file("out.PRO"), dir.file("out.txt")}));
  EXPECT_EQ(progress.title, kDedupTitle);
  EXPECT_EQ(progress.captions, (std::vector<std::string>{"Comparing Records", "Writing Records"}));
  // The first file's records, then what the second adds; one empty line between files.
  EXPECT_EQ(ReadFile(dir.file("out.PRO")),
            kNlm + CrLf({"", "Record - 7", "", "Authors", "Okafor P.", "Title", "Methane from rewetted fens.", "Source",
                         "Wetland Letters. 18(4):301-12, 2023.", ""}));
  const std::string report = ReadFile(dir.file("out.txt"));
  for (const std::string& part :
       {"  1  " + dir.file("nlm.PRO") + "  (2 records)\r\n", "  2  " + dir.file("ovid.PRO") + "  (3 records)\r\n",
        std::string("Records read: 5; groups of one work: 2; records left out: 2"),
        std::string("Group 1: 2 records; kept: Record - 1 of file 1\r\n"),
        std::string("  file 2  Record - 1        HYDROLOGICAL RECOVERY OF DRAINED PEATLANDS AFTER DITCH BLOCKING: A FIVE-YEAR STUDY\r\n"),
        std::string("  why: Record - 1 of file 2 and Record - 1 of file 1: same title without its subtitle, same year and first author\r\n"),
        std::string("Group 2: 2 records; kept: Record - 7 of file 2\r\n"),
        std::string("  why: Record - 8 of file 2 and Record - 7 of file 2: same title, year and first author\r\n")})
    EXPECT_NE(report.find(part), std::string::npos) << part << "\n---\n" << report;
  EXPECT_EQ(ReadFile(dir.file("nlm.PRO")), kNlm);
}

TEST(FindDuplicates, WithoutDuplicatesEveryRecordIsKeptAndTheReportSaysSo) {
  TempDir dir;
  WriteFile(dir.file("nlm.PRO"), kNlm);
  JobState job;
  const JobResult r = FindDuplicates(job, NoProgress(), DedupParams{{dir.file("nlm.PRO")}, dir.file("o.PRO"), dir.file("o.txt")});
  ASSERT_TRUE(r.done());
  EXPECT_EQ(ReadFile(dir.file("o.PRO")), kNlm + "\r\n");
  EXPECT_NE(ReadFile(dir.file("o.txt")).find("No two records were found to be the same work."), std::string::npos);
  // Without a report, only the record file.
  const JobResult bare = FindDuplicates(job, NoProgress(), DedupParams{{dir.file("nlm.PRO")}, dir.file("p.PRO"), ""});
  EXPECT_EQ(bare.files, std::vector<std::string>{dir.file("p.PRO")});
}

TEST(FindDuplicates, RefusalsWriteNothing) {
  TempDir dir;
  WriteFile(dir.file("nlm.PRO"), kNlm);
  WriteFile(dir.file("notes.txt"), CrLf({"no labels here"}));
  struct Case {
    std::vector<std::string> inputs;
    std::string output, report, text;
  } cases[] = {
      {{dir.file("nlm.PRO"), dir.file("gone.PRO")}, dir.file("o.PRO"), dir.file("o.txt"), "File not found."},
      {{dir.file("nlm.PRO"), dir.file("notes.txt")}, dir.file("o.PRO"), dir.file("o.txt"),
       "This does not appear to be a filtered record file.\r\n" + dir.file("notes.txt")},
      {{dir.file("nlm.PRO")}, dir.file("nlm.PRO"), dir.file("o.txt"), "Input file would be overwritten by an output file."},
      {{dir.file("nlm.PRO")}, dir.file("o.PRO"), dir.file("nlm.PRO"), "Input file would be overwritten by an output file."},
      {{dir.file("nlm.PRO")}, dir.file("o.PRO"), dir.file("o.PRO"), "Input file would be overwritten by an output file."},
  };
  for (const Case& c : cases) {
    JobState job;
    const JobResult r = FindDuplicates(job, NoProgress(), DedupParams{c.inputs, c.output, c.report});
    EXPECT_EQ(r.outcome, JobOutcome::Refused);
    ASSERT_TRUE(r.message.has_value());
    EXPECT_NE(r.message->text.find(c.text), std::string::npos) << r.message->text;
    EXPECT_FALSE(FileExists(dir.file("o.PRO")));
    EXPECT_FALSE(FileExists(dir.file("o.txt")));
  }
  EXPECT_EQ(ReadFile(dir.file("nlm.PRO")), kNlm);
}

TEST(FindDuplicates, AnInterruptInEitherPassLeavesNoOutput) {
  TempDir dir;
  WriteFile(dir.file("nlm.PRO"), kNlm);
  WriteFile(dir.file("ovid.PRO"), kOvid);
  for (int32_t stopAt : {2, 7}) {  // reading the records (5 of them), writing them
    RecordingProgress progress;
    JobState job;
    int32_t lines = 0;
    progress.onLine = [&](int32_t) {
      if (++lines == stopAt) job.giInterrupt = 1;
    };
    const JobResult r = FindDuplicates(
        job, progress, DedupParams{{dir.file("nlm.PRO"), dir.file("ovid.PRO")}, dir.file("o.PRO"), dir.file("o.txt")});
    EXPECT_EQ(r.outcome, JobOutcome::Interrupted) << stopAt;
    EXPECT_FALSE(FileExists(dir.file("o.PRO")));
    EXPECT_FALSE(FileExists(dir.file("o.txt")));
  }
}

}  // namespace
}  // namespace zv
