// Memory for objects.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>

#include "runtime/Export.h"

namespace commandfilter {

/// Gives objects their memory, and keeps that of destroyed ones for the next objects of the same
/// size: expressions make and drop thousands of small objects of a few sizes. Each thread has its
/// own store, as objects belong to one thread; it is limited, and gone when the thread ends.
class COMMANDFILTER_EXPORT ObjectMemory {
 public:
  /// Memory of at least that size.
  [[nodiscard]] static void* allocate(std::size_t size) {
    const std::size_t place = shelfOf(size);
    if (place < kSizes) {
      Shelf& shelf = store_[place];
      if (Block* block = shelf.first) [[likely]] {
        shelf.first = block->next;
        ++shelf.room;
        return block;
      }
    }
    return allocateNew(size);
  }
  /// Takes memory back that `allocate` gave for the size.
  static void release(void* memory, std::size_t size) noexcept {
    const std::size_t place = shelfOf(size);
    if (place < kSizes) {
      Shelf& shelf = store_[place];
      if (shelf.room != 0) [[likely]] {
        put(shelf, memory);
        return;
      }
    }
    releaseForGood(memory, size);
  }

 private:
  static constexpr std::size_t kStep = 16;
  static constexpr std::size_t kSizes = 32;

  struct Block {
    Block* next;
  };
  // The blocks of one size, and how many more may be kept.
  struct Shelf {
    Block* first = nullptr;
    std::uint32_t room = 0;
  };
  using Store = std::array<Shelf, kSizes>;
  // Makes room in a thread's store, and gives its memory back when the thread ends.
  struct Opening;

  static constexpr std::size_t shelfOf(std::size_t size) noexcept { return (size - 1) / kStep; }
  static void put(Shelf& shelf, void* memory) noexcept {
    shelf.first = new (memory) Block{shelf.first};  // NOLINT: built in the memory itself
    --shelf.room;
  }
  // Where the store has no such block.
  [[nodiscard]] static void* allocateNew(std::size_t size);
  // Where the store has no room; it may not have been opened yet.
  static void releaseForGood(void* memory, std::size_t size) noexcept;

  // Without room until a thread gives back its first block. The storage model saves a call at every
  // access.
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
