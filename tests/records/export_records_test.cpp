// Export Records as a job: what it refuses, what it reads through an index, and what
// is left on disk when it is interrupted or fails.
#include "records/export_records.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/input_file.h"
#include "records/build_index.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::CrLf;
using test::FileExists;
using test::ReadFile;
using test::RecordingProgress;
using test::TempDir;
using test::WriteFile;

const std::string kPro = CrLf({"Record - 3", "", "TI  - First title", "AU  - Varga T", "", "Record - 9", "",
                               "TI  - Second title", "", "Record - 4", "", "stray text of no form"});

TEST(ExportRecords, RefusesWithTheSystemsMessagesAndWritesNothing) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  WriteFile(dir.file("empty.PRO"), "");
  WriteFile(dir.file("capture.log"), CrLf({"?s peat", "S1  12  PEAT"}));
  WriteFile(dir.file("lonely.NDX"), std::string(277, '\0'));
  WriteFile(dir.file("noindex.NDX"), "");
  struct Case {
    std::string input, output, title, text;
  } cases[] = {
      {dir.file("gone.PRO"), dir.file("o.ris"), "File Open Error", "File not found."},
      {dir.file("empty.PRO"), dir.file("o.ris"), "Zero-Length File", "is a zero-length file."},
      {dir.file("capture.log"), dir.file("o.ris"), "File Format Error", "This does not appear to be a filtered record file."},
      {dir.file("lonely.NDX"), dir.file("o.ris"), "File Open Error", ".PRO file not found."},
      {dir.file("r.PRO"), dir.file("r.PRO"), "Open File Error", "Input file would be overwritten by an output file."},
  };
  for (const Case& c : cases) {
    JobState job;
    const JobResult r = ExportRecords(job, NoProgress(), ExportParams{c.input, ExportFormat::Ris, c.output});
    EXPECT_EQ(r.outcome, JobOutcome::Refused) << c.input;
    ASSERT_TRUE(r.message.has_value()) << c.input;
    EXPECT_EQ(r.message->title, c.title);
    EXPECT_NE(r.message->text.find(c.text), std::string::npos) << r.message->text;
    EXPECT_FALSE(FileExists(dir.file("o.ris"))) << c.input;
  }
  EXPECT_EQ(ReadFile(dir.file("r.PRO")), kPro);
}

TEST(ExportRecords, EveryRecordInOrderWithItsLabelAndProgress) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  RecordingProgress progress;
  JobState job;
  const JobResult r = ExportRecords(job, progress, ExportParams{dir.file("r.PRO"), ExportFormat::Ris, dir.file("o.ris")});
  ASSERT_TRUE(r.done());
  EXPECT_EQ(r.records, 3);
  EXPECT_EQ(r.files, std::vector<std::string>{dir.file("o.ris")});
  EXPECT_EQ(progress.title, kExportTitle);
  EXPECT_EQ(progress.recordOdometer, (std::vector<int32_t>{1, 2, 3}));
  // The total is a guess from the bytes while the job runs, and the count at its end.
  EXPECT_EQ(progress.lastLine, 12);
  EXPECT_EQ(progress.lineCount, 12);
  const std::string ris = ReadFile(dir.file("o.ris"));
  EXPECT_LT(ris.find("ID  - 3\r\nTI  - First title"), ris.find("ID  - 9\r\nTI  - Second title"));
  EXPECT_NE(ris.find("ID  - 4\r\nN1  - stray text of no form\r\n"), std::string::npos);
  EXPECT_EQ(ReadFile(dir.file("r.PRO")), kPro);
}

