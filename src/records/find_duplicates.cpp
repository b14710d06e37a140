// Find Duplicates: keys of every record in one pass, the groups, then a second pass
// that writes the records kept and gathers the titles the report shows.
#include "records/find_duplicates.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <unordered_map>

#include "core/files.h"
#include "core/input_file.h"
#include "core/text_out.h"
#include "records/batch_workers.h"
#include "records/citation.h"
#include "records/duplicates.h"
#include "records/record_fields.h"
#include "records/record_input.h"
#include "records/record_scanner.h"
#include "records/work_keys.h"

namespace zv {

namespace {

std::unique_ptr<RecordScanner> scannerOf(const RecordInput& input) {
  return input.index.empty() ? std::make_unique<RecordScanner>(input.pro)
                             : std::make_unique<RecordScanner>(input.pro, input.index);
}

// A record of a group, as the report names it.
struct Member {
  uint32_t file = 0;
  std::string label;
  std::string title;
};

bool sameAsAny(const std::string& path, const std::vector<RecordInput>& inputs) {
  for (const RecordInput& in : inputs)
    if (SameFile(path, in.pro) || (!in.index.empty() && SameFile(path, in.index))) return true;
  return false;
}

void writeReport(const std::string& path, const DedupParams& params, const std::vector<int32_t>& perFile,
                 const DedupSummary& summary, const Grouping& grouping, std::unordered_map<uint32_t, Member>& members) {
  TextOut out(path);
  out.line("Duplicate records");
  out.line("");
  out.line("Files read:");
  for (std::size_t f = 0; f < params.inputs.size(); ++f)
    out.line("  " + std::to_string(f + 1) + "  " + params.inputs[f] + "  (" + std::to_string(perFile[f]) + " records)");
  out.line("Records read: " + std::to_string(summary.records) + "; groups of one work: " + std::to_string(summary.groups) +
           "; records left out: " + std::to_string(summary.removed) + "; records kept in " + params.output + ": " +
           std::to_string(summary.records - summary.removed));
  if (summary.groups == 0) {
    out.line("");
    out.line("No two records were found to be the same work.");
    out.close();
    return;
  }
  // The records and the links of each group, under the group's first record.
  std::unordered_map<uint32_t, std::vector<uint32_t>> groupRecords;
  std::unordered_map<uint32_t, std::vector<const DuplicateLink*>> groupLinks;
  std::vector<uint32_t> firsts;
  for (const auto& [record, member] : members) {
    const uint32_t first = grouping.first[record];
    if (record == first) firsts.push_back(first);
    groupRecords[first].push_back(record);
  }
  for (const DuplicateLink& l : grouping.links) groupLinks[grouping.first[l.a]].push_back(&l);
  std::sort(firsts.begin(), firsts.end());
  auto name = [&](uint32_t record) {
    const Member& m = members[record];
    return "Record - " + m.label + " of file " + std::to_string(m.file + 1);
  };
  int32_t number = 0;
  for (uint32_t first : firsts) {
    std::vector<uint32_t>& records = groupRecords[first];
    std::sort(records.begin(), records.end());
    out.line("");
    out.line("Group " + std::to_string(++number) + ": " + std::to_string(records.size()) + " records; kept: " + name(first));
    for (uint32_t r : records) {
      const Member& m = members[r];
      std::string row = "  file " + std::to_string(m.file + 1) + "  Record - " + m.label;
      row.resize(std::max<std::size_t>(row.size() + 2, 28), ' ');
      out.line(row + (m.title.empty() ? "(no title)" : m.title));
    }
    for (const DuplicateLink* l : groupLinks[first]) {
      std::string why = "  why: " + name(l->b) + " and " + name(l->a) + ": " + std::string(ReasonText(l->reason));
      if (l->reason == MatchReason::SimilarTitle) {
        char s[16];
        std::snprintf(s, sizeof s, "%.2f", static_cast<double>(l->similarity));
        why += " (similarity " + std::string(s) + ")";
      }
      out.line(why);
    }
  }
  out.close();
}

}  // namespace

JobResult FindDuplicates(JobState& job, JobProgress& progress, const DedupParams& params) {
  return RunJob(job, progress, [&](Job& frame, JobResult& result) -> JobOutcome {
    std::vector<RecordInput> inputs(params.inputs.size());
    for (std::size_t f = 0; f < params.inputs.size(); ++f) {
      Message refusal;
      if (!ChooseRecordInput(job, params.inputs[f], inputs[f], refusal)) {
        result.message = refusal;
        return JobOutcome::Refused;
      }
    }
    if (sameAsAny(params.output, inputs) || (!params.report.empty() && sameAsAny(params.report, inputs)) ||
        (!params.report.empty() && (params.report == params.output || SameFile(params.report, params.output)))) {
      result.message = Message{std::string(kProInputTitle), std::string(kInputIsOutputText)};
      return JobOutcome::Refused;
    }
    int64_t bytes = 0;
    int32_t totalLines = 0;
    for (const RecordInput& in : inputs) {
      bytes += FileSize(in.pro);
      totalLines += CountLines(in.pro);
    }
    frame.start(result, kDedupTitle, bytes, totalLines);
    std::vector<int32_t> perFile(inputs.size(), 0);
    int32_t linesBefore = 0;

    // Pass 1: the keys of every record. Workers read the fields and make the keys, a
    // batch of records at a time; the batches' keys are put together in order.
    struct KeyBatch : RecordBatch {
      WorkSet keys;
    };
    struct WorkerState {
      RecordFields fields;
      Citation citation;
      std::vector<std::string_view> views;
    };
    std::vector<WorkerState> state(BatchWorkers<KeyBatch>::Cores());
    WorkSet works;
    {
      BatchWorkers<KeyBatch> workers(static_cast<unsigned>(state.size()), [&state](KeyBatch& b, unsigned worker) {
        WorkerState& w = state[worker];
        for (std::size_t r = 0; r < b.records.size(); ++r) {
          const std::span<const std::string_view> lines = b.linesOf(r, w.views);
          ReadRecordFields(lines, w.fields);
          MakeCitation({}, w.fields, lines, w.citation);
          b.keys.add(w.citation);
        }
      });
      auto takeReady = [&](std::size_t keep) {
        while (workers.inHand() > keep) works.append(workers.next()->keys);
      };
      int32_t records = 0;
      RecordText record;
      auto batch = std::make_unique<KeyBatch>();
      for (std::size_t f = 0; f < inputs.size(); ++f) {
        std::unique_ptr<RecordScanner> scanner = scannerOf(inputs[f]);
        while (scanner->next(record)) {
          if (record.label.empty() && inputs[f].index.empty()) {
            Message m = NotARecordFileMessage();
            m.text += "\r\n" + params.inputs[f];
            result.message = m;
            return JobOutcome::Refused;
          }
          batch->add({}, record.lines);
          ++perFile[f];
          frame.progress.recordDone(++records);
          if (frame.lineDone(linesBefore + scanner->linesRead(), totalLines)) return JobOutcome::Interrupted;
          if (batch->bytes.size() >= kBatchBytes) {
            workers.submit(std::move(batch));
            batch = std::make_unique<KeyBatch>();
            takeReady(workers.threads() * kBatchesPerWorker);
          }
        }
        if (perFile[f] == 0) {
          result.message = NotARecordFileMessage();
          return JobOutcome::Refused;
        }
        linesBefore += scanner->linesRead();
      }
      if (!batch->records.empty()) workers.submit(std::move(batch));
      takeReady(0);
    }

    frame.progress.caption("Comparing Records");
    const std::optional<Grouping> grouping = GroupDuplicates(works, [&] { return frame.interrupted(); });
    if (!grouping) return JobOutcome::Interrupted;
    DedupSummary summary{static_cast<int32_t>(works.size()), static_cast<int32_t>(grouping->groups),
                         static_cast<int32_t>(grouping->duplicates)};
    std::vector<bool> grouped(works.size(), false);
    for (const DuplicateLink& l : grouping->links) grouped[l.a] = grouped[l.b] = true;

    // Pass 2: the records kept, and the names of the grouped ones.
    frame.progress.caption("Writing Records");
    frame.outputs.add(params.output);
    if (!params.report.empty()) frame.outputs.add(params.report);
    TextOut out(params.output);
    RecordText record;
    RecordFields fields;
    Citation citation;
    std::unordered_map<uint32_t, Member> members;
    uint32_t g = 0;
    linesBefore = 0;
    std::string number;
    for (std::size_t f = 0; f < inputs.size(); ++f) {
      std::unique_ptr<RecordScanner> scanner = scannerOf(inputs[f]);
      while (scanner->next(record)) {
        const uint32_t i = g++;
        std::string_view label = LabelNumber(record.label);
        if (label.empty()) {
          number = std::to_string(record.index);
          label = number;
        }
        if (grouped[i]) {
          ReadRecordFields(record.lines, fields);
          MakeCitation(label, fields, record.lines, citation);
          members[i] = Member{static_cast<uint32_t>(f), std::string(label), citation.title};
        }
        if (grouping->first[i] == i) {
          if (record.label.empty())
            out.line("Record - " + number);
          else
            out.line(record.label);
          for (std::string_view line : record.lines) out.line(line);
          // Records from different files meet here: one empty line keeps them apart.
          if (record.lines.empty() || !record.lines.back().empty()) out.blank();
          ++result.records;
        }
        if (frame.lineDone(linesBefore + scanner->linesRead(), totalLines)) return JobOutcome::Interrupted;
      }
      linesBefore += scanner->linesRead();
    }
    out.close();
    if (!params.report.empty()) writeReport(params.report, params, perFile, summary, *grouping, members);
    if (params.summary != nullptr) *params.summary = summary;
    result.lines = linesBefore;
    frame.finish(result);
    return JobOutcome::Done;
  });
}

JobResult FindDuplicatesCommand(CommandContext& context) {
  const DedupParams* params = context.get<DedupParams>();
  if (params == nullptr) {
    JobResult none;
    none.outcome = JobOutcome::NoCommand;
    return none;
  }
  return FindDuplicates(context.job, context.progress, *params);
}

}  // namespace zv
