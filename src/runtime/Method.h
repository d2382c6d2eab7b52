// Rows of method tables, made from C++ functions: the signature says the type codes.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "runtime/Export.h"
#include "runtime/TypeCode.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A row of a class's method table.
struct Method {
  std::string_view selector;
  /// The code of the result, then one for each argument.
  std::string_view types;
  /// Calls the method. The receiver is of the class that the row belongs to, and there are as many
  /// arguments as `types` says; an object argument of the wrong kind arrives as nil.
  Value (*invoke)(const Value& receiver, std::span<const Value> arguments);
  /// The same without values around receiver and argument, for a method that takes one object and
  /// gives a value; nullptr for every other. Both are borrowed; the argument may be nil.
  Value (*invokeWithObject)(Object& receiver, const Object* argument) = nullptr;
};

namespace detail {

constexpr std::size_t countColons(std::string_view selector) {
  std::size_t colons = 0;
  for (const char c : selector) colons += c == ':' ? 1U : 0U;
  return colons;
}

/// What a function of the given result and arguments needs to be called with values.
template <typename Result, typename... Arguments>
struct Signature {
  static constexpr std::array<char, 1 + sizeof...(Arguments)> kCodes{
      PassingOf<Result>::kCode, PassingOf<Arguments>::kCode...};
  static constexpr std::string_view kTypes{kCodes.data(), kCodes.size()};
  static constexpr std::size_t kCount = sizeof...(Arguments);

  template <typename Call>
  static Value call(Call&& function, std::span<const Value> values) {
    return callWith(std::forward<Call>(function), values, std::index_sequence_for<Arguments...>{});
  }

