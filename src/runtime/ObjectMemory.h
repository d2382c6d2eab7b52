// Memory for objects.
#pragma once

#include <cstddef>

#include "runtime/Export.h"

namespace commandfilter {

/// Gives objects their memory, and keeps that of destroyed ones for the next objects of the same
/// size: expressions make and drop thousands of small objects of a few sizes. Each thread has its
/// own store, as objects belong to one thread; it is limited, and gone when the thread ends.
class COMMANDFILTER_EXPORT ObjectMemory {
 public:
  /// Memory of at least that size.
  [[nodiscard]] static void* allocate(std::size_t size);
  /// Takes memory back that `allocate` gave for the size.
  static void release(void* memory, std::size_t size) noexcept;
};

/// Has a container of the standard library take its memory from there.
template <typename T>
class ObjectAllocator {
 public:
  using value_type = T;  // NOLINT(readability-identifier-naming): the library's name

  ObjectAllocator() noexcept = default;
  template <typename U>
  ObjectAllocator(const ObjectAllocator<U>& /*other*/) noexcept {}

  /// Memory for so many elements.
  [[nodiscard]] T* allocate(std::size_t count) {
    return static_cast<T*>(ObjectMemory::allocate(count * sizeof(T)));
  }
  /// Takes memory back that `allocate` gave for the count.
  void deallocate(T* memory, std::size_t count) noexcept {
    ObjectMemory::release(memory, count * sizeof(T));
  }
  friend bool operator==(const ObjectAllocator&, const ObjectAllocator&) noexcept { return true; }
};

}  // namespace commandfilter
