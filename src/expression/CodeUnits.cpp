#include "expression/CodeUnits.h"

#include <algorithm>

#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

constexpr char32_t kSupplementary = 0x10000;
constexpr char32_t kLead = 0xD800;
constexpr char32_t kTrail = 0xDC00;

bool isLead(char16_t unit) noexcept { return unit >= kLead && unit < kTrail; }
bool isTrail(char16_t unit) noexcept { return unit >= kTrail && unit < 0xE000; }

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
  const auto goesOn = [unit](char16_t each) { return each != unit && each != 0; };
  // Most texts end soon; only for longer ones a search of the library is worth its start.
  constexpr std::size_t kSoon = 24;
  const std::size_t soon = std::min(length_, start + kSoon);
  const std::size_t found = skipWhile(start, soon, goesOn);
  if (found < soon || found >= length_) return std::min(found, length_);
  if (!isASCII_) return skipWhile(found, goesOn);
  // In pieces that double, so that neither of the two is sought far behind the other.
  std::size_t begin = found;
  for (std::size_t size = kSoon; begin < length_; begin += size, size *= 2) {
    const std::string_view piece = text_.substr(begin, size);
    const std::string_view head = piece.substr(0, piece.find(static_cast<char>(unit)));
    const std::size_t end = std::min(head.find('\0'), head.size());
    if (end < piece.size()) return begin + end;
  }
  return length_;
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
