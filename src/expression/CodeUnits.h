// A text as 16-bit code units.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

/// Shows well-formed UTF-8 as 16-bit code units. ASCII text is used where it stands; any other is
/// converted once. The text must outlive this.
class COMMANDFILTER_EXPORT CodeUnits {
 public:
  explicit CodeUnits(std::string_view text);

  [[nodiscard]] std::size_t length() const noexcept { return length_; }
  [[nodiscard]] char16_t operator[](std::size_t index) const noexcept {
    return isASCII_ ? static_cast<unsigned char>(text_[index]) : wide_[index];
  }
  /// The offset of the first unit at or after `start` that does not belong; the length when there
  /// is none.
  template <typename Belongs>
  [[nodiscard]] std::size_t skipWhile(std::size_t start, Belongs belongs) const noexcept {
    if (start >= length_) return start;
    if (!isASCII_) {
      return offsetOf(std::find_if_not(&wide_[start], &wide_[length_], belongs), wide_.data());
    }
    const auto byteBelongs = [&belongs](char byte) {
      return belongs(static_cast<unsigned char>(byte));
    };
    const char* const text = text_.data();
    return offsetOf(std::find_if_not(text + start, text + length_, byteBelongs), text);
  }
  /// The offset of the first unit at or after `start` that is `unit` or 0; the length when there is
  /// none.
  [[nodiscard]] std::size_t findOrNull(char16_t unit, std::size_t start) const noexcept;
  /// The units from `begin` up to `end` as UTF-8.
  [[nodiscard]] std::string substring(std::size_t begin, std::size_t end) const;
  /// The same where they stand in the text, which they may not leave; nothing when the text is not
  /// ASCII.
  [[nodiscard]] std::optional<std::string_view> view(std::size_t begin,
                                                     std::size_t end) const noexcept {
    if (!isASCII_) return std::nullopt;
    return std::string_view(text_.data() + begin, end - begin);
  }

 private:
  template <typename Unit>
  [[nodiscard]] static std::size_t offsetOf(const Unit* place, const Unit* first) noexcept {
    return static_cast<std::size_t>(place - first);
  }

  std::string_view text_;
  std::u16string wide_;
  std::size_t length_;
  bool isASCII_;
};

}  // namespace commandfilter
