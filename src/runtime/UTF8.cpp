#include "runtime/UTF8.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace commandfilter {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr std::uint64_t kHighBits = 0x8080808080808080U;

// True when the eight bytes from the offset on are below 128.
bool isASCIIWord(std::string_view text, std::size_t offset) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, text.data() + offset, kWord);
  return (word & kHighBits) == 0;
}

// The offset of the first byte from 128 up, or the end.
std::size_t skipASCII(std::string_view text, std::size_t offset) noexcept {
  while (text.size() - offset >= kWord && isASCIIWord(text, offset)) offset += kWord;
  while (offset < text.size() && static_cast<unsigned char>(text[offset]) < 0x80) ++offset;
  return offset;
}

// The code point at offset, negative when the bytes there are ill-formed; offset moves on. ICU's
// macro wants its own types, and works on text of any length with 64-bit offsets.
std::int32_t decode(std::string_view text, std::size_t& offset) noexcept {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const std::size_t size = text.size();
  UChar32 codePoint = 0;
  U8_NEXT(bytes, offset, size, codePoint);
  return codePoint;
}

}  // namespace

bool isASCII(std::string_view text) noexcept {
  if (text.size() < kWord) return skipASCII(text, 0) == text.size();
  // The last word ends where the text ends.
  const std::size_t last = text.size() - kWord;
  for (std::size_t offset = 0; offset < last; offset += kWord) {
    if (!isASCIIWord(text, offset)) return false;
  }
  return isASCIIWord(text, last);
}

bool isUTF8(std::string_view text) noexcept {
  std::size_t offset = skipASCII(text, 0);
  while (offset < text.size()) {
    if (decode(text, offset) < 0) return false;
    offset = skipASCII(text, offset);
  }
  return true;
}

std::string toWellFormedUTF8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::size_t offset = 0;
  while (offset < text.size()) {
    const std::size_t plain = skipASCII(text, offset);
    result.append(text.substr(offset, plain - offset));
    offset = plain;
    if (offset == text.size()) break;
    const std::int32_t codePoint = decode(text, offset);
    appendCodePoint(result, codePoint < 0 ? kReplacement : static_cast<char32_t>(codePoint));
  }
  return result;
}

std::size_t lengthInCodeUnits(std::string_view text) noexcept {
  // Every character has one byte that is no continuation; those of four bytes take two units.
  std::size_t units = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    units += (byte & 0xC0U) != 0x80U ? 1U : 0U;
    units += byte >= 0xF0U ? 1U : 0U;
  }
  return units;
}

char32_t nextCodePoint(std::string_view text, std::size_t& offset) noexcept {
  const std::int32_t codePoint = decode(text, offset);
  return codePoint < 0 ? kReplacement : static_cast<char32_t>(codePoint);
}

void appendCodePoint(std::string& text, char32_t codePoint) {
  if (codePoint > 0x10FFFF || U_IS_SURROGATE(codePoint)) codePoint = kReplacement;
  std::array<char, U8_MAX_LENGTH> bytes{};
  std::size_t length = 0;
  U8_APPEND_UNSAFE(bytes.data(), length, codePoint);
  text.append(bytes.data(), length);
}

}  // namespace commandfilter
