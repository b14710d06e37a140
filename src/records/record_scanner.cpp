// One pass over a record file in large blocks, a record's lines kept in the buffer.
#include "records/record_scanner.h"

#include <algorithm>
#include <climits>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/error.h"
#include "core/index_rec.h"

namespace zv {

namespace {

constexpr std::size_t kBlock = 1 << 20;
constexpr int32_t kIndexBlock = 1024;  // index records read at once
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

constexpr uint64_t kOnes = 0x0101010101010101ULL;
constexpr uint64_t kHigh = 0x8080808080808080ULL;

// The bytes of `v` that equal `c`, as their high bits.
inline uint64_t bytesEqual(uint64_t v, unsigned char c) {
  const uint64_t x = v ^ (kOnes * c);
  return (x - kOnes) & ~x & kHigh;
}

// The first CR or LF in [p, p + n), or p + n: one pass, sixteen or eight bytes at a time.
const char* findLineEnd(const char* p, std::size_t n) {
  const char* end = p + n;
#if defined(__SSE2__)
  const __m128i lf = _mm_set1_epi8('\n'), cr = _mm_set1_epi8('\r');
  while (end - p >= 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const int hit = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, lf), _mm_cmpeq_epi8(v, cr)));
    if (hit != 0) return p + __builtin_ctz(static_cast<unsigned>(hit));
    p += 16;
  }
#endif
  while (end - p >= 8) {
    uint64_t v;
    std::memcpy(&v, p, 8);
    const uint64_t hit = bytesEqual(v, '\n') | bytesEqual(v, '\r');
    if (hit != 0) return p + (__builtin_ctzll(hit) >> 3);
    p += 8;
  }
  while (p < end && *p != '\n' && *p != '\r') ++p;
  return p;
}

int openRegular(const std::string& path, int64_t& size) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) ThrowSystemError(errno, path);
  struct stat st {};
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd);
    throw ZvError(err::kPathFileAccess, ErrorText(err::kPathFileAccess), path);
  }
  size = st.st_size;
  return fd;
}

}  // namespace

int32_t CountLines(const std::string& path) {
  int64_t size = 0;
  const int fd = openRegular(path, size);
  std::string buf(kBlock, '\0');
  int64_t lf = 0, cr = 0;
  char last = '\n';
  for (;;) {
    const ssize_t n = ::read(fd, buf.data(), buf.size());
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      const int e = errno;
      ::close(fd);
      ThrowSystemError(e, path);
    }
    if (n == 0) break;
    // Line feeds (and carriage returns, for a file that may have no line feed),
    // counted eight bytes at a time.
    const char* p = buf.data();
    const char* end = p + n;
    for (; end - p >= 8; p += 8) {
      uint64_t v;
      std::memcpy(&v, p, 8);
      // One bit a matching byte, summed into the top byte by the multiply.
      lf += static_cast<int64_t>(((bytesEqual(v, '\n') >> 7) * kOnes) >> 56);
      cr += static_cast<int64_t>(((bytesEqual(v, '\r') >> 7) * kOnes) >> 56);
    }
    for (; p < end; ++p) {
      lf += *p == '\n';
      cr += *p == '\r';
    }
    last = buf[static_cast<std::size_t>(n - 1)];
  }
  ::close(fd);
  const int64_t lines = (lf > 0 ? lf : cr) + (last != '\n' && last != '\r' ? 1 : 0);
  return static_cast<int32_t>(std::min<int64_t>(lines, INT32_MAX));
}

RecordScanner::RecordScanner(const std::string& proFile) : path_(proFile) {
  fd_ = openRegular(proFile, fileSize_);
  buf_.resize(kBlock);
}

RecordScanner::RecordScanner(const std::string& proFile, const std::string& indexFile)
    : RecordScanner(proFile) {
  indexPath_ = indexFile;
  int64_t size = 0;
  indexFd_ = openRegular(indexFile, size);
  indexCount_ = static_cast<int32_t>(size / static_cast<int64_t>(kIndexRecLen));
}

