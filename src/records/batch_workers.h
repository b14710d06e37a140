// Worker threads that take batches of records in order and hand them back in the
// same order, for the one-pass tools whose work per record outweighs the reading.
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace zv {

// `Batch` is the caller's; `work(batch, worker)` runs on a worker thread (worker is
// 0, 1... for state kept per thread) and must touch nothing but the batch. The
// caller's thread submits batches and takes them back, done, in the order submitted;
// an exception a worker threw comes out of next(). The destructor stops the workers
// whatever is left undone.
template <class Batch>
class BatchWorkers {
 public:
  using Work = std::function<void(Batch& batch, unsigned worker)>;

  BatchWorkers(unsigned count, Work work) : work_(std::move(work)) {
    for (unsigned i = 0; i < count; ++i) threads_.emplace_back([this, i] { run(i); });
  }
  ~BatchWorkers() {
    {
      std::lock_guard lock(mutex_);
      stop_ = true;
    }
    wake_.notify_all();
    for (std::thread& t : threads_) t.join();
  }
  BatchWorkers(const BatchWorkers&) = delete;
  BatchWorkers& operator=(const BatchWorkers&) = delete;

  // As many workers as the machine has cores.
  static unsigned Cores() { return std::max(1u, std::thread::hardware_concurrency()); }

  std::size_t threads() const { return threads_.size(); }
  std::size_t inHand() const { return order_.size(); }

  void submit(std::unique_ptr<Batch> batch) {
    {
      std::lock_guard lock(mutex_);
      order_.push_back({std::move(batch), false, nullptr});
      queue_.push_back(&order_.back());
    }
    wake_.notify_one();
  }

  // The oldest batch, once done, taken off the list.
  std::unique_ptr<Batch> next() {
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return order_.front().done; });
    Slot s = std::move(order_.front());
    order_.pop_front();
    lock.unlock();
    if (s.error) std::rethrow_exception(s.error);
    return std::move(s.batch);
  }

 private:
  struct Slot {
    std::unique_ptr<Batch> batch;
    bool done;
    std::exception_ptr error;
  };

  void run(unsigned worker) {
    for (;;) {
      Slot* s = nullptr;
      {
        std::unique_lock lock(mutex_);
        wake_.wait(lock, [this] { return stop_ || !queue_.empty(); });
        if (stop_) return;
        s = queue_.front();
        queue_.pop_front();
      }
      std::exception_ptr error;
      try {
        work_(*s->batch, worker);
      } catch (...) {
        error = std::current_exception();
      }
      {
        std::lock_guard lock(mutex_);
        s->error = error;
        s->done = true;
      }
      done_.notify_all();
    }
  }

  Work work_;
  std::mutex mutex_;
  std::condition_variable wake_, done_;
  std::deque<Slot> order_;     // in hand, in the order submitted (a deque keeps addresses)
  std::deque<Slot*> queue_;    // waiting for a worker
  bool stop_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace zv

#include <span>
#include <string>
#include <string_view>

namespace zv {

// Records copied out of the scanner's buffer for a worker: their lines one after
// another in `bytes`, each record's label as given.
struct RecordBatch {
  struct Record {
    std::size_t firstLine = 0, lineCount = 0;
    std::string label;
  };
  bool first = false;  // holds the first record read
  std::string bytes;
  std::vector<std::pair<std::size_t, std::size_t>> lines;  // offset and length in bytes
  std::vector<Record> records;

  void add(std::string_view label, std::span<const std::string_view> recordLines) {
    Record& r = records.emplace_back();
    r.label.assign(label);
    r.firstLine = lines.size();
    r.lineCount = recordLines.size();
    for (std::string_view line : recordLines) {
      lines.emplace_back(bytes.size(), line.size());
      bytes.append(line);
    }
  }
  // The lines of record r, as views into `bytes` (kept in `views`).
  std::span<const std::string_view> linesOf(std::size_t r, std::vector<std::string_view>& views) const {
    views.clear();
    for (std::size_t l = records[r].firstLine; l < records[r].firstLine + records[r].lineCount; ++l)
      views.emplace_back(bytes.data() + lines[l].first, lines[l].second);
    return views;
  }
};

// A batch is closed at this many bytes of records; a few of them are in hand at once.
inline constexpr std::size_t kBatchBytes = 1 << 18;
inline constexpr std::size_t kBatchesPerWorker = 3;

}  // namespace zv
