// Memory for objects.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>

#include "runtime/Export.h"

namespace commandfilter {

/// Gives objects their memory. Expressions make and drop thousands of small objects of a few sizes:
/// these lie side by side in one region, without anything between them, and what a destroyed one
/// leaves is kept for the next of its size. The region belongs to the first thread that makes an
/// object, which is nearly always the only one, and is as long as the process. Beyond it, for large
/// objects and in other threads, memory is what the C++ library gives and takes back.
class COMMANDFILTER_EXPORT ObjectMemory {
 public:
  /// Memory of at least that size.
  [[nodiscard]] static void* allocate(std::size_t size) {
    const std::size_t place = shelfOf(size);
    if (place < kSizes) {
      Block*& shelf = store_.shelves[place];
      if (Block* block = shelf) [[likely]] {
        shelf = block->next;
        return block;
      }
    }
    return allocateNew(size);
  }
  /// Takes memory back that `allocate` gave for the size. Another thread may have asked for it: it
  /// is this one's from then on.
  static void release(void* memory, std::size_t size) noexcept {
    const std::size_t place = shelfOf(size);
    if (place < kSizes && isOfRegion(memory)) [[likely]] {
      put(store_.shelves[place], memory);
    } else {
      releaseOther(memory);
    }
  }

 private:
  static constexpr std::size_t kStep = 16;
  static constexpr std::size_t kSizes = 32;
  static constexpr std::size_t kRegionBytes = std::size_t{1024} * 1024;

  struct Block {
    Block* next;
  };

  static constexpr std::size_t shelfOf(std::size_t size) noexcept { return (size - 1) / kStep; }
  static bool isOfRegion(const void* memory) noexcept {
    return reinterpret_cast<std::uintptr_t>(memory) -
               reinterpret_cast<std::uintptr_t>(store_.region) <
           kRegionBytes;
  }
  static void put(Block*& shelf, void* memory) noexcept {
    shelf = new (memory) Block{shelf};  // NOLINT: built in the memory itself
  }
  static void releaseOther(void* memory) noexcept;
  // Where the shelf of the size is empty, or there is none.
  [[nodiscard]] static void* allocateNew(std::size_t size);
  /// Cuts more blocks out of the region. False when it is another thread's or used up.
  static bool fill(std::size_t place) noexcept;

  // The free blocks of each size, and where the region is: a program that is compiled without -fPIC
  // would have a copy of the region itself.
  struct Store {
    std::array<Block*, kSizes> shelves{};
    const std::byte* region;
  };
  // The storage model saves a call at every access.
  [[gnu::tls_model("initial-exec")]] static constinit thread_local Store store_;
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
