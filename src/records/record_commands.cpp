// index, keep and order as commands: parameters in, the frame's jobs, a result out.
#include "records/record_commands.h"

#include "core/index_rec.h"
#include "records/build_index.h"
#include "records/record_file.h"
#include "records/record_writers.h"

namespace zv {

namespace {

JobResult noCommand() {
  JobResult none;
  none.outcome = JobOutcome::NoCommand;
  return none;
}

}  // namespace

void MarkForKeeping(const std::string& indexFile, int32_t glRecCount, std::span<const int32_t> records,
                    const std::string& keepFile) {
  std::vector<bool> wanted(static_cast<std::size_t>(std::max(glRecCount, 0)) + 1, false);
  for (int32_t k : records)
    if (k >= 1 && k <= glRecCount) wanted[static_cast<std::size_t>(k)] = true;
  ForEachIndexRec(indexFile, [&](int32_t k, IndexRec& rec) {
    const bool keep = k <= glRecCount && wanted[static_cast<std::size_t>(k)];
    IndexRec marked = rec;
    marked.keepFlag = keep ? 1 : 0;
    marked.setKeepFile(keep ? keepFile : "");
    if (marked.keepFlag == rec.keepFlag && marked.keepFile == rec.keepFile) return false;
    rec = marked;
    return true;
  });
}

std::vector<int32_t> OrderPuttingFirst(std::span<const int32_t> first, int32_t count, int32_t& twice) {
  std::vector<int32_t> glOrder(static_cast<std::size_t>(count) + 2, 0);
  std::vector<bool> placed(static_cast<std::size_t>(count) + 1, false);
  std::size_t p = 1;
  for (int32_t k : first) {
    if (placed.at(static_cast<std::size_t>(k))) {
      twice = k;
      return {};
    }
    placed[static_cast<std::size_t>(k)] = true;
    glOrder[p++] = k;
  }
  for (int32_t k = 1; k <= count; ++k)
    if (!placed[static_cast<std::size_t>(k)]) glOrder[p++] = k;
  return glOrder;
}

JobResult IndexRecordFileCommand(CommandContext& context) {
  const RecordFileInput* input = context.get<RecordFileInput>();
  if (input == nullptr) return noCommand();
  context.job.gsProFile = input->proFile;
  context.job.gsIndexFile = input->indexFile;
  return BuildIndex(context.job, context.progress);
}

JobResult KeepRecordsCommand(CommandContext& context) {
  const KeepInput* input = context.get<KeepInput>();
  if (input == nullptr) return noCommand();
  const std::string& indexFile = input->file.indexFile;
  JobResult result = RunJob(context.job, context.progress, [&](Job&, JobResult&) {
    MarkForKeeping(indexFile, input->glRecCount, input->records, input->keepFile);
    return JobOutcome::Done;
  });
  if (result.done()) result = WriteKeptRecords(context.job, context.progress, {input->file.proFile, indexFile, input->glRecCount});
  if (!result.done()) {
    try {
      ClearAllMarks(indexFile);
    } catch (const std::exception&) {
      // The first failure is the one reported.
    }
  }
  return result;
}

JobResult OrderRecordsCommand(CommandContext& context) {
  const OrderInput* input = context.get<OrderInput>();
  if (input == nullptr) return noCommand();
  return WriteOrder(context.job, context.progress,
                    {input->file.proFile, input->file.indexFile, input->ordFile, input->glOrder, input->glRecCount});
}

}  // namespace zv
