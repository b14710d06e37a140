// A file mapped read-only into memory: the viewer's pages come from the system's cache,
// and nothing of the file is copied.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zv {

class MappedFile {
 public:
  MappedFile() = default;
  // Maps `path`; throws ZvError (53 for a missing file, 75 for a folder, ...). An empty
  // file maps to no bytes.
  explicit MappedFile(const std::string& path);
  ~MappedFile();
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  std::string_view bytes() const noexcept { return {data_, static_cast<std::size_t>(size_)}; }
  const char* data() const noexcept { return data_; }
  int64_t size() const noexcept { return size_; }
  bool isOpen() const noexcept { return open_; }

  // Unmaps; the bytes are gone.
  void close() noexcept;

 private:
  const char* data_ = nullptr;
  int64_t size_ = 0;
  bool open_ = false;
};

}  // namespace zv
