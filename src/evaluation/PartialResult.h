// Results of procedures that expressions can look at while they grow.
#pragma once

#include <utility>
#include <vector>

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A growing list. An expression that asks for it gets an array of the elements so far, which does
/// not change any more when the list goes on growing.
class PartialResult : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// The elements so far; the same array until the list grows.
  [[nodiscard]] Ref<Array> elementsSoFar();

 protected:
  PartialResult() = default;
  /// A list that begins with the elements of an array.
  explicit PartialResult(RefPtr<Array> elements) noexcept : elementsSoFar_(std::move(elements)) {}
  ~PartialResult() override = default;

  /// True when nothing has been added since the elements were asked for.
  [[nodiscard]] bool isShown() const noexcept { return static_cast<bool>(elementsSoFar_); }
  /// Says that the list is about to grow.
  void forgetElementsSoFar() noexcept {
    if (elementsSoFar_) elementsSoFar_ = nullptr;
  }

 private:
  [[nodiscard]] virtual std::vector<Value> copyElements() const = 0;

  RefPtr<Array> elementsSoFar_;
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
  /// All elements; the list may be empty afterwards.
  [[nodiscard]] Ref<Array> takeElements();

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  CollectedElements() = default;
  explicit CollectedElements(const Ref<Array>& elements)
      : PartialResult(elements), elements_(elements->begin(), elements->end()) {}
  ~CollectedElements() override = default;

  [[nodiscard]] std::vector<Value> copyElements() const override { return elements_; }

  std::vector<Value> elements_;
};

}  // namespace commandfilter
