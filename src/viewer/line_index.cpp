// The sparse line index: one pass over the file's line ends, 64 bytes at a time.
#include "viewer/line_index.h"

#include <algorithm>

#include "viewer/line_scan.h"

namespace zv {

namespace {

// The builder publishes its marks and counts after every slice of this size, and looks
// at its stop flag; small enough that closing a file waits a few milliseconds at most.
constexpr int64_t kSlice = int64_t{4} << 20;

}  // namespace

LineIndex::LineIndex(std::string_view bytes) : bytes_(bytes) {
  const auto size = static_cast<int64_t>(bytes.size());
  // Room for every mark the file can need, reserved once so that readers can use the
  // array while it fills. The pages are only touched as marks are written.
  capacity_ = static_cast<std::size_t>(size / kLinesPerMark + size / kBytesPerMark + 2);
  marks_.reset(new Mark[capacity_]);
  if (size > 0) {
    marks_[0] = Mark{1, 0};
    filled_ = 1;
    published_.store(1, std::memory_order_release);
  } else {
    complete_.store(true, std::memory_order_release);
  }
}

LineIndex::~LineIndex() { stop(); }

void LineIndex::start(std::function<void()> onComplete) {
  if (thread_.joinable() || complete()) return;
  stop_.store(false);
  thread_ = std::thread([this, done = std::move(onComplete)] { run(done); });
}

void LineIndex::build() {
  if (!complete()) run({});
}

void LineIndex::stop() {
  stop_.store(true);
  if (thread_.joinable()) thread_.join();
}

void LineIndex::wait() {
  if (thread_.joinable()) thread_.join();
}

bool LineIndex::addMark(int64_t line, int64_t offset) {
  if (filled_ >= capacity_) return false;  // cannot happen by the count above
  marks_[filled_++] = Mark{line, offset};
  return true;
}

void LineIndex::run(const std::function<void()>& onComplete) {
  const char* p = bytes_.data();
  const auto size = static_cast<int64_t>(bytes_.size());
  int64_t ends = lines_.load(std::memory_order_relaxed);
  int64_t from = scanned_.load(std::memory_order_relaxed);
  Mark last = marks_[filled_ - 1];
  int64_t nextLineMark = last.line + kLinesPerMark;

  for (int64_t base = from; base < size; base += kSlice) {
    if (stop_.load(std::memory_order_relaxed)) return;
    const int64_t sliceEnd = std::min(base + kSlice, size);
    for (int64_t i = base; i < sliceEnd; i += 64) {
      const int64_t width = std::min<int64_t>(64, size - i);
      const uint64_t mask = width == 64 ? viewer::LineEndMask64(p + i, i + 64 < size && p[i + 64] == '\n')
                                        : viewer::LineEndMaskTail(p + i, static_cast<std::size_t>(width),
                                                                  viewer::kNoByte);
      if (mask == 0) continue;
      const int count = __builtin_popcountll(mask);
      // Most blocks hold no line that needs a mark: count their ends and go on.
      if (ends + count + 1 < nextLineMark && i + 64 <= last.offset + kBytesPerMark) {
        ends += count;
        continue;
      }
      for (uint64_t m = mask; m != 0; m &= m - 1) {
        ++ends;
        const int64_t start = i + __builtin_ctzll(m) + 1;
        if (start >= size) break;  // no line starts at the end of the file
        const int64_t line = ends + 1;
        if (line >= nextLineMark || start > last.offset + kBytesPerMark) {
          if (addMark(line, start)) last = Mark{line, start};
          nextLineMark = line + kLinesPerMark;
        }
      }
    }
    published_.store(filled_, std::memory_order_release);
    lines_.store(ends, std::memory_order_release);
    scanned_.store(sliceEnd, std::memory_order_release);
  }
  // A last line without a line end is a line too.
  if (size > 0 && p[size - 1] != '\n' && p[size - 1] != '\r') ++ends;
  published_.store(filled_, std::memory_order_release);
  lines_.store(ends, std::memory_order_release);
  scanned_.store(size, std::memory_order_release);
  complete_.store(true, std::memory_order_release);
  if (onComplete) onComplete();
}

LineIndex::Mark LineIndex::markForLine(int64_t n) const {
  const std::size_t count = published_.load(std::memory_order_acquire);
  const Mark* first = marks_.get();
  const Mark* after = std::upper_bound(first, first + count, n, [](int64_t v, const Mark& m) { return v < m.line; });
  return after == first ? Mark{1, 0} : *(after - 1);
}

LineIndex::Mark LineIndex::markForOffset(int64_t offset) const {
  const std::size_t count = published_.load(std::memory_order_acquire);
  const Mark* first = marks_.get();
  const Mark* after =
      std::upper_bound(first, first + count, offset, [](int64_t v, const Mark& m) { return v < m.offset; });
  return after == first ? Mark{1, 0} : *(after - 1);
}

int64_t LineIndex::lineStart(int64_t n) const {
  const auto size = static_cast<int64_t>(bytes_.size());
  if (n < 1 || size == 0) return -1;
  const Mark m = markForLine(n);
  if (m.line == n) return m.offset;
  const int64_t skipped = viewer::SkipLineEnds(bytes_.data() + m.offset, static_cast<std::size_t>(size - m.offset),
                                               viewer::kNoByte, n - m.line);
  if (skipped < 0) return -1;
  const int64_t start = m.offset + skipped;
  return start < size ? start : -1;
}

LineSpan LineIndex::spanAt(int64_t n, int64_t start, int64_t lookAhead) const {
  LineSpan span;
  const auto size = static_cast<int64_t>(bytes_.size());
  if (start < 0 || start >= size) return span;
  const char* p = bytes_.data();
  span.start = start;
  // A mark on the next line says where this one ends without reading it: the way past
  // a line of a gigabyte.
  const Mark m = markForLine(n + 1);
  if (m.line == n + 1 && m.offset > start) {
    span.next = m.offset;
    span.textEnd = m.offset - 1;
    if (p[span.textEnd] == '\n' && span.textEnd > start && p[span.textEnd - 1] == '\r') --span.textEnd;
    return span;
  }
  const int64_t limit = std::min(size - start, lookAhead);
  const int64_t end = viewer::FindLineEnd(p + start, static_cast<std::size_t>(limit));
  if (end >= 0) {
    span.textEnd = start + end;
    span.next = span.textEnd + viewer::LineEndLength(p + span.textEnd, p + size);
  } else if (start + limit >= size) {
    span.textEnd = size;
    span.next = size;
  } else {
    span.textEnd = start + limit;
  }
  return span;
}

LineSpan LineIndex::lineSpan(int64_t n, int64_t lookAhead) const { return spanAt(n, lineStart(n), lookAhead); }

int64_t LineIndex::lineOfOffset(int64_t offset) const {
  const auto size = static_cast<int64_t>(bytes_.size());
  if (size == 0) return 0;
  offset = std::clamp<int64_t>(offset, 0, size - 1);
  const Mark m = markForOffset(offset);
  const char* p = bytes_.data();
  return m.line + viewer::CountLineEnds(p + m.offset, static_cast<std::size_t>(offset - m.offset),
                                        viewer::ByteAt(p + offset, p + size));
}

std::size_t LineIndex::memoryBytes() const { return published_.load(std::memory_order_acquire) * sizeof(Mark); }

}  // namespace zv
