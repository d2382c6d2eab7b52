// The compiler's stack of operands.
#pragma once

#include <utility>
#include <vector>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/ObjectMemory.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// A stack of items.
class COMMANDFILTER_EXPORT ADMEvaluationStack final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationStack> create();

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// "Stack: " and the elements as an array.
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] bool empty() const noexcept { return elements_.empty(); }
  /// The top, which stays alive with the result; nil when the stack is empty.
  [[nodiscard]] RefPtr<ADMEvaluationItemBase> top() const noexcept {
    return elements_.empty() ? nullptr : RefPtr<ADMEvaluationItemBase>(elements_.back());
  }
  /// Removes the top; does nothing on an empty stack.
  void pop() noexcept {
    if (!elements_.empty()) elements_.pop_back();
  }
  /// The top, removed; nil when the stack is empty.
  [[nodiscard]] RefPtr<ADMEvaluationItemBase> take() noexcept {
    if (elements_.empty()) return nullptr;
    RefPtr<ADMEvaluationItemBase> item = std::move(elements_.back());
    elements_.pop_back();
    return item;
  }
  /// Puts an item on top; nil is ignored.
  void push(RefPtr<ADMEvaluationItemBase> item) {
    if (item) elements_.push_back(Ref<ADMEvaluationItemBase>::adopt(*item.leak()));
  }
  /// Puts an item on top.
  template <typename T>
  void push(Ref<T> item) {
    elements_.push_back(std::move(item));
  }
  /// Puts the item in the place of the top, which is the result; nil, and does nothing, when the
  /// stack is empty.
  [[nodiscard]] RefPtr<ADMEvaluationItemBase> exchangeTop(
      Ref<ADMEvaluationItemBase> item) noexcept {
    if (elements_.empty()) return nullptr;
    return std::exchange(elements_.back(), std::move(item));
  }
  /// Lets the item put itself on top, operators with what they take from the stack as operands.
  /// False for nil and for an operator whose operands are missing.
  bool pushWithSubtreeCreation(const RefPtr<ADMEvaluationItemBase>& item) {
    return item && item->pushToStack(*this);
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMEvaluationStack();
  ~ADMEvaluationStack() override = default;

  std::vector<Ref<ADMEvaluationItemBase>, ObjectAllocator<Ref<ADMEvaluationItemBase>>> elements_;
};

}  // namespace commandfilter
