// modSort: records alphabetized on a field tagged at the left margin, into a .SRT.
#pragma once

#include <optional>
#include <string>

#include "analysis/select_record_file.h"
#include "core/dispatcher.h"
#include "core/job.h"

namespace zv {

inline constexpr int32_t kSort = 1900;
inline constexpr std::size_t kSortKeyLen = 75;

struct SortParams {
  RecordFileChoice file;
  std::string gsTag;   // as typed: blanks and hyphens are part of it
  bool large = false;  // no size limits (see SortRecords)
};

// Begin's check: an empty tag gives no field to sort on.
std::optional<Message> SortBeginRefusal(const std::string& tag);

// The key a line gives, when it begins with `tag` (compared without regard to case):
// the rest of the line, cut to 75 characters, "^" and "|" made blanks, trimmed of
// blanks. Nothing when the line does not begin with the tag.
std::optional<std::string> SortKeyOf(std::string_view line, std::string_view tag);

// Sort (command 1900 with SortParams; with a RecordFileName, 1900 is the opening).
//  - Reading: each record through the index from its stored startByte (record 1 of a
//    BuildIndex index without the label's first letter); the last tagged line of a
//    record gives its key. A record without one keeps a key of 75 code-0 characters,
//    so it sorts after a tagged line without data and before any data. The interrupt
//    is looked at after every line.
//  - Sorting: ascending by character code, keys compared without trailing blanks, by
//    the gap-halving exchange sort whose exchanges settle equal keys; with `large`, a
//    stable sort (equal keys in file order).
//  - Writing: BASE.SRT, the records whole in that order, record 1 followed by one
//    extra empty line, one empty line closing the file. An error here leaves what was
//    written.
// Without `large`, over 32,767 records or a record of over 32,767 lines is the
// overflow error.
JobResult SortRecords(JobState& job, JobProgress& progress, const SortParams& params);

JobResult SortCommand(CommandContext& context);

}  // namespace zv
