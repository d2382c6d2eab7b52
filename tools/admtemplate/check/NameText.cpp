#include "check/NameText.h"

#include <cstddef>

#include "runtime/UTF8.h"

namespace commandfilter::tools {

namespace {

// C0, DEL and C1; the last are two bytes in UTF-8.
bool isControl(char32_t character) noexcept {
  return character < U' ' || (character >= 0x7F && character < 0xA0);
}

}  // namespace

std::string shownName(std::string_view name) {
  constexpr std::size_t kLongest = 60;
  std::string shown;
  std::size_t characters = 0;
  for (std::size_t offset = 0; offset < name.size(); ++characters) {
    if (characters == kLongest) return shown + "...";
    const char32_t character = nextCodePoint(name, offset);
    appendCodePoint(shown, isControl(character) ? U'?' : character);
  }
  return shown;
}

std::string withoutControls(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t character = nextCodePoint(text, offset);
    appendCodePoint(shown, isControl(character) && character != U'\t' ? U'?' : character);
  }
  return shown;
}

std::optional<std::string_view> textBetween(std::string_view name, std::string_view before,
                                            std::string_view behind) {
  if (name.size() < before.size() + behind.size() || !name.starts_with(before) ||
      !name.ends_with(behind)) {
    return std::nullopt;
  }
  return name.substr(before.size(), name.size() - before.size() - behind.size());
}

}  // namespace commandfilter::tools
