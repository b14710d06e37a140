// The .PRO/.NDX bookkeeping shared by every tool that writes records.
#include "core/record_file_writer.h"

#include <limits>

#include "core/error.h"

namespace zv {

namespace {

// Add32 for the counters that move on every line: the same limits, with the sum
// inline and the call, which raises the overflow, made only past them.
inline void add32(int32_t& counter, int64_t amount, std::string_view what, int32_t recNum) {
  const int64_t sum = static_cast<int64_t>(counter) + amount;
  if (sum > std::numeric_limits<int32_t>::max() || sum < std::numeric_limits<int32_t>::min())
    Add32(counter, amount, what, {"record", recNum});
  else
    counter = static_cast<int32_t>(sum);
}

// What the reason line of their overflow calls the two counts.
constexpr std::string_view kBytesLimit = "the bytes of a .PRO (lOutBytes; the index holds 32-bit offsets)";
constexpr std::string_view kLinesLimit = "the lines of a .PRO (glOutLine)";

}  // namespace

std::string RecordLabel(int32_t recNum) { return "Record - " + std::to_string(recNum); }

void RecordFileWriter::open(OutputFiles& outputs, const std::string& proFile, const std::string& indexFile,
                            int32_t& glExist) {
  outputs.add(proFile);
  pro_.open(proFile);
  KillIfExists(indexFile, glExist);
  outputs.add(indexFile);
  ndx_.open(indexFile);
}

void RecordFileWriter::writeBlank() {
  pro_.blank();
  add32(lOutBytes, 2, kBytesLimit, lLastIndexed);
  add32(glOutLine, 1, kLinesLimit, lLastIndexed);
}

void RecordFileWriter::writeText(std::string_view line, int32_t recNum, bool justLabelled, int64_t countedLength) {
  pro_.line(line);
  UpdateIndex(recNum, justLabelled, countedLength);
}

void RecordFileWriter::UpdateIndex(int32_t recNum, bool justLabelled, int64_t countedLength) {
  add32(glOutLine, 1, kLinesLimit, recNum);
  IndexRec& rec = gIndexRec;
  if (recNum != lLastIndexed && justLabelled) {
    rec.recNum = recNum;
    rec.startByte = lOutBytes;
    rec.startLine = glOutLine;
    rec.keepFlag = 0;
    rec.setKeepFile("");
    ndx_.put(recNum, rec);
    if (recNum > 1) {
      rec = ndx_.get(recNum - 1);
      rec.endLine = glOutLine - 1;
      int32_t len = lOutBytes;
      Add32(len, -static_cast<int64_t>(rec.startByte) - 2);
      rec.byteLen = len;
      ndx_.put(recNum - 1, rec);
    }
  }
  add32(lOutBytes, countedLength + 2, kBytesLimit, recNum);
  lLastIndexed = recNum;
}

void RecordFileWriter::FinishIndex(int32_t recNum) {
  IndexRec& rec = gIndexRec;
  rec = ndx_.get(recNum);
  rec.endLine = glOutLine;
  int32_t len = lOutBytes;
  Add32(len, -static_cast<int64_t>(rec.startByte));
  rec.byteLen = len;
  ndx_.put(recNum, rec);
}

void RecordFileWriter::close() {
  pro_.close();
  ndx_.close();
}

void RecordFileWriter::abandon() noexcept {
  pro_.abandon();
  ndx_.abandon();
}

}  // namespace zv
