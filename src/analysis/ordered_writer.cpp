// Writing records in a new order from one sequential read of the .PRO.
#include "analysis/ordered_writer.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <numeric>
#include <stdexcept>
#include <unistd.h>
#include <vector>

#include "core/error.h"

namespace zv {

namespace {

// The output file, written at offsets; every failure is the system's error.
class OffsetFile {
 public:
  explicit OffsetFile(const std::string& path) : path_(path) {
    fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    // A file being created is missing only when its folder is.
    if (fd_ < 0) ThrowSystemError(errno == ENOENT ? ENOTDIR : errno, path);
  }
  ~OffsetFile() {
    if (fd_ >= 0) ::close(fd_);
  }
  OffsetFile(const OffsetFile&) = delete;
  OffsetFile& operator=(const OffsetFile&) = delete;

  void writeAt(int64_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t n = ::pwrite(fd_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
      if (n < 0) {
        if (errno == EINTR) continue;
        ThrowSystemError(errno, path_);
      }
      bytes.remove_prefix(static_cast<std::size_t>(n));
      offset += n;
    }
  }
  void close() {
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0 && errno != EINTR) ThrowSystemError(errno, path_);
  }

 private:
  int fd_ = -1;
  std::string path_;
};

struct Run {
  int64_t at = 0;  // where its next bytes go
  std::string buffer;
};

}  // namespace

bool OrderedWriter::write(const std::string& proFile, const std::string& outFile, const OrderSource& order,
                          std::string_view tail, JobProgress& progress, int32_t totalLines) {
  const int32_t n = order.count();
  const auto size = static_cast<std::size_t>(n) + 1;

  // The records in the order they are read: by record number when their offsets rise
  // with it, as in any index a filter or BuildIndex makes; else by offset. `rank` is a
  // record's place in that order.
  std::vector<int32_t> readOrder(size);
  std::iota(readOrder.begin(), readOrder.end(), 0);
  bool rising = true;
  for (int32_t k = 2; k <= n && rising; ++k) rising = order.readAt(k) >= order.readAt(k - 1);
  std::vector<int32_t> rank;
  if (!rising) {
    std::stable_sort(readOrder.begin() + 1, readOrder.end(),
                     [&](int32_t a, int32_t b) { return order.readAt(a) < order.readAt(b); });
    rank.resize(size);
    for (int32_t i = 1; i <= n; ++i) rank[static_cast<std::size_t>(readOrder[static_cast<std::size_t>(i)])] = i;
  }
  auto rankOf = [&](int32_t k) { return rising ? k : rank[static_cast<std::size_t>(k)]; };

  // Runs: a new one wherever the next record is read before the last.
  std::vector<uint16_t> runOf(size);
  std::vector<int32_t> positionOf(size);
  std::vector<Run> runs;
  int64_t at = 0;
  for (int32_t p = 1; p <= n; ++p) {
    const int32_t k = order.recordAt(p);
    if (p == 1 || rankOf(k) < rankOf(order.recordAt(p - 1))) {
      if (static_cast<int32_t>(runs.size()) == kMaxRuns) return false;
      runs.push_back(Run{at, {}});
    }
    runOf[static_cast<std::size_t>(p)] = static_cast<uint16_t>(runs.size() - 1);
    positionOf[static_cast<std::size_t>(k)] = p;
    at += order.bytes(p);
  }
  rank.clear();
  rank.shrink_to_fit();
  const int64_t total = at;
  const std::size_t capacity =
      std::clamp<std::size_t>(kBufferBytes / std::max<std::size_t>(runs.size(), 1), std::size_t{16} << 10, std::size_t{1} << 20);

  OffsetFile out(outFile);
  auto flush = [&](Run& run) {
    out.writeAt(run.at, run.buffer);
    run.at += static_cast<int64_t>(run.buffer.size());
    run.buffer.clear();
  };
  RecordBlockReader blocks(proFile);
  RecordBlock block;
  int32_t linesDone = 0;
  for (int32_t i = 1; i <= n; ++i) {
    const int32_t k = readOrder[static_cast<std::size_t>(i)];
    const int32_t p = positionOf[static_cast<std::size_t>(k)];
    Run& run = runs[runOf[static_cast<std::size_t>(p)]];
    if (run.buffer.capacity() < capacity) run.buffer.reserve(capacity);
    const std::size_t before = run.buffer.size();
    if (order.asItStands(p)) {
      std::string_view bytes;
      if (!blocks.readRaw(order.readAt(k), static_cast<std::size_t>(order.bytes(p)), bytes))
        throw std::logic_error(proFile + ": a record is no longer where it was");
      run.buffer.append(bytes);
    } else {
      if (!blocks.read(order.readAt(k), order.lines(k), block))
        throw std::logic_error(proFile + ": a record outgrew its block");
      order.render(p, block, run.buffer);
    }
    if (static_cast<int64_t>(run.buffer.size() - before) != order.bytes(p))
      throw std::logic_error(outFile + ": a record's size changed");
    if (run.buffer.size() >= capacity) flush(run);
    progress.recordDone(i);
    linesDone += std::max(order.lines(k), 0);
    progress.lineDone(linesDone, totalLines);
  }
  for (Run& run : runs)
    if (!run.buffer.empty()) flush(run);
  out.writeAt(total, tail);
  out.close();
  return true;
}

}  // namespace zv
