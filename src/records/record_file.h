// Reading a record file through its index: counts, extents, record text, bookmarks.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/index_rec.h"

namespace zv {

// The most that the record display takes of one record, in bytes.
inline constexpr int32_t kDisplayLimit = 32760;

// glRecCount: the index's length / 277, truncated. A missing index is error 53.
int32_t RecordCount(const std::string& indexFile);

// Single accesses, as interactive code makes them: open, get or put record k, close.
IndexRec GetIndexRec(const std::string& indexFile, int32_t k);
void PutIndexRec(const std::string& indexFile, int32_t k, const IndexRec& rec);

// Walks every record of the index in order, in large blocks. `visit` gets the record
// number and the record; when it returns true the (changed) record is written back.
void ForEachIndexRec(const std::string& indexFile, const std::function<bool(int32_t k, IndexRec& rec)>& visit);

// Clears every keep mark: keepFlag 0 and keepFile blank in each record.
void ClearAllMarks(const std::string& indexFile);

// Where the text of record k begins in the .PRO: 0 for record 1, whose stored
// startByte depends on the writer (0 from a filter, 1 from BuildIndex), else startByte.
inline int64_t RecordStart(int32_t k, const IndexRec& rec) { return k == 1 ? 0 : rec.startByte; }

// The lines a line-wise reader takes: endLine - startLine + 1 (32-bit; callers that
// count in 16 bits check it themselves).
int64_t RecordLineCount(const IndexRec& rec);

// What the record display shows.
struct DisplayBlock {
  std::string bytes;
  bool partial = false;  // the record has kDisplayLimit bytes or more: only those are shown
};

// Byte-exact reads of a .PRO by offsets from its index. Opened for reading only: no
// tool writes its record file.
class RecordReader {
 public:
  explicit RecordReader(const std::string& proFile);
  ~RecordReader();
  RecordReader(const RecordReader&) = delete;
  RecordReader& operator=(const RecordReader&) = delete;

  // Record k for display: from RecordStart(k, rec), byteLen bytes when below 32760,
  // else exactly 32760 and partial. Bytes missing at the end of the file are error 62,
  // with the reason that the index does not match its record file.
  DisplayBlock readDisplay(int32_t k, const IndexRec& rec);

  // Line-wise reading from a byte offset. `expectBytes`, when known (the record's
  // byteLen), sizes the next read for a record fetched out of file order.
  void seek(int64_t offset, int64_t expectBytes = 0);
  // The next line without its line end (CR LF, LF or CR). Past the end of the file
  // it gives an empty line and returns false: BuildIndex's last record spans one line
  // more than the file has, and its readers get that empty line. Lines are returned
  // whole.
  bool readLine(std::string& line);

  using LineVisitor = std::function<void(int64_t n, const std::string& line)>;

  // The lines of record k as the writers take them: RecordLineCount(rec) lines from
  // RecordStart(rec.recNum, rec), calling `onLine(n, line)` for n from 1. The copy
  // stops at the end of the file: one empty line past it is the last line of a
  // BuildIndex record and is given; a record that starts at or beyond the end, or
  // wants more lines than that, is error 62 with the reason that the index does not
  // match its record file (a corrupt or stale index would otherwise give empty lines
  // up to its end line, billions of them).
  void readRecord(int32_t k, const IndexRec& rec, const LineVisitor& onLine);

  // The check readRecord makes before its first line: error 62, as above, when record
  // k starts at or beyond the end of the file or wants more lines than the bytes from
  // its start can hold (every line but the one past the end takes a byte at least).
  void checkExtent(int32_t k, const IndexRec& rec) const;

  // The same for `count` lines from `start`, with no record to name.
  void readLines(int64_t start, int64_t count, const LineVisitor& onLine);

 private:
  bool fill();
  void readBounded(int32_t k, int64_t start, int64_t count, const LineVisitor& onLine);
  void checkBounds(int32_t k, int64_t start, int64_t count) const;
  [[noreturn]] void throwMismatch(int32_t k) const;

  int fd_ = -1;
  std::string path_;
  int64_t size_ = 0;       // the file's length when it was opened
  int64_t position_ = 0;   // file offset of buf_[at_]
  std::string buf_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  std::size_t nextRead_ = std::size_t{1} << 16;  // bytes the next fill reads
};

// The number conversion of typed and stored numbers: a whole number, blanks around it
// allowed. Other text is error 13, "Type mismatch"; beyond 32 bits, error 6.
int32_t ToLong(std::string_view text, const std::string& detail = {});

// The .WRK bookmark: one line, the decimal position, CR LF.
void WriteBookmark(const std::string& wrkFile, int32_t position);
// The number on the first line; nothing when the file is empty (the caller deletes
// it). Text that is no whole number is error 13, "Type mismatch"; beyond 32 bits, 6.
std::optional<int32_t> ReadBookmark(const std::string& wrkFile);

}  // namespace zv
