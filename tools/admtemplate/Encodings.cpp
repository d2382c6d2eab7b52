#include "Encodings.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>

namespace commandfilter::tools {

std::string base64(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  constexpr std::size_t kGroup = 3;
  std::string text;
  text.reserve((bytes.size() + kGroup - 1) / kGroup * 4);
  for (std::size_t begin = 0; begin < bytes.size(); begin += kGroup) {
    const std::string_view group = bytes.substr(begin, kGroup);
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kGroup; ++i) {
      bits = bits << 8U | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0U);
    }
    for (std::size_t digit = 0; digit <= kGroup; ++digit) {
      text.push_back(digit <= group.size() ? kDigits[bits >> (18 - 6 * digit) & 0x3FU] : '=');
    }
  }
  return text;
}

std::string timeInUTC(double secondsSince1970) {
  const double whole = std::floor(secondsSince1970);
  std::array<char, 64> text{};
  std::tm time{};
  // Year 9999 and the year 0 are the ends of what the standard writes without agreement.
  constexpr double kFirst = -62167219200;
  constexpr double kLast = 253402300799;
  if (!(whole >= kFirst && whole <= kLast)) {
    std::snprintf(text.data(), text.size(), "%.17g", secondsSince1970);
    return text.data();
  }
  const auto seconds = static_cast<std::time_t>(whole);
  gmtime_r(&seconds, &time);
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", time.tm_year + 1900,
                time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
  std::string result = text.data();
  if (secondsSince1970 != whole) {
    std::snprintf(text.data(), text.size(), "%.6f", secondsSince1970 - whole);
    const std::string_view fraction = text.data();
    // What rounds to a whole second stays below it.
    std::string digits(fraction.front() == '0' ? fraction.substr(1) : ".999999");
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits != ".") result.append(digits);
  }
  return result.append("Z");
}

}  // namespace commandfilter::tools
