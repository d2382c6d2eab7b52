#include "device_io/URIScheme.h"

#include <cstddef>

namespace commandfilter {

namespace {

constexpr bool isLetter(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool isHexDigit(char c) noexcept {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
constexpr bool isOneOf(char c, std::string_view characters) noexcept {
  return characters.find(c) != std::string_view::npos;
}

bool isScheme(std::string_view text) noexcept {
  if (text.empty() || !isLetter(text.front())) return false;
  for (const char c : text) {
    if (!isLetter(c) && !isDigit(c) && !isOneOf(c, "+-.")) return false;
  }
  return true;
}

// Unreserved and reserved characters, and percent signs with two hexadecimal digits.
bool holdsOnlyURICharacters(std::string_view text) noexcept {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '%') {
      if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2]))
        return false;
    } else if (!isLetter(c) && !isDigit(c) && !isOneOf(c, "-._~:/?#[]@!$&'()*+,;=")) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::optional<std::string_view> schemeOfURI(std::string_view uri) noexcept {
  const std::size_t colon = uri.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view scheme = uri.substr(0, colon);
  if (!isScheme(scheme) || !holdsOnlyURICharacters(uri.substr(colon + 1))) return std::nullopt;
  return scheme;
}

}  // namespace commandfilter
