// The storage of texts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

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

inline constexpr std::size_t kShortText = 16;

// A text of at most kShortText characters. Most texts are that short, and for those a call of the C
// library would cost more than the copy.
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
  /// So many characters, which whoever makes it writes at once.
  explicit TextBuffer(std::size_t size) : size_(size), capacity_(kInside), inside_{} {
    if (size_ > kInside) makeRoomOutside();
    begin()[size_] = '\0';
  }
  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;
  ~TextBuffer() {
    if (!isInside()) release();
  }

  [[nodiscard]] std::string_view view() const noexcept { return {data(), size_}; }
  [[nodiscard]] char* begin() noexcept { return isInside() ? inside_ : outside_; }
  [[nodiscard]] const char* data() const noexcept { return isInside() ? inside_ : outside_; }

  /// Copies a text to where there is room for it; gives the place behind it.
  static char* copy(std::string_view text, char* place) noexcept {
    if (text.size() <= detail::kShortText) {
      detail::putShortText(place, text);
    } else {
      std::memcpy(place, text.data(), text.size());
    }
    return place + text.size();
  }
  /// True for a text that is kept inside. No text becomes shorter, so its size tells.
  [[nodiscard]] bool isShort() const noexcept { return size_ <= kInside; }
  /// True when this text, a short one, and another are the same. Behind a short text are zeros, so
  /// that two of a size are compared as a whole.
  [[nodiscard]] bool isSameShortText(const TextBuffer& other) const noexcept {
    return size_ == other.size_ && std::memcmp(inside_, other.inside_, sizeof inside_) == 0;
  }
  /// The eight bytes from `begin` on as they are in memory, zeros for those behind a short text;
  /// none when these are not there to be read at once.
  [[nodiscard]] std::optional<std::uint64_t> wordAt(std::size_t begin) const noexcept {
    std::uint64_t word = 0;
    if (begin + sizeof word > std::max(size_, sizeof inside_)) return std::nullopt;
    std::memcpy(&word, data() + begin, sizeof word);
    return word;
  }
  /// Makes the text so long, which is not shorter than it was. Gives where the new characters
  /// begin, which whoever extends it writes at once.
  [[nodiscard]] char* extend(std::size_t size) {
    if (size > capacity_) makeMoreRoom(size);
    char* characters = begin();
    characters[size] = '\0';
    return characters + std::exchange(size_, size);
  }

 private:
  static constexpr std::size_t kInside = 15;

  [[nodiscard]] bool isInside() const noexcept { return capacity_ == kInside; }
  void makeRoomOutside();
  void makeMoreRoom(std::size_t size);
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
