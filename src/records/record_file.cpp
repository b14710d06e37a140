// Index counts and single accesses, block walks of the index, record text, the .WRK.
#include "records/record_file.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "core/error.h"
#include "core/text_out.h"

namespace zv {

namespace {

constexpr int32_t kTypeMismatch = 13;
constexpr std::size_t kReadChunk = 1 << 16;
constexpr std::size_t kSmallRead = 1 << 9;  // the least read for a record fetched out of order
constexpr int32_t kWalkBlock = 1024;  // index records read and written at once

class Fd {
 public:
  Fd(const std::string& path, int flags) : fd_(::open(path.c_str(), flags | O_CLOEXEC)) {
    // An index on read-only media can still be read; a write to it fails later.
    if (fd_ < 0 && (flags & O_ACCMODE) == O_RDWR && (errno == EACCES || errno == EROFS))
      fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd_ < 0) ThrowSystemError(errno, path);
  }
  ~Fd() {
    if (fd_ >= 0) ::close(fd_);
  }
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

std::size_t preadFull(int fd, char* buf, std::size_t size, int64_t offset, const std::string& path) {
  std::size_t got = 0;
  while (got < size) {
    const ssize_t n = ::pread(fd, buf + got, size - got, static_cast<off_t>(offset + static_cast<int64_t>(got)));
    if (n < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path);
    }
    if (n == 0) break;
    got += static_cast<std::size_t>(n);
  }
  return got;
}

void pwriteFull(int fd, const char* buf, std::size_t size, int64_t offset, const std::string& path) {
  std::size_t put = 0;
  while (put < size) {
    const ssize_t n = ::pwrite(fd, buf + put, size - put, static_cast<off_t>(offset + static_cast<int64_t>(put)));
    if (n < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path);
    }
    put += static_cast<std::size_t>(n);
  }
}

}  // namespace

int32_t RecordCount(const std::string& indexFile) {
  struct stat st {};
  if (::stat(indexFile.c_str(), &st) != 0) ThrowSystemError(errno, indexFile);
  const int64_t n = static_cast<int64_t>(st.st_size) / static_cast<int64_t>(kIndexRecLen);
  if (n > INT32_MAX)
    ThrowOverflow(LimitReason("the records of an index (glRecCount)", INT32_MAX) + " This one has " + std::to_string(n) + ".",
                  indexFile);
  return static_cast<int32_t>(n);
}

IndexRec GetIndexRec(const std::string& indexFile, int32_t k) {
  IndexFile ndx;
  ndx.openRead(indexFile);
  return ndx.get(k);
}

void PutIndexRec(const std::string& indexFile, int32_t k, const IndexRec& rec) {
  IndexFile ndx;
  ndx.open(indexFile);
  ndx.put(k, rec);
  ndx.close();
}

void ForEachIndexRec(const std::string& indexFile, const std::function<bool(int32_t k, IndexRec& rec)>& visit) {
  const int32_t count = RecordCount(indexFile);
  Fd fd(indexFile, O_RDWR);
  std::vector<char> block(static_cast<std::size_t>(kWalkBlock) * kIndexRecLen);
  for (int32_t first = 1; first <= count; first += kWalkBlock) {
    const int32_t n = std::min(kWalkBlock, count - first + 1);
    const std::size_t bytes = static_cast<std::size_t>(n) * kIndexRecLen;
    const int64_t offset = static_cast<int64_t>(first - 1) * static_cast<int64_t>(kIndexRecLen);
    if (preadFull(fd.get(), block.data(), bytes, offset, indexFile) != bytes)
      throw ZvError(err::kPastEnd, ErrorText(err::kPastEnd), indexFile);
    bool changed = false;
    for (int32_t i = 0; i < n; ++i) {
      auto* at = reinterpret_cast<unsigned char*>(block.data()) + static_cast<std::size_t>(i) * kIndexRecLen;
      IndexRec rec = DecodeIndexRec(at);
      if (visit(first + i, rec)) {
        const auto encoded = EncodeIndexRec(rec);
        std::memcpy(at, encoded.data(), kIndexRecLen);
        changed = true;
      }
    }
    if (changed) pwriteFull(fd.get(), block.data(), bytes, offset, indexFile);
  }
}

void ClearAllMarks(const std::string& indexFile) {
  // Only records that hold a mark are written: the file comes out the same as if
  // every record had been rewritten.
  ForEachIndexRec(indexFile, [](int32_t, IndexRec& rec) {
    const bool blank = std::all_of(rec.keepFile.begin(), rec.keepFile.end(), [](char c) { return c == ' '; });
    if (rec.keepFlag == 0 && blank) return false;
    rec.keepFlag = 0;
    rec.setKeepFile("");
    return true;
  });
}

int64_t RecordLineCount(const IndexRec& rec) {
  return static_cast<int64_t>(rec.endLine) - static_cast<int64_t>(rec.startLine) + 1;
}

RecordReader::RecordReader(const std::string& proFile) : path_(proFile) {
  fd_ = ::open(proFile.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) ThrowSystemError(errno, proFile);
  struct stat st {};
  if (::fstat(fd_, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd_);
    fd_ = -1;
    throw ZvError(err::kPathFileAccess, ErrorText(err::kPathFileAccess), proFile);
  }
  size_ = static_cast<int64_t>(st.st_size);
}

RecordReader::~RecordReader() {
  if (fd_ >= 0) ::close(fd_);
}

