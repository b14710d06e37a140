// What the DIALOG filters share: the label tests, the end of a record, the .FSC blocks.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/filter_frame.h"
#include "core/job.h"

namespace zv {

// The searches one line needs, made once: most lines hold none of these bytes, and
// then the tests that look for them are skipped.
struct DialogLine {
  // `mayHoldMarks`: false when the frame found none of kDialogMarkedBytes in the line,
  // which then needs no count.
  explicit DialogLine(std::string_view line, bool mayHoldMarks = true) : text(line) {
    if (mayHoldMarks) count();
  }
  // The frame's gsLine, counted at the places where the frame found the filter's
  // marked bytes as it read (they must include kDialogMarkedBytes; other bytes listed
  // are passed over), with no pass over the line of its own where it has them.
  // (The view is taken field by field: the frame has just stored the two halves of
  // gsLine one by one, and one wide load of both waits for those stores to land.)
  explicit DialogLine(const FilterFrame& f) : text(f.gsLine.data(), f.gsLine.size()) {
    const std::size_t *first = nullptr, *last = nullptr;
    std::size_t base = 0;
    if (!f.markPlaces(first, last, base))
      count();
    else if (first != last)
      countPlaces(first, last, base);
  }
  // The same from places the caller took from the frame (`listed` false: it had none).
  DialogLine(std::string_view line, bool listed, const std::size_t* first, const std::size_t* last, std::size_t base)
      : text(line) {
    if (!listed)
      count();
    else if (first != last)
      countPlaces(first, last, base);
  }

  std::string_view text;
  uint32_t queries = 0;                      // "?"
  uint32_t slashes = 0;                      // "/"
  std::size_t firstQuery = std::string_view::npos;  // column - 1 of the first "?"
  bool logoffLine = false;                   // holds "Logoff:"
  bool errorLine = false;                    // holds ">>>"

 private:
  void count();
  void countPlaces(const std::size_t* first, const std::size_t* last, std::size_t base);
};

// The bytes DialogLine counts: the DIALOG filters' markedBytes.
inline constexpr std::string_view kDialogMarkedBytes = "?>L/";

// How far a line got in the eleven label tests.
enum class LabelTest {
  NotALabel,     // failed one of tests 1 to 9 (or has not exactly two "/")
  BadGapOrFormat,  // passed 1 to 9, failed 10 (the gap behind the item) or 11 (the format)
  Label,         // passed all eleven
};

struct DialogLabel {
  LabelTest test = LabelTest::NotALabel;
  std::string_view format;  // sFormat, the type between the two "/" (tests 1 to 9 passed)
};

// The label test: a line of the form blank, set, "/", format, "/", item, optionally
// five blanks and a tail.
DialogLabel TestDialogLabelOfTwoSlashes(const DialogLine& line);
inline DialogLabel TestDialogLabel(const DialogLine& line) {
  // Most lines fail here, and make no call.
  return line.slashes == 2 ? TestDialogLabelOfTwoSlashes(line) : DialogLabel{};
}

// A prompt, or a line that is nothing but a logoff word or ">>>". "OFF" is not among
// them: its comparison never succeeded, and a line of OFF ends nothing.
bool DialogEndsRecordTested(std::string_view line);
inline bool DialogEndsRecord(std::string_view line) {
  // The prompts; then the words, each of which ends in "f", "d", "F", "D" or ">" (or
  // a blank behind it): most lines end otherwise, and make no call.
  if (line.empty()) return false;
  if (line[0] == '?' || (line[0] == ' ' && line.size() > 1 && line[1] == '?')) return true;
  const char last = line.back();
  return (last == ' ' || last == 'f' || last == 'd' || last == 'F' || last == 'D' || last == '>') &&
         DialogEndsRecordTested(line);
}

// The 16-bit counts of the DIALOG filters, as the reason line of their overflow names them.
inline constexpr std::string_view kSinceLabelLimit = "the lines of one record (iSinceLabel)";
inline constexpr std::string_view kFscLinesLimit = "the lines written to the .FSC (iFscLines)";

// The session's search strategy, copied to the .FSC: the blocks after begin, display
// sets and combined select commands, and the logoff block up to its "Logoff:" line.
class DialogFsc {
 public:
  // Where a logoff word must stand, on a line whose first "?" is in column 1 or 2,
  // to open the logoff block.
  enum class LogoffWords {
    Anywhere,  // DIALOG sessions: "off" or "OFF" anywhere (and so "?s coffee" too)
    AtStart,   // DIALMAIL: the line must begin with the word, which such a line never
               // does, so the block never opens
  };
  explicit DialogFsc(LogoffWords where) : where_(where) {}

  // Before the record tests: a prompt closes the begin and sets blocks, the command
  // opens them again, an open block copies the line, and the logoff block opens or
  // ends (its "Logoff:" line is written with a blank line after it).
  void beforeRecord(FilterFrame& f, const DialogLine& line) {
    // A line without a "?", "Logoff:" or ">>>" changes no block, and only an open begin
    // or sets block copies it.
    if (line.queries == 0 && !line.logoffLine && !line.errorLine && iBeginBlock != -1 && iSetsBlock != -1) return;
    beforeRecordTested(f, line);
  }
  // After the record tests: an open logoff block copies the line, but never ">>>".
  void afterRecord(FilterFrame& f, const DialogLine& line) {
    if (iLogoffBlock == -1 && !line.errorLine) copyLogoffLine(f, line);
  }

  // Text lines written; the .FSC is deleted at the end when there are none.
  int16_t iFscLines = 0;

 private:
  void beforeRecordTested(FilterFrame& f, const DialogLine& line);
  void copyLogoffLine(FilterFrame& f, const DialogLine& line);

  LogoffWords where_;
  int16_t iBeginBlock = 0;
  int16_t iSetsBlock = 0;
  int16_t iLogoffBlock = 0;
};

// The message of the filters of specified types when none of those types was found,
// whether or not the capture held other records. Its lines are joined by LF alone.
inline constexpr std::string_view kNoTypesText =
    "The filter has recognized no records\nof types you specified.  This can happen\nwhen no records of the "
    "specified types\nare present in the file, by choosing the\nwrong filter or with Dialog records\nretrieved by "
    "accession number.";

// The most types a job of specified types takes, and the longest type.
inline constexpr int kMaxTypes = 5;
inline constexpr std::size_t kMaxTypeLength = 10;

// The checks of the types a job of specified types is given, as its dialog makes
// them: 1 to 5 of them, none empty, none over ten characters.
inline constexpr std::string_view kTypeCountTitle = "Invalid Number of Types";
inline constexpr std::string_view kTypeCountText = "Valid number of types ranges from 1 to 5.";
inline constexpr std::string_view kNotAllFilledTitle = "Not All Types Filled Error";
inline constexpr std::string_view kTypeLeftBlankText =
    "One of the types has been left blank.  For this filtering to work properly, it is necessary to fill as many "
    "of the types as the number specified.";
// The dialog's field takes no more; the command line says so.
inline constexpr std::string_view kTypeTooLongTitle = "Type Length Error";
inline constexpr std::string_view kTypeTooLongText = "A Dialog online type has up to ten characters.";
[[nodiscard]] bool CheckTypes(const std::vector<std::string>& types, Message& message);

// An observer that also shows how many records of each wanted type were written (the
// "Records" column of the types dialogs). The filters of specified types tell any
// observer of this kind; others see only the record odometer.
class TypeProgress : public JobProgress {
 public:
  // Output or type `type` (1 to 5) now holds `count` records.
  virtual void typeRecordDone(int /*type*/, int32_t /*count*/) {}
};

}  // namespace zv
