// Buffered output of CR LF text lines to a file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zv {

// Writes text lines, each ended with CR LF, through one large buffer. Every write
// failure (a full disk, a lost device) throws ZvError numbered as the user knows it,
// with the file's name as detail; nothing is swallowed.
class TextOut {
 public:
  TextOut() = default;
  // Opens `path` for output, replacing a file of that name.
  explicit TextOut(const std::string& path);
  ~TextOut();
  TextOut(const TextOut&) = delete;
  TextOut& operator=(const TextOut&) = delete;

  void open(const std::string& path);
  // Opens `path` to add to its end, making it when it is missing.
  void append(const std::string& path);
  bool isOpen() const noexcept { return fd_ >= 0; }
  const std::string& path() const noexcept { return path_; }

  // The line and its CR LF.
  void line(std::string_view text);
  // An empty line: CR LF alone.
  void blank() { raw("\r\n"); }
  // Bytes as they are.
  void raw(std::string_view bytes);

  // Flushes and closes; a failure to write the tail throws. Closing twice is harmless.
  void close();
  // Closes without flushing or reporting: for files about to be deleted.
  void abandon() noexcept;

 private:
  void openWith(const std::string& path, int mode);
  void flush();
  // Writes `n` bytes at `p` to the open file: 0, or the error number of the failed write.
  int writeAll(const char* p, std::size_t n);

  int fd_ = -1;
  std::string path_;
  std::string buf_;
};

}  // namespace zv
