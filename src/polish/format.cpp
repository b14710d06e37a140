// modFormat: RemoveLineBreaks (.FMT) and InsertPageBreaks (.BRK).
#include "polish/format.h"

#include <limits>

#include "core/brindle.h"
#include "core/byte_scan.h"
#include "core/files.h"
#include "core/text.h"

namespace zv {

namespace {

constexpr int32_t kTypeMismatch = 13;

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

// "AB- ": two capitals, a hyphen and a blank open a tagged field.
bool isTagged(std::string_view line) {
  return line.size() >= 4 && line[2] == '-' && line[3] == ' ' && isCapital(line[0]) && isCapital(line[1]);
}

// Runs of blanks halved four times over (up to 16 become one, longer runs keep a
// few), and the two blanks typed after a full stop or a colon made one.
void foldBlanks(std::string& line) {
  if (line.find("  ") == std::string::npos) return;
  for (int pass = 0; pass < 4; ++pass) ReplaceAll(line, "  ", " ");
  if (line.find(".  ") != std::string::npos) ReplaceAll(line, ".  ", ". ");
  if (line.find(":  ") != std::string::npos) ReplaceAll(line, ":  ", ": ");
}

// A paragraph's delimiters as readable separators. A "|" of an ordinary field, or
// "||" of a descriptor field, becomes the byte 0 (a one-character text, not an empty
// one). In the descriptor rule "_" is replaced before "^_" is looked for, so that a
// "^_" comes out as ", " and "; " side by side.
void flush(std::string& paragraph, TextOut& out) {
  static const std::string kNul(1, '\0');
  if (paragraph.starts_with("DE- ")) {
    ReplaceAll(paragraph, "||", kNul);
    ReplaceAll(paragraph, "|", " / ");
    ReplaceAll(paragraph, "_", "; ");
    const std::size_t last = paragraph.find_last_not_of(' ');
    paragraph.resize(last == std::string::npos ? 0 : last + 1);
    if (paragraph.ends_with('/')) paragraph.pop_back();  // the blank before it stays
    ReplaceAll(paragraph, "^_", "; ");
    ReplaceAll(paragraph, "^", ", ");
  } else {
    ReplaceAll(paragraph, "|", kNul);
    ReplaceAll(paragraph, "^_", "; ");
    ReplaceAll(paragraph, "^", ", ");
  }
  out.line(paragraph);
  paragraph.clear();
}

// The checks both tools make of their input, and the name of the output.
std::optional<Message> checkInput(const JobState& state, const std::string& inFile, std::string_view ext,
                                  std::string& outFile) {
  if (auto refusal = CheckBreaksInput(inFile, ext)) return refusal;
  outFile = state.outputPath(DerivedOutputName(inFile, ext));
  // The output is replaced without a word; the input must not be what it replaces.
  if (SameFile(inFile, outFile)) return InputIsOutputMessage();
  return std::nullopt;
}

}  // namespace

std::optional<Message> CheckBreaksInput(const std::string& inFile, std::string_view ext) {
  if (auto refusal = CheckPolishInput(inFile, FileWording{1, 1})) return refusal;
  if (inFile.find(ext) != std::string::npos)
    return Message{std::string(kOpenFileErrorTitle), "Input file must not have " + std::string(ext) + " extension."};
  return std::nullopt;
}

JobResult RemoveLineBreaks(JobState& state, JobProgress& progress, const PolishInput& input) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    std::string outFile;
    if (auto refusal = checkInput(state, input.inFile, ".FMT", outFile)) {
      result.message = *refusal;
      return JobOutcome::Refused;
    }
    LineToolFiles io(job, input.inFile, outFile);
    job.start(result, kLineBreaksTitle, FileSize(input.inFile), io.lineCount);

