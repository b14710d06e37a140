// Query by Form: the implied statement, the opening of a record file, and the query.
#include "analysis/qbf.h"

#include "analysis/analysis_common.h"
#include "analysis/index_reader.h"
#include "analysis/record_blocks.h"
#include "analysis/term_search.h"
#include "core/files.h"
#include "core/text.h"
#include "core/text_out.h"
#include "records/record_file.h"

namespace zv {

namespace {

// The filled terms of one nest (three boxes from `first`), trimmed.
std::vector<std::string> filled(const QbfBoxes& boxes, std::size_t first) {
  std::vector<std::string> out;
  for (std::size_t i = first; i < first + 3; ++i) {
    std::string t = QPTrim(boxes[i]);
    if (!t.empty()) out.push_back(std::move(t));
  }
  return out;
}

std::string joinedOr(const std::vector<std::string>& terms) {
  std::string out;
  for (const std::string& t : terms) out += (out.empty() ? "" : " or ") + t;
  return out;
}

JobResult noCommand() {
  JobResult none;
  none.outcome = JobOutcome::NoCommand;
  return none;
}

}  // namespace

SearchStatement ImpliedSearchStatement(const QbfBoxes& boxes) {
  SearchStatement s;
  s.gsNestMask = "000-000-000";
  for (std::size_t i = 0; i < 9; ++i)
    if (!QPTrim(boxes[i]).empty()) s.gsNestMask[i + i / 3] = '1';
  const std::vector<std::string> first = filled(boxes, 0), second = filled(boxes, 3), third = filled(boxes, 6);
  std::string& out = s.gsSearchStatement;
  if (first.size() == 1) out = first[0];
  if (first.size() > 1) out = "(" + joinedOr(first) + ")";
  if (second.size() == 1) out += " and " + second[0];
  if (second.size() > 1) out += " and (" + joinedOr(second) + ")";
  if (!third.empty()) {
    if (!first.empty() || !second.empty()) out += " and ";
    out += third.size() == 1 ? "not " + third[0] : "not (" + joinedOr(third) + ")";
  }
  return s;
}

Message KeyWordError() { return {"Key Word Error", "The first term of the first\r\nnest cannot be blank."}; }

std::optional<Message> RefuseQueryFile(const std::string& name, const std::string& gsProFile) {
  if (name == gsProFile) return Message{"Save File Error", "Output file must not be the\r\nsame as the input file."};
  // An existing file is never overwritten ("exits" is the message's own word).
  if (Exist(name)) return Message{"File Save Error", name + "\r\nalready exits and would be overwritten."};
  return std::nullopt;
}

Message ZeroHitsMessage(const std::string& queryFile) {
  return {"Zero Hits", "The search found no records satisfying\r\nyour search request.\r\n\r\n" + queryFile +
                           ",\r\nthe selected records file, is a zero-length\r\nfile and will be deleted."};
}

JobResult OpenRecordFile(JobState& state, JobProgress& progress, const RecordFileName& params,
                         std::string_view requirement) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) {
    Message refusal;
    if (!SelectRecordFile(job.state, params.name, requirement, refusal)) {
      result.message = refusal;
      return JobOutcome::Refused;
    }
    if (!IndexWasChosen(job.state)) {
      const JobResult built = IndexRecordFile(job.state, job.progress);
      if (built.error) throw *built.error;
      if (!built.done()) {
        const RecordFileChoice none;
        UseChoice(job.state, none);
        if (built.outcome == JobOutcome::Interrupted) return JobOutcome::Interrupted;
        result.message = built.message;
        return JobOutcome::Refused;
      }
    }
    result.records = RecordCount(job.state.gsIndexFile);
    return JobOutcome::Done;
  });
}

namespace {

// The per-record flags of the nine terms and three nests.
struct Hits {
  std::array<bool, 9> term{};
  std::array<bool, 3> nest{};
  bool record = false;
};

class Query {
 public:
  Query(Job& job, const QbfParams& params) : job_(job), panels_(PanelsOf(job.progress)), delims_(kSearchDelims) {
    // A final "*" marks right truncation; a term of "*" alone is blank from here on.
    for (std::size_t i = 0; i < 9; ++i) terms_[i] = PrepareTerm(params.boxes[i]);
    for (std::size_t i = 3; i < 9; ++i) (i < 6 ? andBlank_ : notBlank_) &= terms_[i].empty();
    for (std::size_t i = 0; i < 9; ++i) finders_[i] = TermFinder(terms_[i], delims_);
  }

  // The same decision from the record's lines in one block, when none of them is
  // longer than the 16-bit limit (so no plain search can overflow). The line loop
  // above ends early only when the outcome is settled, so the outcome is whether each
  // nest has a term found anywhere in the record: a NOT term rejects it, a term of the
  // first nest and, unless it is blank, of the AND nest accept it.
  bool testBlock(std::string_view text) const {
    for (std::size_t i = 6; i < 9; ++i)
      if (finders_[i].any(text)) return false;
    if (!nestFound(text, 0)) return false;
    return andBlank_ || nestFound(text, 3);
  }

