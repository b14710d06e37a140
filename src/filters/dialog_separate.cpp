// DIALOG filter, specified types to separate files: up to five record files, each its own.
#include "filters/dialog_separate.h"

#include <array>
#include <memory>
#include <set>

#include "core/error.h"
#include "core/files.h"
#include "core/filter_frame.h"
#include "core/record_file_writer.h"

namespace zv {

namespace {

using sv = std::string_view;

// One output as the filter keeps it: its files, its count (which numbers its labels),
// and its own byte and line accounting inside the writer.
struct SepFile {
  RecordFileWriter writer;
  std::string proFile, indexFile;
  int32_t lSepCount = 0;
  std::string label;  // the last label written
  // Outputs 3 and 4 trimmed the number's text on its right only, keeping the blank
  // that leads it.
  bool twoBlanks = false;
};

class DialogSep final : public LineFilter {
 public:
  explicit DialogSep(const std::vector<SepOutput>& outputs) : outputs_(outputs) {}

  void begin(FilterFrame& f) override {
    types_ = dynamic_cast<TypeProgress*>(&f.progress);
    for (std::size_t k = 0; k < outputs_.size(); ++k) {
      auto file = std::make_unique<SepFile>();
      file->twoBlanks = k == 2 || k == 3;
      file->proFile = f.job.outputPath(outputs_[k].file + ".PRO");
      file->indexFile = f.job.outputPath(outputs_[k].file + ".NDX");
      file->writer.open(f.frame.outputs, file->proFile, file->indexFile);
      file->writer.shareIndexRec(gIndexRec);
      files_.push_back(std::move(file));
    }
  }

  void afterCleaning(FilterFrame& f) override {
    // The odometer moves after this, so the line in hand is one further.
    if (f.iInRecord == -1) Inc16(iSinceLabel, kSinceLabelLimit, {"input line", int64_t{f.lInLine} + 1});
  }

  // Built into the frame's loop (RunLines) rather than called from it once a line.
  [[gnu::always_inline]] void onLine(FilterFrame& f) override {
    JobState& job = f.job;
    const DialogLine l(f);
    const sv line = l.text;

    fsc.beforeRecord(f, l);

    // Every label opens a record; a wanted one chooses its file. An unwanted label
    // leaves the type as it was: behind a kept record with no prompt between, its
    // record goes on into that file under a label of its own.
    const DialogLabel label = TestDialogLabel(l);
    if (label.test == LabelTest::Label) {
      f.iInRecord = -1;
      f.iJustLabelled = -1;
      Add32(job.glRecNum, 1);
      iSinceLabel = 0;
      f.progress.recordDone(job.glRecNum);
      for (std::size_t k = 0; k < outputs_.size(); ++k) {
        if (label.format == outputs_[k].type) {
          iCurType = static_cast<int16_t>(k + 1);
          Add32(lKeptAll, 1);
          break;
        }
      }
      if (iCurType != 0) {
        SepFile& out = current();
        if (!f.gsPrevLine.empty()) {
          out.writer.writeBlank();
          if (!sBeforePrevEmpty) out.writer.writeBlank();
        }
        Add32(out.lSepCount, 1);
        out.label = out.twoBlanks ? "Record -  " + std::to_string(out.lSepCount) : RecordLabel(out.lSepCount);
        labelTo(out);
        out.writer.writeBlank();
        if (types_) types_->typeRecordDone(iCurType, out.lSepCount);
      }
    }

    if (DialogEndsRecord(line)) {
      if (f.iInRecord == -1 && f.gsPrevLine.size() > 1 && iCurType != 0) current().writer.writeBlank();
      f.iInRecord = 0;
      iCurType = 0;
    }

    if (f.iInRecord == -1) {
      if (f.iJustLabelled == -1) {
        f.iJustLabelled = 0;
      } else if (iCurType != 0) {
        if (iSinceLabel == 1) {
          if (!line.empty()) write(f, line);
        } else if (!(line.empty() && f.gsPrevLine.empty())) {
          write(f, line);
        }
      }
    }

    fsc.afterRecord(f, l);
    sBeforePrevEmpty = f.gsPrevLine.empty();
  }

  bool foundRecords(const FilterFrame&) const override { return lKeptAll > 0; }

