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
      : word_{.integer = 0}, tag_(tagOfNumber(number.encoding_)) {
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

  Value(const Value& other) noexcept : word_(other.word_), tag_(other.tag_) {
    if (isObject()) word_.object->ref();
  }
  Value(Value&& other) noexcept : word_(other.word_), tag_(std::exchange(other.tag_, kNil)) {}
  constexpr ~Value() {
    if (isObject()) word_.object->deref();
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
    std::swap(tag_, other.tag_);
  }

  /// The null object.
  [[nodiscard]] static Value null() noexcept {
    Value value;
    value.tag_ = kNull;
    return value;
  }
  [[nodiscard]] static Value boolean(bool value) noexcept { return Number::boolean(value); }
  /// Shares `object`, nil for nullptr.
  [[nodiscard]] static Value sharing(const Object* object) noexcept {
    if (object == nullptr) return {};
    object->ref();
    return adopting(const_cast<Object&>(*object));  // NOLINT: objects are handled as mutable
  }

  /// Gives up the reference to an object, which must be a T, and is nil from then on.
  template <typename T>
  [[nodiscard]] Ref<T> take() noexcept {
    assert(isObject());
    tag_ = kNil;
    return Ref<T>::adopt(static_cast<T&>(*word_.object));
  }

  [[nodiscard]] bool isNil() const noexcept { return tag_ == kNil; }
  [[nodiscard]] bool isNull() const noexcept { return tag_ == kNull; }
  [[nodiscard]] bool isNumber() const noexcept { return tag_ > kObject; }
  /// True for every number of encoding "c".
  [[nodiscard]] bool isBoolean() const noexcept { return tag_ == tagOfNumber('c'); }
  [[nodiscard]] constexpr bool isObject() const noexcept { return tag_ == kObject; }
  [[nodiscard]] bool isKind(ObjectKind kind) const noexcept {
    return isObject() && word_.object->objectKind() == kind;
  }

  /// The number; only for a value that is one.
  [[nodiscard]] Number number() const noexcept {
    assert(isNumber());
    const char encoding = static_cast<char>(tag_ - kNumber);
    if (encoding == 'd' || encoding == 'f') return {encoding, word_.real};
    return {encoding, word_.integer};
  }
  /// The object, borrowed; nullptr for nil, the null object and numbers.
  [[nodiscard]] Object* object() const noexcept { return isObject() ? word_.object : nullptr; }
  /// The value itself, with nil replaced by the null object, as collections hold it.
  [[nodiscard]] Value orNull() const noexcept { return isNil() ? null() : *this; }
  /// The value itself, with the null object replaced by nil, as caches are read.
  [[nodiscard]] Value nullAsNil() const noexcept { return isNull() ? Value() : *this; }

  /// True when both are the same object, or the same nil, null or number of one encoding.
  [[nodiscard]] bool isIdenticalTo(const Value& other) const noexcept {
    if (tag_ != other.tag_) return false;
    return isNil() || isNull() || word_.integer == other.word_.integer;
  }

 private:
  // What the value is, and the encoding of a number: one field, so that it is read and written at
  // once. A number's tag is kNumber and its encoding.
  using Tag = std::uint32_t;
  static constexpr Tag kNil = 0;
  static constexpr Tag kNull = 1;
  static constexpr Tag kObject = 2;
  static constexpr Tag kNumber = 256;

  static constexpr Tag tagOfNumber(char encoding) noexcept {
    return kNumber + static_cast<unsigned char>(encoding);
  }

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
    value.tag_ = kObject;
    return value;
  }

  Word word_;
  Tag tag_ = kNil;
};

static_assert(sizeof(Value) == 16);

}  // namespace commandfilter