  // Reads record k's lines and says whether it meets the form.
  bool test(RecordReader& pro, const IndexRec& rec, int64_t position, int32_t lines, int32_t& runningLine) {
    Hits hits;
    std::string line;
    pro.seek(position, rec.byteLen);
    for (int32_t n = 1; n <= lines; ++n) {
      panels_.recordLine(n);
      pro.readLine(line);
      UpperInPlace(line);
      ++runningLine;
      job_.progress.lineDone(runningLine, job_.state.glLineCount);
      for (std::size_t i = 0; i < 9; ++i) {
        const Term& t = terms_[i];
        if (t.empty() || hits.term[i]) continue;
        // The plain search decides whether the line is split into words at all.
        if (!LineHolds(line, t.text)) continue;
        if (FirstMatch(line, t, delims_, true)) hits.term[i] = true;
      }
      for (std::size_t nest = 0; nest < 3; ++nest)
        hits.nest[nest] = hits.nest[nest] || hits.term[nest * 3] || hits.term[nest * 3 + 1] || hits.term[nest * 3 + 2];
      if (hits.nest[2]) break;
      // txt11 alone (AND and NOT blank): its first hit settles the record.
      if (hits.term[0] && andBlank_ && notBlank_) {
        hits.record = true;
        break;
      }
      if (hits.nest[0] && (andBlank_ || hits.nest[1])) hits.record = true;
    }
    // A NOT term on any line rejects the record, also after the other nests were met.
    return hits.record && !hits.nest[2];
  }

 private:
  bool nestFound(std::string_view text, std::size_t first) const {
    for (std::size_t i = first; i < first + 3; ++i)
      if (finders_[i].any(text)) return true;
    return false;
  }

  Job& job_;
  AnalysisProgress& panels_;
  DelimiterSet delims_;
  std::array<Term, 9> terms_;
  std::array<TermFinder, 9> finders_;
  bool andBlank_ = true;
  bool notBlank_ = true;
};

}  // namespace

JobResult RunQuery(JobState& state, JobProgress& progress, const QbfParams& params) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) {
    UseChoice(job.state, params.file);
    Query query(job, params);
    AnalysisProgress& panels = PanelsOf(job.progress);

    IndexReader ndx(job.state.gsIndexFile);
    const int32_t glRecCount = ndx.count();
    const int64_t size = FileSize(job.state.gsProFile);
    job.state.glLineCount = LineCount(job.state.gsProFile);
    job.start(result, "Query by Form", size, job.state.glLineCount, glRecCount);

    job.outputs.add(params.queryFile);
    TextOut qry(params.queryFile);
    RecordReader pro(job.state.gsProFile);
    RecordBlockReader blocks(job.state.gsProFile);
    RecordBlock block;
    int32_t hits = 0;
    std::string line;
    for (int32_t k = 1; k <= glRecCount; ++k) {
      job.progress.recordDone(k);
      const IndexRec& rec = ndx.get(k);
      const int64_t position = RecordStart(k, rec);
      pro.checkExtent(k, rec);  // an index that does not match says so before any limit
      const int32_t lines = RecordLines(rec.startLine, rec.endLine, false);
      if (blocks.read(position, lines, block) && block.longest <= kLongestPlainLine) {
        // The record in one piece: the progress of its lines at once.
        if (lines > 0) {
          panels.recordLine(lines);
          job.progress.lineDone(rec.startLine + lines, job.state.glLineCount);
        }
        if (query.testBlock(block.bytes)) {
          ++hits;
          panels.hitRecord(hits);
          for (int32_t n = 1; n <= lines; ++n) panels.hitLine(n);
          WriteBlockLines(qry, block);
          if (k == 1) qry.blank();
        }
      } else {
        int32_t runningLine = rec.startLine;
        if (query.test(pro, rec, position, lines, runningLine)) {
          ++hits;
          panels.hitRecord(hits);
          // Read again, case kept, and copied line for line.
          pro.seek(position, rec.byteLen);
          for (int32_t n = 1; n <= lines; ++n) {
            panels.hitLine(n);
            pro.readLine(line);
            qry.line(line);
          }
          if (k == 1) qry.blank();
        }
      }
      if (job.recordDone(k)) return JobOutcome::Interrupted;
    }
    qry.close();
    result.records = hits;
    job.finish(result);
    if (hits == 0) {
      result.message = ZeroHitsMessage(params.queryFile);
      return JobOutcome::ZeroRecords;
    }
    return JobOutcome::Done;
  });
}

JobResult OpenQbfCommand(CommandContext& context) {
  const auto* params = context.get<RecordFileName>();
  return params ? OpenRecordFile(context.job, context.progress, *params, kQbfRequirement) : noCommand();
}

JobResult RunQbfCommand(CommandContext& context) {
  const auto* params = context.get<QbfParams>();
  return params ? RunQuery(context.job, context.progress, *params) : noCommand();
}

}  // namespace zv
