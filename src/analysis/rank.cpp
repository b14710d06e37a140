// Rank: weighing, the sort by total weight, the .RNK and the .TBL.
#include "analysis/rank.h"

#include <algorithm>
#include <optional>

#include "analysis/analysis_common.h"
#include "analysis/exchange_sort.h"
#include "analysis/index_reader.h"
#include "analysis/ordered_writer.h"
#include "analysis/record_blocks.h"
#include "analysis/term_search.h"
#include "analysis/qbf.h"
#include "core/error.h"
#include "core/files.h"
#include "core/text.h"
#include "core/text_out.h"
#include "records/record_file.h"

namespace zv {

namespace {

constexpr std::string_view kRankTermError = "Rank Term Error";
constexpr std::string_view kTermWeightError = "Term Weight Error";

// One element per record: its number and its total weight.
struct RankRec {
  int32_t recNum = 0;
  int32_t total = 0;
};

// Without size limits: where each record is written from, and what its lines become
// in the .RNK apart from what the records around it decide (see RankOrder).
struct RankWrite {
  int64_t readAt = 0;
  int32_t bytes = 0;   // at a position other than 1, after a record whose last line is not empty
  int32_t lines = 0;
  int32_t marks = 0;   // lines that get an empty line before them ("Record - 1" in 11 characters)
  bool firstEmpty = false;
  int8_t last = 0;     // the last line: 1 empty, 2 not empty, 0 no lines at all
  bool plain = false;  // its bytes as they stand, but for the empty lines the records around it decide
};

// The label test of the writing: the labels of records 10 to 19.
bool marked(std::string_view line) { return line.size() == 11 && line.find("Record - 1") != std::string_view::npos; }

// What `block` becomes in the .RNK; nothing when that is more than 32 bits can count
// (lines past the end of the file), and the record is then written line by line.
std::optional<RankWrite> rankWriteOf(const RecordBlock& block, int64_t readAt) {
  RankWrite w{readAt, 0, block.lines, 0, false, 0, block.asItStands()};
  int64_t bytes = 0;
  bool prevEmpty = false;
  for (int32_t n = 1; n <= block.lines; ++n) {
    const std::string_view line = block.line(n);
    if (marked(line)) {
      ++w.marks;
      bytes += 2;
    }
    if (n == 1) w.firstEmpty = line.empty();
    if (!(line.empty() && prevEmpty))
      bytes += static_cast<int64_t>(line.size()) + 2;
    else
      w.plain = false;  // an empty line after an empty line is left out
    prevEmpty = line.empty();
    w.last = prevEmpty ? 1 : 2;
  }
  if (bytes > INT32_MAX) return std::nullopt;
  w.bytes = static_cast<int32_t>(bytes);
  return w;
}

// The ranked records as the ordered writer takes them. The lines of a record are
// written as the writing loop writes them: an empty line before each marked line but
// at position 1, no empty first line at position 1, and no empty line after an empty
// line, also across records; so a record's bytes depend on its position and on the
// last line of the record before it.
class RankOrder : public OrderSource {
 public:
  RankOrder(const std::vector<RankRec>& ranked, const std::vector<RankWrite>& writes)
      : ranked_(ranked), writes_(writes), prevEmpty_(ranked.size()) {
    bool prevEmpty = true;  // gsPrevLine starts empty
    for (std::size_t p = 1; p < ranked.size(); ++p) {
      prevEmpty_[p] = prevEmpty;
      const int8_t last = write(static_cast<int32_t>(p)).last;
      if (last != 0) prevEmpty = last == 1;
    }
  }
  int32_t count() const override { return static_cast<int32_t>(ranked_.size()) - 1; }
  int32_t recordAt(int32_t p) const override { return ranked_[static_cast<std::size_t>(p)].recNum; }
  int64_t readAt(int32_t k) const override { return writes_[static_cast<std::size_t>(k)].readAt; }
  int32_t lines(int32_t k) const override { return writes_[static_cast<std::size_t>(k)].lines; }
  int64_t bytes(int32_t p) const override {
    const RankWrite& w = write(p);
    int64_t n = w.bytes;
    if (w.firstEmpty && prevEmpty_[static_cast<std::size_t>(p)]) n -= 2;
    if (p == 1) n -= 2 * static_cast<int64_t>(w.marks);
    return n;
  }
  bool asItStands(int32_t p) const override {
    const RankWrite& w = write(p);
    return w.plain && (w.marks == 0 || p == 1) && !(w.firstEmpty && prevEmpty_[static_cast<std::size_t>(p)]);
  }
  void render(int32_t p, const RecordBlock& block, std::string& out) const override {
    bool prevEmpty = prevEmpty_[static_cast<std::size_t>(p)];
    for (int32_t n = 1; n <= block.lines; ++n) {
      const std::string_view line = block.line(n);
      if (p != 1 && marked(line)) out.append("\r\n");
      if (!line.empty() || !prevEmpty) {
        out.append(line);
        out.append("\r\n");
      }
      prevEmpty = line.empty();
    }
  }

