// The .PRO/.NDX bookkeeping shared by every tool that writes records.
#include "core/record_file_writer.h"

#include <charconv>
#include <cstring>

#include "core/error.h"

namespace zv {

std::string RecordLabel(int32_t recNum) {
  // Made in place: a label is made for every record a filter finds.
  constexpr std::string_view kText = "Record - ";
  char label[kText.size() + 12];
  std::memcpy(label, kText.data(), kText.size());
  const auto end = std::to_chars(label + kText.size(), label + sizeof label, recNum).ptr;
  return std::string(label, end);
}

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
  // The new record takes the buffer's end line and length, whatever they are: its own
  // come when the next label or FinishIndex closes it. It is held open in memory.
  IndexRec& rec = *rec_;
  rec.recNum = recNum;
  rec.startByte = lOutBytes;
  rec.startLine = glOutLine;
  rec.keepFlag = 0;
  rec.setKeepFile("");
  const Held opened{recNum, rec.startByte, rec.startLine, rec.endLine, rec.byteLen};
  if (recNum > 1) {
    // The record before, closed: its end line is the line before the label, and its
    // length stops 2 bytes short of it. It goes to the file, encoded once, and the
    // buffer ends up holding it.
    if (held_ && held.recNum == recNum - 1) {
      rec.recNum = held.recNum;  // keepFlag and keepFile as every record begins: 0, blank
      rec.startByte = held.startByte;
      rec.startLine = held.startLine;
    } else {
      putHeld();
      rec = ndx_.get(recNum - 1);
    }
    rec.endLine = glOutLine - 1;
    int32_t len = lOutBytes;
    Add32(len, -static_cast<int64_t>(rec.startByte) - 2);
    rec.byteLen = len;
    ndx_.put(recNum - 1, rec);
  } else {
    putHeld();
  }
  held = opened;
  held_ = true;
  Count32(lOutBytes, countedLength + 2, kBytesLimit, {"record", recNum});
  lLastIndexed = recNum;
}

void RecordFileWriter::FinishIndex(int32_t recNum) {
  IndexRec& rec = *rec_;
  rec = getRec(recNum);
  rec.endLine = glOutLine;
  int32_t len = lOutBytes;
  Add32(len, -static_cast<int64_t>(rec.startByte));
  rec.byteLen = len;
  if (held_ && held.recNum == recNum) held_ = false;
  ndx_.put(recNum, rec);
}

IndexRec RecordFileWriter::heldRec() const {
  IndexRec rec;  // keepFlag 0, keepFile blank
  rec.recNum = held.recNum;
  rec.startByte = held.startByte;
  rec.startLine = held.startLine;
  rec.endLine = held.endLine;
  rec.byteLen = held.byteLen;
  return rec;
}

void RecordFileWriter::putHeld() {
  if (held_) ndx_.put(held.recNum, heldRec());
  held_ = false;
}

IndexRec RecordFileWriter::getRec(int32_t k) { return held_ && held.recNum == k ? heldRec() : ndx_.get(k); }

void RecordFileWriter::close() {
  putHeld();
  pro_.close();
  ndx_.close();
}

void RecordFileWriter::abandon() noexcept {
  held_ = false;
  pro_.abandon();
  ndx_.abandon();
}

}  // namespace zv
