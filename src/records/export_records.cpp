// Export Records: one pass over the record file, each record read into its fields and
// written in the chosen form.
#include "records/export_records.h"

#include <memory>

#include "core/files.h"
#include "core/input_file.h"
#include "core/text_out.h"
#include "records/citation.h"
#include "records/record_fields.h"
#include "records/record_input.h"
#include "records/record_scanner.h"

namespace zv {

namespace {

// Written on in pieces small enough to stay in the cache.
constexpr std::size_t kFlushAt = 1 << 16;

}  // namespace

JobResult ExportRecords(JobState& job, JobProgress& progress, const ExportParams& params) {
  return RunJob(job, progress, [&](Job& frame, JobResult& result) -> JobOutcome {
    RecordInput input;
    Message refusal;
    if (!ChooseRecordInput(job, params.input, input, refusal)) {
      result.message = refusal;
      return JobOutcome::Refused;
    }
    if (SameFile(params.output, input.pro) || (!input.index.empty() && SameFile(params.output, input.index))) {
      result.message = Message{std::string(kProInputTitle), std::string(kInputIsOutputText)};
      return JobOutcome::Refused;
    }
    const bool byIndex = !input.index.empty();
    std::unique_ptr<RecordScanner> scanner =
        byIndex ? std::make_unique<RecordScanner>(input.pro, input.index) : std::make_unique<RecordScanner>(input.pro);
    // Through an index the bar follows the records. Reading by labels it follows the
    // lines, against a total estimated from the bytes read so far: counting the
    // lines first would cost a pass over the file, as much as a sixth of the export.
    frame.start(result, kExportTitle, scanner->fileSize(), 0, scanner->indexRecords());

    frame.outputs.add(params.output);
    TextOut out(params.output);
    std::unique_ptr<ExportWriter> writer = MakeExportWriter(params.format);
    std::string buffer;
    buffer.reserve(kFlushAt + (kFlushAt >> 2));
    writer->begin(buffer);

    RecordText record;
    RecordFields fields;
    Citation citation;
    std::string number;
    while (scanner->next(record)) {
      if (record.label.empty() && !byIndex) {
        // Only a file with no label at all has a record without one.
        result.message = NotARecordFileMessage();
        return JobOutcome::Refused;
      }
      std::string_view label = LabelNumber(record.label);
      if (label.empty()) {
        number = std::to_string(record.index);
        label = number;
      }
      ReadRecordFields(record.lines, fields);
      MakeCitation(label, fields, record.lines, citation);
      writer->record(citation, buffer);
      if (buffer.size() >= kFlushAt) {
        out.raw(buffer);
        buffer.clear();
      }
      ++result.records;
      frame.progress.recordDone(result.records);
      if (byIndex ? frame.interrupted() : frame.lineDone(scanner->linesRead(), scanner->estimatedLines()))
        return JobOutcome::Interrupted;
    }
    if (result.records == 0) {
      result.message = NotARecordFileMessage();
      return JobOutcome::Refused;
    }
    writer->end(buffer);
    out.raw(buffer);
    out.close();
    result.lines = scanner->linesRead();
    if (!byIndex) frame.progress.lineDone(result.lines, result.lines);
    frame.finish(result);
    return JobOutcome::Done;
  });
}

JobResult ExportRecordsCommand(CommandContext& context) {
  const ExportParams* params = context.get<ExportParams>();
  if (params == nullptr) {
    JobResult none;
    none.outcome = JobOutcome::NoCommand;
    return none;
  }
  return ExportRecords(context.job, context.progress, *params);
}

}  // namespace zv