  void atEndOfInput(FilterFrame& f) override {
    // A type without records leaves no files.
    for (auto& file : files_) {
      if (file->lSepCount != 0) continue;
      file->writer.abandon();
      for (const std::string& name : {file->proFile, file->indexFile}) {
        f.frame.outputs.forget(name);
        KillIfExists(name);
      }
    }
    if (f.iInRecord == -1 && iCurType != 0) write(f, f.gsLine);
    // Only a file of more than one record is closed by FinishIndex: the single record
    // of a file keeps the end line and length its index entry got when it was made.
    int32_t written = 0;
    for (auto& file : files_) {
      if (file->lSepCount > 1) file->writer.FinishIndex(file->lSepCount);
      Add32(written, file->lSepCount);
    }
    // The result counts the records written over all the files.
    f.job.glRecNum = written;
  }

  void close(FilterFrame&) override {
    for (auto& file : files_)
      if (file->lSepCount != 0) file->writer.close();
  }

  int16_t fscLines() const override { return fsc.iFscLines; }

  Message zeroRecordsMessage() const override {
    return {std::string(kZeroRecordsTitle), std::string(kNoTypesText)};
  }

 private:
  SepFile& current() { return *files_[static_cast<std::size_t>(iCurType - 1)]; }

  // The label of a new record. The files share one index record buffer, as they
  // always have (each writer keeps its record in gIndexRec): a new entry takes its end
  // line and length from whatever entry of any file was handled last, until
  // FinishIndex or the next label puts them right.
  void labelTo(SepFile& out) {
    out.writer.writeText(out.label, out.lSepCount, true, static_cast<int64_t>(out.label.size()));
  }

  // A text line of the current record, counted at gsLine's length.
  void write(FilterFrame& f, sv text) {
    SepFile& out = current();
    out.writer.writeText(text, out.lSepCount, false, static_cast<int64_t>(f.gsLine.size()));
  }

  const std::vector<SepOutput>& outputs_;
  std::vector<std::unique_ptr<SepFile>> files_;
  DialogFsc fsc{DialogFsc::LogoffWords::Anywhere};
  IndexRec gIndexRec;  // the one record buffer of all the files' index traffic
  TypeProgress* types_ = nullptr;  // the observer, when it shows the types' counts
  int16_t iSinceLabel = 0;
  int16_t iCurType = 0;
  int32_t lKeptAll = 0;
  bool sBeforePrevEmpty = true;  // sBeforePrev, of which only its emptiness is asked
};

}  // namespace

bool RefusedInFileName(char c) {
  const auto code = static_cast<unsigned char>(c);
  if (code <= 7 || (code >= 9 && code <= 21)) return true;
  return sv("\"*/:<>?\\|").find(c) != sv::npos;
}

std::string RefusedCharacterText(char c) { return std::string(1, c) + " is not a valid character in a file name"; }

bool CheckSepOutputs(const JobState& job, const SepTypesParams& params, Message& message) {
  std::vector<std::string> types;
  for (const SepOutput& o : params.outputs) types.push_back(o.type);
  if (!CheckTypes(types, message)) return false;
  std::set<std::string> made;
  for (const SepOutput& o : params.outputs) {
    if (o.file.empty()) {
      message = {std::string(kNotAllFilledTitle), std::string(kFileLeftBlankText)};
      return false;
    }
    if (o.file.size() > kMaxFileNameLength) {
      message = {std::string(kFileNameTooLongTitle), std::string(kFileNameTooLongText)};
      return false;
    }
    for (char c : o.file) {
      if (RefusedInFileName(c)) {
        message = {std::string(), RefusedCharacterText(c)};
        return false;
      }
    }
    const std::string pro = job.outputPath(o.file + ".PRO");
    const std::string ndx = job.outputPath(o.file + ".NDX");
    if (!made.insert(pro).second) {
      message = {std::string(kSameFileTitle), std::string(kSameFileText)};
      return false;
    }
    if (SameFile(params.input.gsInFile, pro) || SameFile(params.input.gsInFile, ndx)) {
      message = {std::string(kProInputTitle), std::string(kInputIsOutputText)};
      return false;
    }
  }
  return true;
}

JobResult FilterDialogSep(JobState& job, JobProgress& progress, const SepTypesParams& params) {
  job.outDir = params.input.outDir;
  Message refusal;
  if (!CheckSepOutputs(job, params, refusal)) {
    JobResult result;
    result.outcome = JobOutcome::Refused;
    result.message = refusal;
    return result;
  }
  DialogSep filter(params.outputs);
  return RunLineFilter(job, progress, params.input,
                       FilterInfo{.title = kDialogSepTitle, .makesFsc = true, .makesPro = false, .markedBytes = kDialogMarkedBytes},
                       filter);
}

}  // namespace zv
