#include "runtime/ObjectMemory.h"

#include <array>
#include <cstdint>
#include <new>

namespace commandfilter {

namespace {

constexpr std::size_t kStep = 16;
constexpr std::size_t kSizes = 32;
// The memory of each size that a thread keeps. None in a build for tests: the tools that watch
// memory are to see every object.
#if defined(NDEBUG) && !defined(COMMANDFILTER_COUNT_OBJECTS)
constexpr std::uint32_t kKeptBytes = 256 * 1024;
#else
constexpr std::uint32_t kKeptBytes = 0;
#endif

struct Block {
  Block* next;
};

// The blocks of one size, and how many more may be kept.
struct Shelf {
  Block* first = nullptr;
  std::uint32_t room = 0;
};
using Store = std::array<Shelf, kSizes>;

// Without room until a thread gives back its first block. The storage model saves a call at every
// access.
[[gnu::tls_model("initial-exec")]] constinit thread_local Store store{};

constexpr std::size_t shelfOf(std::size_t size) noexcept { return (size - 1) / kStep; }

// Makes room in a thread's store, and gives its memory back when the thread ends; from then on
// nothing is kept.
struct Opening {
  Opening() noexcept {
    for (std::size_t i = 0; i < store.size(); ++i) {
      store[i].room = kKeptBytes / static_cast<std::uint32_t>((i + 1) * kStep);
    }
  }
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;
  ~Opening() {
    for (Shelf& shelf : store) {
      while (Block* block = shelf.first) {
        shelf.first = block->next;
        ::operator delete(block);
      }
      shelf.room = 0;
    }
  }
};

void put(Shelf& shelf, void* memory) noexcept {
  shelf.first = new (memory) Block{shelf.first};  // NOLINT: built in the memory itself
  --shelf.room;
}

// Without room: the thread's store may not have been opened yet. Apart from the rest, which would
// otherwise make room for it at every call.
[[gnu::cold, gnu::noinline]] void releaseToFullShelf(Shelf& shelf, void* memory) noexcept {
  static thread_local const Opening opening;
  static_cast<void>(opening);
  if (shelf.room != 0) {
    put(shelf, memory);
  } else {
    ::operator delete(memory);
  }
}

}  // namespace

void* ObjectMemory::allocate(std::size_t size) {
  const std::size_t place = shelfOf(size);
  if (place >= kSizes) return ::operator new(size);
  Shelf& shelf = store[place];
  Block* block = shelf.first;
  if (block == nullptr) return ::operator new((place + 1) * kStep);
  shelf.first = block->next;
  ++shelf.room;
  return block;
}

void ObjectMemory::release(void* memory, std::size_t size) noexcept {
  const std::size_t place = shelfOf(size);
  if (place >= kSizes) {
    ::operator delete(memory);
    return;
  }
  Shelf& shelf = store[place];
  if (shelf.room == 0) {
    releaseToFullShelf(shelf, memory);
    return;
  }
  put(shelf, memory);
}

}  // namespace commandfilter