DisplayBlock RecordReader::readDisplay(int32_t k, const IndexRec& rec) {
  DisplayBlock block;
  // A record of exactly 32760 bytes counts as partial.
  block.partial = rec.byteLen >= kDisplayLimit;
  const int32_t want = block.partial ? kDisplayLimit : std::max<int32_t>(rec.byteLen, 0);
  block.bytes.resize(static_cast<std::size_t>(want));
  if (preadFull(fd_, block.bytes.data(), block.bytes.size(), RecordStart(k, rec), path_) != block.bytes.size())
    throwMismatch(k);
  return block;
}

void RecordReader::seek(int64_t offset, int64_t expectBytes) {
  if (offset < 0) throw ZvError(err::kInvalidCall, ErrorText(err::kInvalidCall), path_);
  // Records read in file order start where the last one ended: the block in hand
  // serves them without another read.
  if (offset >= position_ && offset <= position_ + static_cast<int64_t>(end_)) {
    at_ = static_cast<std::size_t>(offset - position_);
    return;
  }
  position_ = offset;
  at_ = end_ = 0;
  // A record fetched out of order needs its own bytes, not a whole block.
  if (expectBytes > 0)
    nextRead_ = std::clamp<std::size_t>(static_cast<std::size_t>(expectBytes) + 2, kSmallRead, kReadChunk);
}

bool RecordReader::fill() {
  position_ += static_cast<int64_t>(end_);
  at_ = end_ = 0;
  const std::size_t want = nextRead_;
  nextRead_ = kReadChunk;
  if (buf_.size() < want) buf_.resize(want);
  end_ = preadFull(fd_, buf_.data(), want, position_, path_);
  return end_ > 0;
}

bool RecordReader::readLine(std::string& line) {
  line.clear();
  bool any = false;  // a character or a line end was read
  for (;;) {
    if (at_ == end_ && !fill()) return any;  // the end of the file: what was read, or an empty line
    any = true;
    const char* begin = buf_.data() + at_;
    const std::size_t n = end_ - at_;
    const void* lf = std::memchr(begin, '\n', n);
    const std::size_t upto = lf ? static_cast<std::size_t>(static_cast<const char*>(lf) - begin) : n;
    const void* cr = std::memchr(begin, '\r', upto);
    const std::size_t stop = cr ? static_cast<std::size_t>(static_cast<const char*>(cr) - begin) : upto;
    line.append(begin, stop);
    at_ += stop;
    if (stop == n) continue;  // no line end in the buffer yet
    const char endChar = buf_[at_++];
    if (endChar == '\r') {
      if (at_ == end_ && !fill()) return true;
      if (buf_[at_] == '\n') ++at_;
    }
    return true;
  }
}

void RecordReader::readRecord(int32_t k, const IndexRec& rec, const LineVisitor& onLine) {
  readBounded(k, RecordStart(rec.recNum, rec), RecordLineCount(rec), onLine);
}

void RecordReader::readLines(int64_t start, int64_t count, const LineVisitor& onLine) {
  readBounded(0, start, count, onLine);
}

void RecordReader::checkExtent(int32_t k, const IndexRec& rec) const {
  checkBounds(k, RecordStart(rec.recNum, rec), RecordLineCount(rec));
}

void RecordReader::checkBounds(int32_t k, int64_t start, int64_t count) const {
  if (count <= 0) return;
  if (start >= size_ || count > size_ - start + 1) throwMismatch(k);
}

void RecordReader::readBounded(int32_t k, int64_t start, int64_t count, const LineVisitor& onLine) {
  checkBounds(k, start, count);
  seek(start);
  std::string line;
  for (int64_t n = 1; n <= count; ++n) {
    if (!readLine(line) && n < count) throwMismatch(k);
    onLine(n, line);
  }
}

void RecordReader::throwMismatch(int32_t k) const {
  ZvError error(err::kPastEnd, ErrorText(err::kPastEnd), path_);
  const std::string name = std::filesystem::path(path_).filename().string();
  error.setReason("The index does not match its record file: " +
                  (k > 0 ? "record " + std::to_string(k) : std::string("a record")) + " runs past the end of " + name +
                  ".");
  throw error;
}

void WriteBookmark(const std::string& wrkFile, int32_t position) {
  TextOut out(wrkFile);
  out.line(std::to_string(position));
  out.close();
}

int32_t ToLong(std::string_view text, const std::string& detail) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) throw ZvError(kTypeMismatch, "Type mismatch", detail);
  const auto last = text.find_last_not_of(' ');
  const char* b = text.data() + first;
  const char* e = text.data() + last + 1;
  if (*b == '+') ++b;
  int64_t value = 0;
  const auto [ptr, ec] = std::from_chars(b, e, value);
  const auto tooLarge = [&] {
    ThrowOverflow(LimitReason("a record number or position", INT32_MAX) + " \"" + std::string(b, e) + "\" is beyond it.",
                  detail);
  };
  if (ec == std::errc::result_out_of_range) tooLarge();
  if (ec != std::errc() || ptr != e || b == e) throw ZvError(kTypeMismatch, "Type mismatch", detail);
  if (value > INT32_MAX || value < INT32_MIN) tooLarge();
  return static_cast<int32_t>(value);
}

std::optional<int32_t> ReadBookmark(const std::string& wrkFile) {
  RecordReader reader(wrkFile);
  std::string line;
  reader.readLine(line);
  if (line.empty()) return std::nullopt;
  return ToLong(line, wrkFile);
}

}  // namespace zv
