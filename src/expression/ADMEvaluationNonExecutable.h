// Braces and empty argument lists.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// What has a place in an expression but no value: a brace, or the empty argument list.
class COMMANDFILTER_EXPORT ADMEvaluationNonExecutable final : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationNonExecutable> itemWithItemType(ItemType type) {
    return make<ADMEvaluationNonExecutable>(type);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationNonExecutable(ItemType type)
      : ADMEvaluationItemBase(type, Holding::NoChain) {}
  ~ADMEvaluationNonExecutable() override = default;
};

}  // namespace commandfilter
