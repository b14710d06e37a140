// Sort: the key of each record from its tagged line, the sort, and the .SRT.
#include "analysis/sort.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "analysis/analysis_common.h"
#include "analysis/exchange_sort.h"
#include "analysis/index_reader.h"
#include "analysis/ordered_writer.h"
#include "analysis/record_blocks.h"
#include "analysis/qbf.h"
#include "core/files.h"
#include "core/text.h"
#include "core/text_out.h"
#include "records/record_file.h"

namespace zv {

namespace {

// One element per record: its number and its key, a fixed field of 75 characters that
// holds code 0 until a tagged line fills it, padded with blanks. `len` is the key
// without its trailing blanks, which is what is compared.
struct SortRec {
  int32_t recNum = 0;
  uint8_t len = kSortKeyLen;
  std::array<char, kSortKeyLen> key{};

  std::string_view compared() const { return {key.data(), len}; }
};

// By character code, one after the other, a prefix first.
bool greater(const SortRec& a, const SortRec& b) { return a.compared() > b.compared(); }
bool less(const SortRec& a, const SortRec& b) { return a.compared() < b.compared(); }

bool upperEqual(char a, char b) {
  auto up = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
  return up(a) == up(b);
}

// Without size limits: where each record is written from, and its size there.
struct SortWrite {
  int64_t readAt = 0;
  int64_t bytes = 0;
  int32_t lines = 0;
  bool asItStands = false;
};

// Sets the key of `e` from `line` when the line is tagged; says whether it was.
bool takeKey(SortRec& e, std::string_view line, std::string_view tag) {
  const std::optional<std::string> key = SortKeyOf(line, tag);
  if (!key) return false;
  e.key.fill(' ');
  std::memcpy(e.key.data(), key->data(), key->size());
  e.len = static_cast<uint8_t>(key->size());
  return true;
}

// The sorted records as the ordered writer takes them: each record's lines as they
// stand, record 1 with one more empty line.
class SortOrder : public OrderSource {
 public:
  SortOrder(const std::vector<SortRec>& sorted, const std::vector<SortWrite>& writes)
      : sorted_(sorted), writes_(writes) {}
  int32_t count() const override { return static_cast<int32_t>(sorted_.size()) - 1; }
  int32_t recordAt(int32_t p) const override { return sorted_[static_cast<std::size_t>(p)].recNum; }
  int64_t readAt(int32_t k) const override { return writes_[static_cast<std::size_t>(k)].readAt; }
  int32_t lines(int32_t k) const override { return writes_[static_cast<std::size_t>(k)].lines; }
  int64_t bytes(int32_t p) const override { return writes_[static_cast<std::size_t>(recordAt(p))].bytes; }
  void render(int32_t p, const RecordBlock& block, std::string& out) const override {
    AppendBlockLines(out, block);
    if (recordAt(p) == 1) out.append("\r\n");
  }
  bool asItStands(int32_t p) const override {
    return recordAt(p) != 1 && writes_[static_cast<std::size_t>(recordAt(p))].asItStands;
  }