    int32_t lTagLines = 0;
    int32_t labels = 0;
    std::string sParagraph;
    std::string& line = state.gsLine;
    for (int32_t i = 1; i <= io.lineCount; ++i) {
      if (i == 40 && labels < 1) {
        result.message = NotRecordFileMessage();
        return JobOutcome::Refused;
      }
      if (i == 40 && lTagLines < 1) {
        result.message = Message{std::string(kFormatErrorTitle), std::string(kNotTaggedText)};
        return JobOutcome::Refused;
      }
      if (!io.in.readLine(line)) break;
      result.lines = i;
      CleanLine(line);
      foldBlanks(line);
      if (isTagged(line)) {
        Add32(lTagLines, 1);
        if (!sParagraph.empty()) flush(sParagraph, io.out);
      } else if (line.starts_with("Record - ")) {
        Add32(labels, 1);
        job.progress.recordDone(labels);
        if (!sParagraph.empty()) flush(sParagraph, io.out);
      } else if (line.empty()) {
        if (!sParagraph.empty()) flush(sParagraph, io.out);
        io.out.blank();
      }
      // A label is gathered like text, and goes out at the next tagged or empty line.
      sParagraph += line;
      if (job.lineDone(i, io.lineCount)) return JobOutcome::Interrupted;
    }
    // What the paragraph still holds is not written: a file that ends on a line of
    // text loses its last paragraph, as it always has.
    io.out.close();
    result.records = labels;
    job.finish(result);
    return JobOutcome::Done;
  });
}

PerPageAnswer CheckRecordsPerPage(std::string_view answer) {
  PerPageAnswer a;
  const auto askAgain = [&](std::string_view title, std::string_view text) {
    a.kind = PerPageAnswer::Kind::AskAgain;
    a.message = {std::string(title), std::string(text)};
    return a;
  };
  if (InCountTbl(answer, "0123456789") < static_cast<int32_t>(answer.size()))
    return askAgain("Non-numeric Input Error", "Please choose a number from 1 to 99.");
  if (answer == "0") return askAgain("Zero Input Error", "Please choose a number from 1 to 99.");
  // The conversion to 16 bits comes before the test for an empty answer, so the empty
  // answer of Cancel fails here like a number too large.
  if (answer.empty()) {
    a.kind = PerPageAnswer::Kind::Error;
    a.error = ZvError(kTypeMismatch, "Type mismatch");
    return a;
  }
  int64_t value = 0;
  for (char c : answer) {
    value = value * 10 + (c - '0');
    if (value > std::numeric_limits<int16_t>::max()) {
      a.kind = PerPageAnswer::Kind::Error;
      a.error = ZvError(err::kOverflow, ErrorText(err::kOverflow));
      return a;
    }
  }
  if (value >= 1 && value <= 99) {
    a.perPage = static_cast<int16_t>(value);
    return a;
  }
  return askAgain("Invalid Number of Records Per Page", "The valid range is 1 to 99.");
}

JobResult InsertPageBreaks(JobState& state, JobProgress& progress, const PageBreaksParams& params) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    std::string outFile;
    if (auto refusal = checkInput(state, params.inFile, ".BRK", outFile)) {
      result.message = *refusal;
      return JobOutcome::Refused;
    }
    const PerPageAnswer answer = CheckRecordsPerPage(params.answer);
    if (answer.kind == PerPageAnswer::Kind::AskAgain) {
      result.message = answer.message;
      return JobOutcome::Refused;
    }
    // A failed conversion abandons the job, and the abandoning deletes BASE.BRK.
    job.outputs.add(outFile);
    if (answer.kind == PerPageAnswer::Kind::Error) throw *answer.error;

    LineToolFiles io(job, params.inFile, outFile);
    job.start(result, kPageBreaksTitle, FileSize(params.inFile), io.lineCount);

    const int16_t iPerPage = answer.perPage;
    int16_t iOnPage = 0;
    int32_t labels = 0;
    std::string& line = state.gsLine;
    for (int32_t i = 1; i <= io.lineCount; ++i) {
      if (i == 40 && labels < 1) {
        result.message = NotRecordFileMessage();
        return JobOutcome::Refused;
      }
      if (!io.in.readLine(line)) break;
      result.lines = i;
      CleanLine(line);
      // Anywhere in the line: a body line that quotes a label counts as one.
      if (line.find("Record - ") != std::string::npos) {
        Add32(labels, 1);
        Inc16(iOnPage);
        job.progress.recordDone(labels);
      }
      if (iOnPage == iPerPage + 1) {
        io.out.line("\f");
        iOnPage = 1;
      }
      io.out.line(line);
      if (job.lineDone(i, io.lineCount)) return JobOutcome::Interrupted;
    }
    io.out.close();
    result.records = labels;
    job.finish(result);
    return JobOutcome::Done;
  });
}

}  // namespace zv
