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

// The first word and the last, which overlap in a text that is shorter than both.
template <typename Word>
void putTwoWords(char* target, std::string_view text) noexcept {
  Word first;
  Word last;
  const std::size_t lastPlace = text.size() - sizeof(Word);
  std::memcpy(&first, text.data(), sizeof first);
  std::memcpy(&last, text.data() + lastPlace, sizeof last);
  std::memcpy(target, &first, sizeof first);
  std::memcpy(target + lastPlace, &last, sizeof last);
}

// Most texts that are put together are short; for those a call of the C library would cost more
// than the copy.
void put(char* target, std::string_view text) noexcept {
  struct LongWord {
    std::uint64_t halves[2];
  };
  const std::size_t size = text.size();
  if (size > 2 * sizeof(LongWord)) {
    std::memcpy(target, text.data(), size);
  } else if (size >= sizeof(LongWord)) {
    putTwoWords<LongWord>(target, text);
  } else if (size >= sizeof(std::uint64_t)) {
    putTwoWords<std::uint64_t>(target, text);
  } else if (size >= sizeof(std::uint32_t)) {
    putTwoWords<std::uint32_t>(target, text);
  } else {
    for (std::size_t i = 0; i < size; ++i) target[i] = text[i];
  }
}

}  // namespace

TextBuffer::TextBuffer(std::string_view first, std::string_view second, std::size_t spare)
    : size_(first.size() + second.size()), capacity_(kInside), inside_{} {
  if (size_ > kInside) {
    capacity_ = capacityFor(size_ + spare);
    outside_ = allocate(capacity_);
  }
  char* characters = writable();
  put(characters, first);
  put(characters + first.size(), second);
  characters[size_] = '\0';
}

void TextBuffer::release() noexcept { ObjectMemory::release(outside_, capacity_ + 1); }

void TextBuffer::append(std::string_view text) {
  const std::size_t size = size_ + text.size();
  if (size > capacity_) {
    const std::size_t capacity = capacityFor(std::max(size, capacity_ * 2));
    char* larger = allocate(capacity);
    put(larger, view());
    if (!isInside()) release();
    capacity_ = capacity;
    outside_ = larger;
  }
  char* characters = writable();
  put(characters + size_, text);
  characters[size] = '\0';
  size_ = size;
}

}  // namespace commandfilter
