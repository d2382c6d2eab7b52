#include "runtime/ObjectMemory.h"

#include <algorithm>
#include <atomic>

namespace commandfilter {

namespace {

// In a build for tests, the tools that watch memory are to see every object.
#if defined(NDEBUG) && !defined(COMMANDFILTER_COUNT_OBJECTS)
constexpr bool kHasRegion = true;
#else
constexpr bool kHasRegion = false;
#endif

// Blocks of one size are cut out of the region so many bytes at a time. A short process uses few of
// each size.
constexpr std::size_t kCutBytes = 1024;
// One size alone may not use up the region.
constexpr std::size_t kMostOfSize = std::size_t{256} * 1024;

constexpr std::size_t kBytes = std::size_t{1024} * 1024;
// No page of it is there until it is used.
alignas(64) constinit std::array<std::byte, kBytes> region{};

// What has been cut out of the region, in all and of each size.
struct Cut {
  std::size_t bytes = 0;
  std::array<std::size_t, 32> ofSize{};
};
constinit Cut cut;
constinit std::atomic<bool> isTaken = false;
[[gnu::tls_model("initial-exec")]] constinit thread_local bool isOwner = false;

bool ownsRegion() noexcept {
  if (!isOwner && !isTaken.load(std::memory_order_relaxed)) isOwner = !isTaken.exchange(true);
  return isOwner;
}

}  // namespace

constinit thread_local ObjectMemory::Store ObjectMemory::store_{.region = region.data()};

bool ObjectMemory::fill(std::size_t place) noexcept {
  static_assert(kBytes == kRegionBytes);
  static_assert(std::tuple_size_v<decltype(cut.ofSize)> == kSizes);
  if (!kHasRegion || !ownsRegion()) return false;
  const std::size_t size = (place + 1) * kStep;
  const std::size_t bytes = std::max(kCutBytes / size, std::size_t{1}) * size;
  if (cut.ofSize[place] + bytes > kMostOfSize || cut.bytes + kCutBytes > kRegionBytes) return false;
  std::byte* begin = region.data() + cut.bytes;
  cut.bytes += kCutBytes;
  cut.ofSize[place] += bytes;
  // The first one comes first.
  for (std::size_t at = bytes; at != 0; at -= size) put(store_.shelves[place], begin + at - size);
  return true;
}

void* ObjectMemory::allocateNew(std::size_t size) {
  const std::size_t place = shelfOf(size);
  if (place < kSizes && fill(place)) return allocate(size);
  return ::operator new(size);
}

void ObjectMemory::releaseOther(void* memory) noexcept { ::operator delete(memory); }

}  // namespace commandfilter
