#include "runtime/TextBuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "runtime/ObjectMemory.h"

namespace commandfilter {

namespace {

// The capacity that uses up the memory in which so many characters and a NUL fit.
std::size_t capacityFor(std::size_t size) noexcept {
  constexpr std::size_t kStep = 16;
  return size / kStep * kStep + kStep - 1;
}

char* allocate(std::size_t capacity) {
  return static_cast<char*>(ObjectMemory::allocate(capacity + 1));
}

// Most texts that are put together are still short enough to be copied without a call.
void put(char* target, std::string_view text) noexcept {
  struct LongWord {
    std::uint64_t halves[2];
  };
  const std::size_t size = text.size();
  if (size > 2 * sizeof(LongWord)) {
    std::memcpy(target, text.data(), size);
  } else if (size > sizeof(LongWord)) {
    detail::putTwoWords<LongWord>(target, text);
  } else {
    detail::putShortText(target, text);
  }
}

}  // namespace

void TextBuffer::makeRoomOutside() {
  capacity_ = capacityFor(size_);
  outside_ = allocate(capacity_);
}

void TextBuffer::putOutside(std::string_view text) {
  makeRoomOutside();
  put(outside_, text);
  outside_[size_] = '\0';
}

void TextBuffer::release() noexcept { ObjectMemory::release(outside_, capacity_ + 1); }

// At least twice as much as there was, so that a text that grows step by step costs linear time.
void TextBuffer::makeMoreRoom(std::size_t size) {
  const std::size_t capacity = capacityFor(std::max(size, capacity_ * 2));
  char* larger = allocate(capacity);
  put(larger, view());
  if (!isInside()) release();
  capacity_ = capacity;
  outside_ = larger;
}

}  // namespace commandfilter
