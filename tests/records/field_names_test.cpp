// The tags the record reader knows, found through their lookup table.
#include "records/field_names.h"

#include <gtest/gtest.h>

#include <string>

namespace zv {
namespace {

using F = FieldName;

TEST(FieldNames, EveryKnownTagGivesItsFieldAndOthersNone) {
  struct Row {
    std::string_view tag;
    FieldName name;
  } rows[] = {
      {"TI", F::Title},          {"T1", F::Title},          {"HD", F::Title},        {"HL", F::Title},
      {"AU", F::Author},         {"A1", F::Author},         {"FAU", F::Author},      {"BY", F::Author},
      {"IN", F::Institution},    {"CS", F::Institution},    {"AD", F::Institution},  {"SO", F::Source},
      {"JN", F::Journal},        {"JT", F::Journal},        {"TA", F::Journal},      {"JO", F::Journal},
      {"JF", F::Journal},        {"T2", F::Journal},        {"VL", F::Volume},       {"VI", F::Volume},
      {"VO", F::Volume},         {"IP", F::Issue},          {"PG", F::Pages},        {"PP", F::Pages},
      {"PY", F::Year},           {"YR", F::Year},           {"PD", F::Date},         {"DP", F::Date},
      {"DA", F::Date},           {"AB", F::Abstract},       {"TD", F::Abstract},     {"LP", F::Abstract},
      {"DE", F::Descriptors},    {"MH", F::Descriptors},    {"CT", F::Descriptors},  {"ID", F::Keywords},
      {"KW", F::Keywords},       {"OT", F::Keywords},       {"UT", F::Keywords},     {"ST", F::Keywords},
      {"LA", F::Language},       {"LG", F::Language},       {"DT", F::DocType},      {"PT", F::DocType},
      {"AN", F::Accession},      {"UI", F::Accession},      {"PMID", F::Pmid},       {"PM", F::Pmid},
      {"DOI", F::Doi},           {"DO", F::Doi},            {"DI", F::Doi},          {"ISSN", F::Issn},
      {"ISBN", F::Isbn},         {"BN", F::Isbn},           {"IB", F::Isbn},         {"DB", F::Database},
      {"PB", F::Publisher},      {"PU", F::Publisher},
      // Not tags of the list: near ones, a case apart, too short or too long.
      {"", F::Other},            {"T", F::Other},           {"TIX", F::Other},       {"ti", F::Other},
      {"XX", F::Other},          {"PMI", F::Other},         {"ISS", F::Other},       {"DOIS", F::Other},
      {"ISSNX", F::Other},       {"OWN", F::Other},         {"STAT", F::Other},      {"A2", F::Other},
  };
  for (const Row& r : rows) EXPECT_EQ(FieldNameOfTag(r.tag, "text"), r.name) << '"' << r.tag << '"';
  // "IS" and "SN" hold an ISSN when their text begins with one.
  EXPECT_EQ(FieldNameOfTag("IS", "0917-4420"), F::Issn);
  EXPECT_EQ(FieldNameOfTag("IS", "4"), F::Issue);
  EXPECT_EQ(FieldNameOfTag("SN", " 1234-567X (Print)"), F::Issn);
  EXPECT_EQ(FieldNameOfTag("SN", "Peat Review 2021"), F::Source);
}

}  // namespace
}  // namespace zv
