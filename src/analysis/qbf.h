// modQBF: Query by Form, the nine-term three-nest selection of records into a .QRY.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "analysis/select_record_file.h"
#include "core/dispatcher.h"
#include "core/job.h"
#include "core/job_state.h"

namespace zv {

inline constexpr int32_t kOpenQbf = 1700;
inline constexpr int32_t kRunQbf = 1701;

// txt11, txt12, txt13 (the first nest), txt21..txt23 (AND), txt31..txt33 (NOT).
using QbfBoxes = std::array<std::string, 9>;

// The opening of a tool that reads a record file: the name chosen in the open dialog
// or on the command line. Commands 1700, 1800 and 1900 take it (SelectRecordFile and
// the index, with the tool's requirement).
struct RecordFileName {
  std::string name;
};

// What the query runs on (command 1701).
struct QbfParams {
  RecordFileChoice file;  // as the opening left it
  QbfBoxes boxes;         // the nine boxes' texts, untrimmed
  std::string queryFile;  // gsQueryFile
};

// The implied search statement of the boxes, rebuilt at every key. Each text is
// trimmed of blanks; gsNestMask has "1" for each filled term ("110-100-100").
struct SearchStatement {
  std::string gsNestMask;
  std::string gsSearchStatement;
};
SearchStatement ImpliedSearchStatement(const QbfBoxes& boxes);

// "The first term of the first / nest cannot be blank." under "Key Word Error": when a
// box but txt11 gets the focus, or Submit is pressed, with txt11 exactly empty.
Message KeyWordError();

// The checks of the .QRY name chosen at Submit: not the input (compared exactly) and
// not an existing file. The message to show, or nothing when the name is fine.
std::optional<Message> RefuseQueryFile(const std::string& name, const std::string& gsProFile);

// "Zero Hits": no record met the form; the .QRY is removed.
Message ZeroHitsMessage(const std::string& queryFile);

// The opening of QBF, Rank and Sort as a job: SelectRecordFile with `requirement`,
// then BuildIndex for a record file. Refused with the refusal (the caller goes back
// to its open dialog), or with "File Format Error" when the record file has fewer
// than two labels (the caller leaves the tool); Interrupted when indexing was
// cancelled. On Done the job state holds the four names and `records` the count.
JobResult OpenRecordFile(JobState& job, JobProgress& progress, const RecordFileName& params,
                         std::string_view requirement);

// The query (command 1701). Records are read through the index and tested line by
// line; each record that meets the form is copied whole to the .QRY, in file order,
// record 1 followed by one extra empty line. `records` is the number of hits; none is
// ZeroRecords with ZeroHitsMessage and no .QRY. The interrupt is looked at once per
// record; an interrupted query leaves no .QRY. A record of over 32,767 lines, or a
// line of over 32,767 characters that a term's plain search finds, is error 6.
JobResult RunQuery(JobState& job, JobProgress& progress, const QbfParams& params);

// The command table's handlers of 1700 and 1701.
JobResult OpenQbfCommand(CommandContext& context);
JobResult RunQbfCommand(CommandContext& context);

}  // namespace zv
