// The tags the record reader knows, and near ones it must not take.
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
      // One tag of each field, in every length a tag has.
      {"TI", F::Title},       {"FAU", F::Author},     {"IN", F::Institution}, {"SO", F::Source},
      {"JT", F::Journal},     {"VL", F::Volume},      {"IP", F::Issue},       {"PG", F::Pages},
      {"PY", F::Year},        {"DP", F::Date},        {"AB", F::Abstract},    {"MH", F::Descriptors},
      {"KW", F::Keywords},    {"LA", F::Language},    {"PT", F::DocType},     {"AN", F::Accession},
      {"PMID", F::Pmid},      {"PM", F::Pmid},        {"DOI", F::Doi},        {"DI", F::Doi},
      {"ISSN", F::Issn},      {"ISBN", F::Isbn},      {"DB", F::Database},    {"PB", F::Publisher},
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
