// The checks of a record file named to a tool that reads every record in one pass.
#pragma once

#include <string>

#include "core/job.h"
#include "core/job_state.h"

namespace zv {

// Where the records are: the record file, and the index to read it by (empty: by its
// labels).
struct RecordInput {
  std::string pro;
  std::string index;
};

// `name` must be there and not empty. A name that holds ".NDX" is an index, used as it
// stands with the .PRO of its base name in its own folder (the sifter's rule and
// messages); any other file is read by its labels, so a keep file or a .QRY serves as
// well as a .PRO. On refusal fills `refusal` with the message to show.
[[nodiscard]] bool ChooseRecordInput(JobState& job, const std::string& name, RecordInput& input, Message& refusal);

// The refusal of a file in which no record label was found.
Message NotARecordFileMessage();

}  // namespace zv
