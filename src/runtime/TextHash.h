// Hashes of texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace commandfilter {

namespace detail {

template <typename Word>
[[nodiscard]] inline std::uint64_t wordOf(const char* characters) noexcept {
  Word word;
  std::memcpy(&word, characters, sizeof word);
  return word;
}

// The first word and the last of a text that is no longer than both, which may overlap.
template <typename Word>
[[nodiscard]] inline std::uint64_t bothWordsOf(std::string_view text) noexcept {
  constexpr unsigned kBits = sizeof(Word) * 8;
  return wordOf<Word>(text.data()) << kBits |
         wordOf<Word>(text.data() + text.size() - sizeof(Word));
}

}  // namespace detail

/// What a table takes of a hash, from the lowest bit on. Hashes of numbers, addresses and texts
/// differ in few bits, and not in the same: all of them take part.
[[nodiscard]] inline std::uint32_t tableHash(std::size_t hash) noexcept {
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
  // Not by half of the bits, which would take back what hashOfText() ends with.
  constexpr unsigned kShift = 29;
  std::uint64_t mixed = (hash ^ (hash >> kShift)) * kGoldenRatio;
  mixed ^= mixed >> kShift;
  return static_cast<std::uint32_t>(mixed >> 32U);
}

/// A hash for tables in memory: not the same on every machine, and no protection from texts that
/// were chosen to have the same. Keys and names are short, and for those the standard library's
/// costs several times as much.
[[nodiscard]] inline std::size_t hashOfText(std::string_view text) noexcept {
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
  const auto mixed = [](std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * kGoldenRatio;
    // A product's high bits depend on all of it, its low ones on few.
    return hash ^ (hash >> 32U);
  };
  std::uint64_t hash = text.size() * kGoldenRatio;
  if (text.size() >= sizeof(std::uint64_t)) {
    const std::size_t last = text.size() - sizeof(std::uint64_t);
    for (std::size_t place = 0; place < last; place += sizeof(std::uint64_t)) {
      hash = mixed(hash, detail::wordOf<std::uint64_t>(text.data() + place));
    }
    return mixed(hash, detail::wordOf<std::uint64_t>(text.data() + last));
  }
  if (text.size() >= sizeof(std::uint32_t)) {
    return mixed(hash, detail::bothWordsOf<std::uint32_t>(text));
  }
  if (text.size() >= sizeof(std::uint16_t)) {
    return mixed(hash, detail::bothWordsOf<std::uint16_t>(text));
  }
  return text.empty() ? 0 : mixed(hash, static_cast<unsigned char>(text.front()));
}

}  // namespace commandfilter
