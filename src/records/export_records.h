// Export Records: every record of a record file as a reference, in RIS, CSL JSON or CSV.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/dispatcher.h"
#include "core/job.h"
#include "core/job_state.h"
#include "records/export_writers.h"

namespace zv {

inline constexpr int32_t kExportRecords = 9610;
inline constexpr std::string_view kExportTitle = "Exporting Records";

// What a front end gathers: the record file (a .PRO, any file of records such as a
// keep file or a .QRY, or a .NDX, used as it stands with the .PRO of its name in its
// folder), the format and the file to write (replaced if it exists).
struct ExportParams {
  std::string input;
  ExportFormat format = ExportFormat::Ris;
  std::string output;
};

// One output record for every record of the input, in order, each with its label's
// number as its identifier; a record whose fields are not found goes out as a note of
// its whole text. result.records is the count written. Refused: the input is missing,
// empty, has no record label, or is the output; the index of a chosen .NDX or its
// .PRO is missing. The output is removed on interrupt and failure. The interrupt is
// looked at after every record.
JobResult ExportRecords(JobState& job, JobProgress& progress, const ExportParams& params);

// The command table's handler: ExportRecords on the context's ExportParams.
JobResult ExportRecordsCommand(CommandContext& context);

}  // namespace zv
