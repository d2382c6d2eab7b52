// A bare name in an expression.
#pragma once

#include <utility>

#include "evaluation/protocol/EvaluationName.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// @name: a symbol of the context or a message to its service.
class COMMANDFILTER_EXPORT ADMEvaluationSelector final : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationSelector> itemWithSelectorName(Ref<String> selectorName) {
    return make<ADMEvaluationSelector>(std::move(selectorName));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const RefPtr<String>& selectorName() const noexcept { return name_.string(); }

  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationSelector(Ref<String> selectorName)
      : ADMEvaluationItemBase(ItemType::Selector, Holding::NoChain),
        name_(EvaluationName::ofSymbol(std::move(selectorName))) {}
  ~ADMEvaluationSelector() override = default;

  EvaluationName name_;
};

}  // namespace commandfilter
