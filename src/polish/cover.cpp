// modCover: the header or cover page and the three ways of saving it.
#include "polish/cover.h"

#include <chrono>
#include <ctime>

#include "core/files.h"
#include "core/input_file.h"
#include "core/line_reader.h"
#include "core/text.h"
#include "core/word_wrap.h"
#include "polish/polish_files.h"

namespace zv {

namespace {

constexpr std::size_t kTextColumn = 13;
constexpr int16_t kWrapWidth = 70;
constexpr int16_t kWrapIndent = 3;

bool present(const std::string& text) { return !TrimBlanks(text).empty(); }

// A label, then the text at column 13 (a label that reached past it would put the
// text on a line of its own).
std::string atColumn13(std::string_view label, std::string_view text) {
  std::string s(label);
  if (s.size() >= kTextColumn) {
    s += "\r\n";
    s.append(kTextColumn - 1, ' ');
  } else {
    s.append(kTextColumn - 1 - s.size(), ' ');
  }
  s += text;
  return s;
}

void toBlock(TextOut& out, const CoverFields& f) {
  if (!present(f.to)) return;
  const std::string_view label = f.toLabel == ToLabel::Requester ? "Requester:"
                                 : f.toLabel == ToLabel::Client  ? "Client:"
                                                                 : "";
  out.line(atColumn13(label, f.to));
  out.blank();
}

void fromBlock(TextOut& out, const CoverFields& f, CoverLayout layout) {
  const std::string* boxes[] = {&f.from1, &f.from2, &f.from3};
  bool any = false;
  for (const std::string* b : boxes) any = any || present(*b);
  if (!any) return;
  if (layout == CoverLayout::Firm) {
    // A letterhead: the lines alone, no label.
    for (const std::string* b : boxes)
      if (present(*b)) out.line(*b);
  } else {
    // The label has no line end of its own: the first box shares its line.
    std::string_view label = f.fromLabel == FromLabel::Library    ? "Library:"
                             : f.fromLabel == FromLabel::Searcher ? "Searcher:"
                                                                  : "";
    for (const std::string* b : boxes) {
      if (!present(*b)) continue;
      out.line(atColumn13(label, *b));
      label = {};
    }
  }
  out.blank();
}

void wrappedBlock(TextOut& out, std::string_view heading, const std::string& text) {
  if (!present(text)) return;
  out.line(heading);
  out.blank();
  WordWrap(text, kWrapWidth, kWrapIndent, out);
  out.blank();
}

void tail(TextOut& out, const CoverFields& f, CoverLayout layout) {
  if (present(f.subject)) {
    out.line(atColumn13("Subject:", f.subject));
    out.blank();
  }
  std::string dateLine;
  if (present(f.date)) dateLine = layout == CoverLayout::Library ? atColumn13("Date:", f.date) : f.date;
  if (present(f.jobNo)) {
    out.line(dateLine + "     Job No.:  " + f.jobNo);
    out.blank();  // the line end that follows a date or job number
  } else if (present(f.date)) {
    out.line(dateLine);  // no empty line after a date alone
  }
  wrappedBlock(out, "Database(s) and Date(s) Searched:", f.database);
  wrappedBlock(out, "Memo:", f.memo);
}

// The output's name less its extension, or whole when its name has none.
std::string stemOf(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  const std::size_t dot = path.rfind('.');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return path;
  return path.substr(0, dot);
}

}  // namespace

CoverLayout LayoutOf(const CoverFields& fields) {
  return fields.fromLabel == FromLabel::Firm ? CoverLayout::Firm : CoverLayout::Library;
}

void WriteCoverPage(TextOut& out, const CoverFields& fields, CoverLayout layout) {
  if (layout == CoverLayout::Library) {
    toBlock(out, fields);
    fromBlock(out, fields, layout);
  } else {
    fromBlock(out, fields, layout);
    toBlock(out, fields);
  }
  tail(out, fields, layout);
}

JobResult SaveCoverPage(JobState& state, JobProgress& progress, const CoverParams& params, CoverLayout layout) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) -> JobOutcome {
    const SaveMode mode = params.fields.saveMode;
    const std::string& out = params.outFile;
    if (mode == SaveMode::SepFile) {
      job.start(result, kCoverTitle, 0, 0);
      job.outputs.add(out);
      TextOut page(out);
      WriteCoverPage(page, params.fields, layout);
      page.close();
      job.finish(result);
      return JobOutcome::Done;
    }
    if (mode == SaveMode::None) return JobOutcome::Done;

    const std::string& in = params.inFile;
    if (!Exist(in)) {
      result.message = Message{std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)};
      return JobOutcome::Refused;
    }
    // The output is opened before the input is read: the two must differ.
    if (out == in || SameFile(in, out)) {
      result.message = Message{std::string(kOutputIsInputTitle), std::string(kOutputIsInputText)};
      return JobOutcome::Refused;
    }
    std::string temp = stemOf(out) + ".TMP";
    // An output named BASE.TMP would be its own page file; its page goes beside it.
    if (temp == out) temp = out + ".TMP";
    if (temp == in || SameFile(in, temp)) {
      result.message = InputIsOutputMessage();
      return JobOutcome::Refused;
    }
    const int32_t lineCount = LineCount(in);
    job.start(result, kCoverTitle, FileSize(in), lineCount);

    // The page first, so that nothing is written to the output when it fails.
    job.outputs.add(temp);
    {
      TextOut page(temp);
      WriteCoverPage(page, params.fields, layout);
      page.close();
    }
    job.outputs.add(out);
    TextOut output(out);
    {
      LineReader page(temp);
      std::string line;
      while (page.readLine(line)) output.line(line);
    }
    KillIfExists(temp);
    job.outputs.forget(temp);
    if (mode == SaveMode::PrefixWithBreak) output.line("\f");

    LineReader input(in);
    std::string& line = state.gsLine;
    for (int32_t n = 1; n <= lineCount; ++n) {
      if (!input.readLine(line)) break;
      output.line(line);
      result.lines = n;
      if (job.lineDone(n, lineCount)) return JobOutcome::Interrupted;
    }
    output.close();
    job.finish(result);
    return JobOutcome::Done;
  });
}

std::string CoverDateText(int year, unsigned month, unsigned day) {
  static constexpr std::string_view kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                                 "July",    "August",   "September", "October", "November", "December"};
  const std::string_view name = month >= 1 && month <= 12 ? kMonths[month - 1] : std::string_view();
  return std::string(name) + " " + std::to_string(day) + ", " + std::to_string(year);
}

std::string TodayCoverDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return CoverDateText(local.tm_year + 1900, static_cast<unsigned>(local.tm_mon + 1),
                       static_cast<unsigned>(local.tm_mday));
}

std::string BoxText(std::string_view typed) {
  std::string s;
  s.reserve(typed.size());
  for (std::size_t i = 0; i < typed.size(); ++i) {
    const char c = typed[i];
    if (c == '\n' && (i == 0 || typed[i - 1] != '\r')) s += '\r';
    s += c;
  }
  return s;
}

}  // namespace zv
