// A value of a template, as the processor keeps it.
#pragma once

#include <utility>

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "template/ADMStatusValueRepresentation.h"

namespace commandfilter {

/// What computes the value of a key, and what it has computed in the session.
class KeyedRepresentation final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// nil when the value's description cannot be used.
  [[nodiscard]] const RefPtr<ADMStatusValueRepresentation>& representation() const noexcept {
    return representation_;
  }
  /// The null object for a value that is nil; nil when it was not computed yet.
  [[nodiscard]] const Value& keptValue() const noexcept { return keptValue_; }
  void keepValue(const Value& value) { keptValue_ = value.orNull(); }
  void forgetValue() noexcept { keptValue_ = Value(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit KeyedRepresentation(RefPtr<ADMStatusValueRepresentation> representation)
      : representation_(std::move(representation)) {}
  ~KeyedRepresentation() override = default;

  RefPtr<ADMStatusValueRepresentation> representation_;
  Value keptValue_;
};

}  // namespace commandfilter
