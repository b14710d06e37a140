// Encoding of the 277-byte .NDX record and random access to the file.
#include "core/index_rec.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/error.h"

namespace zv {

namespace {

constexpr std::size_t kPendingMax = 1024;  // records gathered before a write

void put32(unsigned char* p, int32_t v) {
  const auto u = static_cast<uint32_t>(v);
  p[0] = static_cast<unsigned char>(u);
  p[1] = static_cast<unsigned char>(u >> 8);
  p[2] = static_cast<unsigned char>(u >> 16);
  p[3] = static_cast<unsigned char>(u >> 24);
}

int32_t get32(const unsigned char* p) {
  const uint32_t u = uint32_t{p[0]} | uint32_t{p[1]} << 8 | uint32_t{p[2]} << 16 | uint32_t{p[3]} << 24;
  return static_cast<int32_t>(u);
}

void writeAll(int fd, const unsigned char* p, std::size_t n, int64_t offset, const std::string& path) {
  while (n > 0) {
    const ssize_t w = ::pwrite(fd, p, n, offset);
    if (w < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path);
    }
    p += w;
    n -= static_cast<std::size_t>(w);
    offset += w;
  }
}

}  // namespace

void IndexRec::setKeepFile(std::string_view name) {
  keepFile.fill(' ');
  std::memcpy(keepFile.data(), name.data(), std::min(name.size(), kKeepFileLen));
}

std::string IndexRec::keepFileName() const {
  std::string s(keepFile.data(), kKeepFileLen);
  s.erase(s.find_last_not_of(' ') + 1);
  return s;
}

namespace {

// The 277 bytes of `rec` to `b`, every one of them.
void encodeInto(const IndexRec& rec, unsigned char* b) {
  put32(&b[0], rec.recNum);
  put32(&b[4], rec.startByte);
  put32(&b[8], rec.byteLen);
  put32(&b[12], rec.startLine);
  put32(&b[16], rec.endLine);
  const auto flag = static_cast<uint16_t>(rec.keepFlag);
  b[20] = static_cast<unsigned char>(flag);
  b[21] = static_cast<unsigned char>(flag >> 8);
  std::memcpy(&b[22], rec.keepFile.data(), kKeepFileLen);
}

}  // namespace

std::array<unsigned char, kIndexRecLen> EncodeIndexRec(const IndexRec& rec) {
  std::array<unsigned char, kIndexRecLen> b;
  encodeInto(rec, b.data());
  return b;
}

IndexRec DecodeIndexRec(const unsigned char* b) {
  IndexRec rec;
  rec.recNum = get32(&b[0]);
  rec.startByte = get32(&b[4]);
  rec.byteLen = get32(&b[8]);
  rec.startLine = get32(&b[12]);
  rec.endLine = get32(&b[16]);
  rec.keepFlag = static_cast<int16_t>(static_cast<uint16_t>(b[20] | b[21] << 8));
  std::memcpy(rec.keepFile.data(), &b[22], kKeepFileLen);
  return rec;
}

IndexFile::~IndexFile() { abandon(); }

void IndexFile::open(const std::string& path) {
  abandon();
  const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  // A file being created is missing only when its folder is.
  if (fd < 0) ThrowSystemError(errno == ENOENT ? ENOTDIR : errno, path);
  fd_ = fd;
  path_ = path;
  struct stat st {};
  if (::fstat(fd_, &st) != 0) ThrowSystemError(errno, path);
  diskRecords_ = st.st_size / static_cast<int64_t>(kIndexRecLen);
}

void IndexFile::openRead(const std::string& path) {
  abandon();
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) ThrowSystemError(errno, path);
  fd_ = fd;
  path_ = path;
  struct stat st {};
  if (::fstat(fd_, &st) != 0) ThrowSystemError(errno, path);
  diskRecords_ = st.st_size / static_cast<int64_t>(kIndexRecLen);
}

int32_t IndexFile::count() {
  const int64_t pendingEnd = pendingFirst_ ? pendingFirst_ - 1 + static_cast<int64_t>(pending_.size() / kIndexRecLen) : 0;
  return static_cast<int32_t>(std::max(diskRecords_, pendingEnd));
}

