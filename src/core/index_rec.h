// The .NDX index: fixed 277-byte little-endian records, read and written by number.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

inline constexpr std::size_t kIndexRecLen = 277;
inline constexpr std::size_t kKeepFileLen = 255;

// One record of the .NDX. Record k (from 1) lies at byte (k - 1) * 277.
struct IndexRec {
  int32_t recNum = 0;      // the record's position in the index
  int32_t startByte = 0;   // offset of the label line in the .PRO
  int32_t byteLen = 0;     // bytes of .PRO that make up the record for display
  int32_t startLine = 0;   // 1-based
  int32_t endLine = 0;     // 1-based
  int16_t keepFlag = 0;    // 0 not kept, 1 kept
  std::array<char, kKeepFileLen> keepFile{};  // blank-padded name of the keep file

  IndexRec() { keepFile.fill(' '); }

  // Sets keepFile, left-justified and padded with blanks (cut at 255 characters).
  void setKeepFile(std::string_view name);
  // keepFile without its padding.
  std::string keepFileName() const;
};

// The 277 bytes of a record, and back.
std::array<unsigned char, kIndexRecLen> EncodeIndexRec(const IndexRec& rec);
IndexRec DecodeIndexRec(const unsigned char* bytes);

// A .NDX opened for random access. Writes that run on at the tail are gathered in
// memory and go to disk in large blocks; a record read back is taken from there while
// it is still pending, so a filter's "write record k, re-read record k - 1" costs no
// system call. Every failure throws ZvError with the file's name as detail.
class IndexFile {
 public:
  IndexFile() = default;
  ~IndexFile();
  IndexFile(const IndexFile&) = delete;
  IndexFile& operator=(const IndexFile&) = delete;

  // Opens for reading and writing, creating the file if it is missing.
  void open(const std::string& path);
  // Opens for reading only.
  void openRead(const std::string& path);
  bool isOpen() const noexcept { return fd_ >= 0; }

  // Record k (from 1). Reading past the end is error 62.
  IndexRec get(int32_t k);
  void put(int32_t k, const IndexRec& rec);
  // Records in the file: its length / 277, truncated, pending writes included.
  int32_t count();

  void close();
  void abandon() noexcept;

 private:
  void flushPending();

  int fd_ = -1;
  std::string path_;
  int64_t diskRecords_ = 0;          // whole records on disk
  int32_t pendingFirst_ = 0;         // record number of pending_[0]; 0 = nothing pending
  std::vector<unsigned char> pending_;
};

// All the records of a .NDX file, in order (for listing and tests).
std::vector<IndexRec> ReadIndexFile(const std::string& path);

}  // namespace zv
