// Loading and saving the header and cover form's settings.
#include "polish/cover_settings.h"

#include <array>

#include "core/error.h"
#include "core/text.h"

namespace zv {

namespace {

constexpr int32_t kTypeMismatch = 13;

// The eight choices in the order they are loaded and saved.
struct Choice {
  std::string_view key;
  bool byDefault;
  enum class Group { To, From, Save } group;
  uint8_t value;  // the option's value within its group
};
constexpr std::array kChoices{
    Choice{"ToRequester", true, Choice::Group::To, static_cast<uint8_t>(ToLabel::Requester)},
    Choice{"ToClient", false, Choice::Group::To, static_cast<uint8_t>(ToLabel::Client)},
    Choice{"FromLibrary", true, Choice::Group::From, static_cast<uint8_t>(FromLabel::Library)},
    Choice{"FromSearcher", false, Choice::Group::From, static_cast<uint8_t>(FromLabel::Searcher)},
    Choice{"FromFirm", false, Choice::Group::From, static_cast<uint8_t>(FromLabel::Firm)},
    Choice{"SavePrefix", true, Choice::Group::Save, static_cast<uint8_t>(SaveMode::Prefix)},
    Choice{"SavePrefixWithBreak", false, Choice::Group::Save, static_cast<uint8_t>(SaveMode::PrefixWithBreak)},
    Choice{"SaveSepFile", false, Choice::Group::Save, static_cast<uint8_t>(SaveMode::SepFile)},
};

uint8_t groupValue(const CoverFields& f, Choice::Group g) {
  switch (g) {
    case Choice::Group::To: return static_cast<uint8_t>(f.toLabel);
    case Choice::Group::From: return static_cast<uint8_t>(f.fromLabel);
    case Choice::Group::Save: break;
  }
  return static_cast<uint8_t>(f.saveMode);
}

void setGroup(CoverFields& f, Choice::Group g, uint8_t value) {
  switch (g) {
    case Choice::Group::To: f.toLabel = static_cast<ToLabel>(value); return;
    case Choice::Group::From: f.fromLabel = static_cast<FromLabel>(value); return;
    case Choice::Group::Save: f.saveMode = static_cast<SaveMode>(value); return;
  }
}

// The seven stored texts.
struct TextKey {
  std::string_view key;
  std::string CoverFields::*field;
};
constexpr std::array kTexts{
    TextKey{"To", &CoverFields::to},           TextKey{"From_1", &CoverFields::from1},
    TextKey{"From_2", &CoverFields::from2},    TextKey{"From_3", &CoverFields::from3},
    TextKey{"Subject", &CoverFields::subject}, TextKey{"JobNo", &CoverFields::jobNo},
    TextKey{"Database", &CoverFields::database}, TextKey{"Memo", &CoverFields::memo},
};

// A stored truth value as the conversion to a flag reads it.
bool truthOf(const std::string& text, std::string_view key) {
  const std::string t = UCase(QPTrim(text));
  if (t == "TRUE") return true;
  if (t == "FALSE") return false;
  // A number is true unless it is 0 ("-1" is the stored form of True).
  const std::string_view digits = std::string_view(t).substr(t.starts_with('-') ? 1 : 0);
  if (!digits.empty() && InCountTbl(digits, "0123456789") == static_cast<int32_t>(digits.size()))
    return digits.find_first_not_of('0') != std::string_view::npos;
  throw ZvError(kTypeMismatch, "Type mismatch", std::string(kCoverSection) + "/" + std::string(key) + "=" + text);
}

}  // namespace

void LoadCoverSettings(const SettingsAccess& store, CoverFields& fields) {
  for (const Choice& c : kChoices) {
    const bool on = truthOf(store.GetSetting(kCoverSection, c.key, c.byDefault ? "True" : "False"), c.key);
    // Setting an option clears the others of its group; clearing it leaves none set.
    if (on)
      setGroup(fields, c.group, c.value);
    else if (groupValue(fields, c.group) == c.value)
      setGroup(fields, c.group, 0);
  }
  for (const TextKey& t : kTexts) fields.*t.field = store.GetSetting(kCoverSection, t.key, "");
}

void SaveCoverSettings(SettingsAccess& store, const CoverFields& fields) {
  for (const Choice& c : kChoices)
    store.SaveSetting(kCoverSection, c.key, groupValue(fields, c.group) == c.value ? "True" : "False");
  for (const TextKey& t : kTexts) store.SaveSetting(kCoverSection, t.key, QPTrim(fields.*t.field));
}

}  // namespace zv