 private:
  template <typename Call, std::size_t... Index>
  static Value callWith(Call&& function, [[maybe_unused]] std::span<const Value> values,
                        std::index_sequence<Index...> /*unused*/) {
    if constexpr (std::is_void_v<Result>) {
      function(PassingOf<Arguments>::argument(values[Index])...);
      return {};
    } else {
      return PassingOf<Result>::result(function(PassingOf<Arguments>::argument(values[Index])...));
    }
  }
};

/// An instance method is a member function, or a function whose first parameter is the receiver
/// (as a value, which is how numbers get methods).
template <typename Function>
struct InstanceFunction;

template <typename T, typename Result, typename... Arguments>
struct InstanceFunction<Result (T::*)(Arguments...)> : Signature<Result, Arguments...> {
  using Receiver = T;
};
template <typename T, typename Result, typename... Arguments>
struct InstanceFunction<Result (T::*)(Arguments...) const> : Signature<Result, Arguments...> {
  using Receiver = T;
};
template <typename T, typename Result, typename... Arguments>
struct InstanceFunction<Result (T::*)(Arguments...) noexcept> : Signature<Result, Arguments...> {
  using Receiver = T;
};
template <typename T, typename Result, typename... Arguments>
struct InstanceFunction<Result (T::*)(Arguments...) const noexcept>
    : Signature<Result, Arguments...> {
  using Receiver = T;
};
template <typename Result, typename T, typename... Arguments>
struct InstanceFunction<Result (*)(T&, Arguments...)> : Signature<Result, Arguments...> {
  using Receiver = std::remove_const_t<T>;
};
template <typename Result, typename T, typename... Arguments>
struct InstanceFunction<Result (*)(T&, Arguments...) noexcept> : Signature<Result, Arguments...> {
  using Receiver = std::remove_const_t<T>;
};

/// A class method or initialiser is a plain function.
template <typename Function>
struct PlainFunction;

template <typename Result, typename... Arguments>
struct PlainFunction<Result (*)(Arguments...)> : Signature<Result, Arguments...> {};
template <typename Result, typename... Arguments>
struct PlainFunction<Result (*)(Arguments...) noexcept> : Signature<Result, Arguments...> {};

/// A function of an object, as receiver, and one more object, whose kind tells its class.
template <typename Function>
struct ObjectFunction {
  static constexpr bool kIsOne = false;
};
template <typename T, HasObjectKind U>
requires std::is_base_of_v<Object, T>
struct ObjectFunction<Value (*)(T&, const U*)> {
  static constexpr bool kIsOne = true;
  using Argument = const U*;
};

[[noreturn]] COMMANDFILTER_EXPORT void throwNotConforming(const Value& receiver,
                                                          std::string_view protocol);

/// The receiver of a protocol's row, whose class must declare the protocol itself.
template <typename T>
T& interfaceOfReceiver(const Value& receiver) {
  T* target = castTo<T>(receiver);
  if (target == nullptr) throwNotConforming(receiver, T::kProtocol.name);
  return *target;
}

template <auto Function>
Value invokeInstance(const Value& receiver, std::span<const Value> arguments) {
  using Types = InstanceFunction<decltype(Function)>;
  using Receiver = typename Types::Receiver;
  return Types::call(
      [&receiver](auto&&... values) -> decltype(auto) {
        if constexpr (!std::is_member_function_pointer_v<decltype(Function)>) {
          if constexpr (std::is_same_v<Receiver, Value>) {
            return Function(receiver, std::forward<decltype(values)>(values)...);
          } else {
            return Function(static_cast<Receiver&>(*receiver.object()),
                            std::forward<decltype(values)>(values)...);
          }
        } else if constexpr (std::is_base_of_v<Object, Receiver>) {
          return (static_cast<Receiver&>(*receiver.object()).*
                  Function)(std::forward<decltype(values)>(values)...);
        } else {
          return (interfaceOfReceiver<Receiver>(receiver).*
                  Function)(std::forward<decltype(values)>(values)...);
        }
      },
      arguments);
}

template <auto Function>
Value invokeWithObject(Object& receiver, const Object* argument) {
  using Receiver = typename InstanceFunction<decltype(Function)>::Receiver;
  using Argument = std::remove_pointer_t<typename ObjectFunction<decltype(Function)>::Argument>;
  const bool isMeant = argument != nullptr && argument->objectKind() == Argument::kObjectKind;
  return Function(static_cast<Receiver&>(receiver),
                  isMeant ? static_cast<const Argument*>(argument) : nullptr);
}

template <auto Function>
consteval auto objectInvoker() -> Value (*)(Object& receiver, const Object* argument) {
  if constexpr (ObjectFunction<decltype(Function)>::kIsOne) return &invokeWithObject<Function>;
  return nullptr;
}

template <auto Function>
Value invokePlain(const Value& /*unused*/, std::span<const Value> arguments) {
  return PlainFunction<decltype(Function)>::call(Function, arguments);
}

template <typename Types>
consteval void checkColons(std::string_view selector) {
  if (countColons(selector) != Types::kCount) throw "selector and signature disagree";  // NOLINT
}

}  // namespace detail

/// A row for an instance method: a member function of the class or of a protocol that the class
/// declares, or a function whose first parameter is the receiver. The selector must have one colon
/// for each argument; a mismatch, and a type that has no code, do not compile.
template <auto Function>
[[nodiscard]] consteval Method method(std::string_view selector) {
  using Types = detail::InstanceFunction<decltype(Function)>;
  detail::checkColons<Types>(selector);
  return Method{selector, Types::kTypes, &detail::invokeInstance<Function>,
                detail::objectInvoker<Function>()};
}

/// A row for a class method: a static member function or any other plain function.
template <auto Function>
[[nodiscard]] consteval Method classMethod(std::string_view selector) {
  using Types = detail::PlainFunction<decltype(Function)>;
  detail::checkColons<Types>(selector);
  return Method{selector, Types::kTypes, &detail::invokePlain<Function>};
}

/// A row for an initialiser: a static function that returns the new object, nil on failure.
template <auto Function>
[[nodiscard]] consteval Method initializer(std::string_view selector) {
  return classMethod<Function>(selector);
}

}  // namespace commandfilter
