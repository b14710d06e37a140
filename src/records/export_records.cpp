// Export Records: one pass over the record file. The job's thread reads the records
// and writes the output in order; the reading of fields and the writing of each
// record's text, the bulk of the work, go to workers, a batch of records at a time.
#include "records/export_records.h"

#include <memory>
#include <vector>

#include "core/files.h"
#include "core/input_file.h"
#include "core/text_out.h"
#include "records/batch_workers.h"
#include "records/citation.h"
#include "records/record_fields.h"
#include "records/record_input.h"
#include "records/record_scanner.h"

namespace zv {

namespace {

// A batch of records and, once a worker is through with it, their text.
struct TextBatch : RecordBatch {
  std::string out;
};

// What each worker keeps from batch to batch.
struct WorkerState {
  std::unique_ptr<ExportWriter> writer;
  RecordFields fields;
  Citation citation;
  std::vector<std::string_view> views;
};

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
    std::string head;
    MakeExportWriter(params.format)->begin(head);
    out.raw(head);

    std::vector<WorkerState> state(BatchWorkers<TextBatch>::Cores());
    for (WorkerState& w : state) w.writer = MakeExportWriter(params.format);
    BatchWorkers<TextBatch> workers(static_cast<unsigned>(state.size()), [&state](TextBatch& b, unsigned worker) {
      WorkerState& w = state[worker];
      for (std::size_t r = 0; r < b.records.size(); ++r) {
        const std::span<const std::string_view> lines = b.linesOf(r, w.views);
        ReadRecordFields(lines, w.fields);
        MakeCitation(b.records[r].label, w.fields, lines, w.citation);
        w.writer->record(w.citation, b.first && r == 0, b.out);
      }
    });
    // Batches written out are used again, so that their buffers keep their size and
    // the memory is not handed back and faulted in anew for every batch.
    std::vector<std::unique_ptr<TextBatch>> spare;
    auto fresh = [&spare] {
      if (spare.empty()) return std::make_unique<TextBatch>();
      std::unique_ptr<TextBatch> b = std::move(spare.back());
      spare.pop_back();
      b->first = false;
      b->bytes.clear();
      b->lines.clear();
      b->records.clear();
      b->out.clear();
      return b;
    };
    auto writeReady = [&](std::size_t keep) {
      while (workers.inHand() > keep) {
        std::unique_ptr<TextBatch> done = workers.next();
        out.raw(done->out);
        spare.push_back(std::move(done));
      }
    };
    UniqueLabels unique;
    auto batch = fresh();
    batch->first = true;
    RecordText record;
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
      batch->add(unique(label), record.lines);
      ++result.records;
      frame.progress.recordDone(result.records);
      if (byIndex ? frame.interrupted() : frame.lineDone(scanner->linesRead(), scanner->estimatedLines()))
        return JobOutcome::Interrupted;
      if (batch->bytes.size() >= kBatchBytes) {
        workers.submit(std::move(batch));
        batch = fresh();
        writeReady(workers.threads() * kBatchesPerWorker);
      }
    }
    if (result.records == 0) {
      result.message = NotARecordFileMessage();
      return JobOutcome::Refused;
    }
    if (!batch->records.empty()) workers.submit(std::move(batch));
    writeReady(0);
    std::string tail;
    MakeExportWriter(params.format)->end(tail, false);
    out.raw(tail);
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
