// Block and single reads of a .NDX.
#include "analysis/index_reader.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "analysis/analysis_common.h"
#include "core/error.h"
#include "records/record_file.h"

namespace zv {

namespace {
constexpr int32_t kBlockRecords = 1024;
}

IndexReader::IndexReader(const std::string& path) : path_(path) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) ThrowSystemError(errno, path);
  struct stat st {};
  if (::fstat(fd_, &st) != 0) {
    const int e = errno;
    ::close(fd_);
    fd_ = -1;
    ThrowSystemError(e, path);
  }
  const int64_t n = static_cast<int64_t>(st.st_size) / static_cast<int64_t>(kIndexRecLen);
  if (n > INT32_MAX) {
    ::close(fd_);
    fd_ = -1;
    throw ZvError(err::kOverflow, ErrorText(err::kOverflow), path);
  }
  count_ = static_cast<int32_t>(n);
}

IndexReader::~IndexReader() {
  if (fd_ >= 0) ::close(fd_);
}

void IndexReader::load(int32_t first, int32_t n) {
  const std::size_t bytes = static_cast<std::size_t>(n) * kIndexRecLen;
  block_.resize(bytes);
  const int64_t offset = static_cast<int64_t>(first - 1) * static_cast<int64_t>(kIndexRecLen);
  std::size_t got = 0;
  while (got < bytes) {
    const ssize_t r = ::pread(fd_, block_.data() + got, bytes - got, static_cast<off_t>(offset + static_cast<int64_t>(got)));
    if (r < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError(errno, path_);
    }
    if (r == 0) throw ZvError(err::kPastEnd, ErrorText(err::kPastEnd), path_);
    got += static_cast<std::size_t>(r);
  }
  blockFirst_ = first;
  blockCount_ = n;
}

const IndexRec& IndexReader::get(int32_t k) {
  if (k == current_) return rec_;
  if (k < 1 || k > count_) throw ZvError(err::kPastEnd, ErrorText(err::kPastEnd), path_);
  if (blockFirst_ == 0 || k < blockFirst_ || k >= blockFirst_ + blockCount_) {
    // The next record after the block begins the next block; any other is read alone.
    const bool inOrder = k == 1 || (blockFirst_ != 0 && k == blockFirst_ + blockCount_);
    load(k, inOrder ? std::min(kBlockRecords, count_ - k + 1) : 1);
  }
  rec_ = DecodeIndexRec(block_.data() + static_cast<std::size_t>(k - blockFirst_) * kIndexRecLen);
  current_ = k;
  return rec_;
}

RecordExtent WriteExtent(IndexReader& ndx, int32_t r) {
  const IndexRec& rec = ndx.get(r);
  return {RecordStart(r, rec), rec.byteLen, RecordLines(rec.startLine, rec.endLine, false)};
}

}  // namespace zv
