// Every record of every sample comes out in every format, and a real bibliography
// reader (bibutils' ris2xml) reads each RIS record back with its title.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "core/job_state.h"
#include "records/citation.h"
#include "records/export_records.h"
#include "records/record_fields.h"
#include "records/record_scanner.h"
#include "records/utf8_text.h"
#include "records/csv_reader.h"
#include "support/process.h"
#include "support/test_support.h"

namespace zv {
namespace {

using test::ReadFile;
using test::TempDir;

const std::string kSamples = ZV_SAMPLES_DIR;
const std::string kExports = kSamples + "/export";

std::vector<std::string> SampleNames() {
  return {"dialog", "brs", "datastar", "djnr", "nlm", "orbit", "ovid", "stn", "forms"};
}

int32_t CountLabels(const std::string& pro) {
  int32_t n = 0;
  for (std::size_t at = 0; (at = pro.find("Record - ", at)) != std::string::npos; at += 9)
    if (at == 0 || pro[at - 1] == '\n') ++n;
  return n;
}

int32_t CountOccurrences(const std::string& text, const std::string& part) {
  int32_t n = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++n;
  return n;
}

// The titles the citations of a record file have, in order ("" for none).
std::vector<std::string> Titles(const std::string& pro) {
  RecordScanner scanner(pro);
  RecordText r;
  RecordFields fields;
  Citation c;
  std::vector<std::string> out;
  while (scanner.next(r)) {
    ReadRecordFields(r.lines, fields);
    MakeCitation(LabelNumber(r.label), fields, r.lines, c);
    out.push_back(c.title);
  }
  return out;
}

std::string Run(const std::string& command) {
  std::string out;
  if (FILE* p = popen(command.c_str(), "r")) {
    char buf[65536];
    std::size_t n;
    while ((n = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
    pclose(p);
  }
  return out;
}

std::string XmlText(std::string s) {
  for (auto [from, to] : {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}})
    for (std::size_t at; (at = s.find(from)) != std::string::npos;) s.replace(at, std::string(from).size(), to);
  return s;
}

std::string Between(const std::string& text, const std::string& open, const std::string& close) {
  const std::size_t a = text.find(open);
  if (a == std::string::npos) return {};
  const std::size_t b = text.find(close, a + open.size());
  return b == std::string::npos ? std::string() : text.substr(a + open.size(), b - a - open.size());
}

// Each record ris2xml read, by its title as it tells it (title and subtitle joined).
std::vector<std::string> Ris2XmlTitles(const std::string& ris) {
  const std::string xml = Run("ris2xml '" + ris + "' 2>/dev/null");
  std::vector<std::string> titles;
  std::size_t at = xml.find("<mods ");
  while (at != std::string::npos) {
    const std::size_t next = xml.find("<mods ", at + 1);
    std::string record = xml.substr(at, next == std::string::npos ? std::string::npos : next - at);
    record = record.substr(0, record.find("<relatedItem"));  // the journal has a title of its own
    std::string title = XmlText(Between(record, "<title>", "</title>"));
    const std::string sub = XmlText(Between(record, "<subTitle>", "</subTitle>"));
    // It splits a title at ": " and after "? ", keeping the question mark.
    if (!sub.empty()) title += (!title.empty() && (title.back() == '?' || title.back() == '!') ? " " : ": ") + sub;
    titles.push_back(title);
    at = next;
  }
  return titles;
}

class ExportSamples : public ::testing::TestWithParam<std::string> {};

TEST_P(ExportSamples, EveryRecordInEveryFormatAsCommitted) {
  const std::string pro = kExports + "/" + GetParam() + ".PRO";
  const int32_t records = CountLabels(ReadFile(pro));
  ASSERT_GT(records, 0);
  TempDir dir;
  for (ExportFormat format : {ExportFormat::Ris, ExportFormat::CslJson, ExportFormat::Csv}) {
    const std::string out = dir.file("out" + std::string(FormatExtension(format)));
    JobState job;
    const JobResult result = ExportRecords(job, NoProgress(), ExportParams{pro, format, out});
    ASSERT_TRUE(result.done()) << FormatName(format);
    EXPECT_EQ(result.records, records);
    const std::string bytes = ReadFile(out);
    switch (format) {
      case ExportFormat::Ris:
        EXPECT_EQ(CountOccurrences(bytes, "\r\nER  - \r\n"), records);
        EXPECT_EQ(CountOccurrences(bytes, "TY  - "), records);
        EXPECT_EQ(CountOccurrences(bytes, "\n"), CountOccurrences(bytes, "\r\n"));
        break;
      case ExportFormat::CslJson:
        EXPECT_EQ(nlohmann::json::parse(bytes).size(), static_cast<std::size_t>(records));
        break;
      case ExportFormat::Csv: {
        const auto rows = test::ReadCsv(bytes.substr(3));
        EXPECT_EQ(rows.size(), static_cast<std::size_t>(records) + 1);
        for (const auto& row : rows) EXPECT_EQ(row.size(), rows[0].size());
        break;
      }
    }
    const std::string committed = kExports + "/" + GetParam() + std::string(FormatExtension(format));
    EXPECT_TRUE(bytes == ReadFile(committed))
        << committed << " is not what this build writes: run samples/export/regenerate.sh and look at the diff";
  }
}

TEST_P(ExportSamples, BibutilsReadsEveryRisRecordWithItsTitle) {
  ASSERT_EQ(std::system("command -v ris2xml >/dev/null 2>&1"), 0) << "ris2xml missing: run scripts/setup.sh (bibutils)";
  const std::string pro = kExports + "/" + GetParam() + ".PRO";
  const std::vector<std::string> ours = Titles(pro);
  const std::vector<std::string> theirs = Ris2XmlTitles(kExports + "/" + GetParam() + ".ris");
  ASSERT_EQ(theirs.size(), ours.size());
  for (std::size_t i = 0; i < ours.size(); ++i) {
    std::string utf8;
    AppendUtf8(utf8, ours[i]);
    EXPECT_EQ(theirs[i], utf8) << "record " << i + 1;
  }
}

class SampleRecordFiles : public ::testing::TestWithParam<std::string> {};

TEST_P(SampleRecordFiles, AreTheFiltersOutputOfTheSampleCaptures) {
  const std::string service = GetParam() == "dialog" ? "dialog-all" : GetParam();
  TempDir dir;
  const auto r = test::RunCli({"filter", service, kSamples + "/" + GetParam() + "_session.log", "--out-dir", dir.path().string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(ReadFile(dir.file(GetParam() + "_session.PRO")), ReadFile(kExports + "/" + GetParam() + ".PRO"));
}

INSTANTIATE_TEST_SUITE_P(Samples, ExportSamples, ::testing::ValuesIn(SampleNames()),
                         [](const ::testing::TestParamInfo<std::string>& p) { return p.param; });
// forms.PRO is written by hand, for the forms no sample capture holds.
INSTANTIATE_TEST_SUITE_P(Samples, SampleRecordFiles,
                         ::testing::Values("dialog", "brs", "datastar", "djnr", "nlm", "orbit", "ovid", "stn"),
                         [](const ::testing::TestParamInfo<std::string>& p) { return p.param; });

}  // namespace
}  // namespace zv