 private:
  const RankWrite& write(int32_t p) const { return writes_[static_cast<std::size_t>(recordAt(p))]; }

  const std::vector<RankRec>& ranked_;
  const std::vector<RankWrite>& writes_;
  std::vector<bool> prevEmpty_;  // by position: the line before it is empty
};

bool printable(char c) { return c > ' ' && c < 127; }
bool letterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

JobResult noCommand() {
  JobResult none;
  none.outcome = JobOutcome::NoCommand;
  return none;
}

}  // namespace

std::optional<Message> RankTermKeyRefusal(char key) {
  if (key == ' ')
    return Message{std::string(kRankTermError),
                   "The <space> key was pressed.  At this time, the Rank command does not support ranking by "
                   "phrases.  Only single terms are supported."};
  if (!printable(key) || letterOrDigit(key) || key == '-' || key == '*') return std::nullopt;
  return Message{std::string(kRankTermError),
                 "The character key just pressed, " + std::string(1, key) +
                     ", is one the Rank command uses as a delimiter between terms in the records, and thus is not "
                     "valid as part of a ranking term.\r\n\r\nThe delimiters are:  \r\n"
                     "` ~ ! @ # $ % ^ & ( ) _ = + [ ] { } ; : ' , . < > / ? \\ |\r\n\r\n"
                     "The hyphen, -, is valid, and thus you would be able to rank by the term, CD-ROM, for "
                     "example.\r\n\r\nThe asterisk, *, can be used for right truncation, e.g., cost* will add "
                     "weight to a record for cost, costs, costly, cost-effective, etc."};
}

std::optional<Message> RankWeightKeyRefusal(char key) {
  if (key >= '0' && key <= '9') return std::nullopt;
  return Message{std::string(kTermWeightError), "Valid weights are the numerals 0 through 9"};
}

std::optional<Message> RankBeginRefusal(const RankParams& params) {
  if (params.terms[0].empty())
    return Message{"Ranking Term Error",
                   "The first term has been left blank.  glExist should be at least one term for ranking."};
  if (params.weights[0].empty())
    return Message{std::string(kTermWeightError), "The weight for the first term has been left blank."};
  return std::nullopt;
}

JobResult Rank(JobState& state, JobProgress& progress, const RankParams& params) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) {
    UseChoice(job.state, params.file);
    AnalysisProgress& panels = PanelsOf(job.progress);
    const bool large = params.large;

    std::array<Term, kRankSlots> terms;
    std::array<int32_t, kRankSlots> giRankWt{};
    for (std::size_t i = 0; i < kRankSlots; ++i) {
      terms[i] = PrepareTerm(params.terms[i]);
      if (params.weights[i].empty()) continue;
      const int32_t w = ToLong(params.weights[i]);
      giRankWt[i] = large ? w : Narrow16(w, "a term's weight (giRankWt)");
    }

    IndexReader ndx(job.state.gsIndexFile);
    const int32_t glRecCount = ndx.count();
    const int64_t size = FileSize(job.state.gsProFile);
    job.state.glLineCount = LineCount(job.state.gsProFile);
    const int32_t glLineCount = job.state.glLineCount;
    job.start(result, "Rank", size, glLineCount, glRecCount);
    job.progress.caption("Assigning Weight To Records");

    // gRankRec: one element per record, numbered by its position.
    std::vector<RankRec> gRankRec(static_cast<std::size_t>(glRecCount) + 1);
    for (int32_t k = 1; k <= glRecCount; ++k) gRankRec[static_cast<std::size_t>(k)].recNum = k;

    // Without limits each record is read as one block, in file order: its terms are
    // counted in the whole block, and what it becomes in the .RNK is noted, so that the
    // writing can take the records in file order too. Weights are never negative
    // there, so a total that ends within 32 bits never passed them on the way.
    std::vector<RankWrite> writes(large ? static_cast<std::size_t>(glRecCount) + 1 : 0);
    bool inBlocks = large;
    for (int32_t w : giRankWt) inBlocks = inBlocks && w >= 0;
    std::array<TermFinder, kRankSlots> finders;
    for (std::size_t i = 0; i < kRankSlots; ++i) finders[i] = TermFinder(terms[i], DelimiterSet(kSearchDelims));
    std::optional<RecordBlockReader> blocks;
    if (inBlocks) blocks.emplace(job.state.gsProFile);
    RecordBlock block;
    const DelimiterSet delims(kSearchDelims);
    RecordReader pro(job.state.gsProFile);
    std::string line;
    for (int32_t k = 1; k <= glRecCount; ++k) {
      const IndexRec& rec = ndx.get(k);
      job.progress.recordDone(k);
      int32_t running = rec.endLine;
      job.progress.lineDone(running, glLineCount);
      pro.checkExtent(k, rec);  // an index that does not match says so before any limit
      const int32_t lines = RecordLines(rec.startLine, rec.endLine, large);
      if (large) writes[static_cast<std::size_t>(k)] = {RecordStart(k, rec), rec.byteLen, lines, 0, false, 0, false};
      int32_t& total = gRankRec[static_cast<std::size_t>(k)].total;
      // The stored startByte, record 1 too: from BuildIndex's index the label's first
      // letter is not read.
      if (inBlocks && blocks->read(rec.startByte, lines, block)) {
        int64_t sum = 0;
        for (std::size_t i = 0; i < kRankSlots; ++i)
          if (giRankWt[i] != 0) sum += finders[i].count(block.bytes) * giRankWt[i];
        if (sum > INT32_MAX)
          ThrowOverflow(LimitReason("a record's weight (gRankRec.total)", INT32_MAX, {"record", k}) + " It came to " +
                        std::to_string(sum) + ".");
        total = static_cast<int32_t>(sum);
        std::optional<RankWrite> w;
        if (RecordStart(k, rec) == rec.startByte || blocks->read(RecordStart(k, rec), lines, block))
          w = rankWriteOf(block, RecordStart(k, rec));
        if (w)
          writes[static_cast<std::size_t>(k)] = *w;
        else
          inBlocks = false;
        if (lines > 0) {
          panels.recordLine(lines);
          job.progress.lineDone(running + lines, glLineCount);
        }
        if (job.recordDone(k)) return JobOutcome::Interrupted;
        continue;
      }
      inBlocks = false;
      pro.seek(rec.startByte, rec.byteLen);
      for (int32_t n = 1; n <= lines; ++n) {
        panels.recordLine(n);
        pro.readLine(line);
        UpperInPlace(line);
        job.progress.lineDone(++running, glLineCount);
        for (std::size_t i = 0; i < kRankSlots; ++i) {
          const Term& t = terms[i];
          if (t.empty() || !LineHolds(line, t.text)) continue;
          const int32_t matches = CountMatches(line, t, delims, !large);
          if (matches == 0) continue;
          Add32(total, static_cast<int64_t>(matches) * giRankWt[i], "a record's weight (gRankRec.total)",
                {"record", k});
          if (!large) Narrow16(total, "a record's weight (gRankRec.total)", {"record", k});
        }
      }
      if (job.recordDone(k)) return JobOutcome::Interrupted;
    }
    blocks.reset();

    job.progress.caption("Sorting by Total Weight");
    if (large)
      StableSortFrom1(gRankRec, glRecCount, [](const RankRec& a, const RankRec& b) { return a.total > b.total; });
    else
      GapExchangeSort(gRankRec, glRecCount, [](const RankRec& a, const RankRec& b) { return a.total < b.total; }, true);

    // From here on the job cannot be interrupted, and an error leaves what it wrote.
    job.progress.caption("Writing Ranked Records");
    const std::string rnkFile = job.state.gsBaseName + ".RNK";
    job.outputs.add(rnkFile, KeepOn(WayOut::Failed));
    std::string& gsPrevLine = job.state.gsPrevLine;
    gsPrevLine.clear();
    bool written = false;
    if (inBlocks) {
      const RankOrder order(gRankRec, writes);
      written = OrderedWriter::write(job.state.gsProFile, rnkFile, order, "\r\n", job.progress, glLineCount);
      // The last line read stays as the previous line, as the loop below leaves it.
      for (int32_t p = glRecCount; written && p >= 1; --p) {
        const RankWrite& w = writes[static_cast<std::size_t>(gRankRec[static_cast<std::size_t>(p)].recNum)];
        if (w.lines <= 0) continue;
        RecordBlockReader last(job.state.gsProFile);
        if (last.read(w.readAt, w.lines, block)) gsPrevLine = std::string(block.line(w.lines));
        break;
      }
    }
    if (!written) {
      TextOut rnk(rnkFile);
      int32_t linesWritten = 0;
      for (int32_t p = 1; p <= glRecCount; ++p) {
        const int32_t r = gRankRec[static_cast<std::size_t>(p)].recNum;
        const RankWrite& w = large ? writes[static_cast<std::size_t>(r)] : RankWrite{};
        const RecordExtent e = large ? RecordExtent{w.readAt, w.bytes, w.lines}
                                     : WriteExtent(ndx, r);
        pro.seek(e.start, e.byteLen);
        job.progress.recordDone(p);
        for (int32_t n = 1; n <= e.lines; ++n) {
          panels.recordLine(n);
          job.progress.lineDone(++linesWritten, glLineCount);
          pro.readLine(line);
          // The labels of records 10 to 19 get an empty line before them: the test
          // wants "Record - 1" in an 11-character line. Record 1's own label fails it.
          if (p != 1 && marked(line)) rnk.blank();
          if (line.empty() && p == 1 && n == 1) {
            // the first record opens the file without an empty line
          } else if (!line.empty() || !gsPrevLine.empty()) {
            rnk.line(line);  // two empty lines in a row come out as one
          }
          gsPrevLine = line;
        }
      }
      rnk.blank();
      rnk.close();
    }

    job.progress.caption("Writing Rank Table");
    panels.recordLine(0);
    const std::string tblFile = job.state.gsBaseName + ".TBL";
    job.outputs.add(tblFile, KeepOn(WayOut::Failed));
    TextOut tbl(tblFile);
    tbl.line("Rank Table for " + job.state.gsBaseName + ".RNK");
    tbl.line(ReportDateLine(params.reportTime));
    tbl.blank();
    PrintLine(!large).text("Wts").tab(7).text("Terms").writeTo(tbl);
    tbl.line("---   -----");
    for (std::size_t i = 0; i < kRankSlots; ++i) {
      // Term 1's line always stands; a later slot only when its term is not blank.
      if (i > 0 && terms[i].empty()) continue;
      PrintLine(!large).number(giRankWt[i]).tab(7).text(params.terms[i]).writeTo(tbl);
    }
    tbl.blank();
    PrintLine(!large).text("Rank").tab(9).text("Input").tab(17).text("Total").writeTo(tbl);
    PrintLine(!large).text("Order").tab(9).text("Order").tab(17).text("Weight").writeTo(tbl);
    tbl.line("-----   -----   ------");
    PrintLine row(!large);  // one line object for them all: its text is cleared at each line
    for (int32_t p = 1; p <= glRecCount; ++p) {
      const RankRec& e = gRankRec[static_cast<std::size_t>(p)];
      row.number(p).tab(9).str(e.recNum).tab(17).str(e.total).writeTo(tbl);
      job.progress.lineDone(p, glRecCount);
    }
    tbl.blank();
    tbl.close();

    result.records = glRecCount;
    job.finish(result);
    return JobOutcome::Done;
  });
}

JobResult OpenRankCommand(CommandContext& context) {
  const auto* params = context.get<RecordFileName>();
  return params ? OpenRecordFile(context.job, context.progress, *params, kRankRequirement) : noCommand();
}

JobResult RunRankCommand(CommandContext& context) {
  const auto* params = context.get<RankParams>();
  return params ? Rank(context.job, context.progress, *params) : noCommand();
}

}  // namespace zv
