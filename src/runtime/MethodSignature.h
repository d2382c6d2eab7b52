// The types of a method.
#pragma once

#include <cstddef>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

/// The type codes of a method's result and arguments. An empty signature stands for "no method".
class COMMANDFILTER_EXPORT MethodSignature {
 public:
  MethodSignature() noexcept = default;
  /// `types`: the code of the result, then one for each argument; must outlive the signature.
  explicit MethodSignature(std::string_view types) noexcept : types_(types) {}

  /// False for the empty signature.
  [[nodiscard]] explicit operator bool() const noexcept { return !types_.empty(); }
  /// Counts the two hidden arguments, receiver and selector.
  [[nodiscard]] std::size_t numberOfArguments() const noexcept { return types_.size() + 1; }
  /// The spelling of the result's code ("r*" for a constant C string).
  [[nodiscard]] std::string_view methodReturnType() const noexcept;
  /// The spelling of an argument's code; index 2 is the first after the hidden ones.
  [[nodiscard]] std::string_view argumentTypeAtIndex(std::size_t index) const noexcept;
  /// Bytes that a result of the type takes; 0 for none.
  [[nodiscard]] std::size_t methodReturnLength() const noexcept;

 private:
  std::string_view types_;
};

}  // namespace commandfilter
