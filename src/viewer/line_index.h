// The line index of a viewed file: sparse marks of line starts, built in the background.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <thread>

namespace zv {

// Where a line lies in the file. `next` is where the line after it starts (the file's
// size after the last line), or -1 when the line runs on past what was looked at.
struct LineSpan {
  int64_t start = -1;
  int64_t textEnd = -1;  // behind the last byte of the text, before the line end
  int64_t next = -1;
  bool valid() const { return start >= 0; }
};

// Keeps the start of every kLinesPerMark-th line, and of the first line that starts
// more than kBytesPerMark behind the mark before it, as (line, offset) pairs. Any
// other line is found by counting line ends from the mark before it, which touches
// fewer than kLinesPerMark lines and, but for one long line, fewer than kBytesPerMark
// bytes. The marks take 16 bytes per 4096 lines at most: under 0.4% of the file when
// every line is empty, far less for text.
//
// One thread builds the marks front to back; any thread may look lines up meanwhile.
// Lookups beyond what is indexed so far still answer, by counting from the last mark.
class LineIndex {
 public:
  static constexpr int64_t kLinesPerMark = 4096;
  static constexpr int64_t kBytesPerMark = int64_t{1} << 20;

  // The bytes must outlive the index.
  explicit LineIndex(std::string_view bytes);
  ~LineIndex();
  LineIndex(const LineIndex&) = delete;
  LineIndex& operator=(const LineIndex&) = delete;

  // Builds in a thread of its own; `onComplete` is called from that thread when the
  // whole file is indexed (not when it is stopped).
  void start(std::function<void()> onComplete = {});
  // Builds here and now.
  void build();
  // Stops the thread and waits for it; what was indexed stays usable.
  void stop();
  // Waits until the thread has finished.
  void wait();

  bool complete() const { return complete_.load(std::memory_order_acquire); }
  // Lines whose end has been seen so far; once complete, every line of the file,
  // a last line without a line end included.
  int64_t lineCount() const { return lines_.load(std::memory_order_acquire); }
  // Bytes scanned so far.
  int64_t indexedBytes() const { return scanned_.load(std::memory_order_acquire); }
  int64_t fileSize() const { return static_cast<int64_t>(bytes_.size()); }

  // The offset of line n's first byte, or -1 when the file has no line n.
  int64_t lineStart(int64_t n) const;
  // Line n and where the next one starts. A line whose end lies more than `lookAhead`
  // bytes on, where no mark tells it, comes back cut there with `next` -1.
  LineSpan lineSpan(int64_t n, int64_t lookAhead = 2 * kBytesPerMark) const;
  // The same for the line that starts at `start`, line number `n`.
  LineSpan spanAt(int64_t n, int64_t start, int64_t lookAhead = 2 * kBytesPerMark) const;
  // The number of the line that holds byte `offset` (0 <= offset < size).
  int64_t lineOfOffset(int64_t offset) const;

  // Memory held by the marks now.
  std::size_t memoryBytes() const;

 private:
  struct Mark {
    int64_t line;
    int64_t offset;
  };
  // The last published mark whose line is at most n (by line) or whose offset is at
  // most `offset` (by offset).
  Mark markForLine(int64_t n) const;
  Mark markForOffset(int64_t offset) const;
  bool addMark(int64_t line, int64_t offset);
  void run(const std::function<void()>& onComplete);

  std::string_view bytes_;
  std::unique_ptr<Mark[]> marks_;  // never moves: readers use it while it fills
  std::size_t capacity_ = 0;
  std::size_t filled_ = 0;                 // the builder's own count
  std::atomic<std::size_t> published_{0};  // marks readers may use
  std::atomic<int64_t> lines_{0};
  std::atomic<int64_t> scanned_{0};
  std::atomic<bool> complete_{false};
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

}  // namespace zv
