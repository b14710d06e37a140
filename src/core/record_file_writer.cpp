// The .PRO/.NDX bookkeeping shared by every tool that writes records.
#include "core/record_file_writer.h"


#include "core/error.h"

namespace zv {

std::string RecordLabel(int32_t recNum) { return "Record - " + std::to_string(recNum); }

void RecordFileWriter::open(OutputFiles& outputs, const std::string& proFile, const std::string& indexFile) {
  outputs.add(proFile);
  pro_.open(proFile);
  KillIfExists(indexFile);
  outputs.add(indexFile);
  ndx_.open(indexFile);
}

void RecordFileWriter::writeBlank() {
  pro_.blank();
  Add32(lOutBytes, 2);
  Add32(glOutLine, 1);
}

void RecordFileWriter::writeText(std::string_view line, int32_t recNum, bool justLabelled, int64_t countedLength) {
  pro_.line(line);
  UpdateIndex(recNum, justLabelled, countedLength);
}

void RecordFileWriter::UpdateIndex(int32_t recNum, bool justLabelled, int64_t countedLength) {
  Add32(glOutLine, 1);
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
  Add32(lOutBytes, countedLength + 2);
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
