// The storage of texts.
#pragma once

#include <cstddef>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

/// The characters of a text, which can grow at their end; a NUL stands behind them. Short texts are
/// kept inside, others in memory that is used again like that of objects.
class COMMANDFILTER_EXPORT TextBuffer {
 public:
  explicit TextBuffer(std::string_view text) : TextBuffer(text, {}, 0) {}
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
