// The reader of a record's fields: each form the filters leave, field by field.
#include "records/record_fields.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zv {
namespace {

using F = FieldName;

struct Expected {
  std::string tag;
  FieldName name;
  std::string text;
};

struct FormCase {
  const char* name;
  std::vector<std::string> lines;
  std::vector<Expected> fields;
};

std::vector<Expected> Read(const std::vector<std::string>& lines) {
  std::vector<std::string_view> views(lines.begin(), lines.end());
  RecordFields fields;
  ReadRecordFields(views, fields);
  std::vector<Expected> out;
  for (const Field& f : fields.fields()) out.push_back({f.tag, f.name, f.text});
  return out;
}

std::string Show(const std::vector<Expected>& fields) {
  std::string s;
  for (const Expected& f : fields) s += "[" + f.tag + "|" + std::string(CommonName(f.name)) + "|" + f.text + "]\n";
  return s;
}

void PrintTo(const FormCase& c, std::ostream* os) { *os << c.name; }

class RecordForms : public ::testing::TestWithParam<FormCase> {};

TEST_P(RecordForms, FieldsComeOutWithTheirTagsAndCommonNames) {
  const FormCase& c = GetParam();
  EXPECT_EQ(Show(Read(c.lines)), Show(c.fields));
}

const FormCase kForms[] = {
    {"MedlineTagHyphen",
     {"AU  - Okonkwo-Lind P ; Brandvold K", "TI  - Leadless cardiac stimulation in patients over eighty: a two-year",
      "      follow-up of a regional registry.", "SO  - Journal of Invented Cardiology 2023 Aug;41(8):1123-9",
      "MH  - Aged, 80 and over ; Registries"},
     {{"AU", F::Author, "Okonkwo-Lind P ; Brandvold K"},
      {"TI", F::Title, "Leadless cardiac stimulation in patients over eighty: a two-year follow-up of a regional registry."},
      {"SO", F::Source, "Journal of Invented Cardiology 2023 Aug;41(8):1123-9"},
      {"MH", F::Descriptors, "Aged, 80 and over ; Registries"}}},
    {"ShortTagHyphen",
     {"TI- Peat dams in fens", "AU- Varga T", "PMID- 12345678", "DP- 2021 Mar 4"},
     {{"TI", F::Title, "Peat dams in fens"},
      {"AU", F::Author, "Varga T"},
      {"PMID", F::Pmid, "12345678"},
      {"DP", F::Date, "2021 Mar 4"}}},
    {"TagAndTwoBlanks",
     {"AN  24-00417.  2403.", "AU  Varga-Holm T. Okafor-Reyes P.", "TI  DITCH BLOCKING AND THE RECOVERY OF THE",
      "    WATER TABLE.", "SO  Journal of Applied Mire Science. 12(3): 201-214, 2023.", "END OF DOCUMENT"},
     {{"AN", F::Accession, "24-00417.  2403."},
      {"AU", F::Author, "Varga-Holm T. Okafor-Reyes P."},
      {"TI", F::Title, "DITCH BLOCKING AND THE RECOVERY OF THE WATER TABLE."},
      {"SO", F::Source, "Journal of Applied Mire Science. 12(3): 201-214, 2023."},
      {"", F::Other, "END OF DOCUMENT"}}},
    {"StnParagraphsUnderOneTag",
     {"TI   Crosslinked polyimide fibres", "AB   First paragraph of the", "     abstract.", "",
      "     Second paragraph.", "-5- Stability data"},
     {{"TI", F::Title, "Crosslinked polyimide fibres"},
      {"AB", F::Abstract, "First paragraph of the abstract. Second paragraph."},
      {"", F::Other, "-5- Stability data"}}},
    {"DjnrTagsBehindTwoBlanks",
     {"  HD  Kestrel Motors Opens Battery Works", "  BY  By Imogen Trask", "  SN  Valley Business Wire",
      "  PD  04 Mar 2024", "  TD  Kestrel Motors said Monday it has", "      started production."},
     {{"HD", F::Title, "Kestrel Motors Opens Battery Works"},
      {"BY", F::Author, "By Imogen Trask"},
      {"SN", F::Source, "Valley Business Wire"},
      {"PD", F::Date, "04 Mar 2024"},
      {"TD", F::Abstract, "Kestrel Motors said Monday it has started production."}}},
    {"IssnOrIssueByItsText",
     {"TI  - A title", "IS  - 0917-4420", "SN  - 1234-567X", "IP  - 4"},
     {{"TI", F::Title, "A title"}, {"IS", F::Issn, "0917-4420"}, {"SN", F::Issn, "1234-567X"}, {"IP", F::Issue, "4"}}},
    {"OrbitInventorsAreAuthorsWhenNoOneElseIs",
     {"AN  - 2024-118230", "TI  - Hollow fibre", "IN  - Brandvold K; Ekwall M", "PN  - XA 2023118230 A1"},
     {{"AN", F::Accession, "2024-118230"},
      {"TI", F::Title, "Hollow fibre"},
      {"IN", F::Author, "Brandvold K; Ekwall M"},
      {"PN", F::Other, "XA 2023118230 A1"}}},
    {"OneUnknownTagFirstStillTagged",
     {"IC   B01D0063-02", "-3- continued on the next screen (Ca)"},
     {{"IC", F::Other, "B01D0063-02"}, {"", F::Other, "-3- continued on the next screen (Ca)"}}},
    {"OvidNamesWithTheirMarginCut",
     {"Authors", "Quellmark, Annika B.  Tressidy, Paul L.", "on", "Lowland Waters Research Station.", "Title",
      "Den site choice of river otters along", "regulated lowland rivers.", "Source",
      "Journal of Inland Mammal Studies. 14(2):117-29, 1996 Jun.", "e", "Fourth Meeting, Ashcombe, 1996."},
     {{"Authors", F::Author, "Quellmark, Annika B.  Tressidy, Paul L."},
      {"Institution", F::Institution, "Lowland Waters Research Station."},
      {"Title", F::Title, "Den site choice of river otters along regulated lowland rivers."},
      {"Source", F::Source, "Journal of Inland Mammal Studies. 14(2):117-29, 1996 Jun."},
      {"Conference", F::Other, "Fourth Meeting, Ashcombe, 1996."}}},
    {"OvidNamesInTheCapturesMargin",
     {"Unique Identifier", "         20240117", "Title", "         Mink and otter on the same banks.", "Source",
      "         Journal of Inland Mammal Studies. 13(1):12-20, 1995 Jan.", "ISSN", "         0917-4420",
      "Digital Object Identifier", "         10.1234/jims.1995.12"},
     {{"Unique Identifier", F::Accession, "20240117"},
      {"Title", F::Title, "Mink and otter on the same banks."},
      {"Source", F::Source, "Journal of Inland Mammal Studies. 13(1):12-20, 1995 Jan."},
      {"ISSN", F::Issn, "0917-4420"},
      {"Digital Object Identifier", F::Doi, "10.1234/jims.1995.12"}}},
    {"DialogCitationWithLabels",
     {"DIALOG(R)File 155:BioMed Abstracts", "(c) format only 2024 Dialog. All rts. reserv.", "",
      "24318876   PMID: 38122410",
      "  Hydrological recovery of drained peatlands after ditch blocking: a", "five-year field study.",
      "  Varga T; Holm-Lindqvist E", "  Institute of Wetland Ecology, Tarnby University, Tarnby, Denmark.",
      "  Journal of Applied Mire Science (Netherlands)  Jan 2024,  61 (1)", "p88-104,  ISSN: 0917-4420--Print",
      "  Publishing Model Print-Electronic", "  Document type: Journal Article", "",
      "  Drainage for forestry and peat cutting has lowered the water table of", "many northern peatlands.", "",
      "  Vegetation plots showed a return of Sphagnum.",
      "  Descriptors: *Wetlands; *Soil--chemistry; Hydrology; Carbon Sequestration; Environmental", "Seasons"},
     {{"DIALOG(R)File 155", F::Database, "BioMed Abstracts"},
      {"", F::Other, "(c) format only 2024 Dialog. All rts. reserv."},
      {"", F::Accession, "24318876"},
      {"", F::Title, "Hydrological recovery of drained peatlands after ditch blocking: a five-year field study."},
      {"", F::Author, "Varga T; Holm-Lindqvist E"},
      {"", F::Institution, "Institute of Wetland Ecology, Tarnby University, Tarnby, Denmark."},
      {"", F::Source, "Journal of Applied Mire Science (Netherlands)  Jan 2024,  61 (1) p88-104,  ISSN: 0917-4420--Print"},
      {"", F::Other, "Publishing Model Print-Electronic"},
      {"Document type:", F::DocType, "Journal Article"},
      {"", F::Abstract, "Drainage for forestry and peat cutting has lowered the water table of many northern peatlands."},
      {"", F::Abstract, "Vegetation plots showed a return of Sphagnum."},
      {"Descriptors:", F::Descriptors,
       "*Wetlands; *Soil--chemistry; Hydrology; Carbon Sequestration; Environmental Seasons"},
      {"PMID:", F::Pmid, "38122410"}}},
    {"DialogFileWithColonLabels",
     {"0771542  SSI Accession Number: 24-011208", "Peat subsidence and ditch blocking: ten years",
      "  Author: Rautio, H.; Ekholm, V.", "  Source: Mires and Peat Proceedings, v 31, p 44-59, 2023",
      "  Publication Year: 2023", "", "Abstract: Surface height of a drained raised bog was levelled yearly at",
      "120 pins.", "", "Section Headings: 08 (Soil Physics)"},
     {{"", F::Accession, "0771542"},
      {"", F::Title, "Peat subsidence and ditch blocking: ten years"},
      {"Author:", F::Author, "Rautio, H.; Ekholm, V."},
      {"Source:", F::Source, "Mires and Peat Proceedings, v 31, p 44-59, 2023"},
      {"Publication Year:", F::Year, "2023"},
      {"Abstract:", F::Abstract, "Surface height of a drained raised bog was levelled yearly at 120 pins."},
      {"Section Headings:", F::Other, "08 (Soil Physics)"},
      {"", F::Other, "SSI Accession Number: 24-011208"}}},
    {"ShortCitationTitleSourceDate",
     {"Peat subsidence and ditch blocking", "Mires and Peat Proceedings, v 31, p 44-59", "March 4, 2023"},
     {{"", F::Title, "Peat subsidence and ditch blocking"},
      {"", F::Source, "Mires and Peat Proceedings, v 31, p 44-59"},
      {"", F::Date, "March 4, 2023"}}},
    {"NewsHeadlineSourceDate",
     {"Kestrel Motors Opens Battery Works", "Valley Business Wire", "04 Mar 2024", "",
      "Kestrel Motors said Monday it has started production."},
     {{"", F::Title, "Kestrel Motors Opens Battery Works"},
      {"", F::Source, "Valley Business Wire"},
      {"", F::Date, "04 Mar 2024"},
      {"", F::Abstract, "Kestrel Motors said Monday it has started production."}}},
    {"KwicExcerptsHaveNoCommonName",
     {"DIALOG(R)File 155:BioMed Abstracts", "", "...blanket bog raised the PEAT water table by 12 cm within two seasons,",
      "and WETLAND plant cover returned to..."},
     {{"DIALOG(R)File 155", F::Database, "BioMed Abstracts"},
      {"", F::Other, "...blanket bog raised the PEAT water table by 12 cm within two seasons, and WETLAND plant cover returned to..."}}},
    {"SplitRecordsTailIsNoTitle",
     {"      Analysts expect prices per kilowatt-hour to fall again this year."},
     {{"", F::Other, "Analysts expect prices per kilowatt-hour to fall again this year."}}},
};

INSTANTIATE_TEST_SUITE_P(Forms, RecordForms, ::testing::ValuesIn(kForms),
                         [](const ::testing::TestParamInfo<FormCase>& p) { return std::string(p.param.name); });

TEST(RecordFields, EveryNonEmptyLineEndsUpInAField) {
  // Whatever the form, no word of the record is lost between its lines and its fields.
  for (const FormCase& c : kForms) {
    const std::vector<Expected> fields = Read(c.lines);
    std::string all;
    for (const Expected& f : fields) all += f.tag + " " + f.text + " ";
    for (const std::string& line : c.lines) {
      // Words, with a tag's hyphen and a label's colon set aside.
      std::string words = line;
      for (char& ch : words)
        if (ch == ':') ch = ' ';
      std::size_t at = 0;
      while (at < words.size()) {
        while (at < words.size() && words[at] == ' ') ++at;
        std::size_t e = words.find(' ', at);
        if (e == std::string::npos) e = words.size();
        std::string word = words.substr(at, e - at);
        while (!word.empty() && word.back() == '-') word.pop_back();
        if (!word.empty()) {
          EXPECT_NE(all.find(word), std::string::npos) << c.name << ": " << word;
        }
        at = e;
      }
    }
  }
}

TEST(RecordFields, ReusedStorageLeavesNothingOfTheRecordBefore) {
  RecordFields fields;
  const std::vector<std::string> big{"TI  - First", "AU  - Varga T", "SO  - J 1(2):3-4, 2020", "AB  - Text"};
  const std::vector<std::string> small{"TI  - Second"};
  std::vector<std::string_view> a(big.begin(), big.end()), b(small.begin(), small.end());
  ReadRecordFields(a, fields);
  ReadRecordFields(b, fields);
  ASSERT_EQ(fields.size(), 1u);
  EXPECT_EQ(fields.fields()[0].text, "Second");
  EXPECT_TRUE(fields.anyCommonField());
  ReadRecordFields({}, fields);
  EXPECT_TRUE(fields.empty());
  EXPECT_FALSE(fields.anyCommonField());
}

}  // namespace
}  // namespace zv
