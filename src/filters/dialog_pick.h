// DIALOG filter, specified types to one file: only the records printed in the formats named.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/input_file.h"
#include "core/job.h"
#include "core/job_state.h"
#include "filters/dialog_family.h"

namespace zv {

inline constexpr std::string_view kDialogPikTitle = "Specified Dialog Types to One File";

// What frmPikTypes (or the command line) gathers: the capture and the five type
// fields. Every field is compared, in order, the first equal one winning; an empty
// field matches nothing. The dialog hands over all five texts, also those of fields
// it hides, as it has always read them.
struct PikTypesParams {
  FilterInput input;
  std::array<std::string, kMaxTypes> types;
};

// Command 201 (200 is its dialog). Writes gsBaseName .PRO, .NDX and .FSC: the records
// of the wanted types under labels numbered by the kept records alone. The record
// odometer counts every label of the capture; a TypeProgress observer also sees the
// records of each type. No record of the types: ZeroRecords with kNoTypesText.
JobResult FilterDialogPik(JobState& job, JobProgress& progress, const PikTypesParams& params);

}  // namespace zv
