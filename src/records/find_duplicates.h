// Find Duplicates: the same work retrieved from several databases, kept once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/dispatcher.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr int32_t kFindDuplicates = 9620;
inline constexpr std::string_view kDedupTitle = "Finding Duplicates";

// What the job found, for the front end to show.
struct DedupSummary {
  int32_t records = 0;  // read from all files
  int32_t groups = 0;   // groups of two or more records of one work
  int32_t removed = 0;  // records left out of the output: all but the first of each group
};

// What a front end gathers: the record files (as Export Records takes them), the
// record file to write, and the report (none when empty). Outputs are replaced.
struct DedupParams {
  std::vector<std::string> inputs;
  std::string output;
  std::string report;
  DedupSummary* summary = nullptr;  // filled when given
};

// Reads every record of the files in the order given, groups the records of one work
// (GroupDuplicates), and writes to `output` every record but the later ones of each
// group, in order, labels as they stood (Renumber closes the gaps); the report lists
// each group with its records' files, labels and titles, and why they matched.
// result.records is the count written. Refused: an input is missing, empty or has no
// label; an output is an input, or the output and the report are one file. Outputs
// are removed on interrupt and failure; the interrupt is looked at after every
// record, and now and then while records are compared.
JobResult FindDuplicates(JobState& job, JobProgress& progress, const DedupParams& params);

// The command table's handler: FindDuplicates on the context's DedupParams.
JobResult FindDuplicatesCommand(CommandContext& context);

}  // namespace zv
