// The storage of texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

namespace detail {

// The first word and the last, which overlap in a text that is shorter than both.
template <typename Word>
inline void putTwoWords(char* target, std::string_view text) noexcept {
  Word first;
  Word last;
  const std::size_t lastPlace = text.size() - sizeof(Word);
  std::memcpy(&first, text.data(), sizeof first);
  std::memcpy(&last, text.data() + lastPlace, sizeof last);
  std::memcpy(target, &first, sizeof first);
  std::memcpy(target + lastPlace, &last, sizeof last);
}

// A text of at most 16 characters. Most texts are that short, and for those a call of the C library
// would cost more than the copy.
inline void putShortText(char* target, std::string_view text) noexcept {
  if (text.size() >= sizeof(std::uint64_t)) {
    putTwoWords<std::uint64_t>(target, text);
  } else if (text.size() >= sizeof(std::uint32_t)) {
    putTwoWords<std::uint32_t>(target, text);
  } else if (text.size() >= sizeof(std::uint16_t)) {
    putTwoWords<std::uint16_t>(target, text);
  } else if (!text.empty()) {
    *target = text.front();
  }
}

}  // namespace detail

/// The characters of a text, which can grow at their end; a NUL stands behind them. Short texts are
/// kept inside, others in memory that is used again like that of objects.
class COMMANDFILTER_EXPORT TextBuffer {
 public:
  explicit TextBuffer(std::string_view text) : size_(text.size()), capacity_(kInside), inside_{} {
    if (size_ > kInside) {
      putOutside(text);
    } else {
      detail::putShortText(inside_, text);
    }
  }
  /// Two texts as one, with room for so many more characters at least.
  TextBuffer(std::string_view first, std::string_view second, std::size_t spare);
  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;
  ~TextBuffer() {
    if (!isInside()) release();
  }

  [[nodiscard]] std::string_view view() const noexcept { return {data(), size_}; }
  [[nodiscard]] const char* data() const noexcept { return isInside() ? inside_ : outside_; }

  /// Appends a text that is not part of this one.
  void append(std::string_view text);

 private:
  static constexpr std::size_t kInside = 15;

  [[nodiscard]] bool isInside() const noexcept { return capacity_ == kInside; }
  [[nodiscard]] char* writable() noexcept { return isInside() ? inside_ : outside_; }
  void putOutside(std::string_view text);
  void release() noexcept;

  std::size_t size_;
  /// Without the NUL. More than fits inside when the text is outside.
  std::size_t capacity_;
  union {
    char inside_[kInside + 1];
    char* outside_;
  };
};

}  // namespace commandfilter
