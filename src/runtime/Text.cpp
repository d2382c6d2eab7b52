#include "runtime/Text.h"

#include <limits>
#include <memory>

#include "runtime/ICULibrary.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

using CaseMapping = decltype(ICULibrary::toLower);

// ICU counts in 32 bits; a longer text is mapped in pieces that end with a character.
constexpr std::size_t kPiece = std::numeric_limits<std::int32_t>::max() / 8;

void appendMapped(std::string& result, std::string_view piece, const UCaseMap* map,
                  CaseMapping mapping) {
  const std::size_t start = result.size();
  UErrorCode status = U_ZERO_ERROR;
  std::size_t room = piece.size();
  for (int attempt = 0; attempt < 2; ++attempt) {
    status = U_ZERO_ERROR;
    result.resize(start + room);
    const std::int32_t needed =
        mapping(map, result.data() + start, static_cast<std::int32_t>(room), piece.data(),
                static_cast<std::int32_t>(piece.size()), &status);
    room = static_cast<std::size_t>(needed);
    if (status != U_BUFFER_OVERFLOW_ERROR) break;
  }
  result.resize(start + room);
}

// Without ICU the text stays as it is.
std::string mapped(std::string_view text, CaseMapping ICULibrary::*mapping) {
  const ICULibrary* icu = ICULibrary::shared();
  if (icu == nullptr) return std::string(text);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UCaseMap, decltype(icu->closeCaseMap)> map(icu->openCaseMap("", 0, &status),
                                                                   icu->closeCaseMap);
  std::string result;
  while (!text.empty()) {
    std::size_t size = text.size();
    if (size > kPiece) {
      size = kPiece;
      while ((static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) --size;
    }
    appendMapped(result, text.substr(0, size), map.get(), icu->*mapping);
    text.remove_prefix(size);
  }
  return result;
}

// A bit for the general category; none without ICU.
std::uint32_t categoryOf(char32_t codePoint) noexcept {
  const ICULibrary* icu = ICULibrary::shared();
  return icu != nullptr ? U_MASK(icu->charType(static_cast<UChar32>(codePoint))) : 0;
}

constexpr char asciiLower(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char asciiUpper(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string lowercase(std::string_view text) {
  if (!isASCII(text)) return mapped(text, &ICULibrary::toLower);
  std::string result(text);
  for (char& c : result) c = asciiLower(c);
  return result;
}

std::string uppercase(std::string_view text) {
  if (!isASCII(text)) return mapped(text, &ICULibrary::toUpper);
  std::string result(text);
  for (char& c : result) c = asciiUpper(c);
  return result;
}

bool isWhitespace(char32_t codePoint) noexcept {
  if (codePoint < 128) return codePoint == ' ' || codePoint == '\t';
  return (categoryOf(codePoint) & U_GC_ZS_MASK) != 0;
}

bool isLetter(char32_t codePoint) noexcept { return (categoryOf(codePoint) & U_GC_L_MASK) != 0; }

bool isNewline(char32_t codePoint) noexcept {
  return (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85 || codePoint == 0x2028 ||
         codePoint == 0x2029;
}

std::string_view trimmed(std::string_view text) noexcept {
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t next = start;
    if (!isWhitespace(nextCodePoint(text, next))) break;
    start = next;
  }
  std::size_t end = text.size();
  while (end > start) {
    std::size_t last = end - 1;
    while (last > start && (static_cast<unsigned char>(text[last]) & 0xC0U) == 0x80U) --last;
    std::size_t offset = last;
    if (!isWhitespace(nextCodePoint(text, offset))) break;
    end = last;
  }
  return text.substr(start, end - start);
}

LineEnd findLineEnd(std::string_view text, std::size_t start) noexcept {
  for (std::size_t offset = start; offset < text.size();) {
    const auto byte = static_cast<unsigned char>(text[offset]);
    if (byte < 0x80) {
      if (byte >= 0x0A && byte <= 0x0D) return {offset, offset + 1};
      ++offset;
      continue;
    }
    std::size_t next = offset;
    if (isNewline(nextCodePoint(text, next))) return {offset, next};
    offset = next;
  }
  return {text.size(), text.size()};
}

}  // namespace commandfilter
