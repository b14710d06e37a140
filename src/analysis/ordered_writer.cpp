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
  // Sets the file's length before its pieces are written in any order.
  void sizeTo(int64_t length) {
    if (::ftruncate(fd_, static_cast<off_t>(length)) != 0) ThrowSystemError(errno, path_);
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
  bool rising = true;
  for (int32_t k = 2; k <= n && rising; ++k) rising = order.readAt(k) >= order.readAt(k - 1);
  std::vector<int32_t> readOrder, rank;
  if (!rising) {
    readOrder.resize(size);
    std::iota(readOrder.begin(), readOrder.end(), 0);
    std::stable_sort(readOrder.begin() + 1, readOrder.end(),
                     [&](int32_t a, int32_t b) { return order.readAt(a) < order.readAt(b); });
    rank.resize(size);
    for (int32_t i = 1; i <= n; ++i) rank[static_cast<std::size_t>(readOrder[static_cast<std::size_t>(i)])] = i;
  }
  auto rankOf = [&](int32_t k) { return rising ? k : rank[static_cast<std::size_t>(k)]; };

  // Runs: a new one wherever the next record is read before the last. What each
  // position needs in the reading is noted by record, so that the reading, in record
  // order, finds it in order too: its run, its place, its size, and whether it is
  // copied as it stands (the sign of the size).
  struct Placed {
    int64_t bytes = 0;  // negative: rendered from its lines
    int32_t position = 0;
    uint16_t run = 0;
  };
  std::vector<Placed> placed(size);
  std::vector<Run> runs;
  int64_t at = 0;
  int32_t lastRank = 0;
  for (int32_t p = 1; p <= n; ++p) {
    const int32_t k = order.recordAt(p);
    const int32_t r = rankOf(k);
    if (p == 1 || r < lastRank) {
      if (static_cast<int32_t>(runs.size()) == kMaxRuns) return false;
      runs.push_back(Run{at, {}});
    }
    lastRank = r;
    const int64_t bytes = order.bytes(p);
    placed[static_cast<std::size_t>(k)] = {order.asItStands(p) ? bytes : -bytes - 1, p,
                                           static_cast<uint16_t>(runs.size() - 1)};
    at += bytes;
  }
  rank.clear();
  rank.shrink_to_fit();
  const int64_t total = at;
  const std::size_t capacity =
      std::clamp<std::size_t>(kBufferBytes / std::max<std::size_t>(runs.size(), 1), std::size_t{16} << 10, std::size_t{1} << 20);

  OffsetFile out(outFile);
  out.sizeTo(total + static_cast<int64_t>(tail.size()));
  auto flush = [&](Run& run) {
    out.writeAt(run.at, run.buffer);
    run.at += static_cast<int64_t>(run.buffer.size());
    run.buffer.clear();
  };
  RecordBlockReader blocks(proFile);
  RecordBlock block;
  int32_t linesDone = 0;
  for (int32_t i = 1; i <= n; ++i) {
    const int32_t k = rising ? i : readOrder[static_cast<std::size_t>(i)];
    const Placed& place = placed[static_cast<std::size_t>(k)];
    Run& run = runs[place.run];
    if (run.buffer.capacity() < capacity) run.buffer.reserve(capacity);
    const std::size_t before = run.buffer.size();
    const int64_t bytes = place.bytes >= 0 ? place.bytes : -place.bytes - 1;
    if (place.bytes >= 0) {
      std::string_view text;
      if (!blocks.readRaw(order.readAt(k), static_cast<std::size_t>(bytes), text))
        throw std::logic_error(proFile + ": a record is no longer where it was");
      run.buffer.append(text);
    } else {
      if (!blocks.read(order.readAt(k), order.lines(k), block))
        throw std::logic_error(proFile + ": a record outgrew its block");
      order.render(place.position, block, run.buffer);
    }
    if (static_cast<int64_t>(run.buffer.size() - before) != bytes)
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
