#include "runtime/TypeCode.h"

#include <cstring>

#include "runtime/String.h"

namespace commandfilter {

std::string_view typeCodeSpelling(char code) noexcept {
  static constexpr std::string_view kCodes = "cCsSiIqQfd@v";
  if (code == '*') return "r*";
  const std::size_t place = kCodes.find(code);
  return place != std::string_view::npos ? kCodes.substr(place, 1) : std::string_view();
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
