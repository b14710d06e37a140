// Export Records: one pass over the record file. The job's thread reads the records
// and writes the output in order; the reading of fields and the writing of each
// record's text, the bulk of the work, go to workers, a batch of records at a time.
#include "records/export_records.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "core/files.h"
#include "core/input_file.h"
#include "core/text_out.h"
#include "records/citation.h"
#include "records/record_fields.h"
#include "records/record_input.h"
#include "records/record_scanner.h"

namespace zv {

namespace {

// A batch is closed at this many bytes of records; a few of them are in hand at once.
constexpr std::size_t kBatchBytes = 1 << 18;
constexpr std::size_t kBatchesPerWorker = 3;

// Records copied out of the scanner's buffer, and their text once a worker wrote it.
struct Batch {
  struct Record {
    std::size_t firstLine = 0, lineCount = 0;
    std::string label;  // the identifier, unique in the file
  };
  bool first = false;  // holds the file's first record
  std::string bytes;
  std::vector<std::pair<std::size_t, std::size_t>> lines;  // offset and length in bytes
  std::vector<Record> records;
  std::string out;
  std::exception_ptr error;
  bool done = false;
};

// The workers, and the batches in the order they are to be written.
class Workers {
 public:
  Workers(ExportFormat format, unsigned count) {
    for (unsigned i = 0; i < count; ++i) threads_.emplace_back([this, format] { work(format); });
  }
  ~Workers() {
    {
      std::lock_guard lock(mutex_);
      stop_ = true;
    }
    wake_.notify_all();
    for (std::thread& t : threads_) t.join();
  }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  std::size_t threads() const { return threads_.size(); }
  std::size_t inHand() const { return order_.size(); }

  void submit(std::unique_ptr<Batch> batch) {
    {
      std::lock_guard lock(mutex_);
      queue_.push_back(batch.get());
      order_.push_back(std::move(batch));
    }
    wake_.notify_one();
  }

  // The oldest batch once written (its worker's error thrown here), taken off the list.
  std::unique_ptr<Batch> next() {
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return order_.front()->done; });
    std::unique_ptr<Batch> b = std::move(order_.front());
    order_.pop_front();
    lock.unlock();
    if (b->error) std::rethrow_exception(b->error);
    return b;
  }

 private:
  void work(ExportFormat format) {
    std::unique_ptr<ExportWriter> writer = MakeExportWriter(format);
    RecordFields fields;
    Citation citation;
    std::vector<std::string_view> views;
    for (;;) {
      Batch* b = nullptr;
      {
        std::unique_lock lock(mutex_);
        wake_.wait(lock, [this] { return stop_ || !queue_.empty(); });
        if (stop_) return;
        b = queue_.front();
        queue_.pop_front();
      }
      try {
        for (std::size_t r = 0; r < b->records.size(); ++r) {
          const Batch::Record& rec = b->records[r];
          views.clear();
          for (std::size_t l = rec.firstLine; l < rec.firstLine + rec.lineCount; ++l)
            views.emplace_back(b->bytes.data() + b->lines[l].first, b->lines[l].second);
          ReadRecordFields(views, fields);
          MakeCitation(rec.label, fields, views, citation);
          writer->record(citation, b->first && r == 0, b->out);
        }
      } catch (...) {
        b->error = std::current_exception();
      }
      {
        std::lock_guard lock(mutex_);
        b->done = true;
      }
      done_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_, done_;
  std::deque<Batch*> queue_;                     // waiting for a worker
  std::deque<std::unique_ptr<Batch>> order_;     // in hand, in file order
  bool stop_ = false;
  std::vector<std::thread> threads_;
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

    Workers workers(params.format, std::max(1u, std::thread::hardware_concurrency()));
    auto writeReady = [&](std::size_t keep) {
      while (workers.inHand() > keep) out.raw(workers.next()->out);
    };
    UniqueLabels unique;
    std::unique_ptr<Batch> batch = std::make_unique<Batch>();
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
      Batch::Record& r = batch->records.emplace_back();
      r.label.assign(unique(label));
      r.firstLine = batch->lines.size();
      r.lineCount = record.lines.size();
      for (std::string_view line : record.lines) {
        batch->lines.emplace_back(batch->bytes.size(), line.size());
        batch->bytes.append(line);
      }
      ++result.records;
      frame.progress.recordDone(result.records);
      if (byIndex ? frame.interrupted() : frame.lineDone(scanner->linesRead(), scanner->estimatedLines()))
        return JobOutcome::Interrupted;
      if (batch->bytes.size() >= kBatchBytes) {
        workers.submit(std::move(batch));
        batch = std::make_unique<Batch>();
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
