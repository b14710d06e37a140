// One .PRO with its .NDX, written line by line with the index kept in step.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/error.h"
#include "core/index_rec.h"
#include "core/output_files.h"
#include "core/text_out.h"

namespace zv {

// The record label text: "Record - " and the number without blanks.
std::string RecordLabel(int32_t recNum);

// A record file being written: its own byte count, line count and index, so that a job
// can hold several (DIALOG types to separate files writes up to five) and every tool
// that writes records uses the same accounting.
//
// Every line printed is accounted one of two ways: a blank line is 2 bytes and one
// line; a text line (and a label) goes through UpdateIndex, which writes an index
// record when a new record begins and closes the one before. The caller owns the
// record numbering; it passes the current number (glRecNum, or the file's own count)
// and whether this line is the record's label line.
class RecordFileWriter {
 public:
  RecordFileWriter() = default;
  RecordFileWriter(const RecordFileWriter&) = delete;
  RecordFileWriter& operator=(const RecordFileWriter&) = delete;

  // Registers both files with `outputs`, opens the .PRO (replacing an older one),
  // deletes an older .NDX (KillIndexFile: no old record outlives the job) and opens
  // the new one.
  void open(OutputFiles& outputs, const std::string& proFile, const std::string& indexFile);
  bool isOpen() const noexcept { return pro_.isOpen(); }
  const std::string& proFile() const noexcept { return pro_.path(); }

  int32_t lOutBytes = 0;     // bytes written; the 0-based offset of the next line
  int32_t glOutLine = 0;     // lines written; the number of the last one
  int32_t lLastIndexed = 0;  // the record number at the last UpdateIndex
  IndexRec gIndexRec;        // this file's record buffer

  // A blank line, accounted as 2 bytes and one line.
  void writeBlank();
  // A text line, then UpdateIndex counting the line's own length.
  void writeText(std::string_view line, int32_t recNum, bool justLabelled) {
    writeText(line, recNum, justLabelled, static_cast<int64_t>(line.size()));
  }
  // The same, with UpdateIndex counting `countedLength` bytes for the line: for a
  // writer whose count differs from what it prints (the label's length is counted for
  // any line printed on the pass that labelled).
  void writeText(std::string_view line, int32_t recNum, bool justLabelled, int64_t countedLength) {
    pro_.line(line);
    UpdateIndex(recNum, justLabelled, countedLength);
  }
  // Prints the line without accounting for it (the quirk of a filter that writes a
  // line and counts it otherwise).
  void print(std::string_view line) { pro_.line(line); }

  // Runs after a line was printed:
  //  1. one more output line;
  //  2. when `recNum` differs from lLastIndexed and the line is a label, a new record
  //     begins: its index record is written (start byte lOutBytes, start line
  //     glOutLine), and the one before is closed: end line the line before, byte
  //     length stopping 2 bytes short of the new label;
  //  3. the printed line's bytes, `countedLength` + 2, are counted;
  //  4. lLastIndexed = recNum.
  void UpdateIndex(int32_t recNum, bool justLabelled, int64_t countedLength) {
    // Inline for the lines inside a record, which are nearly all of them.
    if (recNum != lLastIndexed && justLabelled) return beginRecord(recNum, countedLength);
    Count32(glOutLine, 1, kLinesLimit, {"record", recNum});
    Count32(lOutBytes, countedLength + 2, kBytesLimit, {"record", recNum});
    lLastIndexed = recNum;
  }
  // Closes record `recNum`: its end line, and a byte length that reaches the file's end
  // (so it counts the final line end, 2 more than any other record's).
  void FinishIndex(int32_t recNum);

  // Flushes and closes both files; a failure to write the tail throws.
  void close();
  // Closes without flushing: for files about to be removed.
  void abandon() noexcept;

 private:
  // What the reason line of an overflow calls the two counts.
  static constexpr std::string_view kBytesLimit = "the bytes of a .PRO (lOutBytes; the index holds 32-bit offsets)";
  static constexpr std::string_view kLinesLimit = "the lines of a .PRO (glOutLine)";

  // UpdateIndex for a label that begins a new record.
  void beginRecord(int32_t recNum, int64_t countedLength);
  void putRec(int32_t k, const IndexRec& rec);
  IndexRec getRec(int32_t k);

  TextOut pro_;
  IndexFile ndx_;
  bool held_ = false;  // heldRec_ belongs at heldAt_ and is not yet in ndx_
  int32_t heldAt_ = 0;
  IndexRec heldRec_;
};

}  // namespace zv
