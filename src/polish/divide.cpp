// Divide: one file per record, named with three-digit numbers.
#include "polish/divide.h"

#include "core/brindle.h"
#include "core/byte_scan.h"
#include "core/error.h"
#include "core/files.h"
#include "core/line_reader.h"
#include "core/text_out.h"

namespace zv {

namespace {

constexpr int32_t kTypeMismatch = 13;

// What the abandoning raises once files were made: it turns the empty gsPrevLine into
// a number to name the first file to delete.
ZvError abandonFailure() { return ZvError(kTypeMismatch, "Type mismatch"); }

}  // namespace

std::string DividedFileName(const std::string& baseName, int16_t n) {
  std::string digits = std::to_string(n);
  if (digits.size() == 1) digits = "00" + digits;
  if (digits.size() == 2) digits = "0" + digits;
  return baseName + "." + digits;
}

JobResult DivideRecords(JobState& state, JobProgress& progress, const PolishInput& input) {
  const std::string& inFile = input.inFile;
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    if (auto refusal = CheckPolishInput(inFile, FileWording{1, 1})) {
      result.message = *refusal;
      return JobOutcome::Refused;
    }
    const std::string base = inFile.find('.') != std::string::npos ? BaseName(inFile) : inFile;
    // An input named like one of the files (x.001) would be replaced by it.
    for (int16_t k = 1; k <= kMostDividedFiles; ++k) {
      if (SameFile(inFile, state.outputPath(DividedFileName(base, k)))) {
        result.message = InputIsOutputMessage();
        return JobOutcome::Refused;
      }
    }
    const int32_t lineCount = LineCount(inFile);
    job.start(result, kDivideTitle, FileSize(inFile), lineCount);

    LineReader in(inFile);
    TextOut file;
    int16_t iFilesMade = 0;
    int32_t lInLine = 0;
    int32_t labels = 0;
    std::string& line = state.gsLine;
    const auto loop = [&]() -> JobOutcome {
      while (in.readLine(line)) {
        CleanLine(line);
        Add32(lInLine, 1);
        if (line.starts_with(kLabelStem)) {
          Add32(labels, 1);
          job.progress.recordDone(labels);
          if (labels > 1) file.close();
          // The blank line behind the label, then the record's first line, neither
          // cleaned nor tested: the first is lost whatever it holds, the second goes
          // out as it is, even if it is a label.
          if (!in.readLine(line)) break;
          Add32(lInLine, 1);
          job.progress.lineDone(lInLine, lineCount);
          if (!in.readLine(line)) throw ZvError(err::kPastEnd, ErrorText(err::kPastEnd), inFile);
          Add32(lInLine, 1);
          job.progress.lineDone(lInLine, lineCount);
          if (iFilesMade == kMostDividedFiles) {
            result.message = Message{std::string(kFilesLimitTitle), std::string(kFilesLimitText)};
            break;
          }
          Inc16(iFilesMade);
          const std::string name = state.outputPath(DividedFileName(base, iFilesMade));
          job.outputs.add(name, KeepOn(WayOut::Interrupted) | WayOut::Failed);
          file.open(name);
          file.line(line);
          job.progress.caption(name);
        } else {
          if (lInLine == 1 && labels < 1) {
            result.message = NotRecordFileMessage();
            return JobOutcome::Refused;
          }
          file.line(line);
        }
        if (job.lineDone(lInLine, lineCount)) return JobOutcome::Interrupted;
      }
      file.close();
      return JobOutcome::Done;
    };

    // Abandoning closes the file in hand, then fails in its turn once a file was made;
    // that error is the one told, and what was written stays.
    const auto abandon = [&] {
      try {
        file.close();
      } catch (...) {
        file.abandon();
      }
      result.files = job.outputs.existing();
      return abandonFailure();
    };
    JobOutcome outcome;
    try {
      outcome = loop();
    } catch (...) {
      if (iFilesMade > 0) throw abandon();
      throw;
    }
    if (outcome == JobOutcome::Interrupted && iFilesMade > 0) throw abandon();
    if (outcome != JobOutcome::Done) return outcome;
    result.lines = lInLine;
    result.records = labels;
    job.finish(result);
    return JobOutcome::Done;
  });
}

}  // namespace zv
