// The rules a filter run and an index build keep on any input, and the mutations.
#include "fuzz/fuzz_harness.h"

#include <algorithm>
#include <any>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "commands/command_table.h"
#include "core/dispatcher.h"
#include "core/error.h"
#include "core/index_rec.h"
#include "core/input_file.h"
#include "filters/adhoc.h"
#include "filters/dialog_pick.h"
#include "filters/dialog_separate.h"
#include "records/build_index.h"
#include "records/record_file.h"

namespace zv::fuzz {

namespace fs = std::filesystem;

namespace {

std::string readAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeAll(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void emptyFolder(const std::string& dir) {
  fs::create_directories(dir);
  for (const auto& entry : fs::directory_iterator(dir)) fs::remove_all(entry.path());
}

std::vector<std::string> namesIn(const std::string& dir) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(dir)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// The line numbers (from 1) of the label lines, lines ending at CR LF, LF or CR as
// the readers split them; a label begins its line with "Record - " exactly.
std::vector<int64_t> labelLines(const std::string& text) {
  std::vector<int64_t> labels;
  int64_t line = 0;
  for (std::size_t at = 0; at < text.size();) {
    ++line;
    if (text.compare(at, 9, "Record - ") == 0) labels.push_back(line);
    const std::size_t end = text.find_first_of("\r\n", at);
    if (end == std::string::npos) break;
    at = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
  return labels;
}

// Whether every line end of the text is CR LF: only then do an index's offsets, which
// count each line end as two bytes, land where they point.
bool allCrLf(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) return false;
    if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')) return false;
  }
  return true;
}

const std::string kMismatch = "The index does not match its record file";

// Reads every record of `ndx` from `pro`, line by line and (with `display`) as the
// sifter shows it. "" when all read; otherwise the record that did not and why.
std::string readEveryRecord(const std::string& pro, const std::string& ndx, bool mayMismatch, bool display) {
  RecordReader reader(pro);
  std::string problem;
  std::size_t lines = 0;
  ForEachIndexRec(ndx, [&](int32_t k, IndexRec& rec) {
    if (!problem.empty()) return false;
    try {
      reader.readRecord(k, rec, [&](int64_t, const std::string&) { ++lines; });
      if (display) (void)reader.readDisplay(k, rec);
    } catch (const ZvError& e) {
      if (!(mayMismatch && e.number() == err::kPastEnd && e.reason().starts_with(kMismatch)))
        problem = "record " + std::to_string(k) + " does not read: error " + std::to_string(e.number()) + " " +
                  e.text() + " " + e.reason();
    }
    return false;
  });
  return problem;
}

// BuildIndex as the sifter runs it for a chosen .PRO. (The one call of the builder
// here: its progress observer is the only thing that ties this file to its interface.)
JobResult buildIndex(JobState& job) { return BuildIndex(job, NoProgress()); }

// The index rules for a .PRO that is at `proPath` now.
std::string checkIndexOf(const std::string& proPath, const std::string& ndxPath) {
  const std::string before = readAll(proPath);
  const std::vector<int64_t> labels = labelLines(before);
  JobState job;
  job.gsProFile = proPath;
  job.gsIndexFile = ndxPath;
  const JobResult built = buildIndex(job);
  const JobOutcome outcome = built.outcome;
  std::string failure;
  if (built.error) failure = std::to_string(built.error->number()) + " " + built.error->reason();
  if (readAll(proPath) != before) return "the index build changed its record file";
  const bool adjacentOneTwo = labels.size() >= 2 && labels[1] == labels[0] + 1;
  if (labels.size() < 2) {
    if (outcome != JobOutcome::Refused) return "fewer than two labels, and not refused: " + failure;
  } else if (adjacentOneTwo) {
    if (!failure.starts_with("62 Labels 1 and 2 stand on adjacent lines (lines " + std::to_string(labels[0])))
      return "labels 1 and 2 adjacent, and not error 62 with its reason: " + failure;
  } else {
    if (outcome != JobOutcome::Done) return "a record file of " + std::to_string(labels.size()) +
                                               " labels was not indexed: " + failure;
    if (RecordCount(ndxPath) != static_cast<int32_t>(labels.size()))
      return "the index holds " + std::to_string(RecordCount(ndxPath)) + " records for " +
             std::to_string(labels.size()) + " labels";
    return readEveryRecord(proPath, ndxPath, !allCrLf(before), true);
  }
  if (fs::exists(ndxPath)) return "a build that did not succeed left an index";
  return {};
}

}  // namespace

namespace {

// The filters that take more than a capture, with the parameters the runs give them:
// markers and types that the seeds and the mutations' tokens hold.
constexpr int32_t kAdHoc = 1, kDialogTypes = 201, kDialogSeparate = 301;

std::any paramsFor(int32_t command, const FilterInput& input) {
  switch (command) {
    case kAdHoc: return AdHocParams{input, "?", ">>>", true};
    case kDialogTypes: return PikTypesParams{input, {"5", "3", "8", "3,K", "KWIC"}};
    case kDialogSeparate: return SepTypesParams{input, {{"5", "five"}, {"3,K", "threek"}, {"8", "eight"}}};
    default: return input;
  }
}

}  // namespace

std::vector<int32_t> FilterCommands() {
  std::vector<int32_t> numbers;
  for (const Command& c : CommandTable())
    if (c.input == CommandInput::Capture && c.handler != nullptr) numbers.push_back(c.number);
  for (int32_t own : {kAdHoc, kDialogTypes, kDialogSeparate})
    if (FindCommand(CommandTable(), own) != nullptr) numbers.push_back(own);
  return numbers;
}

std::string FilterName(int32_t command) {
  // The rows the dialogs' Begin buttons run have no name of their own: their dialog's.
  const Command* c = FindCommand(CommandTable(), command == kDialogTypes || command == kDialogSeparate ? command - 1 : command);
  return c == nullptr ? std::to_string(command) : std::string(c->cliName);
}

std::string CheckFilter(int32_t command, const std::string& capture, const std::string& dir) {
  emptyFolder(dir);
  const std::string input = (fs::path(dir) / "in.log").string();
  writeAll(input, capture);
  JobState job;
  CommandContext context{job, NoProgress(), paramsFor(command, FilterInput{input, dir})};
  const JobResult result = RunCommand(command, context, CommandTable());
  if (readAll(input) != capture) return "the capture was changed";

  const std::vector<std::string> left = namesIn(dir);
  switch (result.outcome) {
    case JobOutcome::ZeroRecords:
    case JobOutcome::Failed:
      if (result.outcome == JobOutcome::Failed && !result.error) return "failed without an error";
      if (left != std::vector<std::string>{"in.log"}) return "a job that did not succeed left " + std::to_string(left.size() - 1) + " outputs";
      return {};
    case JobOutcome::Done:
      break;
    default:
      return "ended neither done, nor with zero records, nor failed";
  }
  // Every filter writes in.PRO and in.NDX, but the one of separate files, which
  // writes a pair for each type that had records (and the .FSC as in.FSC).
  const bool separate = command == kDialogSeparate;
  std::vector<std::string> stems;
  for (const std::string& name : left) {
    const fs::path p(name);
    if (name == "in.log" || name == "in.FSC") continue;
    if (p.extension() != ".PRO" && p.extension() != ".NDX") return "an unexpected output " + name;
    if (p.extension() == ".PRO") stems.push_back(p.stem().string());
  }
  if (stems.empty() || (!separate && stems != std::vector<std::string>{"in"})) return "done without its .PRO";
  for (const std::string& stem : stems) {
    const std::string pro = (fs::path(dir) / (stem + ".PRO")).string();
    const std::string ndx = (fs::path(dir) / (stem + ".NDX")).string();
    if (!fs::exists(ndx)) return stem + ".PRO without its .NDX";
    if (fs::file_size(ndx) % kIndexRecLen != 0) return "an index that is no whole number of records";
    // The types filters count every label of the capture, not the records they keep.
    if (command != kDialogTypes && !separate && RecordCount(ndx) != result.records)
      return "the index holds " + std::to_string(RecordCount(ndx)) + " records, the job said " +
             std::to_string(result.records);
    // Line by line only: a capture that ends on a record's start line has that line
    // counted at its label's length (the filters' end-of-input rule), so the last
    // record's byte length can pass the end of the file, and its display then fails.
    // The types filters' own indexes may not match, as they have always done: an
    // unwanted label inside a kept record writes the label again and counts it at the
    // line's length, and a file of separate files with a single record keeps the end
    // line and length the shared index record held, which need not be its own.
    const bool mayMismatch = command == kDialogTypes || separate;
    if (std::string problem = readEveryRecord(pro, ndx, mayMismatch, false); !problem.empty())
      return stem + ".NDX: " + problem;
    if (std::string problem = checkIndexOf(pro, (fs::path(dir) / "built.NDX").string()); !problem.empty())
      return "index built of " + stem + ".PRO: " + problem;
  }
  return {};
}

std::string CheckRecordFile(const std::string& pro, const std::string& dir) {
  emptyFolder(dir);
  const std::string path = (fs::path(dir) / "r.PRO").string();
  writeAll(path, pro);
  return checkIndexOf(path, (fs::path(dir) / "r.NDX").string());
}

std::vector<std::string> SeedCorpus(const std::string& corpusDir, const std::string& samplesDir) {
  std::vector<std::string> paths;
  for (const std::string& dir : {corpusDir, samplesDir}) {
    if (!fs::is_directory(dir)) continue;
    for (const auto& entry : fs::directory_iterator(dir))
      if (entry.is_regular_file() && entry.path().extension() != ".md") paths.push_back(entry.path().string());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> seeds;
  for (const std::string& p : paths) seeds.push_back(readAll(p));
  return seeds;
}

namespace {

// What the filters and the index builder look for, and bytes that trouble readers.
const std::string_view kTokens[] = {
    "Record - ", "Record - 1", "Record - 2", "Record -  3", "record - 1", " Record - 1",
    "REFERENCE  ", "REFERENCE  7", "L1  ANSWER 1 OF 2", "L2  ANSWER 2 OF 2", "*** BIBLIO GROUP ***",
    "-12- X (CA)", "-- ()", "=> ", "=> d l1 1-3", "=> logoff",
    "?", " ?", "?b 1", "?ds", "?s a AND b", "?t 1/5/1-3", " 1/5/1", " 2/3,K/7", "Logoff:", " Logoff: level 1",
    "logoff", "OFF", ">>>", "DOCUMENT=", "  DOCUMENT  ", "* END OF DOCUMENT.", "End of document.",
    "End of documents in list", "..s cat", "..S", "//TEXT", "CURRENT SET_2:", "Press ENTER", "SS 1 /C?",
    "USER:", "PROG:", "CONTINUE PRINTING?", "READY TO PRINT FROM", "TIME", "GOOD BYE!", "***",
    "Database: ", "       1", "      12 ", "END OF DOCUMENT", "AN  ", "TX  ", "HAPPY HOUR",
    "\r", "\n", "\r\n", "\r\r\n", std::string_view("\0", 1), "\t", "\f", "\x1a", "\xff", "\x80", "\xa0",
};
constexpr std::size_t kTokenCount = std::size(kTokens);

}  // namespace

Mutator::Mutator(uint32_t seed, std::vector<std::string> seeds) : random_(seed), seeds_(std::move(seeds)) {
  if (seeds_.empty()) seeds_.emplace_back();
}

std::string Mutator::next() {
  std::string s = seeds_[below(static_cast<uint32_t>(seeds_.size()))];
  const uint32_t steps = 1 + below(4);
  for (uint32_t i = 0; i < steps; ++i) mutateOnce(s);
  constexpr std::size_t kMostBytes = 96 * 1024;  // enough for every kind of line, short enough to be quick
  if (s.size() > kMostBytes) s.resize(kMostBytes);
  return s;
}

void Mutator::mutateOnce(std::string& s) {
  switch (below(10)) {
    case 0:  // bytes changed
      for (uint32_t n = 1 + below(8); n > 0 && !s.empty(); --n) s[below(static_cast<uint32_t>(s.size()))] = static_cast<char>(below(256));
      break;
    case 1: {  // a token, most often at the start of a line
      std::size_t pos = at(s);
      if (below(3) != 0) {
        const std::size_t lineStart = s.rfind('\n', pos == 0 ? 0 : pos - 1);
        pos = lineStart == std::string::npos ? 0 : lineStart + 1;
      }
      const std::string token(kTokens[below(static_cast<uint32_t>(kTokenCount))]);
      s.insert(pos, token + (below(2) == 0 ? "\r\n" : ""));
      break;
    }
    case 2: {  // a range deleted
      const std::size_t from = at(s);
      s.erase(from, below(1 + static_cast<uint32_t>(std::min<std::size_t>(s.size() - from, 4096))));
      break;
    }
    case 3: {  // a range copied elsewhere
      const std::size_t from = at(s);
      const std::string piece = s.substr(from, below(2048));
      s.insert(at(s), piece);
      break;
    }
    case 4: {  // a piece of another seed spliced in
      const std::string& other = seeds_[below(static_cast<uint32_t>(seeds_.size()))];
      const std::size_t from = at(other);
      s.insert(at(s), other.substr(from, below(4096)));
      break;
    }
    case 5:  // cut short
      s.resize(at(s));
      break;
    case 6: {  // line ends of a range changed to LF, CR or nothing
      const std::size_t from = at(s);
      const std::size_t to = std::min(s.size(), from + below(8192));
      const uint32_t kind = below(3);
      std::string out = s.substr(0, from);
      for (std::size_t i = from; i < to; ++i) {
        if (s.compare(i, 2, "\r\n") == 0) {
          if (kind == 0) out += '\n';
          if (kind == 1) out += '\r';
          ++i;
        } else {
          out += s[i];
        }
      }
      s = out + s.substr(to);
      break;
    }
    case 7: {  // a line repeated, up to a few hundred times
      const std::size_t from = s.rfind('\n', at(s));
      const std::size_t start = from == std::string::npos ? 0 : from + 1;
      const std::size_t end = s.find('\n', start);
      const std::string line = s.substr(start, end == std::string::npos ? std::string::npos : end - start + 1);
      std::string run;
      for (uint32_t n = 1 + below(300); n > 0; --n) run += line;
      s.insert(start, run);
      break;
    }
    case 8:  // a long line
      s.insert(at(s), std::string(1 + below(40000), static_cast<char>('A' + below(26))) + "\r\n");
      break;
    default:  // bytes inserted
      for (uint32_t n = 1 + below(16); n > 0; --n) s.insert(at(s), 1, static_cast<char>(below(256)));
      break;
  }
}

}  // namespace zv::fuzz
