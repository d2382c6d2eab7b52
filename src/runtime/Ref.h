// Owning references to counted objects: Ref is never nil, RefPtr may be.
#pragma once

#include <cassert>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "runtime/LiveObjects.h"
#include "runtime/Object.h"

namespace commandfilter {

/// The counted object behind a reference: the object itself, or the one that conforms to the
/// protocol.
template <typename T>
[[nodiscard]] Object& countedObject(T& target) noexcept {
  if constexpr (std::is_base_of_v<Object, T>) {
    return target;
  } else {
    return target.object();
  }
}

template <typename T>
class RefPtr;

/// A reference that always holds an object. T is a class below Object or a protocol.
/// A moved-from Ref holds nothing and may only be assigned to or destroyed.
template <typename T>
class Ref {
 public:
  /// Shares `target`, which stays alive as long as this reference.
  explicit Ref(T& target) noexcept : target_(&target) { countedObject(target).ref(); }
  Ref(const Ref& other) noexcept : Ref(*other.target_) {}
  Ref(Ref&& other) noexcept : target_(std::exchange(other.target_, nullptr)) {}
  template <typename U>
  requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
  noexcept : Ref(static_cast<T&>(*other)) {}
  template <typename U>
  requires std::is_convertible_v<U*, T*> Ref(Ref<U>&& other)
  noexcept : target_(other.leak()) {}
  ~Ref() {
    if (target_ != nullptr) countedObject(*target_).deref();
  }
  Ref& operator=(const Ref& other) noexcept {
    Ref copy(other);
    std::swap(target_, copy.target_);
    return *this;
  }
  Ref& operator=(Ref&& other) noexcept {
    Ref moved(std::move(other));
    std::swap(target_, moved.target_);
    return *this;
  }

  [[nodiscard]] T& operator*() const noexcept {
    assert(target_ != nullptr);
    return *target_;
  }
  [[nodiscard]] T* operator->() const noexcept {
    assert(target_ != nullptr);
    return target_;
  }
  [[nodiscard]] T* get() const noexcept { return target_; }

  /// Gives the reference up to whoever takes the pointer.
  [[nodiscard]] T* leak() noexcept { return std::exchange(target_, nullptr); }

  /// Takes over the reference that a new object is born with.
  [[nodiscard]] static Ref adopt(T& target) noexcept { return Ref(target, Adopted{}); }

 private:
  struct Adopted {};
  Ref(T& target, Adopted /*unused*/) noexcept : target_(&target) {}

  T* target_;
};

/// A reference that may be nil.
template <typename T>
class RefPtr {
 public:
  RefPtr() noexcept = default;
  RefPtr(std::nullptr_t) noexcept {}
  /// Shares `target` unless it is nil.
  explicit RefPtr(T* target) noexcept : target_(target) {
    if (target_ != nullptr) countedObject(*target_).ref();
  }
  RefPtr(const RefPtr& other) noexcept : RefPtr(other.target_) {}
  RefPtr(RefPtr&& other) noexcept : target_(std::exchange(other.target_, nullptr)) {}
  template <typename U>
  requires std::is_convertible_v<U*, T*> RefPtr(const RefPtr<U>& other)
  noexcept : RefPtr(static_cast<T*>(other.get())) {}
  template <typename U>
  requires std::is_convertible_v<U*, T*> RefPtr(RefPtr<U>&& other)
  noexcept : target_(other.leak()) {}
  template <typename U>
  requires std::is_convertible_v<U*, T*> RefPtr(const Ref<U>& other)
  noexcept : RefPtr(static_cast<T*>(other.get())) {}
  template <typename U>
  requires std::is_convertible_v<U*, T*> RefPtr(Ref<U>&& other)
  noexcept : target_(other.leak()) {}
  ~RefPtr() {
    if (target_ != nullptr) countedObject(*target_).deref();
  }
  RefPtr& operator=(const RefPtr& other) noexcept {
    RefPtr copy(other);
    std::swap(target_, copy.target_);
    return *this;
  }
  RefPtr& operator=(RefPtr&& other) noexcept {
    RefPtr moved(std::move(other));
    std::swap(target_, moved.target_);
    return *this;
  }

  [[nodiscard]] explicit operator bool() const noexcept { return target_ != nullptr; }
  [[nodiscard]] T& operator*() const noexcept {
    assert(target_ != nullptr);
    return *target_;
  }
  [[nodiscard]] T* operator->() const noexcept {
    assert(target_ != nullptr);
    return target_;
  }
  [[nodiscard]] T* get() const noexcept { return target_; }

  /// Gives the reference up to whoever takes the pointer.
  [[nodiscard]] T* leak() noexcept { return std::exchange(target_, nullptr); }

  friend bool operator==(const RefPtr& left, std::nullptr_t) noexcept {
    return left.target_ == nullptr;
  }

 private:
  T* target_ = nullptr;
};

/// Makes an object: the only place where one is born.
template <typename T, typename... Arguments>
[[nodiscard]] Ref<T> make(Arguments&&... arguments) {
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the Ref adopts the object at once.
  Ref<T> object = Ref<T>::adopt(*new T(std::forward<Arguments>(arguments)...));
  LiveObjects::born(*object);
  return object;
}

}  // namespace commandfilter
