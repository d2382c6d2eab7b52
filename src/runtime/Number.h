// Numbers with the encoding that they were made with.
#pragma once

#include <array>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

/// A boolean, an integer or a real, together with the type code that it was made with: "c" 8-bit
/// integer or boolean, "s" 16-bit, "i" 32-bit, "q" 64-bit, their capitals unsigned, "f" and "d"
/// reals. Numbers are equal when their mathematical values are, whatever their encoding.
class COMMANDFILTER_EXPORT Number {
 public:
  /// A boolean; its encoding is "c".
  [[nodiscard]] static constexpr Number boolean(bool value) noexcept {
    return Number('c', std::int64_t{value ? 1 : 0});
  }
  /// An integer of the encoding of its C++ type; `bool` makes a boolean.
  template <std::integral T>
  [[nodiscard]] static constexpr Number integer(T value) noexcept {
    if constexpr (std::same_as<T, std::uint64_t> || std::same_as<T, unsigned long long>) {
      return Number('Q', static_cast<std::uint64_t>(value));
    } else {
      return Number(encodingOf<T>(), static_cast<std::int64_t>(value));
    }
  }
  /// A real of encoding "d".
  [[nodiscard]] static constexpr Number real(double value) noexcept { return Number('d', value); }
  /// A real of encoding "f", rounded to single precision.
  [[nodiscard]] static constexpr Number real(float value) noexcept {
    return Number('f', static_cast<double>(value));
  }

  /// The type code: one of c C s S i I q Q f d.
  [[nodiscard]] constexpr char encoding() const noexcept { return encoding_; }
  /// True for every number of encoding "c", also one made elsewhere.
  [[nodiscard]] constexpr bool isBoolean() const noexcept { return encoding_ == 'c'; }
  [[nodiscard]] constexpr bool isReal() const noexcept {
    return encoding_ == 'd' || encoding_ == 'f';
  }

  // Conversions. A real is truncated and limited to 64 bits first; an integer is cut to the width
  // asked for as a C conversion cuts it.
  [[nodiscard]] std::int8_t charValue() const noexcept;
  [[nodiscard]] std::int16_t shortValue() const noexcept;
  [[nodiscard]] std::int32_t intValue() const noexcept {
    return static_cast<std::int32_t>(longValue());
  }
  [[nodiscard]] std::int64_t longValue() const noexcept {
    return isReal() ? truncatedReal() : signed_;
  }
  [[nodiscard]] std::uint32_t unsignedIntValue() const noexcept;
  [[nodiscard]] std::uint64_t unsignedLongValue() const noexcept;
  [[nodiscard]] double doubleValue() const noexcept;
  [[nodiscard]] float floatValue() const noexcept;
  /// False for zero of any encoding.
  [[nodiscard]] bool boolValue() const noexcept { return isReal() ? real_ != 0 : signed_ != 0; }

  /// Exact order by mathematical value, without rounding integers to reals. A NaN equals a NaN and
  /// stands before every other number, so that the order is total.
  [[nodiscard]] std::weak_ordering compare(const Number& other) const noexcept;
  [[nodiscard]] std::size_t hash() const noexcept;
  /// Room for the text of any number.
  using TextRoom = std::array<char, 32>;
  /// Booleans as 1 and 0, integers in decimal, reals as C's "%0.16g"; written to `room`.
  [[nodiscard]] std::string_view textIn(TextRoom& room) const noexcept;
  /// Appends the same.
  void appendDescription(std::string& text) const {
    TextRoom room;  // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    text.append(textIn(room));
  }

  friend bool operator==(const Number& left, const Number& right) noexcept {
    if (left.isSigned() && right.isSigned()) return left.signed_ == right.signed_;
    return left.compare(right) == 0;
  }

 private:
  friend class Value;

  /// True for an integer that signed_ holds as it is.
  [[nodiscard]] constexpr bool isSigned() const noexcept { return !isReal() && encoding_ != 'Q'; }
  [[nodiscard]] std::int64_t truncatedReal() const noexcept;

  constexpr Number(char encoding, std::int64_t value) noexcept
      : signed_(value), encoding_(encoding) {}
  constexpr Number(char encoding, std::uint64_t value) noexcept
      : unsigned_(value), encoding_(encoding) {}
  constexpr Number(char encoding, double value) noexcept : real_(value), encoding_(encoding) {}

  template <std::integral T>
  static constexpr char encodingOf() noexcept {
    if constexpr (std::same_as<T, bool>) return 'c';
    constexpr bool kSigned = std::is_signed_v<T>;
    switch (sizeof(T)) {
      case 1:
        return kSigned ? 'c' : 'C';
      case 2:
        return kSigned ? 's' : 'S';
      case 4:
        return kSigned ? 'i' : 'I';
      default:
        return kSigned ? 'q' : 'Q';
    }
  }

  // Unsigned 64-bit numbers use unsigned_, whose bits signed_ shows as well, reals real_,
  // everything else signed_.
  union {
    std::int64_t signed_;
    std::uint64_t unsigned_;
    double real_;
  };
  char encoding_;
};

}  // namespace commandfilter
