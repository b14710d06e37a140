// Record files for the content tools' suites: written as a filter writes them, indexed
// by a filter's rules or by BuildIndex; a recording observer with the tools' panels.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "analysis/analysis_common.h"
#include "analysis/select_record_file.h"
#include "core/record_file_writer.h"
#include "records/build_index.h"
#include "records/record_file.h"
#include "support/test_support.h"

namespace zv::test {

// Records by their lines; the label and the empty line after it are added.
using Records = std::vector<std::vector<std::string>>;

enum class Indexer { Filter, BuildIndex };

inline const char* IndexerName(Indexer i) { return i == Indexer::Filter ? "FilterIndex" : "BuildIndex"; }

// The .PRO of `records` as a filter writes it: "Record - k", an empty line, the lines,
// and one empty line between records.
inline std::string ProText(const Records& records) {
  std::vector<std::string> lines;
  for (std::size_t k = 0; k < records.size(); ++k) {
    if (k > 0) lines.emplace_back();
    lines.push_back(RecordLabel(static_cast<int32_t>(k + 1)));
    lines.emplace_back();
    lines.insert(lines.end(), records[k].begin(), records[k].end());
  }
  return CrLf(lines);
}

// Writes dir/NAME.PRO and NAME.NDX (by a filter's bookkeeping or by BuildIndex) and
// returns what SelectRecordFile leaves for a .NDX chosen beside them.
inline RecordFileChoice WriteRecordFile(const TempDir& dir, const Records& records, Indexer indexer,
                                        const std::string& name = "r") {
  const std::string pro = dir.file(name + ".PRO"), ndx = dir.file(name + ".NDX");
  if (indexer == Indexer::Filter) {
    OutputFiles outputs;
    RecordFileWriter w;
    w.open(outputs, pro, ndx);
    for (std::size_t k = 0; k < records.size(); ++k) {
      const auto recNum = static_cast<int32_t>(k + 1);
      if (k > 0) w.writeBlank();
      w.writeText(RecordLabel(recNum), recNum, true);
      w.writeBlank();
      for (const std::string& line : records[k]) {
        if (line.empty())
          w.writeBlank();
        else
          w.writeText(line, recNum, false);
      }
    }
    w.FinishIndex(static_cast<int32_t>(records.size()));
    w.close();
    outputs.commit();
  } else {
    WriteFile(pro, ProText(records));
    JobState job;
    job.gsProFile = pro;
    job.gsIndexFile = ndx;
    if (!BuildIndex(job, NoProgress()).done()) ADD_FAILURE() << "no index of " << pro;
  }
  return {ndx, pro, ndx, dir.file(name)};
}

// The text of record k as a filter wrote it (label to the last line, no separator).
inline std::vector<std::string> RecordLines(const Records& records, std::size_t k) {
  std::vector<std::string> lines{RecordLabel(static_cast<int32_t>(k)), ""};
  lines.insert(lines.end(), records[k - 1].begin(), records[k - 1].end());
  return lines;
}

// The record numbers of the labels in an output file, in order.
inline std::vector<int> Labels(const std::string& text) {
  std::vector<int> out;
  for (std::size_t at = text.find("Record - "); at != std::string::npos; at = text.find("Record - ", at + 1))
    out.push_back(std::stoi(text.substr(at + 9)));
  return out;
}

// What a content tool shows: the frame's calls and its own panels. `onLine` runs in
// lineDone, the job's yield: tests raise the interrupt there.
class RecordingPanels : public AnalysisProgress {
 public:
  void jobStarted(const Start& start) override { title = start.title; totalLines = start.totalLines; }
  void lineDone(int32_t line, int32_t) override {
    lastLine = line;
    if (onLine) onLine(line);
  }
  void recordDone(int32_t record) override { records.push_back(record); }
  void caption(std::string_view text) override { captions.emplace_back(text); }
  void recordLine(int32_t n) override { recordLines.push_back(n); }
  void hitRecord(int32_t hits) override { lastHits = hits; }
  void hitLine(int32_t n) override { hitLines.push_back(n); }
  void uniqueWords(int32_t n) override { lastUnique = n; }

  std::string title;
  int32_t totalLines = 0, lastLine = 0, lastHits = 0, lastUnique = 0;
  std::vector<int32_t> records, recordLines, hitLines;
  std::vector<std::string> captions;
  std::function<void(int32_t)> onLine;
};

}  // namespace zv::test
