// Exchanging the leading bytes of two records of the same type.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace zv {

// Exchanges the first `size` bytes of two elements of the same trivially copyable
// record type; sorts pass less than the whole record on purpose.
template <class T>
void Swap(T& first, T& second, std::size_t size) {
  static_assert(std::is_trivially_copyable_v<T>);
  if (size > sizeof(T)) size = sizeof(T);
  unsigned char tmp[sizeof(T)];
  auto* a = reinterpret_cast<unsigned char*>(&first);
  auto* b = reinterpret_cast<unsigned char*>(&second);
  std::memcpy(tmp, a, size);
  std::memcpy(a, b, size);
  std::memcpy(b, tmp, size);
}

}  // namespace zv
