// Another value of the template.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// [Name]: another value of the same template, from the object under "EntireTemplateProcessor" in
/// the global configuration; nil when there is no such object.
class COMMANDFILTER_EXPORT ADMEvaluationGlobalValue final : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationGlobalValue> itemWithName(Ref<String> name) {
    return make<ADMEvaluationGlobalValue>(std::move(name));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const Ref<String>& name() const noexcept { return name_; }

  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationGlobalValue(Ref<String> name)
      : ADMEvaluationItemBase(ItemType::GlobalValue, Holding::NoChain), name_(std::move(name)) {}
  ~ADMEvaluationGlobalValue() override = default;

  Ref<String> name_;
};

}  // namespace commandfilter
