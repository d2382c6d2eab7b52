// Classes as constant data.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "runtime/Export.h"
#include "runtime/Method.h"
#include "runtime/Protocol.h"
#include "runtime/Selector.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A named group of methods that extends a class from another source file.
struct MethodGroup {
  std::string_view name;
  std::span<const Method> methods;
};

/// A class: constant data of static lifetime, except in a bundle, whose classes are gone when it
/// is unloaded.
struct COMMANDFILTER_EXPORT Class {
  /// The name by which it is found at run time.
  std::string_view name;
  /// The class that it extends; nullptr for the root class only.
  const Class* base = nullptr;
  std::span<const Conformance> protocols{};
  /// Instance methods that dynamic sends find; inherited.
  std::span<const Method> methods{};
  /// More instance methods, in groups; inherited.
  std::span<const MethodGroup* const> groups{};
  /// Methods of the class itself; inherited.
  std::span<const Method> classMethods{};
  /// Functions that make an instance. Not inherited: each makes an object of its own class.
  std::span<const Method> initializers{};

  /// True when this is `other` or extends it.
  [[nodiscard]] bool isKindOf(const Class& other) const noexcept;
  /// The instance method, own or inherited; nullptr when there is none.
  [[nodiscard]] const Method* instanceMethod(const Selector& selector) const noexcept;
  /// The class method, own or inherited; nullptr when there is none.
  [[nodiscard]] const Method* classMethod(const Selector& selector) const noexcept;
  /// The class's own initialiser; nullptr when there is none.
  [[nodiscard]] const Method* initializer(const Selector& selector) const noexcept;
  /// True when instances answer to the selector, an initialiser included.
  [[nodiscard]] bool instancesRespondToSelector(const Selector& selector) const noexcept;
  /// True when the class or one that it extends declares the protocol or one that adopts it.
  [[nodiscard]] bool conformsToProtocol(const Protocol& protocol) const noexcept;
};

/// The class of a value: an object's own, or those of numbers and the null object; nullptr for
/// nil.
[[nodiscard]] COMMANDFILTER_EXPORT const Class* classOf(const Value& value) noexcept;

/// The class of numbers, which are no objects; found under the name "Number".
extern COMMANDFILTER_EXPORT const Class kNumberClass;
/// The class of the null object; found under the name "Null".
extern COMMANDFILTER_EXPORT const Class kNullClass;

namespace detail {
/// Forgets which method answers which selector; needed when classes go away.
void forgetMethods() noexcept;
/// How often that has happened. Read only.
extern COMMANDFILTER_EXPORT std::uint32_t methodGeneration;
}  // namespace detail

/// The answer of one class to one selector, for whoever asks for the same again and again.
class RememberedMethod {
 public:
  /// `info.instanceMethod(selector)`; the selector must be the same at every call.
  [[nodiscard]] const Method* instanceMethod(const Class& info, const Selector& selector) noexcept {
    if (info_ == &info && generation_ == detail::methodGeneration) [[likely]]
      return method_;
    return ask(info, selector);
  }

 private:
  COMMANDFILTER_EXPORT const Method* ask(const Class& info, const Selector& selector) noexcept;

  const Class* info_ = nullptr;
  const Method* method_ = nullptr;
  std::uint32_t generation_ = 0;
};

}  // namespace commandfilter
