// A number in an expression.
#pragma once

#include <utility>

#include "expression/LiteralItem.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Number.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// An integer literal.
class COMMANDFILTER_EXPORT ADMEvaluationNumber final : public LiteralItem {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationNumber> itemWithNumber(const Number& number) {
    return make<ADMEvaluationNumber>(number);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Number number() const noexcept { return value().number(); }

  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationNumber(const Number& number) : LiteralItem(ItemType::Number, number) {}
  ~ADMEvaluationNumber() override = default;
};

}  // namespace commandfilter
