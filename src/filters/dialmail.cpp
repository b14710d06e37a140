// DIALMAIL filter: a print opens at "Record -" and ends at a prompt, an item header or the mail's own lines.
#include "filters/dialmail.h"

#include <array>
#include <cstdint>

#include "core/byte_scan.h"
#include "core/filter_frame.h"
#include "core/text.h"
#include "filters/dialog_family.h"

namespace zv {

namespace {

using sv = std::string_view;

// The texts searched for anywhere in a line, as bits of what findTexts returns.
enum : uint32_t {
  kRecordDash = 1u << 0,       // "Record -": opens a record
  kPrintsRequested = 1u << 1,  // "Prints requested", which ends one beside its second text
  kEndText = 1u << 2,          // any of the other eleven, which end one
};

// The texts that may begin at `rest`'s first character, which is a capital or a "*".
uint32_t textsAt(sv rest) {
  uint32_t found = 0;
  const auto at = [&](sv text, uint32_t bit) {
    if (rest.starts_with(text)) found |= bit;
  };
  switch (rest.front()) {
    case 'R':
      at("Record -", kRecordDash);
      at("Read     ", kEndText);
      break;
    case 'P': at("Prints requested", kPrintsRequested); break;
    case '*':
      at("*** Item ", kEndText);
      at("** For more commands, ", kEndText);
      break;
    case 'V': at("VIA DIALMAIL", kEndText); break;
    case 'F': at("Files(s) searched:", kEndText); break;
    case 'S':
      at("Sets selected:", kEndText);
      at("Set     Items   Description", kEndText);
      at("Scan     ", kEndText);
      break;
    case 'D': at("Dialmail defaults:", kEndText); break;
    case 'C': at("CLear    ", kEndText); break;
    case 'E': at("EXit     ", kEndText); break;
    default: break;
  }
  return found;
}

// Which of the texts the line holds: each begins with a capital or a "*", so only
// where the line holds one of those can a text begin, and there only the texts of
// that first character are compared. The frame listed those places as it read (the
// filter's marked bytes and capitals: `listed`); a line it did not list is looked
// through here.
uint32_t findTexts(sv line, bool listed, const std::size_t* first, const std::size_t* last, std::size_t base) {
  uint32_t found = 0;
  if (listed) {
    for (; first != last; ++first) {
      const sv rest = line.substr(*first - base);
      if (rest.front() == '*' || (rest.front() >= 'A' && rest.front() <= 'Z')) found |= textsAt(rest);
    }
    return found;
  }
  ForEachByteInRange(line, 'A', 'Z', '*', [&](std::size_t k) {
    found |= textsAt(line.substr(k));
    return true;
  });
  return found;
}

// The bytes the frame lists, with the capitals: DialogLine's and the "*".
constexpr std::string_view kMarkedBytes = "?>/*";

// The end tests: prompts, item headers, the mail's summary and its menu.
bool endsRecord(sv line, uint32_t found) {
  static constexpr std::array<sv, 4> kBegins = {"?", " ?", ">>>", "From: File "};
  static constexpr std::array<sv, 4> kMenuBegins = {"Create   ", "Answer   ", "Delete   ", "Help     "};
  for (sv s : kBegins)
    if (line.starts_with(s)) return true;
  if (found & kEndText) return true;
  if ((found & kPrintsRequested) && Holds(line, "indicates user print cancellation")) return true;
  for (sv s : kMenuBegins)
    if (line.starts_with(s)) return true;
  return false;
}

class Dialmail final : public LineFilter {
 public:
  void afterCleaning(FilterFrame& f) override { f.iJustLabelled = 0; }

  void onLine(FilterFrame& f) override {
    const std::size_t *first = nullptr, *last = nullptr;
    std::size_t base = 0;
    const bool listed = f.markPlaces(first, last, base);
    const DialogLine l(f.gsLine, listed, first, last, base);
    const sv line = l.text;

    fsc.beforeRecord(f, l);

    // Any line holding "Record -" opens a record: the label takes its place, with no
    // blank line before or after it.
    const uint32_t found = findTexts(line, listed, first, last, base);
    if (found & kRecordDash) f.openRecord({.blanksBefore = 0, .blankAfter = false});

    if (endsRecord(line, found)) f.iInRecord = 0;

    // The print's lines as they stand, blank ones too.
    if (f.iInRecord == -1) {
      if (f.iJustLabelled == -1)
        f.iJustLabelled = 0;
      else
        f.writeText(line);
    }

    fsc.afterRecord(f, l);
  }

  int16_t fscLines() const override { return fsc.iFscLines; }

 private:
  DialogFsc fsc{DialogFsc::LogoffWords::AtStart};
};

}  // namespace

JobResult FilterDialmail(JobState& job, JobProgress& progress, const FilterInput& input) {
  Dialmail filter;
  return RunLineFilter(job, progress, input, FilterInfo{.title = kDialmailTitle,
                                                           .makesFsc = true,
                                                           .countingTitle = kDialmailCountingTitle,
                                                           .markedBytes = kMarkedBytes,
                                                           .marksCapitals = true}, filter);
}

}  // namespace zv
