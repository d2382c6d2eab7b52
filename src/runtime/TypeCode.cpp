#include "runtime/TypeCode.h"

#include <array>

#include "runtime/String.h"

namespace commandfilter {

std::string_view typeCodeSpelling(char code) noexcept {
  // Each code at its own place, which finds it without a search.
  static constexpr auto kCodes = [] {
    std::array<char, 128> codes{};
    for (const char known : std::string_view("cCsSiIqQfd@v")) {
      codes[static_cast<unsigned char>(known)] = known;
    }
    return codes;
  }();
  if (code == '*') return "r*";
  const auto place = static_cast<unsigned char>(code);
  if (place >= kCodes.size() || kCodes[place] == '\0') return {};
  return {&kCodes[place], 1};
}

namespace detail {

Value valueOfCString(const char* text) {
  return text != nullptr ? Value(String::fromUTF8(text)) : Value();
}

const char* cStringOfValue(const Value& value) noexcept {
  const auto* string = castTo<String>(value);
  return string != nullptr ? string->cString() : nullptr;
}

}  // namespace detail

}  // namespace commandfilter