RecordScanner::~RecordScanner() {
  if (fd_ >= 0) ::close(fd_);
  if (indexFd_ >= 0) ::close(indexFd_);
}

int32_t RecordScanner::estimatedLines() const {
  const int64_t read = consumed_ + static_cast<int64_t>(at_);
  if (eof_ && at_ == end_) return line_;
  if (read <= 0 || line_ == 0) return 0;
  return static_cast<int32_t>(std::min<int64_t>(INT32_MAX, static_cast<int64_t>(line_) * fileSize_ / read));
}

bool RecordScanner::fill() {
  if (begin_ > 0) {
    consumed_ += static_cast<int64_t>(begin_);
    std::memmove(buf_.data(), buf_.data() + begin_, end_ - begin_);
    at_ -= begin_;
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ == buf_.size()) buf_.resize(buf_.size() * 2);  // a record larger than the block
  for (;;) {
    const ssize_t n = ::read(fd_, buf_.data() + end_, buf_.size() - end_);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) ThrowSystemError(errno, path_);
    if (n == 0) eof_ = true;
    end_ += static_cast<std::size_t>(n);
    return n > 0;
  }
}

// The next line as offsets from begin_, without its line end.
bool RecordScanner::readLine(std::size_t& start, std::size_t& length) {
  for (;;) {
    const char* p = buf_.data() + at_;
    const std::size_t n = end_ - at_;
    if (n == 0) {
      if (eof_) return false;
      fill();
      continue;
    }
    const char* stop = findLineEnd(p, n);
    const auto len = static_cast<std::size_t>(stop - p);
    std::size_t used = 0;
    if (len == n) {  // no line end in the buffer yet
      if (!eof_) {
        fill();
        continue;
      }
      used = n;  // the last line, without a line end
    } else if (*stop == '\n') {
      used = len + 1;
    } else if (len + 1 < n) {  // CR LF, or a lone CR
      used = len + (stop[1] == '\n' ? 2 : 1);
    } else if (eof_) {
      used = len + 1;
    } else {  // a CR last in the buffer: an LF may follow
      fill();
      continue;
    }
    start = at_ - begin_;
    length = len;
    at_ += used;
    ++line_;
    return true;
  }
}

void RecordScanner::finish(RecordText& record, std::size_t labelAt, std::size_t labelLength) {
  const char* base = buf_.data() + begin_;
  views_.resize(spans_.size());
  for (std::size_t i = 0; i < spans_.size(); ++i) views_[i] = std::string_view(base + spans_[i].first, spans_[i].second);
  record.index = ++records_;
  record.label = labelAt == kNone ? std::string_view{} : std::string_view(base + labelAt, labelLength);
  record.lines = views_;
}

bool RecordScanner::next(RecordText& record) {
  spans_.clear();
  return indexFd_ >= 0 ? nextByIndex(record) : nextByLabels(record);
}

bool RecordScanner::nextByLabels(RecordText& record) {
  std::size_t labelAt = kNone, labelLength = 0;
  std::size_t start = 0, length = 0;
  if (pendingLabel_) {
    pendingLabel_ = false;
    if (readLine(start, length)) {  // the label read last time, read again from begin_
      --line_;
      labelAt = start;
      labelLength = length;
    }
  }
  while (readLine(start, length)) {
    if (IsLabelLine(std::string_view(buf_.data() + begin_ + start, length))) {
      if (labelAt != kNone) {
        finish(record, labelAt, labelLength);
        // The next record begins at this label, which is read again then.
        at_ = begin_ + start;
        begin_ = at_;
        pendingLabel_ = true;
        return true;
      }
      labelAt = start;
      labelLength = length;
      continue;
    }
    spans_.emplace_back(static_cast<uint32_t>(start), static_cast<uint32_t>(length));
  }
  if (labelAt == kNone && spans_.empty()) return false;
  finish(record, labelAt, labelLength);
  begin_ = at_;
  return true;
}

