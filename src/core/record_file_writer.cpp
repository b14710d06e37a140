// The .PRO/.NDX bookkeeping shared by every tool that writes records.
#include "core/record_file_writer.h"

#include "core/error.h"

namespace zv {

std::string RecordLabel(int32_t recNum) { return "Record - " + std::to_string(recNum); }

void RecordFileWriter::open(OutputFiles& outputs, const std::string& proFile, const std::string& indexFile) {
  held_ = false;
  outputs.add(proFile);
  pro_.open(proFile);
  KillIfExists(indexFile);
  outputs.add(indexFile);
  ndx_.open(indexFile);
}

void RecordFileWriter::writeBlank() {
  pro_.blank();
  Count32(lOutBytes, 2, kBytesLimit, {"record", lLastIndexed});
  Count32(glOutLine, 1, kLinesLimit, {"record", lLastIndexed});
}

void RecordFileWriter::beginRecord(int32_t recNum, int64_t countedLength) {
  Count32(glOutLine, 1, kLinesLimit, {"record", recNum});
  IndexRec& rec = gIndexRec;
  rec.recNum = recNum;
  rec.startByte = lOutBytes;
  rec.startLine = glOutLine;
  rec.keepFlag = 0;
  rec.setKeepFile("");
  putRec(recNum, rec);
  if (recNum > 1) {
    rec = getRec(recNum - 1);
    rec.endLine = glOutLine - 1;
    int32_t len = lOutBytes;
    Add32(len, -static_cast<int64_t>(rec.startByte) - 2);
    rec.byteLen = len;
    putRec(recNum - 1, rec);
  }
  Count32(lOutBytes, countedLength + 2, kBytesLimit, {"record", recNum});
  lLastIndexed = recNum;
}

void RecordFileWriter::FinishIndex(int32_t recNum) {
  IndexRec& rec = gIndexRec;
  rec = getRec(recNum);
  rec.endLine = glOutLine;
  int32_t len = lOutBytes;
  Add32(len, -static_cast<int64_t>(rec.startByte));
  rec.byteLen = len;
  putRec(recNum, rec);
}

// The record begun last stays in memory until another is put: it is always re-read
// and put again when the next label closes it, so each record is encoded once.
void RecordFileWriter::putRec(int32_t k, const IndexRec& rec) {
  if (held_ && heldAt_ != k) ndx_.put(heldAt_, heldRec_);
  held_ = true;
  heldAt_ = k;
  heldRec_ = rec;
}

IndexRec RecordFileWriter::getRec(int32_t k) { return held_ && heldAt_ == k ? heldRec_ : ndx_.get(k); }

void RecordFileWriter::close() {
  if (held_) ndx_.put(heldAt_, heldRec_);
  held_ = false;
  pro_.close();
  ndx_.close();
}

void RecordFileWriter::abandon() noexcept {
  held_ = false;
  pro_.abandon();
  ndx_.abandon();
}

}  // namespace zv
