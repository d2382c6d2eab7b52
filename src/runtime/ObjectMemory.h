// Memory for objects.
#pragma once

#include <cstddef>

namespace commandfilter {

/// Gives objects their memory, and keeps that of destroyed ones for the next objects of the same
/// size: expressions make and drop thousands of small objects of a few sizes. Each thread has its
/// own store, as objects belong to one thread; it is limited, and gone when the thread ends.
class ObjectMemory {
 public:
  /// Memory of at least that size.
  [[nodiscard]] static void* allocate(std::size_t size);
  /// Takes memory back that `allocate` gave for the size.
  static void release(void* memory, std::size_t size) noexcept;
};

}  // namespace commandfilter
