// A constant of the template.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// $Name: a constant of the template, from the object under "TemplateConstants" in the global
/// configuration; nil when there is no such object.
class COMMANDFILTER_EXPORT ADMEvaluationGlobalConstant final : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationGlobalConstant> itemWithName(Ref<String> name) {
    return make<ADMEvaluationGlobalConstant>(std::move(name));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const Ref<String>& name() const noexcept { return name_; }

  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationGlobalConstant(Ref<String> name)
      : ADMEvaluationItemBase(ItemType::GlobalConstant, Holding::NoChain), name_(std::move(name)) {}
  ~ADMEvaluationGlobalConstant() override = default;

  /// Asks for the value, and remembers it if it is permanent.
  [[nodiscard]] Value find(ADMEvaluationContext& context, Object* permanence) const;
  /// Sends the question to whatever stands in the configuration.
  [[nodiscard]] Value ask(const ADMEvaluationContext& context) const;

  Ref<String> name_;
  /// The value that was found last, and for how long it holds; see ADMNamedValues.
  mutable Value value_;
  mutable RefPtr<Object> permanence_;
};

}  // namespace commandfilter
