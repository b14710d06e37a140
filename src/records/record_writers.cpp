// Write Kept Records and Write Order: whole records, line by line, through the index.
#include "records/record_writers.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

#include "core/error.h"
#include "core/files.h"
#include "core/index_rec.h"
#include "core/output_files.h"
#include "core/text.h"
#include "core/text_out.h"
#include "records/record_file.h"

namespace zv {

namespace {

constexpr std::size_t kAppendBuffer = 1 << 16;

// Adds CR LF lines to the end of a file that may not exist yet.
class Appender {
 public:
  explicit Appender(const std::string& path) : path_(path) {
    fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (fd_ < 0) ThrowSystemError(errno == ENOENT ? ENOTDIR : errno, path);
    buf_.reserve(kAppendBuffer);
  }
  ~Appender() {
    if (fd_ >= 0) ::close(fd_);
  }
  Appender(const Appender&) = delete;
  Appender& operator=(const Appender&) = delete;

  void line(std::string_view text) {
    buf_.append(text);
    buf_.append("\r\n");
    if (buf_.size() >= kAppendBuffer) flush();
  }
  void close() {
    flush();
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0 && errno != EINTR) ThrowSystemError(errno, path_);
  }

 private:
  void flush() {
    std::size_t done = 0;
    while (done < buf_.size()) {
      const ssize_t n = ::write(fd_, buf_.data() + done, buf_.size() - done);
      if (n < 0) {
        if (errno == EINTR) continue;
        ThrowSystemError(errno, path_);
      }
      done += static_cast<std::size_t>(n);
    }
    buf_.clear();
  }

  int fd_ = -1;
  std::string path_;
  std::string buf_;
};

// The keep files a run has touched, each with its length before the run (-1: it did
// not exist), so that a failed run leaves them as they were.
class KeepTargets {
 public:
  void touch(const std::string& path) {
    if (before_.count(path)) return;
    before_[path] = Exist(path) ? FileSize(path) : -1;
  }
  void restore() noexcept {
    for (const auto& [path, size] : before_) {
      if (size < 0) {
        std::remove(path.c_str());
      } else if (::truncate(path.c_str(), static_cast<off_t>(size)) != 0) {
        // Nothing more can be done for it; the error that stopped the run is reported.
      }
    }
  }

 private:
  std::map<std::string, int64_t> before_;
};

}  // namespace

int16_t WriteKeptRecords(const std::string& proFile, const std::string& indexFile, int32_t glRecCount,
                         WritingProgress& frmWriting) {
  frmWriting.writingStarted(kWritingKeptCaption);
  int16_t written = 0;
  KeepTargets targets;
  try {
    RecordReader pro(proFile);
    ForEachIndexRec(indexFile, [&](int32_t i, IndexRec& rec) {
      if (i > glRecCount || rec.keepFlag == 0) return false;
      const std::string target = QPTrim(rec.keepFileName());
      Inc16(written, "the records one Write Kept Records writes", {"record", i});
      frmWriting.writingRecord(written);
      frmWriting.writingFile(target);
      // A keep file named like the record file or its index would be written into
      // while it is read.
      if (SameFile(target, proFile) || SameFile(target, indexFile))
        throw ZvError(err::kPathFileAccess, ErrorText(err::kPathFileAccess), target);
      targets.touch(target);
      Appender out(target);
      pro.readRecord(i, rec, [&](int64_t n, const std::string& line) {
        out.line(line);
        frmWriting.writingLine(static_cast<int32_t>(n));
      });
      if (rec.recNum == 1) out.line("");
      out.close();
      return false;
    });
    frmWriting.writingEnded();
    ClearAllMarks(indexFile);
  } catch (...) {
    targets.restore();
    frmWriting.writingEnded();
    throw;
  }
  return written;
}

void WriteOrder(const std::string& proFile, const std::string& indexFile, const std::string& ordFile,
                const std::vector<int32_t>& glOrder, int32_t glRecCount, WritingProgress& frmWriting) {
  OutputFiles outputs;
  try {
    IndexFile ndx;
    ndx.openRead(indexFile);
    if (SameFile(ordFile, proFile) || SameFile(ordFile, indexFile))
      throw ZvError(err::kPathFileAccess, ErrorText(err::kPathFileAccess), ordFile);
    outputs.add(ordFile);
    TextOut ord(ordFile);
    RecordReader pro(proFile);
    frmWriting.writingStarted(kWritingOrderCaption);
    frmWriting.writingFile(ordFile);
    for (int32_t p = 1; p <= glRecCount; ++p) {
      const int32_t k = glOrder.at(static_cast<std::size_t>(p));
      frmWriting.writingRecord(k);
      const IndexRec rec = ndx.get(k);
      pro.checkExtent(k, rec);  // a corrupt end line says so before it counts as a limit
      const int64_t lines = RecordLineCount(rec);
      if (lines > std::numeric_limits<int16_t>::max() || lines < std::numeric_limits<int16_t>::min())
        ThrowOverflow(LimitReason("the lines of a record that Write Order copies", std::numeric_limits<int16_t>::max()) +
                      " Record " + std::to_string(k) + " has " + std::to_string(lines) + ".");
      pro.readRecord(k, rec, [&](int64_t n, const std::string& line) {
        ord.line(line);
        frmWriting.writingLine(static_cast<int32_t>(n));
      });
      if (rec.recNum == 1) ord.blank();
    }
    ord.blank();
    ord.close();
    ndx.close();
    outputs.commit();
    frmWriting.writingEnded();
  } catch (...) {
    outputs.discardAll();
    frmWriting.writingEnded();
    throw;
  }
}

}  // namespace zv
