// Checked casts from values to classes and protocols.
#pragma once

#include <type_traits>

#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Value.h"

namespace commandfilter {

namespace detail {

[[nodiscard]] COMMANDFILTER_EXPORT bool isKindOfClass(const Object& object,
                                                      const Class& info) noexcept;
[[nodiscard]] COMMANDFILTER_EXPORT void* interfaceOf(Object& object,
                                                     const Protocol& protocol) noexcept;

// A class whose objects all have one kind, and nothing else does. Classes below it inherit the
// names but are not meant.
template <typename T>
concept HasObjectKind = requires {
  requires std::is_same_v<typename T::KindClass, T>;
};

}  // namespace detail

/// The object as a T, a class below Object or a protocol that its class declares; nullptr when it
/// is of another kind. Borrowed.
template <typename T>
[[nodiscard]] T* castTo(Object* object) noexcept {
  if (object == nullptr) return nullptr;
  if constexpr (std::is_same_v<T, Object>) {
    return object;
  } else if constexpr (detail::HasObjectKind<T>) {
    return object->objectKind() == T::kObjectKind ? static_cast<T*>(object) : nullptr;
  } else if constexpr (std::is_base_of_v<Object, T>) {
    return detail::isKindOfClass(*object, T::kClass) ? static_cast<T*>(object) : nullptr;
  } else {
    return static_cast<T*>(detail::interfaceOf(*object, T::kProtocol));
  }
}

/// The same for a value; nullptr for nil, the null object and numbers.
template <typename T>
[[nodiscard]] T* castTo(const Value& value) noexcept {
  if constexpr (detail::HasObjectKind<T>) {
    return value.isKind(T::kObjectKind) ? static_cast<T*>(value.object()) : nullptr;
  } else {
    return castTo<T>(value.object());
  }
}

}  // namespace commandfilter
