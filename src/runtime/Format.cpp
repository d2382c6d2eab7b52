#include "runtime/Format.h"

#include <array>
#include <cctype>
#include <cstdio>
#include <optional>

#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

constexpr int kWidest = 4096;

// A conversion as it is written: flags, width and precision for C's formatting, and its letter.
struct Conversion {
  std::string flags;
  char letter = 0;
  std::size_t end = 0;
  bool tooWide = false;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Reads digits and takes them over; true when the number is wider than anything sensible.
bool takeNumber(std::string_view format, std::size_t& at, std::string& flags) {
  int number = 0;
  while (at < format.size() && isDigit(format[at])) {
    if (number <= kWidest) number = number * 10 + (format[at] - '0');
    flags.push_back(format[at++]);
  }
  return number > kWidest;
}

// The conversion behind the percent sign at `start`; none when it is not one.
std::optional<Conversion> readConversion(std::string_view format, std::size_t start) {
  Conversion conversion;
  std::size_t at = start + 1;
  while (at < format.size() &&
         std::string_view("-+ #0").find(format[at]) != std::string_view::npos) {
    conversion.flags.push_back(format[at++]);
  }
  conversion.tooWide = takeNumber(format, at, conversion.flags);
  if (at < format.size() && format[at] == '.') {
    conversion.flags.push_back(format[at++]);
    conversion.tooWide = takeNumber(format, at, conversion.flags) || conversion.tooWide;
  }
  while (at < format.size() &&
         std::string_view("hlqjzt").find(format[at]) != std::string_view::npos) {
    ++at;
  }
  if (at == format.size()) return std::nullopt;
  conversion.letter = format[at];
  conversion.end = at + 1;
  if (std::string_view("@diuxXocfFeEgGs").find(conversion.letter) == std::string_view::npos) {
    return std::nullopt;
  }
  return conversion;
}

template <typename T>
void appendC(std::string& text, const std::string& specification, T argument) {
  std::array<char, 512> room{};
  const int length = std::snprintf(room.data(), room.size(), specification.c_str(), argument);
  if (length < 0) return;
  const auto size = static_cast<std::size_t>(length);
  if (size < room.size()) {
    text.append(room.data(), size);
    return;
  }
  std::string large(size + 1, '\0');
  static_cast<void>(std::snprintf(large.data(), large.size(), specification.c_str(), argument));
  text.append(large, 0, size);
}

std::optional<Number> numberOf(const FormatArgument& argument) {
  const auto* value = std::get_if<Value>(&argument.content());
  if (value != nullptr && value->isNumber()) return value->number();
  return std::nullopt;
}

bool appendText(std::string& text, const Conversion& conversion, std::string_view argument) {
  if (!isUTF8(argument)) return false;
  if (conversion.flags.empty()) {
    text.append(argument);
    return true;
  }
  std::string padded;
  appendC(padded, '%' + conversion.flags + 's', std::string(argument).c_str());
  // A precision counts bytes and may cut a character.
  text.append(toWellFormedUTF8(padded));
  return true;
}

bool appendObject(std::string& text, const FormatArgument& argument) {
  const auto& content = argument.content();
  if (const auto* value = std::get_if<Value>(&content)) {
    appendDescription(text, *value);
    return true;
  }
  const std::string_view string = std::get<std::string_view>(content);
  if (!isUTF8(string)) return false;
  text.append(string);
  return true;
}

bool appendConverted(std::string& text, const Conversion& conversion,
                     const FormatArgument& argument) {
  if (conversion.tooWide) return false;
  if (conversion.letter == '@') return appendObject(text, argument);
  if (conversion.letter == 's') {
    if (const auto* string = std::get_if<std::string_view>(&argument.content())) {
      return appendText(text, conversion, *string);
    }
    const auto* value = std::get_if<Value>(&argument.content());
    if (value == nullptr) return false;
    if (value->isNil()) return appendText(text, conversion, "(null)");
    const auto* string = castTo<String>(*value);
    return string != nullptr && appendText(text, conversion, string->view());
  }
  const std::optional<Number> number = numberOf(argument);
  if (!number) return false;
  switch (conversion.letter) {
    case 'c':
      appendCodePoint(text, static_cast<unsigned char>(number->charValue()));
      return true;
    case 'd':
    case 'i':
      if (number->encoding() == 'Q') {
        appendC(text, '%' + conversion.flags + "ju",
                static_cast<std::uintmax_t>(number->unsignedLongValue()));
      } else {
        appendC(text, '%' + conversion.flags + "jd",
                static_cast<std::intmax_t>(number->longValue()));
      }
      return true;
    case 'u':
    case 'x':
    case 'X':
    case 'o': {
      // A negative number shows the bits that it has in C: those of 32, unless it needs 64.
      std::uint64_t bits = number->unsignedLongValue();
      if (std::string_view("csi").find(number->encoding()) != std::string_view::npos) {
        bits = number->unsignedIntValue();
      }
      appendC(text, '%' + conversion.flags + 'j' + conversion.letter,
              static_cast<std::uintmax_t>(bits));
      return true;
    }
    default:
      appendC(text, '%' + conversion.flags + conversion.letter, number->doubleValue());
      return true;
  }
}

}  // namespace

RefPtr<String> formatWithArguments(std::string_view format,
                                   std::span<const FormatArgument> arguments) {
  std::string text;
  std::size_t next = 0;
  for (std::size_t at = 0; at < format.size();) {
    const std::size_t percent = std::min(format.find('%', at), format.size());
    text.append(format.substr(at, percent - at));
    at = percent;
    if (at == format.size()) break;
    if (at + 1 < format.size() && format[at + 1] == '%') {
      text.push_back('%');
      at += 2;
      continue;
    }
    const std::optional<Conversion> conversion =
        next < arguments.size() ? readConversion(format, at) : std::nullopt;
    if (!conversion) {
      text.push_back(format[at++]);
      continue;
    }
    if (!appendConverted(text, *conversion, arguments[next++])) return nullptr;
    at = conversion->end;
  }
  return String::create(std::move(text));
}

}  // namespace commandfilter
