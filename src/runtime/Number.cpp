#include "runtime/Number.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <limits>

namespace commandfilter {

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

std::int64_t truncated(double value) noexcept {
  if (std::isnan(value)) return 0;
  if (value >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
  if (value < -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

std::weak_ordering compareReals(double left, double right) noexcept {
  const bool leftNaN = std::isnan(left);
  const bool rightNaN = std::isnan(right);
  if (leftNaN || rightNaN) {
    if (leftNaN && rightNaN) return std::weak_ordering::equivalent;
    return leftNaN ? std::weak_ordering::less : std::weak_ordering::greater;
  }
  if (left < right) return std::weak_ordering::less;
  return left > right ? std::weak_ordering::greater : std::weak_ordering::equivalent;
}

// The integer is negative or magnitude says its value; comparing with the whole part first keeps
// every bit of it.
std::weak_ordering compareIntegerToReal(std::int64_t low, std::uint64_t high, bool isUnsigned,
                                        double real) noexcept {
  if (std::isnan(real)) return std::weak_ordering::greater;
  if (isUnsigned) {
    if (real < 0) return std::weak_ordering::greater;
    if (real >= kTwoTo64) return std::weak_ordering::less;
    const auto whole = static_cast<std::uint64_t>(real);
    if (high != whole) return high <=> whole;
    return compareReals(0, real - static_cast<double>(whole));
  }
  if (real < -kTwoTo63) return std::weak_ordering::greater;
  if (real >= kTwoTo63) return std::weak_ordering::less;
  const auto whole = static_cast<std::int64_t>(real);
  if (low != whole) return low <=> whole;
  return compareReals(0, real - static_cast<double>(whole));
}

std::weak_ordering reversed(std::weak_ordering order) noexcept { return 0 <=> order; }

}  // namespace

std::int64_t Number::truncatedReal() const noexcept { return truncated(real_); }

std::int8_t Number::charValue() const noexcept { return static_cast<std::int8_t>(longValue()); }
std::int16_t Number::shortValue() const noexcept { return static_cast<std::int16_t>(longValue()); }

std::uint32_t Number::unsignedIntValue() const noexcept {
  return static_cast<std::uint32_t>(longValue());
}

std::uint64_t Number::unsignedLongValue() const noexcept {
  if (isReal() && real_ >= kTwoTo63) {
    return real_ >= kTwoTo64 ? std::numeric_limits<std::uint64_t>::max()
                             : static_cast<std::uint64_t>(real_);
  }
  return static_cast<std::uint64_t>(longValue());
}

double Number::doubleValue() const noexcept {
  if (isReal()) return real_;
  if (encoding_ == 'Q') return static_cast<double>(unsigned_);
  return static_cast<double>(signed_);
}

float Number::floatValue() const noexcept { return static_cast<float>(doubleValue()); }

std::weak_ordering Number::compare(const Number& other) const noexcept {
  const bool real = isReal();
  const bool otherReal = other.isReal();
  if (real && otherReal) return compareReals(real_, other.real_);
  if (otherReal) return compareIntegerToReal(signed_, unsigned_, encoding_ == 'Q', other.real_);
  if (real) {
    return reversed(
        compareIntegerToReal(other.signed_, other.unsigned_, other.encoding_ == 'Q', real_));
  }
  const bool isUnsigned = encoding_ == 'Q';
  const bool otherUnsigned = other.encoding_ == 'Q';
  if (isUnsigned == otherUnsigned) {
    return isUnsigned ? unsigned_ <=> other.unsigned_ : signed_ <=> other.signed_;
  }
  if (isUnsigned) {
    return other.signed_ < 0 ? std::weak_ordering::greater
                             : unsigned_ <=> static_cast<std::uint64_t>(other.signed_);
  }
  return signed_ < 0 ? std::weak_ordering::less
                     : static_cast<std::uint64_t>(signed_) <=> other.unsigned_;
}

std::size_t Number::hash() const noexcept {
  if (!isReal()) return std::hash<std::uint64_t>{}(unsigned_);
  // A whole real has the hash of the integer that it equals.
  if (real_ >= -kTwoTo63 && real_ < kTwoTo64 && real_ == std::trunc(real_)) {
    const std::uint64_t whole = real_ < 0 ? static_cast<std::uint64_t>(truncated(real_))
                                          : static_cast<std::uint64_t>(real_);
    return std::hash<std::uint64_t>{}(whole);
  }
  return std::isnan(real_) ? 0 : std::hash<double>{}(real_);
}

std::string_view Number::textIn(TextRoom& room) const noexcept {
  char* begin = room.data();
  char* end = begin + room.size();
  std::to_chars_result written{};
  if (isReal()) {
    // What C's "%0.16g" writes, but never with the decimal comma of a locale.
    constexpr int kPrecision = 16;
    written = std::to_chars(begin, end, real_, std::chars_format::general, kPrecision);
  } else {
    written = encoding_ == 'Q' ? std::to_chars(begin, end, unsigned_)
                               : std::to_chars(begin, end, signed_);
  }
  return {begin, static_cast<std::size_t>(written.ptr - begin)};
}

}  // namespace commandfilter
