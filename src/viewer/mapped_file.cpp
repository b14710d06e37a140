// mmap of a whole file, read-only and shared with the page cache.
//
// A mapped file that another program cuts short while it is viewed (a capture being
// rewritten) would end the program with SIGBUS at the first look past its new end.
// The handler below maps a page of zeros over the page that faulted when it belongs
// to one of our mappings, so the viewer reads blanks there instead.
#include "viewer/mapped_file.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/error.h"

namespace zv {

namespace {

struct Mapping {
  std::atomic<uintptr_t> begin{0};
  std::atomic<uintptr_t> end{0};
};
std::array<Mapping, 16> gMappings;
struct sigaction gPreviousBus {};

bool ours(uintptr_t address) {
  for (const Mapping& m : gMappings) {
    const uintptr_t b = m.begin.load(std::memory_order_acquire);
    if (b != 0 && address >= b && address < m.end.load(std::memory_order_acquire)) return true;
  }
  return false;
}

void onBusError(int sig, siginfo_t* info, void* context) {
  const auto address = reinterpret_cast<uintptr_t>(info->si_addr);
  if (ours(address)) {
    const auto page = static_cast<uintptr_t>(::sysconf(_SC_PAGESIZE));
    void* at = reinterpret_cast<void*>(address - address % page);
    if (::mmap(at, page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED) return;
  }
  // Not ours: whatever handled it before.
  if ((gPreviousBus.sa_flags & SA_SIGINFO) != 0 && gPreviousBus.sa_sigaction != nullptr) {
    gPreviousBus.sa_sigaction(sig, info, context);
  } else if (gPreviousBus.sa_handler != SIG_IGN && gPreviousBus.sa_handler != SIG_DFL) {
    gPreviousBus.sa_handler(sig);
  } else {
    ::signal(sig, SIG_DFL);
    ::raise(sig);
  }
}

void watchBusErrors() {
  static std::once_flag once;
  std::call_once(once, [] {
    struct sigaction action {};
    action.sa_sigaction = &onBusError;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGBUS, &action, &gPreviousBus);
  });
}

// A slot is taken by its begin and then given its end, and given up end first, so
// that the handler never sees a begin with another mapping's end.
void remember(const char* data, int64_t size) {
  const auto begin = reinterpret_cast<uintptr_t>(data);
  for (Mapping& m : gMappings) {
    uintptr_t none = 0;
    if (m.begin.compare_exchange_strong(none, begin, std::memory_order_acq_rel)) {
      m.end.store(begin + static_cast<uintptr_t>(size), std::memory_order_release);
      return;
    }
  }
  // More files open at once than slots: this one goes unguarded.
}

void forget(const char* data) {
  const auto begin = reinterpret_cast<uintptr_t>(data);
  for (Mapping& m : gMappings) {
    if (m.begin.load(std::memory_order_acquire) != begin) continue;
    m.end.store(0, std::memory_order_release);
    m.begin.store(0, std::memory_order_release);
    return;
  }
}

}  // namespace

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
    watchBusErrors();
    remember(data_, size_);
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
  if (data_ != nullptr) {
    forget(data_);
    ::munmap(const_cast<char*>(data_), static_cast<std::size_t>(size_));
  }
  data_ = nullptr;
  size_ = 0;
  open_ = false;
}

}  // namespace zv
