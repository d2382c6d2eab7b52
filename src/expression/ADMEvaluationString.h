// A text in an expression.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A text between double quotes, or the empty element that the compiler inserts where a list leaves
/// one out: that one's string is nil.
class COMMANDFILTER_EXPORT ADMEvaluationString final : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationString> itemWithString(RefPtr<String> string);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const RefPtr<String>& string() const noexcept { return string_; }

  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationString(RefPtr<String> string)
      : ADMEvaluationItemBase(ItemType::String), string_(std::move(string)) {}
  ~ADMEvaluationString() override = default;

  RefPtr<String> string_;
};

}  // namespace commandfilter
