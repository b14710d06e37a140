// Temporary folders, file helpers and the recording observer of the tests.
#include "support/test_support.h"

#include <cctype>
#include <fstream>
#include <random>
#include <sstream>

#include "core/error.h"

namespace zv::test {

TempDir::TempDir() {
  std::random_device rd;
  for (;;) {
    path_ = std::filesystem::temp_directory_path() / ("zv_test_" + std::to_string(rd()));
    if (std::filesystem::create_directory(path_)) break;
  }
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ec);
  std::filesystem::remove_all(path_, ec);
}

void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

bool FileExists(const std::string& path) { return std::filesystem::exists(path); }

std::string CaseName(std::size_t index, std::string_view text) {
  std::string name = index < 10 ? "n0" : "n";
  name += std::to_string(index);
  bool gap = true;
  std::size_t kept = 0;
  for (const char c : text) {
    if (kept == 40) break;
    if (std::isalnum(static_cast<unsigned char>(c)) != 0 && static_cast<unsigned char>(c) < 128) {
      if (gap) name += '_';
      name += c;
      gap = false;
      ++kept;
    } else {
      gap = true;
    }
  }
  return name;
}

std::string CrLf(const std::vector<std::string>& lines) {
  std::string s;
  for (const auto& l : lines) s += l + "\r\n";
  return s;
}

void RecordingProgress::jobStarted(const Start& start) {
  title = start.title;
  pnlFileSize = std::to_string(start.fileSize);
  pnlStartTime = start.startTime;
  pnlFileLines = std::to_string(start.totalLines);
}

void RecordingProgress::lineDone(int32_t line, int32_t totalLines) {
  lastLine = line;
  lineCount = totalLines;
  if (onLine) onLine(line);
}

void RecordingProgress::jobFinished(std::string_view finishTime, std::string_view elapsed) {
  pnlFinishTime = finishTime;
  pnlElapsed = elapsed;
}

FilterRun RunFilterOn(FilterFn filter, const TempDir& dir, const std::string& capture, const std::string& name,
                      RecordingProgress* progress) {
  return RunFilterWith(filter, dir, capture, name, progress);
}

FilterRun RunFilterWith(const FilterCall& filter, const TempDir& dir, const std::string& capture,
                        const std::string& name, RecordingProgress* progress) {
  const std::string input = dir.file(name);
  WriteFile(input, capture);
  RecordingProgress local;
  RecordingProgress& p = progress ? *progress : local;
  FilterRun run;
  p.running = run.job.get();
  run.result = filter(*run.job, p, FilterInput{input, dir.path().string()});
  run.outcome = run.result.outcome;
  if (run.result.error) {
    run.threw = true;
    run.errorNumber = run.result.error->number();
  }
  const std::string stem = dir.file(name.substr(0, name.rfind('.')));
  run.proExists = FileExists(stem + ".PRO");
  run.ndxExists = FileExists(stem + ".NDX");
  run.fscExists = FileExists(stem + ".FSC");
  if (run.proExists) run.pro = ReadFile(stem + ".PRO");
  if (run.fscExists) run.fsc = ReadFile(stem + ".FSC");
  if (run.ndxExists) run.ndx = ReadIndexFile(stem + ".NDX");
  return run;
}

std::string RecordBytes(const std::string& pro, const IndexRec& rec) {
  return pro.substr(static_cast<std::size_t>(rec.startByte), static_cast<std::size_t>(rec.byteLen));
}

::testing::AssertionResult IndexAgreesWithPro(const std::string& pro, const std::vector<IndexRec>& ndx,
                                              const std::function<int32_t(std::string_view)>& shortfall) {
  std::vector<int32_t> offsets;  // counted byte offset of each label
  std::vector<int32_t> lines;    // its 1-based line number
  int32_t lineCount = 0, counted = 0;
  for (std::size_t at = 0; at < pro.size();) {
    ++lineCount;
    const std::size_t end = pro.find("\r\n", at);
    if (end == std::string::npos) return ::testing::AssertionFailure() << "line " << lineCount << " has no CR LF";
    const std::string_view text(pro.data() + at, end - at);
    if (text.starts_with("Record - ")) {
      offsets.push_back(counted);
      lines.push_back(lineCount);
    } else if (!text.empty() && shortfall) {
      counted -= shortfall(text);
    }
    counted += static_cast<int32_t>(text.size()) + 2;
    at = end + 2;
  }
  if (ndx.size() != offsets.size()) {
    return ::testing::AssertionFailure() << ndx.size() << " index entries for " << offsets.size() << " labels";
  }
  const auto n = offsets.size();
  for (std::size_t k = 0; k < n; ++k) {
    const IndexRec& r = ndx[k];
    const bool last = k + 1 == n;
    const int32_t byteLen = last ? counted - offsets[k] : offsets[k + 1] - offsets[k] - 2;
    const int32_t endLine = last ? lineCount : lines[k + 1] - 1;
    if (r.recNum != static_cast<int32_t>(k + 1) || r.startByte != offsets[k] || r.byteLen != byteLen ||
        r.startLine != lines[k] || r.endLine != endLine || r.keepFlag != 0) {
      return ::testing::AssertionFailure()
             << "record " << k + 1 << ": index has recNum " << r.recNum << " startByte " << r.startByte << " byteLen "
             << r.byteLen << " startLine " << r.startLine << " endLine " << r.endLine << "; the .PRO has its label at byte "
             << offsets[k] << ", line " << lines[k] << ", expected byteLen " << byteLen << ", endLine " << endLine;
    }
  }
  return ::testing::AssertionSuccess();
}

}  // namespace zv::test
