#include "expression/CodeUnits.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

constexpr char32_t kSupplementary = 0x10000;
constexpr char32_t kLead = 0xD800;
constexpr char32_t kTrail = 0xDC00;

bool isLead(char16_t unit) noexcept { return unit >= kLead && unit < kTrail; }
bool isTrail(char16_t unit) noexcept { return unit >= kTrail && unit < 0xE000; }

// The offset of the first character at or after `start` that is `wanted` or NUL, in ASCII text
// alone: eight characters at a time, since strings and paths are mostly shorter than what makes a
// search of the C library worth its start.
std::size_t findInASCII(std::string_view text, char wanted, std::size_t start) noexcept {
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  constexpr std::uint64_t kLow = 0x7F * kOnes;
  const std::uint64_t pattern = kOnes * static_cast<unsigned char>(wanted);
  std::size_t offset = start;
  for (std::uint64_t word = 0; text.size() - offset >= sizeof word; offset += sizeof word) {
    std::memcpy(&word, text.data() + offset, sizeof word);
    // No byte has its high bit, so adding sets it in every byte that is not 0, and in no other.
    const std::uint64_t found = ~(((word ^ pattern) + kLow) & (word + kLow)) & (0x80 * kOnes);
    if (found == 0) continue;
    const int zeros = std::endian::native == std::endian::little ? std::countr_zero(found)
                                                                 : std::countl_zero(found);
    return offset + static_cast<std::size_t>(zeros) / 8;
  }
  while (offset < text.size() && text[offset] != wanted && text[offset] != '\0') ++offset;
  return offset;
}

}  // namespace

CodeUnits::CodeUnits(std::string_view text)
    : text_(text), length_(text.size()), isASCII_(isASCII(text)) {
  if (isASCII_) return;
  wide_.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t c = nextCodePoint(text, offset);
    if (c < kSupplementary) {
      wide_.push_back(static_cast<char16_t>(c));
    } else {
      wide_.push_back(static_cast<char16_t>(kLead + ((c - kSupplementary) >> 10U)));
      wide_.push_back(static_cast<char16_t>(kTrail + ((c - kSupplementary) & 0x3FFU)));
    }
  }
  length_ = wide_.size();
}

std::size_t CodeUnits::findOrNull(char16_t unit, std::size_t start) const noexcept {
  if (start >= length_) return length_;
  constexpr char16_t kFirstBeyondASCII = 128;
  if (isASCII_ && unit < kFirstBeyondASCII)
    return findInASCII(text_, static_cast<char>(unit), start);
  return skipWhile(start, [unit](char16_t each) { return each != unit && each != 0; });
}

std::string CodeUnits::substring(std::size_t begin, std::size_t end) const {
  if (isASCII_) return std::string(text_.substr(begin, end - begin));
  std::string text;
  text.reserve(end - begin);
  for (std::size_t i = begin; i < end; ++i) {
    const char16_t unit = wide_[i];
    if (isLead(unit) && i + 1 < end && isTrail(wide_[i + 1])) {
      const char32_t above = (static_cast<char32_t>(unit) - kLead) << 10U;
      appendCodePoint(text, kSupplementary + above + (wide_[++i] - kTrail));
    } else {
      appendCodePoint(text, unit);
    }
  }
  return text;
}

}  // namespace commandfilter
