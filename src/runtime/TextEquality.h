// Equality of short texts, and where to look for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace commandfilter {

namespace detail {

// Word by word, the last one ending where the texts end. Neither may be shorter than a word.
template <typename Word>
[[nodiscard]] inline bool sameInTwoWords(const char* first, const char* second,
                                         std::size_t size) noexcept {
  const auto word = [](const char* characters) {
    Word read;
    std::memcpy(&read, characters, sizeof read);
    return read;
  };
  const std::size_t last = size - sizeof(Word);
  return word(first) == word(second) && word(first + last) == word(second + last);
}

}  // namespace detail

/// True when both texts are the same bytes. Names and keys are short, and for those a call of the
/// C library would cost more than the comparison.
[[nodiscard]] inline bool sameText(std::string_view first, std::string_view second) noexcept {
  const std::size_t size = first.size();
  if (size != second.size()) return false;
  const char* left = first.data();
  const char* right = second.data();
  if (size > 2 * sizeof(std::uint64_t)) return std::memcmp(left, right, size) == 0;
  if (size >= sizeof(std::uint64_t)) {
    return detail::sameInTwoWords<std::uint64_t>(left, right, size);
  }
  if (size >= sizeof(std::uint32_t)) {
    return detail::sameInTwoWords<std::uint32_t>(left, right, size);
  }
  if (size >= sizeof(std::uint16_t)) {
    return detail::sameInTwoWords<std::uint16_t>(left, right, size);
  }
  return size == 0 || *left == *right;
}

/// A number that is the same for the same text, by which a small table of texts chooses the places.
/// Names of one length often differ in their ends.
[[nodiscard]] inline std::size_t placeHash(std::string_view text) noexcept {
  if (text.empty()) return 0;
  const auto first = static_cast<unsigned char>(text.front());
  const auto last = static_cast<unsigned char>(text.back());
  return text.size() * 5 + first + last;
}

}  // namespace commandfilter
