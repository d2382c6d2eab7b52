#include "runtime/ObjectMemory.h"

namespace commandfilter {

namespace {

// The memory of each size that a thread keeps. None in a build for tests: the tools that watch
// memory are to see every object.
#if defined(NDEBUG) && !defined(COMMANDFILTER_COUNT_OBJECTS)
constexpr std::uint32_t kKeptBytes = 256 * 1024;
#else
constexpr std::uint32_t kKeptBytes = 0;
#endif

}  // namespace

constinit thread_local ObjectMemory::Store ObjectMemory::store_{};

// From its end on nothing is kept.
struct ObjectMemory::Opening {
  Opening() noexcept {
    for (std::size_t i = 0; i < store_.size(); ++i) {
      store_[i].room = kKeptBytes / static_cast<std::uint32_t>((i + 1) * kStep);
    }
  }
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;
  ~Opening() {
    for (Shelf& shelf : store_) {
      while (Block* block = shelf.first) {
        shelf.first = block->next;
        ::operator delete(block);
      }
      shelf.room = 0;
    }
  }
};

void* ObjectMemory::allocateNew(std::size_t size) {
  const std::size_t place = shelfOf(size);
  return ::operator new(place < kSizes ? (place + 1) * kStep : size);
}

void ObjectMemory::releaseForGood(void* memory, std::size_t size) noexcept {
  const std::size_t place = shelfOf(size);
  if (place < kSizes) {
    static thread_local const Opening opening;
    static_cast<void>(opening);
    if (store_[place].room != 0) {
      put(store_[place], memory);
      return;
    }
  }
  ::operator delete(memory);
}

}  // namespace commandfilter
