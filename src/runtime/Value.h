// What flows through expressions and dynamic calls.
#pragma once

#include <cassert>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "runtime/Export.h"
#include "runtime/Number.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// A handle of 16 bytes: nil (no value), the null object (which stands for nil inside
/// collections), a number kept inside the handle, or a counted reference to an object.
/// nil, the null object and the boolean NO are three different things; test them by name.
class Value {
 public:
  /// nil.
  constexpr Value() noexcept : word_{.integer = 0} {}
  constexpr Value(std::nullptr_t) noexcept : Value() {}
  constexpr Value(const Number& number) noexcept
      : word_{.integer = 0}, kind_(Kind::Number), encoding_(number.encoding_) {
    if (number.isReal()) {
      word_.real = number.real_;
    } else {
      word_.integer = number.signed_;
    }
  }
  /// Shares the object; a nil reference makes nil.
  template <typename T>
  Value(const Ref<T>& object) noexcept : Value(adopting(shared(*object))) {}
  template <typename T>
  Value(Ref<T>&& object) noexcept : Value(adopting(countedObject(*object.leak()))) {}
  template <typename T>
  Value(const RefPtr<T>& object) noexcept : Value() {
    if (object) *this = adopting(shared(*object));
  }
  template <typename T>
  Value(RefPtr<T>&& object) noexcept : Value() {
    if (object) *this = adopting(countedObject(*object.leak()));
  }

  Value(const Value& other) noexcept
      : word_(other.word_), kind_(other.kind_), encoding_(other.encoding_) {
    if (kind_ == Kind::Object) word_.object->ref();
  }
  Value(Value&& other) noexcept
      : word_(other.word_),
        kind_(std::exchange(other.kind_, Kind::Nil)),
        encoding_(other.encoding_) {}
  constexpr ~Value() {
    if (kind_ == Kind::Object) word_.object->deref();
  }
  Value& operator=(const Value& other) noexcept {
    Value copy(other);
    swap(copy);
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    Value moved(std::move(other));
    swap(moved);
    return *this;
  }
  void swap(Value& other) noexcept {
    std::swap(word_, other.word_);
    std::swap(kind_, other.kind_);
    std::swap(encoding_, other.encoding_);
  }

  /// The null object.
  [[nodiscard]] static Value null() noexcept {
    Value value;
    value.kind_ = Kind::Null;
    return value;
  }
  [[nodiscard]] static Value boolean(bool value) noexcept { return Number::boolean(value); }
  /// Shares `object`, nil for nullptr.
  [[nodiscard]] static Value sharing(const Object* object) noexcept {
    if (object == nullptr) return {};
    object->ref();
    return adopting(const_cast<Object&>(*object));  // NOLINT: objects are handled as mutable
  }

  [[nodiscard]] bool isNil() const noexcept { return kind_ == Kind::Nil; }
  [[nodiscard]] bool isNull() const noexcept { return kind_ == Kind::Null; }
  [[nodiscard]] bool isNumber() const noexcept { return kind_ == Kind::Number; }
  /// True for every number of encoding "c".
  [[nodiscard]] bool isBoolean() const noexcept { return isNumber() && encoding_ == 'c'; }
  [[nodiscard]] bool isObject() const noexcept { return kind_ == Kind::Object; }
  [[nodiscard]] bool isKind(ObjectKind kind) const noexcept {
    return kind_ == Kind::Object && word_.object->objectKind() == kind;
  }

  /// The number; only for a value that is one.
  [[nodiscard]] Number number() const noexcept {
    assert(isNumber());
    if (encoding_ == 'd' || encoding_ == 'f') return {encoding_, word_.real};
    return {encoding_, word_.integer};
  }
  /// The object, borrowed; nullptr for nil, the null object and numbers.
  [[nodiscard]] Object* object() const noexcept {
    return kind_ == Kind::Object ? word_.object : nullptr;
  }
  /// The value itself, with nil replaced by the null object, as collections hold it.
  [[nodiscard]] Value orNull() const noexcept { return isNil() ? null() : *this; }
  /// The value itself, with the null object replaced by nil, as caches are read.
  [[nodiscard]] Value nullAsNil() const noexcept { return isNull() ? Value() : *this; }

  /// True when both are the same object, or the same nil, null or number of one encoding.
  [[nodiscard]] bool isIdenticalTo(const Value& other) const noexcept {
    if (kind_ != other.kind_) return false;
    if (kind_ == Kind::Nil || kind_ == Kind::Null) return true;
    return word_.integer == other.word_.integer && (isObject() || encoding_ == other.encoding_);
  }

 private:
  enum class Kind : std::uint8_t { Nil, Null, Number, Object };
  union Word {
    std::int64_t integer;
    double real;
    Object* object;
  };

  template <typename T>
  static Object& shared(T& target) noexcept {
    Object& object = countedObject(target);
    object.ref();
    return object;
  }
  static Value adopting(Object& object) noexcept {
    Value value;
    value.word_.object = &object;
    value.kind_ = Kind::Object;
    return value;
  }

  Word word_;
  Kind kind_ = Kind::Nil;
  char encoding_ = 0;
};

static_assert(sizeof(Value) == 16);

}  // namespace commandfilter
