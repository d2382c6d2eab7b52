// Results of procedures that expressions can look at while they grow.
#pragma once

#include <cstddef>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A growing list. An expression that asks for it gets an array of the elements so far, which does
/// not change any more when the list goes on growing. The list itself grows in place as long as
/// nobody keeps that array.
class PartialResult : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// The elements so far; the same array until the list grows.
  [[nodiscard]] virtual Ref<Array> elementsSoFar() = 0;

 protected:
  PartialResult() = default;
  ~PartialResult() override = default;
};

/// A list that grows at its end.
class CollectedElements final : public PartialResult {
 public:
  static const Class kClass;

  /// An empty list.
  [[nodiscard]] static Ref<CollectedElements> create();
  /// A list that begins with the elements of an array.
  [[nodiscard]] static Ref<CollectedElements> create(Ref<Array> elements);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  void append(Value element);
  [[nodiscard]] std::size_t count() const noexcept { return elements_->count(); }
  [[nodiscard]] Ref<Array> elementsSoFar() override { return elements_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit CollectedElements(Ref<Array> elements) noexcept : elements_(std::move(elements)) {}
  ~CollectedElements() override = default;

  Ref<Array> elements_;
};

}  // namespace commandfilter