 private:
  const std::vector<SortRec>& sorted_;
  const std::vector<SortWrite>& writes_;
};

JobResult noCommand() {
  JobResult none;
  none.outcome = JobOutcome::NoCommand;
  return none;
}

}  // namespace

std::optional<Message> SortBeginRefusal(const std::string& tag) {
  if (!tag.empty()) return std::nullopt;
  return Message{"Sorting gsTag Error",
                 "The sorting gsTag has been left blank.  This provides no field on which to sort."};
}

std::optional<std::string> SortKeyOf(std::string_view line, std::string_view tag) {
  if (line.size() < tag.size()) return std::nullopt;
  for (std::size_t i = 0; i < tag.size(); ++i)
    if (!upperEqual(line[i], tag[i])) return std::nullopt;
  std::string value(line.substr(tag.size(), kSortKeyLen));
  ReplaceChar(value, "^", " ");
  ReplaceChar(value, "|", " ");
  return QPTrim(value);
}

JobResult SortRecords(JobState& state, JobProgress& progress, const SortParams& params) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) {
    UseChoice(job.state, params.file);
    AnalysisProgress& panels = PanelsOf(job.progress);
    const bool large = params.large;
    const std::string& gsTag = params.gsTag;
    if (!large) Narrow16(static_cast<int64_t>(gsTag.size()), "the length of the field tag (gsTag)");

    IndexReader ndx(job.state.gsIndexFile);
    const int32_t glRecCount = ndx.count();
    const int64_t size = FileSize(job.state.gsProFile);
    job.state.glLineCount = LineCount(job.state.gsProFile);
    const int32_t glLineCount = job.state.glLineCount;
    job.start(result, "Sort", size, glLineCount, glRecCount);
    job.progress.caption("Reading File for Field Data");

    std::vector<SortRec> gSortRec(static_cast<std::size_t>(glRecCount) + 1);
    for (int32_t k = 1; k <= glRecCount; ++k) gSortRec[static_cast<std::size_t>(k)].recNum = k;

    // Without limits each record is read as one block, in file order, and its size as
    // written is noted, so that the writing can take the records in file order too.
    std::vector<SortWrite> writes(large ? static_cast<std::size_t>(glRecCount) + 1 : 0);
    bool inBlocks = large;
    std::optional<RecordBlockReader> blocks;
    if (large) blocks.emplace(job.state.gsProFile);
    RecordBlock block;
    RecordReader pro(job.state.gsProFile);
    std::string line;
    for (int32_t k = 1; k <= glRecCount; ++k) {
      const IndexRec& rec = ndx.get(k);
      job.progress.recordDone(k);
      int32_t running = rec.endLine;
      job.progress.lineDone(running, glLineCount);
      pro.checkExtent(k, rec);  // an index that does not match says so before any limit
      const int32_t lines = RecordLines(rec.startLine, rec.endLine, large);
      SortRec& e = gSortRec[static_cast<std::size_t>(k)];
      if (large) writes[static_cast<std::size_t>(k)] = {RecordStart(k, rec), rec.byteLen, lines, false};
      if (inBlocks && blocks->read(rec.startByte, lines, block)) {
        // The last tagged line of the record gives the key.
        for (int32_t n = lines; n >= 1; --n) {
          const std::string_view text = block.line(n);
          if (!gsTag.empty() && (text.size() < gsTag.size() || !upperEqual(text[0], gsTag[0]))) continue;
          if (takeKey(e, text, gsTag)) break;
        }
        // Record 1 of a BuildIndex index is written from the file's first byte.
        if (RecordStart(k, rec) == rec.startByte || blocks->read(RecordStart(k, rec), lines, block))
          writes[static_cast<std::size_t>(k)] = {RecordStart(k, rec), block.writtenBytes() + (k == 1 ? 2 : 0), lines,
                                                 block.asItStands()};
        else
          inBlocks = false;
        if (lines > 0) {
          panels.recordLine(lines);
          if (job.lineDone(running + lines, glLineCount)) return JobOutcome::Interrupted;
        }
        continue;
      }
      // Within the limits, or once a record was too large for a block, line by line.
      inBlocks = false;
      // The stored startByte, record 1 too: a tag on the first line of record 1 of a
      // BuildIndex index is not seen.
      pro.seek(rec.startByte, rec.byteLen);
      for (int32_t n = 1; n <= lines; ++n) {
        panels.recordLine(n);
        pro.readLine(line);
        // The last tagged line of the record gives the key; continuation lines don't.
        takeKey(e, line, gsTag);
        if (job.lineDone(++running, glLineCount)) return JobOutcome::Interrupted;
      }
    }
    blocks.reset();

    job.progress.caption("Sorting on " + gsTag + " field");
    if (large) {
      StableSortFrom1(gSortRec, glRecCount, less);
    } else {
      // The record count is a 16-bit number from here on.
      GapExchangeSort(gSortRec, Narrow16(glRecCount, "the records Sort orders (glRecCount)"), greater);
    }

    // From here on the job cannot be interrupted, and an error leaves what it wrote.
    job.progress.caption("Writing Sorted Records");
    const std::string srtFile = job.state.gsBaseName + ".SRT";
    job.outputs.add(srtFile, KeepOn(WayOut::Failed));
    if (inBlocks) {
      const SortOrder order(gSortRec, writes);
      if (OrderedWriter::write(job.state.gsProFile, srtFile, order, "\r\n", job.progress, glLineCount)) {
        if (glRecCount > 0) job.state.glRecNum = gSortRec[static_cast<std::size_t>(glRecCount)].recNum;
        result.records = glRecCount;
        job.finish(result);
        return JobOutcome::Done;
      }
    }
    TextOut srt(srtFile);
    int32_t written = 0;
    for (int32_t p = 1; p <= glRecCount; ++p) {
      const int32_t r = gSortRec[static_cast<std::size_t>(p)].recNum;
      job.state.glRecNum = r;
      const SortWrite& w = large ? writes[static_cast<std::size_t>(r)] : SortWrite{};
      const RecordExtent e = large ? RecordExtent{w.readAt, static_cast<int32_t>(std::min<int64_t>(w.bytes, INT32_MAX)), w.lines} : WriteExtent(ndx, r);
      pro.seek(e.start, e.byteLen);
      job.progress.recordDone(p);
      for (int32_t n = 1; n <= e.lines; ++n) {
        panels.recordLine(n);
        job.progress.lineDone(++written, glLineCount);
        pro.readLine(line);
        srt.line(line);
      }
      // Record 1's extent stops short of its empty line.
      if (r == 1) srt.blank();
    }
    srt.blank();
    srt.close();

    result.records = glRecCount;
    job.finish(result);
    return JobOutcome::Done;
  });
}

JobResult SortCommand(CommandContext& context) {
  if (const auto* opening = context.get<RecordFileName>())
    return OpenRecordFile(context.job, context.progress, *opening, kSortRequirement);
  const auto* params = context.get<SortParams>();
  return params ? SortRecords(context.job, context.progress, *params) : noCommand();
}

}  // namespace zv
