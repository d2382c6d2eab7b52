#include "runtime/XMLScalar.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <system_error>

namespace commandfilter::detail {

namespace {

std::string_view withoutWhiteSpace(std::string_view text) {
  while (!text.empty() && isWhiteSpaceInXML(text.front())) text.remove_prefix(1);
  while (!text.empty() && isWhiteSpaceInXML(text.back())) text.remove_suffix(1);
  return text;
}

bool removePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

// All of the text as a number of that type.
template <typename Number, typename... Form>
std::optional<Number> wholeNumber(std::string_view text, Form... form) {
  Number number{};
  const char* behind = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), behind, number, form...);
  if (error != std::errc() || end != behind) return std::nullopt;
  return number;
}

// The number that the next digits are, so many; the text goes on behind them.
std::optional<unsigned> nextDigits(std::string_view& text, std::size_t count) {
  const auto number = wholeNumber<unsigned>(text.substr(0, count));
  if (!number || text.size() < count) return std::nullopt;
  text.remove_prefix(count);
  return number;
}

// The same, behind a separator.
std::optional<unsigned> nextPart(std::string_view& text, std::string_view separator) {
  constexpr std::size_t kDigits = 2;
  if (!removePrefix(text, separator)) return std::nullopt;
  return nextDigits(text, kDigits);
}

// Six bits; none for what is no digit of base64.
std::optional<std::uint32_t> base64Digit(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return std::nullopt;
}

}  // namespace

std::optional<Number> integerFromXML(std::string_view text) {
  constexpr int kHexadecimal = 16;
  text = withoutWhiteSpace(text);
  const bool isNegative = removePrefix(text, "-");
  if (!isNegative) removePrefix(text, "+");
  const int base = removePrefix(text, "0x") || removePrefix(text, "0X") ? kHexadecimal : 10;
  const auto size = wholeNumber<std::uint64_t>(text, base);
  constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (!size || (isNegative && *size > kLargest + 1)) return std::nullopt;
  if (!isNegative && *size > kLargest) return Number::integer(*size);
  return Number::integer(static_cast<std::int64_t>(isNegative ? 0 - *size : *size));
}

std::optional<double> realFromXML(std::string_view text) {
  text = withoutWhiteSpace(text);
  if (removePrefix(text, "+") && text.starts_with('-')) return std::nullopt;
  return wholeNumber<double>(text, std::chars_format::general);
}

std::optional<double> dateFromXML(std::string_view text) {
  constexpr std::size_t kYearDigits = 4;
  constexpr unsigned kLeapSecond = 60;
  text = withoutWhiteSpace(text);
  const auto year = nextDigits(text, kYearDigits);
  const auto month = nextPart(text, "-");
  const auto day = nextPart(text, "-");
  const auto hour = nextPart(text, "T");
  const auto minute = nextPart(text, ":");
  const auto second = nextPart(text, ":");
  if (!year || !month || !day || !hour || !minute || !second) return std::nullopt;
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(*year)),
                                         std::chrono::month(*month), std::chrono::day(*day));
  if (!date.ok() || *hour > 23 || *minute > 59 || *second > kLeapSecond) return std::nullopt;
  double fraction = 0;
  if (text.starts_with('.')) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789", 1), text.size());
    const auto digits = wholeNumber<double>(text.substr(0, end), std::chars_format::fixed);
    if (!digits) return std::nullopt;
    fraction = *digits;
    text.remove_prefix(end);
  }
  if (text != "Z") return std::nullopt;
  const auto time = std::chrono::sys_days(date).time_since_epoch() + std::chrono::hours(*hour) +
                    std::chrono::minutes(*minute) + std::chrono::seconds(*second);
  return static_cast<double>(time.count()) + fraction;
}

std::optional<std::string> dataFromXML(std::string_view text) {
  constexpr std::size_t kGroup = 4;
  constexpr std::size_t kMostPadding = 2;
  std::string bytes;
  bytes.reserve(text.size() / kGroup * 3);
  std::uint32_t bits = 0;
  std::size_t digits = 0;
  std::size_t padding = 0;
  for (const char c : text) {
    if (isWhiteSpaceInXML(c)) continue;
    const auto digit = base64Digit(c);
    if (padding > 0 ? c != '=' : !digit && c != '=') return std::nullopt;
    if (!digit) ++padding;
    bits = bits << 6U | digit.value_or(0);
    if (++digits % kGroup != 0) continue;
    if (padding > kMostPadding) return std::nullopt;
    for (std::size_t i = 0; i < 3 - padding; ++i) {
      bytes.push_back(static_cast<char>(bits >> (16 - 8 * i) & 0xFFU));
    }
  }
  if (digits % kGroup != 0) return std::nullopt;
  return bytes;
}

}  // namespace commandfilter::detail
