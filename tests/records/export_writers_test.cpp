// RIS, CSV and CSL JSON of citations: the bytes reference managers and spreadsheets read.
#include "records/export_writers.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

#include "records/citation.h"
#include "records/record_fields.h"
#include "records/utf8_text.h"
#include "records/csv_reader.h"

namespace zv {
namespace {

// The citation of a record given as its lines.
Citation CitationOf(const std::string& label, const std::vector<std::string>& lines) {
  std::vector<std::string_view> views(lines.begin(), lines.end());
  RecordFields fields;
  ReadRecordFields(views, fields);
  Citation c;
  MakeCitation(label, fields, views, c);
  return c;
}

std::string Write(ExportFormat format, const std::vector<Citation>& citations) {
  std::unique_ptr<ExportWriter> w = MakeExportWriter(format);
  std::string out;
  w->begin(out);
  for (const Citation& c : citations) w->record(c, &c == &citations.front(), out);
  w->end(out, citations.empty());
  return out;
}

const std::vector<std::string> kMedline{
    "AU  - Okonkwo-Lind P ; Brandvold K",
    "TI  - Leadless cardiac stimulation in patients over eighty.",
    "SO  - Journal of Invented Cardiology 2023 Aug;41(8):1123-9",
    "AB  - Outcomes of 212 patients, \"all\" of them, were followed.",
    "MH  - *Aged, 80 and over ; Registries",
    "LA  - English",
    "PT  - Journal Article",
    "AID - 10.1234/jic.2023.41.1123 [doi]",
    "PMID- 37000001",
    "XX  - A field no common name covers",
};

TEST(ExportWriters, RisTypeFirstOneAuthorALineEndLastCrLf) {
  EXPECT_EQ(Write(ExportFormat::Ris, {CitationOf("7", kMedline)}),
            "TY  - JOUR\r\n"
            "ID  - 7\r\n"
            "TI  - Leadless cardiac stimulation in patients over eighty\r\n"
            "AU  - Okonkwo-Lind, P\r\n"
            "AU  - Brandvold, K\r\n"
            "JF  - Journal of Invented Cardiology\r\n"
            "VL  - 41\r\n"
            "IS  - 8\r\n"
            "SP  - 1123\r\n"
            "EP  - 1129\r\n"
            "PY  - 2023\r\n"
            "DA  - 2023/08//\r\n"
            "AB  - Outcomes of 212 patients, \"all\" of them, were followed.\r\n"
            "KW  - Aged, 80 and over\r\n"
            "KW  - Registries\r\n"
            "LA  - English\r\n"
            "M3  - Journal Article\r\n"
            "DO  - 10.1234/jic.2023.41.1123\r\n"
            "N1  - PMID: 37000001\r\n"
            "N1  - AID 10.1234/jic.2023.41.1123 [doi]\r\n"
            "N1  - XX A field no common name covers\r\n"
            "ER  - \r\n\r\n");
}

TEST(ExportWriters, ARecordWhoseFieldsAreNotFoundGoesWholeIntoANote) {
  const Citation c = CitationOf("6", {"DIALOG(R)File 155:BioMed Abstracts", "", "...raised the PEAT water table by",
                                      "12 cm within two seasons..."});
  EXPECT_FALSE(c.fieldsFound);
  EXPECT_EQ(Write(ExportFormat::Ris, {c}),
            "TY  - GEN\r\nID  - 6\r\nDB  - BioMed Abstracts\r\n"
            "N1  - DIALOG(R)File 155:BioMed Abstracts ...raised the PEAT water table by 12 cm within two seasons...\r\n"
            "ER  - \r\n\r\n");
  const nlohmann::json j = nlohmann::json::parse(Write(ExportFormat::CslJson, {c}));
  EXPECT_EQ(j[0]["type"], "document");
  EXPECT_EQ(j[0]["note"], "DIALOG(R)File 155:BioMed Abstracts\n...raised the PEAT water table by\n12 cm within two seasons...");
}

TEST(ExportWriters, CsvOneRowARecordQuotedAsSpreadsheetsExpect) {
  Citation odd = CitationOf("9", {"TI  - Caf\xE9 \"society\", and more", "AU  - M\xFCller K"});
  odd.notes.add("first line");
  odd.notes.add("second line");
  const std::string csv = Write(ExportFormat::Csv, {CitationOf("7", kMedline), odd});
  ASSERT_EQ(csv.substr(0, 3), "\xEF\xBB\xBF");
  const auto rows = test::ReadCsv(csv.substr(3));
  ASSERT_EQ(rows.size(), 3u);
  for (const auto& row : rows) EXPECT_EQ(row.size(), rows[0].size());
  EXPECT_EQ(rows[0][0], "Label");
  EXPECT_EQ(rows[0][2], "Title");
  EXPECT_EQ(rows[1][0], "7");
  EXPECT_EQ(rows[1][3], "Okonkwo-Lind, P; Brandvold, K");
  EXPECT_EQ(rows[1][7], "1123-1129");
  EXPECT_EQ(rows[1][9], "2023-08");
  EXPECT_EQ(rows[1][11], "Aged, 80 and over; Registries");
  // Windows-1252 bytes come out as UTF-8; quotes are doubled inside a quoted cell.
  EXPECT_EQ(rows[2][2], "Caf\xC3\xA9 \"society\", and more");
  EXPECT_EQ(rows[2][3], "M\xC3\xBCller, K");
  EXPECT_EQ(rows[2].back(), "first line\r\nsecond line");
  EXPECT_NE(csv.find("\"Caf\xC3\xA9 \"\"society\"\", and more\""), std::string::npos);
}

TEST(ExportWriters, CslJsonParsesBackWithEveryField) {
  Citation tricky = CitationOf("7", {"TI  - Back\\slash \"quoted\" and a\x01" "control", "AU  - Horvath E"});
  const nlohmann::json j =
      nlohmann::json::parse(Write(ExportFormat::CslJson, {CitationOf("7", kMedline), tricky, CitationOf("8", {})}));
  ASSERT_EQ(j.size(), 3u);
  EXPECT_EQ(j[0]["id"], "7");
  EXPECT_EQ(j[0]["type"], "article-journal");
  EXPECT_EQ(j[0]["title"], "Leadless cardiac stimulation in patients over eighty");
  EXPECT_EQ(j[0]["author"][1]["family"], "Brandvold");
  EXPECT_EQ(j[0]["author"][1]["given"], "K");
  EXPECT_EQ(j[0]["container-title"], "Journal of Invented Cardiology");
  EXPECT_EQ(j[0]["page"], "1123-1129");
  EXPECT_EQ(j[0]["issued"]["date-parts"][0], nlohmann::json::array({2023, 8}));
  EXPECT_EQ(j[0]["DOI"], "10.1234/jic.2023.41.1123");
  EXPECT_EQ(j[0]["PMID"], "37000001");
  EXPECT_EQ(j[0]["keyword"], "Aged, 80 and over; Registries");
  EXPECT_EQ(j[1]["id"], "7");
  EXPECT_EQ(j[1]["title"], "Back\\slash \"quoted\" and a control");
  EXPECT_EQ(j[2]["id"], "8");
  EXPECT_FALSE(j[2].contains("title"));
  EXPECT_EQ(nlohmann::json::parse(Write(ExportFormat::CslJson, {})).size(), 0u);
}

TEST(ExportWriters, NotesInJsonAreTheLibrarysStringsAndInCsvOneQuotedCell) {
  // A record's notes go out as one text, a line each: in JSON byte for byte what the
  // JSON library makes of that text, in CSV one cell whose lines end in CR LF.
  const std::string longLine(40, 'n');
  const std::vector<std::vector<std::string>> notes{
      {"a", "b"},
      {"a", "b", "c"},
      {longLine.substr(0, 15), longLine.substr(0, 16), longLine, ""},
      {"ends with a feed", "", ""},
      {"say \"hi\"", "b"},
      {"back\\slash", "c"},
      {"tab\there", "d"},
      {"caf\xE9", "e"},
      {"comma, here", "x"},
  };
  for (const auto& lines : notes) {
    Citation c = CitationOf("5", {"TI  - A title"});
    std::string joined;
    for (const std::string& n : lines) {
      c.notes.add(n);
      if (!joined.empty()) joined += '\n';
      joined += n;
    }
    std::string utf8;
    AppendUtf8(utf8, joined, true);
    const std::string json = Write(ExportFormat::CslJson, {c});
    EXPECT_NE(json.find(",\"note\":" + nlohmann::json(utf8).dump() + "}"), std::string::npos) << joined;
    const auto rows = test::ReadCsv(Write(ExportFormat::Csv, {c}).substr(3));
    ASSERT_EQ(rows.size(), 2u);
    std::string cell = utf8;
    for (std::size_t at = cell.find('\n'); at != std::string::npos; at = cell.find('\n', at + 2)) cell.replace(at, 1, "\r\n");
    EXPECT_EQ(rows[1].back(), cell) << joined;
  }
}

TEST(ExportWriters, LabelsThatComeAgainGetASuffix) {
  UniqueLabels unique;
  std::vector<std::string> ids;
  for (std::string_view label : {"7", "8", "7", "7", "A", "A", "7-2", "0"}) ids.emplace_back(unique(label));
  EXPECT_EQ(ids, (std::vector<std::string>{"7", "8", "7-2", "7-3", "A", "A-2", "7-2-2", "0"}));
}

TEST(ExportWriters, FormatNamesAndExtensions) {
  for (ExportFormat f : {ExportFormat::Ris, ExportFormat::CslJson, ExportFormat::Csv})
    EXPECT_EQ(FormatOfName(FormatName(f)), f);
  EXPECT_FALSE(FormatOfName("bibtex").has_value());
  EXPECT_EQ(FormatExtension(ExportFormat::CslJson), ".json");
}

}  // namespace
}  // namespace zv
