// modDiction: the words of a text file by frequency, into a .DIC.
#pragma once

#include <ctime>
#include <optional>
#include <string>

#include "core/dispatcher.h"
#include "core/job.h"

namespace zv {

inline constexpr int32_t kDiction = 2100;
inline constexpr std::size_t kDicWordLen = 35;

// The open dialog's filter.
inline constexpr std::string_view kDictionDialogFilter =
    "All Files|*.*|.LOG Files|*.log|.CAP Files|*.cap|.REF Files|*.ref|.PRO Files|*.pro|.FSC Files|*.fsc|"
    ".KEP Files|*.kep|.ORD Files|*.ord|.QRY Files|*.qry|.RNK Files|*.rnk|.TBL Files|*.tbl|.SRT Files|*.srt|"
    ".FMT Files|*.fmt|.BRK Files|*.brk";

struct DictionParams {
  std::string gsInFile;                   // any text file
  std::string gsOmitFile;                 // OMIT.LST, used when it exists
  bool large = false;                     // no size limits (see Diction)
  std::optional<std::time_t> reportTime;  // the .DIC's date line; nothing: now
};

// gsDicFile: the input less its extension, and ".DIC", beside the input.
std::string DicFileOf(const std::string& inFile);
// gsOmitFile: OMIT.LST in the program's folder.
std::string OmitFileIn(const std::string& appPath);
// "No Omit List", when the omit list is not there; the job then runs without one.
std::optional<Message> OmitListMissing(const std::string& omitFile);

// Diction (command 2100).
//  - The omit list, when it exists: one entry a line as it stands, at most 500; more,
//    or an empty file, is error 9.
//  - Counting, line by line: "--" becomes a blank, the line is trimmed; a line holding
//    "Record - " anywhere, or empty, is passed over. The words (cut at the delimiters
//    with the question mark; an empty one is no word) are lowered; those in the omit
//    list are left out; the rest are counted in a table searched in order, a new word
//    stored cut to 35 characters. The interrupt is looked at after every line.
//  - Ordering: by falling count with the gap-halving exchange sort whose exchanges
//    settle ties; each group of one count alphabetically by the same method. With
//    `large`: stable sorts, hashed lookups, no limits.
//  - Writing BASE.DIC: its five head lines, then group by group, highest count first;
//    a group is written when a lower count follows it, and the last group only when
//    its count is 1.
// `records` is the number of unique words, `lines` the lines read. Without `large`:
// over 32,767 lines, a count over 32,767 are the overflow error; over 10,000 unique
// words error 9. An input that the .DIC would replace is refused.
JobResult Diction(JobState& job, JobProgress& progress, const DictionParams& params);

JobResult DictionCommand(CommandContext& context);

}  // namespace zv