bool RecordScanner::indexRange(int32_t k, int64_t& first, int64_t& last) {
  if (blockFirst_ == 0 || k < blockFirst_ || k >= blockFirst_ + kIndexBlock) {
    blockFirst_ = k;
    const int32_t n = std::min(kIndexBlock, indexCount_ - k + 1);
    indexBlock_.resize(static_cast<std::size_t>(n) * kIndexRecLen);
    const off_t offset = static_cast<off_t>(k - 1) * static_cast<off_t>(kIndexRecLen);
    std::size_t got = 0;
    while (got < indexBlock_.size()) {
      const ssize_t r = ::pread(indexFd_, indexBlock_.data() + got, indexBlock_.size() - got, offset + static_cast<off_t>(got));
      if (r < 0 && errno == EINTR) continue;
      if (r < 0) ThrowSystemError(errno, indexPath_);
      if (r == 0) throw ZvError(err::kPastEnd, ErrorText(err::kPastEnd), indexPath_);
      got += static_cast<std::size_t>(r);
    }
  }
  const IndexRec rec = DecodeIndexRec(indexBlock_.data() + static_cast<std::size_t>(k - blockFirst_) * kIndexRecLen);
  first = rec.startLine;
  last = rec.endLine;
  return true;
}

bool RecordScanner::nextByIndex(RecordText& record) {
  const int32_t k = records_ + 1;
  if (k > indexCount_) return false;
  int64_t first = 0, last = 0;
  indexRange(k, first, last);
  std::size_t start = 0, length = 0;
  // Lines no record claims are passed over.
  begin_ = at_;
  while (line_ + 1 < first && readLine(start, length)) begin_ = at_;
  std::size_t labelAt = kNone, labelLength = 0;
  while (line_ < last && readLine(start, length)) {
    const std::string_view line(buf_.data() + begin_ + start, length);
    if (labelAt == kNone && IsLabelLine(line)) {
      labelAt = start;
      labelLength = length;
      // The empty line some indexes count before the label goes; text stays.
      bool onlyEmpty = true;
      for (const auto& [at, len] : spans_) onlyEmpty = onlyEmpty && len == 0;
      if (onlyEmpty) spans_.clear();
      continue;
    }
    spans_.emplace_back(static_cast<uint32_t>(start), static_cast<uint32_t>(length));
  }
  finish(record, labelAt, labelLength);
  return true;
}

// --- blocks of records -----------------------------------------------------------

namespace {

// Where the last label line in block[from, n) begins, or npos. A label's line begins
// after a CR or an LF.
std::size_t lastLabelStart(std::string_view block, std::size_t from) {
  std::size_t at = block.size();
  while (at > from) {
    at = block.rfind("Record - ", at - 1);
    if (at == std::string_view::npos || at < from) return std::string_view::npos;
    if (at > 0 && (block[at - 1] == '\n' || block[at - 1] == '\r')) return at;
    if (at == 0) return std::string_view::npos;
  }
  return std::string_view::npos;
}

// Where the first label line in the block begins (at 0 too), or npos.
std::size_t firstLabelStart(std::string_view block) {
  for (std::size_t at = block.find("Record - "); at != std::string_view::npos; at = block.find("Record - ", at + 1))
    if (at == 0 || block[at - 1] == '\n' || block[at - 1] == '\r') return at;
  return std::string_view::npos;
}

}  // namespace

LabelBlockReader::LabelBlockReader(const std::string& proFile) : path_(proFile) {
  fd_ = openRegular(proFile, fileSize_);
#ifdef POSIX_FADV_SEQUENTIAL
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
}

LabelBlockReader::~LabelBlockReader() {
  if (fd_ >= 0) ::close(fd_);
}

