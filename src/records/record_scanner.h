// Reading the records of a record file one after another, in one pass, for the tools
// that take every record in order (export, duplicates).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

// A record as read. The views point into the scanner's buffer and hold until the next
// call of next().
struct RecordText {
  int32_t index = 0;               // 1 for the first record read, and on
  std::string_view label;          // the label line ("Record - 4"), or empty when none was found
  std::span<const std::string_view> lines;  // the record's other lines, in order, empty ones too
};

// Whether a line is a record label: "Record - " in its first column.
inline bool IsLabelLine(std::string_view line) {
  return line.size() >= 9 && line[0] == 'R' && line.substr(1, 8) == "ecord - ";
}

// The lines of a file, for a progress bar: its line feeds, or its carriage returns
// when it has no line feed at all, and a last line without either. One quick pass.
int32_t CountLines(const std::string& path);

// Lines end at CR LF, a lone LF or a lone CR, as everywhere in the program.
class RecordScanner {
 public:
  // The records of a .PRO by its labels: a record runs from its label to the next.
  // Text ahead of the first label belongs to the first record.
  explicit RecordScanner(const std::string& proFile);
  // The records an index lists, in its order: record k is lines startLine to endLine
  // of the .PRO (the line numbers hold under both the filters' and BuildIndex's
  // numbers; the byte offsets of some filters fall behind). Its label is the first
  // label among them; a line that two records' ranges share goes to the first, and a
  // range past the end of the file ends there.
  RecordScanner(const std::string& proFile, const std::string& indexFile);
  ~RecordScanner();
  RecordScanner(const RecordScanner&) = delete;
  RecordScanner& operator=(const RecordScanner&) = delete;

  bool next(RecordText& record);

  // Lines read so far, and the file's size, for progress.
  int32_t linesRead() const { return line_; }
  int64_t fileSize() const { return fileSize_; }
  // The file's lines as the bytes read so far let one guess them; the count read once
  // the whole file is.
  int32_t estimatedLines() const;
  // The records of the index; 0 when reading by labels.
  int32_t indexRecords() const { return indexCount_; }

 private:
  bool readLine(std::size_t& start, std::size_t& length);
  bool fill();
  bool nextByLabels(RecordText& record);
  bool nextByIndex(RecordText& record);
  void finish(RecordText& record, std::size_t labelAt, std::size_t labelLength);
  bool indexRange(int32_t k, int64_t& first, int64_t& last);

  int fd_ = -1;
  std::string path_;
  int64_t fileSize_ = 0;
  int64_t consumed_ = 0;  // bytes of the file before buf_[0]
  std::string buf_;
  std::size_t begin_ = 0;  // the current record's first byte in buf_
  std::size_t at_ = 0;     // the next unread byte
  std::size_t end_ = 0;    // bytes in buf_
  bool eof_ = false;
  int32_t line_ = 0;  // lines read
  int32_t records_ = 0;
  // Lines of the current record: offsets from begin_ and lengths.
  std::vector<std::pair<uint32_t, uint32_t>> spans_;
  std::vector<std::string_view> views_;
  bool pendingLabel_ = false;  // the label of the next record was read already

  // Index mode.
  int indexFd_ = -1;
  std::string indexPath_;
  int32_t indexCount_ = 0;
  std::vector<unsigned char> indexBlock_;
  int32_t blockFirst_ = 0;  // record number of indexBlock_'s first entry
};

// A record file by its labels in blocks of whole records, for the tools that hand
// blocks to worker threads: the reading stays on one thread, the finding of lines and
// records goes with the block. A block runs from a label line to the byte before a
// later label line (the file's first block from the file's start, its last to the
// file's end), so a line end never straddles two blocks.
class LabelBlockReader {
 public:
  explicit LabelBlockReader(const std::string& proFile);
  ~LabelBlockReader();
  LabelBlockReader(const LabelBlockReader&) = delete;
  LabelBlockReader& operator=(const LabelBlockReader&) = delete;

  // Replaces `block` with the next records, about `size` bytes of them (more when one
  // record is larger); false at the end of the file. The first block holds at least
  // one label when the file has one: text ahead of it belongs to its record.
  bool next(std::string& block, std::size_t size);

  int64_t fileSize() const { return fileSize_; }
  // Bytes of the file handed out in blocks so far.
  int64_t bytesDone() const { return done_; }

 private:
  bool fill(std::size_t size);

  int fd_ = -1;
  std::string path_;
  int64_t fileSize_ = 0;
  int64_t done_ = 0;
  std::string carry_;  // bytes read past the last block's end
  bool eof_ = false;
  bool sawLabel_ = false;  // a label was handed out in an earlier block
};

// The records of one block as RecordScanner reads them by labels: each from its label
// to the next, lines of any ending, text ahead of the first label in the first record.
class BlockRecords {
 public:
  explicit BlockRecords(std::string_view block) : block_(block) {}
  // The next record; `record.index` counts from 1 within the block. Its views point
  // into the block and hold until the next call.
  bool next(RecordText& record);
  // Lines found so far.
  int32_t lines() const { return lines_; }

 private:
  std::size_t lineEnd(std::size_t from);

  std::string_view block_;
  std::size_t at_ = 0;
  int32_t lines_ = 0;
  int32_t records_ = 0;
  std::vector<std::string_view> views_;
  // The CRs and LFs of 64 bytes of the block from endsAt_, a bit each.
  std::size_t endsAt_ = static_cast<std::size_t>(-1);
  uint64_t ends_ = 0;
};

}  // namespace zv
