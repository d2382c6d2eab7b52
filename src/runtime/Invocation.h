// A message as an object: what is forwarded, and how a call is built at run time.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <utility>

#include "runtime/Export.h"
#include "runtime/MethodSignature.h"
#include "runtime/Selector.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

/// A call that can be kept, changed and sent on: target, selector, arguments and result.
class COMMANDFILTER_EXPORT Invocation {
 public:
  /// All arguments are nil until set.
  /// @throws Exception for the empty signature.
  Invocation(MethodSignature signature, Value target, Selector selector);
  /// With the arguments after the hidden ones.
  /// @throws Exception when there are more or fewer than the signature has.
  Invocation(MethodSignature signature, Value target, Selector selector,
             std::span<const Value> arguments);

  [[nodiscard]] const MethodSignature& methodSignature() const noexcept { return signature_; }
  [[nodiscard]] const Value& target() const noexcept { return target_; }
  [[nodiscard]] const Selector& selector() const noexcept { return selector_; }

  /// An argument; index 2 is the first after the hidden ones.
  /// @throws Exception for an index that the signature does not have.
  [[nodiscard]] const Value& argumentAtIndex(std::size_t index) const;
  void setArgumentAtIndex(Value value, std::size_t index);

  /// nil until the invocation has run or a result has been set. A scalar result is a number of
  /// its type code.
  [[nodiscard]] const Value& returnValue() const noexcept { return returnValue_; }
  void setReturnValue(Value value) noexcept { returnValue_ = std::move(value); }
  /// Sets the result to zero bytes of the signature's type: nil, 0 or NO.
  void setZeroReturnValue() noexcept;

  /// Sends the message to the target and keeps the result.
  void invoke() { invokeWithTarget(target_); }
  /// Sends the message to another target and keeps the result.
  /// @throws Exception when the target does not answer to the selector.
  void invokeWithTarget(const Value& target);

 private:
  [[nodiscard]] std::span<const Value> arguments() const noexcept;

  MethodSignature signature_;
  Value target_;
  Selector selector_;
  /// Nearly every message has few arguments. Of more, all stand in the other place.
  std::array<Value, 4> fewArguments_;
  ValueVector manyArguments_;
  Value returnValue_;
};

}  // namespace commandfilter