// Reads until carry_ holds `size` bytes or the file ends.
bool LabelBlockReader::fill(std::size_t size) {
  std::size_t have = carry_.size();
  if (carry_.size() < size) carry_.resize(size);
  while (have < size && !eof_) {
    const ssize_t n = ::read(fd_, carry_.data() + have, size - have);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      carry_.resize(have);
      ThrowSystemError(errno, path_);
    }
    if (n == 0) eof_ = true;
    have += static_cast<std::size_t>(n);
  }
  carry_.resize(have);
  return have > 0;
}

bool LabelBlockReader::next(std::string& block, std::size_t size) {
  size = std::max<std::size_t>(size, 16);
  std::size_t want = std::max(size, carry_.size());
  for (;;) {
    if (!fill(want)) return false;
    // The cut: the last label line that is not the block's first line, and, in the
    // file's first block, that comes after its first label.
    std::size_t from = 1;
    if (!sawLabel_) {
      const std::size_t first = firstLabelStart(carry_);
      from = first == std::string::npos ? carry_.size() : first + 1;
    }
    const std::size_t cut = from < carry_.size() ? lastLabelStart(carry_, from) : std::string::npos;
    if (cut != std::string::npos || eof_) {
      const std::size_t end = cut != std::string::npos ? cut : carry_.size();
      // The block takes the buffer; only the bytes past its end are copied.
      block.swap(carry_);
      carry_.assign(block, end, std::string::npos);
      block.resize(end);
      done_ += static_cast<int64_t>(end);
      sawLabel_ = true;
      return true;
    }
    want = carry_.size() * 2;  // one record larger than the block
  }
}

// The first CR or LF at or after `from`, or the block's end. The line ends are marked
// 64 bytes at a time, and most lines end within the 64 marked for the line before.
std::size_t BlockRecords::lineEnd(std::size_t from) {
  const char* p = block_.data();
  const std::size_t n = block_.size();
  while (from < n) {
    if (from < endsAt_ || from - endsAt_ >= 64) {
      endsAt_ = from;
      ends_ = 0;
      if (n - from >= 64) {
#if defined(__SSE2__)
        const __m128i lf = _mm_set1_epi8('\n'), cr = _mm_set1_epi8('\r');
        for (int k = 0; k < 4; ++k) {
          const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + from + 16 * k));
          const auto hit = static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, lf), _mm_cmpeq_epi8(v, cr))));
          ends_ |= static_cast<uint64_t>(hit) << (16 * k);
        }
#else
        for (std::size_t k = 0; k < 64; ++k) ends_ |= static_cast<uint64_t>(p[from + k] == '\n' || p[from + k] == '\r') << k;
#endif
      } else {
        for (std::size_t k = 0; from + k < n; ++k) ends_ |= static_cast<uint64_t>(p[from + k] == '\n' || p[from + k] == '\r') << k;
      }
    }
    const uint64_t bits = ends_ >> (from - endsAt_);
    if (bits != 0) return from + static_cast<std::size_t>(__builtin_ctzll(bits));
    from = endsAt_ + 64;
  }
  return n;
}

bool BlockRecords::next(RecordText& record) {
  views_.clear();
  std::string_view label;
  bool haveLabel = false;
  const char* base = block_.data();
  const std::size_t n = block_.size();
  while (at_ < n) {
    const char* p = base + at_;
    const char* stop = base + lineEnd(at_);
    const auto len = static_cast<std::size_t>(stop - p);
    const std::string_view line(p, len);
    if (IsLabelLine(line) && haveLabel) break;  // the next record's label
    std::size_t used = len;
    if (at_ + len < n) used += (*stop == '\r' && at_ + len + 1 < n && stop[1] == '\n') ? 2 : 1;
    at_ += used;
    ++lines_;
    if (!haveLabel && IsLabelLine(line)) {
      label = line;
      haveLabel = true;
      continue;
    }
    views_.push_back(line);
  }
  if (!haveLabel && views_.empty()) return false;
  record.index = ++records_;
  record.label = label;
  record.lines = views_;
  return true;
}

}  // namespace zv
