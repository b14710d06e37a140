// Export Records: one pass over the record file. The job's thread reads the file and
// writes the output in order; finding the records, reading their fields and writing
// their text, the bulk of the work, go to workers, a block of records at a time.
#include "records/export_records.h"

#include <algorithm>
#include <climits>
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

// What each worker keeps from batch to batch.
struct WorkerState {
  std::unique_ptr<ExportWriter> writer;
  RecordFields fields;
  Citation citation;
  std::vector<std::string_view> views;

  void render(std::string_view id, std::span<const std::string_view> lines, bool first, std::string& out) {
    ReadRecordFields(lines, fields);
    MakeCitation(id, fields, lines, citation);
    writer->record(citation, first, out);
  }
};

// Through an index: records copied out of the scanner a batch at a time, and their text.
struct TextBatch : RecordBatch {
  std::string out;
};

// By labels: a block of whole records as read from the file; a worker finds its
// records and writes their text, each with its label's number as its identifier.
// The job's thread then settles the identifiers in order: where one differs (a label
// that came before, or one without a number) the block is written again with `ids`.
struct RecordBlock {
  std::string bytes;
  bool first = false;  // the file's first block
  struct Record {
    std::string_view label;  // into bytes
    int32_t lines = 0;       // its label line too
  };
  std::vector<Record> records;
  std::string out;
  std::vector<std::string> ids;  // when not empty: the identifiers to write

  void render(WorkerState& w) {
    out.clear();
    records.clear();
    BlockRecords split(bytes);
    RecordText r;
    int32_t linesBefore = 0;
    while (split.next(r)) {
      const std::size_t k = records.size();
      records.push_back({r.label, split.lines() - linesBefore});
      linesBefore = split.lines();
      const std::string_view id = ids.empty() ? LabelNumber(r.label) : std::string_view(ids[k]);
      w.render(id, r.lines, first && k == 0, out);
    }
  }
};

constexpr std::size_t kBlockBytes = 1 << 19;

// Starts the bar and opens the output with the format's head.
void begin(Job& frame, JobResult& result, const ExportParams& params, int64_t fileSize, int32_t records, TextOut& out) {
  frame.start(result, kExportTitle, fileSize, 0, records);
  frame.outputs.add(params.output);
  out.open(params.output);
  std::string head;
  MakeExportWriter(params.format)->begin(head);
  out.raw(head);
}

JobOutcome exportByIndex(Job& frame, JobResult& result, const RecordInput& input, const ExportParams& params,
                         TextOut& out) {
  RecordScanner scanner(input.pro, input.index);
  begin(frame, result, params, scanner.fileSize(), scanner.indexRecords(), out);
  std::vector<WorkerState> state(BatchWorkers<TextBatch>::Cores());
  for (WorkerState& w : state) w.writer = MakeExportWriter(params.format);
  BatchWorkers<TextBatch> workers(static_cast<unsigned>(state.size()), [&state](TextBatch& b, unsigned worker) {
    WorkerState& w = state[worker];
    for (std::size_t r = 0; r < b.records.size(); ++r)
      w.render(b.records[r].label, b.linesOf(r, w.views), b.first && r == 0, b.out);
  });
  auto writeReady = [&](std::size_t keep) {
    while (workers.inHand() > keep) out.raw(workers.next()->out);
  };
  UniqueLabels unique;
  auto batch = std::make_unique<TextBatch>();
  batch->first = true;
  RecordText record;
  std::string number;
  while (scanner.next(record)) {
    std::string_view label = LabelNumber(record.label);
    if (label.empty()) {
      number = std::to_string(record.index);
      label = number;
    }
    batch->add(unique(label), record.lines);
    ++result.records;
    frame.progress.recordDone(result.records);
    if (frame.interrupted()) return JobOutcome::Interrupted;
    if (batch->bytes.size() >= kBatchBytes) {
      workers.submit(std::move(batch));
      batch = std::make_unique<TextBatch>();
      writeReady(workers.threads() * kBatchesPerWorker);
    }
  }
  if (!batch->records.empty()) workers.submit(std::move(batch));
  writeReady(0);
  result.lines = scanner.linesRead();
  return JobOutcome::Done;
}

