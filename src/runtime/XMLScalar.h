// What the elements of an XML property list say that hold no other elements.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "runtime/Number.h"

namespace commandfilter::detail {

/// A whole number of 64 bits, with or without a sign: decimal, or hexadecimal behind "0x". None for
/// any other text. So it is with the other three; white space around the text does not count.
[[nodiscard]] std::optional<Number> integerFromXML(std::string_view text);
/// A decimal number, "nan" or an infinity.
[[nodiscard]] std::optional<double> realFromXML(std::string_view text);
/// A time in UTC such as "2020-01-31T12:00:00Z", with or without a fraction of a second, in seconds
/// since 1970 began.
[[nodiscard]] std::optional<double> dateFromXML(std::string_view text);
/// The bytes of a text in base64 (RFC 4648), padded, with white space anywhere.
[[nodiscard]] std::optional<std::string> dataFromXML(std::string_view text);

/// What XML calls white space.
[[nodiscard]] constexpr bool isWhiteSpaceInXML(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

}  // namespace commandfilter::detail
