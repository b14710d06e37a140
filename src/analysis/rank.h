// modRank: records ordered by the weights of the terms they hold, into a .RNK and a .TBL.
#pragma once

#include <array>
#include <ctime>
#include <optional>
#include <string>

#include "analysis/select_record_file.h"
#include "core/dispatcher.h"
#include "core/job.h"

namespace zv {

inline constexpr int32_t kOpenRank = 1800;
inline constexpr int32_t kRunRank = 1801;
inline constexpr int kRankSlots = 6;

struct RankParams {
  RecordFileChoice file;
  std::array<std::string, kRankSlots> terms;    // txtRankTerm1..6 as typed
  std::array<std::string, kRankSlots> weights;  // txtRankWt1..6 as typed: digits or empty
  bool large = false;                           // no size limits (see Rank)
  std::optional<std::time_t> reportTime;        // the .TBL's date line; nothing: now
};

// The key rules of a term box: a blank, or a printable character other than a letter,
// a digit, "-" and "*", is refused with the message returned ("Rank Term Error").
// Enter is the form's own (ShowTabWarning).
std::optional<Message> RankTermKeyRefusal(char key);
// The key rule of a weight box: only "0" to "9" pass ("Term Weight Error").
std::optional<Message> RankWeightKeyRefusal(char key);
// Begin's checks: the first term and the first weight filled.
std::optional<Message> RankBeginRefusal(const RankParams& params);

// Rank (command 1801).
//  - Weighing: each record read through the index from its stored startByte (so
//    record 1 from a BuildIndex index is read without the label's first letter), its
//    lines upper-cased; every word of a line that meets a term (a plain search first)
//    adds the term's weight to the record's total. The interrupt is looked at once
//    per record; nothing is written before the sort.
//  - Sorting: the gap-halving exchange sort by falling total, whose exchanges settle
//    ties; with `large`, a stable sort (ties in file order).
//  - Writing: the records in rank order to BASE.RNK, empty lines around labels as
//    the rules of the .RNK lay them, and BASE.TBL, the table of terms and order.
// Limits without `large`: a weight or a total over 32,767, a record of over 32,767
// lines, an exchange at a position above 32,767 are the overflow error. An error in
// the writing leaves what was written; before it, nothing is left.
JobResult Rank(JobState& job, JobProgress& progress, const RankParams& params);

JobResult OpenRankCommand(CommandContext& context);
JobResult RunRankCommand(CommandContext& context);

}  // namespace zv