JobOutcome exportByLabels(Job& frame, JobResult& result, const RecordInput& input, const ExportParams& params,
                          TextOut& out) {
  LabelBlockReader reader(input.pro);
  // The bar follows the lines, against a total estimated from the bytes read so far:
  // counting the lines first would cost a pass over the file.
  begin(frame, result, params, reader.fileSize(), 0, out);
  // One state for each worker, and the last for this thread, which writes a block
  // again in the rare case that its identifiers change.
  std::vector<WorkerState> state(BatchWorkers<RecordBlock>::Cores() + 1);
  for (WorkerState& w : state) w.writer = MakeExportWriter(params.format);
  BatchWorkers<RecordBlock> workers(static_cast<unsigned>(state.size() - 1),
                                    [&state](RecordBlock& b, unsigned worker) { b.render(state[worker]); });

  UniqueLabels unique;
  WorkerState& mine = state.back();
  std::string number;
  int64_t lines = 0;
  int64_t bytesDone = 0;
  // Blocks written out are used again, so that their buffers keep their size.
  std::vector<std::unique_ptr<RecordBlock>> spare;
  // Settles the identifiers of a block done by a worker, reports its records and
  // writes its text; Refused or Interrupted stop the job.
  auto settle = [&](RecordBlock& b) -> JobOutcome {
    bytesDone += static_cast<int64_t>(b.bytes.size());
    int64_t linesAfter = lines;
    for (const RecordBlock::Record& r : b.records) linesAfter += r.lines;
    const int64_t estimate = bytesDone >= reader.fileSize() ? linesAfter : linesAfter * reader.fileSize() / std::max<int64_t>(bytesDone, 1);
    bool again = false;
    for (std::size_t k = 0; k < b.records.size(); ++k) {
      const RecordBlock::Record& r = b.records[k];
      if (r.label.empty()) {  // only a file with no label at all has a record without one
        result.message = NotARecordFileMessage();
        return JobOutcome::Refused;
      }
      const std::string_view given = LabelNumber(r.label);
      std::string_view label = given;
      if (label.empty()) {
        number = std::to_string(result.records + 1);
        label = number;
      }
      const std::string_view id = unique(label);
      if (!again && id != given) {
        again = true;
        b.ids.clear();
        for (std::size_t e = 0; e < k; ++e) b.ids.emplace_back(LabelNumber(b.records[e].label));
      }
      if (again) b.ids.emplace_back(id);
      ++result.records;
      lines += r.lines;
      frame.progress.recordDone(result.records);
      if (frame.lineDone(static_cast<int32_t>(std::min<int64_t>(lines, INT32_MAX)),
                         static_cast<int32_t>(std::min<int64_t>(estimate, INT32_MAX))))
        return JobOutcome::Interrupted;
    }
    if (again) b.render(mine);
    out.raw(b.out);
    return JobOutcome::Done;
  };

  bool first = true;
  for (;;) {
    std::unique_ptr<RecordBlock> b;
    if (!spare.empty()) {
      b = std::move(spare.back());
      spare.pop_back();
    } else {
      b = std::make_unique<RecordBlock>();
    }
    if (!reader.next(b->bytes, kBlockBytes)) break;
    b->first = first;
    b->ids.clear();
    first = false;
    workers.submit(std::move(b));
    while (workers.inHand() > workers.threads() * kBatchesPerWorker) {
      std::unique_ptr<RecordBlock> done = workers.next();
      if (const JobOutcome o = settle(*done); o != JobOutcome::Done) return o;
      spare.push_back(std::move(done));
    }
  }
  while (workers.inHand() > 0) {
    std::unique_ptr<RecordBlock> done = workers.next();
    if (const JobOutcome o = settle(*done); o != JobOutcome::Done) return o;
  }
  result.lines = static_cast<int32_t>(std::min<int64_t>(lines, INT32_MAX));
  frame.progress.lineDone(result.lines, result.lines);
  return JobOutcome::Done;
}

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
    TextOut out;
    const JobOutcome outcome = input.index.empty() ? exportByLabels(frame, result, input, params, out)
                                                   : exportByIndex(frame, result, input, params, out);
    if (outcome != JobOutcome::Done) return outcome;
    if (result.records == 0) {
      result.message = NotARecordFileMessage();
      return JobOutcome::Refused;
    }
    std::string tail;
    MakeExportWriter(params.format)->end(tail, false);
    out.raw(tail);
    out.close();
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
