// How the region of objects' memory is shared out. Builds for tests do without it, so this program
// has an ObjectMemory of its own, built as a release has it.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <set>
#include <thread>
#include <vector>

#include "runtime/ObjectMemory.h"

namespace {

// What the C++ library was asked for and has got back.
thread_local std::size_t allocated = 0;
thread_local std::size_t released = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++allocated;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  ++released;
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  ++released;
  std::free(memory);
}

namespace commandfilter {
namespace {

constexpr std::size_t kLargest = 512;

// Blocks of one size, each of them written to its end.
class Blocks {
 public:
  Blocks(std::size_t size, std::size_t count) : size_(size) {
    blocks_.reserve(count);
    const std::size_t before = allocated;
    for (std::size_t i = 0; i < count; ++i) {
      blocks_.push_back(ObjectMemory::allocate(size));
      std::memset(blocks_.back(), static_cast<int>(i % 251), size);
    }
    outside_ = allocated - before;
  }
  Blocks(const Blocks&) = delete;
  Blocks& operator=(const Blocks&) = delete;
  ~Blocks() {
    const std::size_t before = released;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
      const auto* bytes = static_cast<const unsigned char*>(blocks_[i]);
      for (std::size_t at = 0; at < size_; ++at) EXPECT_EQ(bytes[at], i % 251);
      ObjectMemory::release(blocks_[i], size_);
    }
    EXPECT_EQ(released - before, outside_);
  }

  // How many of them are not of the region.
  [[nodiscard]] std::size_t outside() const { return outside_; }
  [[nodiscard]] std::set<void*> places() const { return {blocks_.begin(), blocks_.end()}; }

 private:
  std::size_t size_;
  std::size_t outside_ = 0;
  std::vector<void*> blocks_;
};

TEST(ObjectRegion, HoldsBlocksOfEverySize) {
  for (std::size_t size = 1; size <= kLargest; size += 7) {
    const Blocks blocks(size, 20);
    EXPECT_EQ(blocks.outside(), 0U) << size;
    EXPECT_EQ(blocks.places().size(), 20U);
    for (const void* place : blocks.places()) {
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(place) % alignof(std::max_align_t), 0U) << size;
    }
  }
}

TEST(ObjectRegion, GivesThePlaceOfADestroyedObjectToTheNext) {
  const std::set<void*> before = Blocks(48, 100).places();
  EXPECT_EQ(Blocks(48, 100).places(), before);
  EXPECT_EQ(Blocks(33, 100).places(), before);
  EXPECT_NE(Blocks(49, 100).places(), before);
}

TEST(ObjectRegion, LeavesLargeBlocksToTheLibrary) {
  EXPECT_EQ(Blocks(kLargest, 3).outside(), 0U);
  EXPECT_EQ(Blocks(kLargest + 1, 3).outside(), 3U);
}

TEST(ObjectRegion, GivesOneSizeAPartOfItself) {
  constexpr std::size_t kPart = std::size_t{256} * 1024;
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(Blocks(64, kPart / 64).outside(), 0U);
    EXPECT_EQ(Blocks(64, kPart / 64 + 1000).outside(), 1000U);
    EXPECT_EQ(Blocks(80, 100).outside(), 0U);
  }
}

TEST(ObjectRegion, BelongsToOneThread) {
  // The first one that asks.
  EXPECT_EQ(Blocks(64, 1).outside(), 0U);
  std::thread([] { EXPECT_EQ(Blocks(64, 100).outside(), 100U); }).join();
  std::vector<void*> blocks;
  for (int i = 0; i < 100; ++i) blocks.push_back(ObjectMemory::allocate(64));
  // What another thread is given to destroy, it may use again.
  std::thread([&blocks] {
    for (void* block : blocks) ObjectMemory::release(block, 64);
    const Blocks again(64, 100);
    EXPECT_EQ(again.outside(), 0U);
    EXPECT_EQ(again.places(), std::set<void*>(blocks.begin(), blocks.end()));
  }).join();
  EXPECT_EQ(Blocks(64, 100).outside(), 0U);
}

TEST(ObjectRegion, HasAnEnd) {
  constexpr std::size_t kSizes = 16;
  std::size_t outside = 0;
  for (std::size_t size = 1; size <= kSizes; ++size) {
    outside += Blocks(size * 16, 256 * 1024 / (size * 16)).outside();
  }
  EXPECT_GT(outside, 0U);
  EXPECT_EQ(Blocks(64, 1000).outside(), 0U);
}

}  // namespace
}  // namespace commandfilter