IndexRec IndexFile::get(int32_t k) {
  if (fd_ < 0) throw ZvError(err::kBadFileNumber, ErrorText(err::kBadFileNumber), path_);
  const int32_t pendingCount = static_cast<int32_t>(pending_.size() / kIndexRecLen);
  if (pendingFirst_ && k >= pendingFirst_ && k < pendingFirst_ + pendingCount)
    return DecodeIndexRec(&pending_[static_cast<std::size_t>(k - pendingFirst_) * kIndexRecLen]);
  if (k < 1 || k > diskRecords_) throw ZvError(err::kPastEnd, ErrorText(err::kPastEnd), path_);
  unsigned char b[kIndexRecLen];
  const int64_t offset = static_cast<int64_t>(k - 1) * static_cast<int64_t>(kIndexRecLen);
  std::size_t got = 0;
  while (got < kIndexRecLen) {
    const ssize_t r = ::pread(fd_, b + got, kIndexRecLen - got, offset + static_cast<int64_t>(got));
    if (r < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path_);
    }
    if (r == 0) throw ZvError(err::kPastEnd, ErrorText(err::kPastEnd), path_);
    got += static_cast<std::size_t>(r);
  }
  return DecodeIndexRec(b);
}

void IndexFile::put(int32_t k, const IndexRec& rec) {
  if (fd_ < 0) throw ZvError(err::kBadFileNumber, ErrorText(err::kBadFileNumber), path_);
  if (k < 1) throw ZvError(err::kBadFileNumber, "Bad record number", path_);
  // The records of a run in memory are encoded where they lie, with no copy between.
  const int32_t pendingCount = static_cast<int32_t>(pending_.size() / kIndexRecLen);
  if (pendingFirst_ && k >= pendingFirst_ && k < pendingFirst_ + pendingCount) {
    encodeInto(rec, &pending_[static_cast<std::size_t>(k - pendingFirst_) * kIndexRecLen]);
    return;
  }
  if (pendingFirst_ && k == pendingFirst_ + pendingCount) {
    if (static_cast<std::size_t>(pendingCount) >= kPendingMax) {
      // A full run goes to disk all but its last record, which begins the next run:
      // the filters re-read and rewrite record k - 1 right after writing record k,
      // and that must stay a memory access, not a pread and two pwrites per record.
      const std::size_t out = pending_.size() - kIndexRecLen;
      writeAll(fd_, pending_.data(), out,
               static_cast<int64_t>(pendingFirst_ - 1) * static_cast<int64_t>(kIndexRecLen), path_);
      diskRecords_ = std::max<int64_t>(diskRecords_, pendingFirst_ - 1 + pendingCount - 1);
      pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(out));
      pendingFirst_ += pendingCount - 1;
    }
    const std::size_t at = pending_.size();
    pending_.resize(at + kIndexRecLen);
    encodeInto(rec, &pending_[at]);
    return;
  }
  const auto bytes = EncodeIndexRec(rec);
  flushPending();
  if (k == diskRecords_ + 1) {  // a record appended at the tail starts a new run
    pendingFirst_ = k;
    pending_.assign(bytes.begin(), bytes.end());
    return;
  }
  writeAll(fd_, bytes.data(), kIndexRecLen, static_cast<int64_t>(k - 1) * static_cast<int64_t>(kIndexRecLen), path_);
  diskRecords_ = std::max<int64_t>(diskRecords_, k);
}

void IndexFile::flushPending() {
  if (!pendingFirst_) return;
  const int64_t offset = static_cast<int64_t>(pendingFirst_ - 1) * static_cast<int64_t>(kIndexRecLen);
  const int64_t last = pendingFirst_ - 1 + static_cast<int64_t>(pending_.size() / kIndexRecLen);
  pendingFirst_ = 0;
  std::vector<unsigned char> bytes;
  bytes.swap(pending_);
  writeAll(fd_, bytes.data(), bytes.size(), offset, path_);
  diskRecords_ = std::max(diskRecords_, last);
  bytes.clear();
  pending_.swap(bytes);  // keep the capacity for the next run
}

void IndexFile::close() {
  if (fd_ < 0) return;
  flushPending();
  const int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0 && errno != EINTR) ThrowSystemError(errno, path_);
}

void IndexFile::abandon() noexcept {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  pendingFirst_ = 0;
  pending_.clear();
}

std::vector<IndexRec> ReadIndexFile(const std::string& path) {
  IndexFile f;
  f.openRead(path);
  std::vector<IndexRec> out;
  const int32_t n = f.count();
  out.reserve(static_cast<std::size_t>(n));
  for (int32_t k = 1; k <= n; ++k) out.push_back(f.get(k));
  return out;
}

}  // namespace zv