TEST(ExportRecords, ANdxIsReadAsItStandsWithThePROBesideIt) {
  TempDir dir, elsewhere;
  WriteFile(dir.file("r.PRO"), kPro);
  JobState indexing;
  indexing.gsProFile = dir.file("r.PRO");
  indexing.gsIndexFile = dir.file("r.NDX");
  ASSERT_EQ(BuildIndex(indexing, NoProgress()).outcome, JobOutcome::Done);
  const std::string ndx = ReadFile(dir.file("r.NDX"));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(elsewhere.path());
  JobState job;
  const JobResult r =
      ExportRecords(job, NoProgress(), ExportParams{dir.file("r.NDX"), ExportFormat::CslJson, dir.file("o.json")});
  std::filesystem::current_path(before);
  ASSERT_TRUE(r.done()) << (r.message ? r.message->text : "");
  EXPECT_EQ(r.records, 3);
  EXPECT_EQ(ReadFile(dir.file("r.NDX")), ndx);
  const std::string json = ReadFile(dir.file("o.json"));
  EXPECT_NE(json.find("{\"id\":\"9\",\"type\":\"document\",\"title\":\"Second title\"}"), std::string::npos) << json;
}

TEST(ExportRecords, ManyRecordsComeOutInOrderWithUniqueIdentifiers) {
  // Enough records for several batches of the workers; labels repeat, as in a file
  // the duplicate finder put together from two.
  TempDir dir;
  std::string pro;
  for (int k = 1; k <= 6000; ++k)
    pro += CrLf({"Record - " + std::to_string(k % 4000 + 1), "", "TI  - Title " + std::to_string(k) + " " + std::string(60, 'x'), ""});
  WriteFile(dir.file("big.PRO"), pro);
  JobState job;
  const JobResult r = ExportRecords(job, NoProgress(), ExportParams{dir.file("big.PRO"), ExportFormat::CslJson, dir.file("o.json")});
  ASSERT_TRUE(r.done());
  EXPECT_EQ(r.records, 6000);
  const std::string json = ReadFile(dir.file("o.json"));
  std::size_t at = 0;
  for (int k = 1; k <= 6000; ++k) {
    const std::string id = std::to_string(k % 4000 + 1) + (k > 4000 ? "-2" : "");
    at = json.find("{\"id\":\"" + id + "\",\"type\":\"document\",\"title\":\"Title " + std::to_string(k) + " ", at);
    ASSERT_NE(at, std::string::npos) << k;
  }
}

TEST(ExportRecords, AnInterruptOrAFailureLeavesNoOutput) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  RecordingProgress progress;
  JobState job;
  progress.onLine = [&](int32_t line) {
    if (line > 5) job.giInterrupt = 1;
  };
  const JobResult stopped = ExportRecords(job, progress, ExportParams{dir.file("r.PRO"), ExportFormat::Csv, dir.file("o.csv")});
  EXPECT_EQ(stopped.outcome, JobOutcome::Interrupted);
  EXPECT_FALSE(FileExists(dir.file("o.csv")));
  EXPECT_EQ(job.giInterrupt, 0);

  JobState failing;
  const JobResult failed =
      ExportRecords(failing, NoProgress(), ExportParams{dir.file("r.PRO"), ExportFormat::Csv, dir.file("no/such/o.csv")});
  EXPECT_EQ(failed.outcome, JobOutcome::Failed);
  ASSERT_TRUE(failed.error.has_value());
  EXPECT_EQ(failing.gsErrText, failed.error->text());
  EXPECT_FALSE(FileExists(dir.file("no/such/o.csv")));
}

TEST(ExportRecords, TheCommandTakesItsParametersFromTheContext) {
  TempDir dir;
  WriteFile(dir.file("r.PRO"), kPro);
  JobState job;
  CommandContext none{job, NoProgress(), FilterInput{}};
  EXPECT_EQ(ExportRecordsCommand(none).outcome, JobOutcome::NoCommand);
  CommandContext given{job, NoProgress(), ExportParams{dir.file("r.PRO"), ExportFormat::Ris, dir.file("o.ris")}};
  EXPECT_TRUE(ExportRecordsCommand(given).done());
  EXPECT_TRUE(FileExists(dir.file("o.ris")));
}

}  // namespace
}  // namespace zv
