// The type codes of the platform, and how C++ types travel through dynamic calls.
#pragma once

#include <concepts>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "runtime/Cast.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The code of each type that a dynamic call can pass: c s i q and their capitals for integers
/// (c also for a boolean), f d for reals, * for a constant C string, @ for an object, v for no
/// result. The full spelling of *, as a signature shows it, is "r*".
[[nodiscard]] COMMANDFILTER_EXPORT std::string_view typeCodeSpelling(char code) noexcept;

namespace detail {

/// A new string for the text; nil for nullptr and for text that is not UTF-8.
[[nodiscard]] COMMANDFILTER_EXPORT Value valueOfCString(const char* text);
/// The characters of a string, borrowed; nullptr for every other value.
[[nodiscard]] COMMANDFILTER_EXPORT const char* cStringOfValue(const Value& value) noexcept;

/// The code of T, and its conversions from an argument and to a result. A type without a
/// specialisation has no code, and a method row with it does not compile.
template <typename T>
struct Passing;

template <>
struct Passing<void> {
  static constexpr char kCode = 'v';
};

template <>
struct Passing<Value> {
  static constexpr char kCode = '@';
  static const Value& argument(const Value& value) noexcept { return value; }
  static Value result(Value value) noexcept { return value; }
};

template <std::integral T>
struct Passing<T> {
  static constexpr char kCode = Number::integer(T{}).encoding();
  static T argument(const Value& value) noexcept {
    if (!value.isNumber()) return T{};
    if constexpr (std::same_as<T, bool>) {
      return value.number().boolValue();
    } else if constexpr (std::is_unsigned_v<T> && sizeof(T) == 8) {
      return value.number().unsignedLongValue();
    } else {
      return static_cast<T>(value.number().longValue());
    }
  }
  static Value result(T value) noexcept { return Number::integer(value); }
};

template <std::floating_point T>
requires(!std::same_as<T, long double>) struct Passing<T> {
  static constexpr char kCode = std::same_as<T, float> ? 'f' : 'd';
  static T argument(const Value& value) noexcept {
    return value.isNumber() ? static_cast<T>(value.number().doubleValue()) : T{};
  }
  static Value result(T value) noexcept { return Number::real(value); }
};

template <>
struct Passing<const char*> {
  static constexpr char kCode = '*';
  static const char* argument(const Value& value) noexcept { return cStringOfValue(value); }
  static Value result(const char* text) { return valueOfCString(text); }
};

/// A pointer to a class below Object or to a protocol: borrowed, nil when the value is of another
/// kind. This is the one checked cast of dynamic calls.
template <typename T>
struct Passing<T*> {
  static constexpr char kCode = '@';
  static T* argument(const Value& value) noexcept { return castTo<std::remove_const_t<T>>(value); }
  static Value result(T* object) noexcept { return RefPtr<T>(object); }
};

template <typename T>
struct Passing<RefPtr<T>> {
  static constexpr char kCode = '@';
  static RefPtr<T> argument(const Value& value) noexcept { return RefPtr<T>(castTo<T>(value)); }
  static Value result(RefPtr<T> object) noexcept { return Value(std::move(object)); }
};

template <typename T>
struct Passing<Ref<T>> {
  static constexpr char kCode = '@';
  static Value result(Ref<T> object) noexcept { return Value(std::move(object)); }
};

template <typename T>
using PassingOf = Passing<std::remove_cvref_t<T>>;

}  // namespace detail

}  // namespace commandfilter
