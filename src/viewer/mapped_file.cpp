// mmap of a whole file, read-only and shared with the page cache.
#include "viewer/mapped_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/error.h"

namespace zv {

MappedFile::MappedFile(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) ThrowSystemError(errno, path);
  struct stat st {};
  if (::fstat(fd, &st) != 0) {
    const int e = errno;
    ::close(fd);
    ThrowSystemError(e, path);
  }
  if (!S_ISREG(st.st_mode)) {
    ::close(fd);
    ThrowSystemError(EISDIR, path);
  }
  if (st.st_size > 0) {
    void* p = ::mmap(nullptr, static_cast<std::size_t>(st.st_size), PROT_READ, MAP_SHARED, fd, 0);
    if (p == MAP_FAILED) {
      const int e = errno;
      ::close(fd);
      ThrowSystemError(e, path);
    }
    data_ = static_cast<const char*>(p);
    size_ = st.st_size;
  }
  // The mapping holds the file; the descriptor is not needed any more.
  ::close(fd);
  open_ = true;
}

MappedFile::~MappedFile() { close(); }

MappedFile::MappedFile(MappedFile&& other) noexcept
    : data_(other.data_), size_(other.size_), open_(other.open_) {
  other.data_ = nullptr;
  other.size_ = 0;
  other.open_ = false;
}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  if (this != &other) {
    close();
    data_ = other.data_;
    size_ = other.size_;
    open_ = other.open_;
    other.data_ = nullptr;
    other.size_ = 0;
    other.open_ = false;
  }
  return *this;
}

void MappedFile::close() noexcept {
  if (data_ != nullptr) ::munmap(const_cast<char*>(data_), static_cast<std::size_t>(size_));
  data_ = nullptr;
  size_ = 0;
  open_ = false;
}

}  // namespace zv
