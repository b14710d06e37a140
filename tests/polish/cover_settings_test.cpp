// The cover form's settings: defaults, the exclusive choices as the store sets them,
// and what saving writes.
#include <gtest/gtest.h>

#include <map>

#include "core/error.h"
#include "polish/cover_settings.h"

namespace zv {
namespace {

// A store in memory that remembers the order keys were saved in.
class MemoryStore : public SettingsAccess {
 public:
  std::map<std::string, std::string> values;
  std::vector<std::string> saved;

  std::string GetSetting(std::string_view section, std::string_view key, std::string_view def) const override {
    const auto it = values.find(std::string(section) + "/" + std::string(key));
    return it == values.end() ? std::string(def) : it->second;
  }
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override {
    values[std::string(section) + "/" + std::string(key)] = value;
    saved.push_back(std::string(key) + "=" + std::string(value));
  }
};

TEST(CoverSettings, AnEmptyStoreGivesTheDefaults) {
  MemoryStore store;
  CoverFields f;
  f.toLabel = ToLabel::Client;
  f.fromLabel = FromLabel::Firm;
  f.saveMode = SaveMode::SepFile;
  f.memo = "typed";
  f.date = "May 1, 2026";
  LoadCoverSettings(store, f);
  EXPECT_EQ(f.toLabel, ToLabel::Requester);
  EXPECT_EQ(f.fromLabel, FromLabel::Library);
  EXPECT_EQ(f.saveMode, SaveMode::Prefix);
  EXPECT_EQ(f.memo, "");
  EXPECT_EQ(f.date, "May 1, 2026");  // never stored, never loaded
}

TEST(CoverSettings, ChoicesLoadInTheirOrderAndFalseForBothLeavesNone) {
  struct Case {
    std::map<std::string, std::string> stored;
    ToLabel to;
    FromLabel from;
    SaveMode save;
  } cases[] = {
      {{{"ToClient", "True"}, {"FromFirm", "True"}, {"SaveSepFile", "True"}}, ToLabel::Client, FromLabel::Firm,
       SaveMode::SepFile},
      {{{"ToRequester", "False"}, {"FromLibrary", "False"}, {"SavePrefix", "False"}}, ToLabel::None,
       FromLabel::None, SaveMode::None},
      // Two set in one group: the later in the table wins.
      {{{"FromSearcher", "True"}, {"FromFirm", "true"}, {"SavePrefixWithBreak", "-1"}}, ToLabel::Requester,
       FromLabel::Firm, SaveMode::PrefixWithBreak},
  };
  for (const Case& c : cases) {
    MemoryStore store;
    for (const auto& [k, v] : c.stored) store.values["Header/Cover/" + k] = v;
    CoverFields f;
    LoadCoverSettings(store, f);
    EXPECT_EQ(f.toLabel, c.to);
    EXPECT_EQ(f.fromLabel, c.from);
    EXPECT_EQ(f.saveMode, c.save);
  }
  MemoryStore bad;
  bad.values["Header/Cover/ToClient"] = "yes";
  CoverFields f;
  try {
    LoadCoverSettings(bad, f);
    FAIL() << "a truth value of \"yes\" was taken";
  } catch (const ZvError& e) {
    EXPECT_EQ(e.number(), 13);
  }
}

TEST(CoverSettings, SavingWritesEveryKeyInOrderWithTrimmedTextsAndLoadsBack) {
  MemoryStore store;
  CoverFields f;
  f.toLabel = ToLabel::Client;
  f.fromLabel = FromLabel::Searcher;
  f.saveMode = SaveMode::PrefixWithBreak;
  f.to = "  Ada  ";
  f.from2 = "Desk";
  f.memo = "line one\r\nline two ";
  f.date = "May 1, 2026";
  SaveCoverSettings(store, f);
  EXPECT_EQ(store.saved, (std::vector<std::string>{
                             "ToRequester=False", "ToClient=True", "FromLibrary=False", "FromSearcher=True",
                             "FromFirm=False", "SavePrefix=False", "SavePrefixWithBreak=True", "SaveSepFile=False",
                             "To=Ada", "From_1=", "From_2=Desk", "From_3=", "Subject=", "JobNo=", "Database=",
                             "Memo=line one\r\nline two"}));
  CoverFields back;
  LoadCoverSettings(store, back);
  EXPECT_EQ(back.toLabel, ToLabel::Client);
  EXPECT_EQ(back.fromLabel, FromLabel::Searcher);
  EXPECT_EQ(back.saveMode, SaveMode::PrefixWithBreak);
  EXPECT_EQ(back.to, "Ada");
  EXPECT_EQ(back.memo, "line one\r\nline two");
}

}  // namespace
}  // namespace zv
