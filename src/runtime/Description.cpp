#include "runtime/Description.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

bool standsUnquoted(char c) noexcept {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '$' || c == '/' || c == ':' || c == '.';
}

void appendCodeUnit(std::string& text, unsigned unit) {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  text.append("\\U");
  for (unsigned shift = 16; shift != 0;) {
    shift -= 4;
    text.push_back(kDigits[(unit >> shift) & 15U]);
  }
}

}  // namespace

void appendDescription(std::string& text, const Value& value, int level) {
  if (value.isNil()) {
    text.append("(null)");
  } else if (value.isNull()) {
    text.append("<null>");
  } else if (value.isNumber()) {
    value.number().appendDescription(text);
  } else {
    value.object()->appendDescription(text, level);
  }
}

std::string descriptionOf(const Value& value) {
  std::string text;
  appendDescription(text, value);
  return text;
}

Ref<String> describe(const Value& value) {
  if (auto* string = castTo<String>(value)) return Ref<String>(*string);
  if (value.isNumber()) {
    Number::TextRoom room;  // NOLINT(cppcoreguidelines-pro-type-member-init): written first
    return make<String>(value.number().textIn(room));
  }
  return String::create(descriptionOf(value));
}

void appendIndentation(std::string& text, int level) {
  // The blanks of a chain of collections grow with the square of its length.
  if (level > kDescriptionDepth) throw Exception("nested too deeply");
  constexpr int kBlanks = 4;
  text.append(static_cast<std::size_t>(level) * kBlanks, ' ');
}

void appendQuoted(std::string& text, std::string_view string) {
  if (!string.empty() && std::ranges::all_of(string, standsUnquoted)) {
    text.append(string);
    return;
  }
  text.push_back('"');
  for (std::size_t offset = 0; offset < string.size();) {
    const char32_t c = nextCodePoint(string, offset);
    if (c == '\n') {
      text.append("\\n");
    } else if (c == '\t') {
      text.append("\\t");
    } else if (c < 128) {
      if (c == '"' || c == '\\') text.push_back('\\');
      text.push_back(static_cast<char>(c));
    } else if (c < 0x10000) {
      appendCodeUnit(text, static_cast<unsigned>(c));
    } else {
      const auto above = static_cast<unsigned>(c) - 0x10000U;
      appendCodeUnit(text, 0xD800U + (above >> 10U));
      appendCodeUnit(text, 0xDC00U + (above & 0x3FFU));
    }
  }
  text.push_back('"');
}

}  // namespace commandfilter
