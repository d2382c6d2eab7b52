// A text in an expression.
#pragma once

#include <utility>

#include "expression/LiteralItem.h"
#include "runtime/Cast.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A text between double quotes, or the empty element that the compiler inserts where a list leaves
/// one out: that one's string is nil.
class COMMANDFILTER_EXPORT ADMEvaluationString final : public LiteralItem {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationString> itemWithString(RefPtr<String> string) {
    return make<ADMEvaluationString>(std::move(string));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// nil where a list leaves an element out. Borrowed.
  [[nodiscard]] const String* string() const noexcept { return castTo<String>(value()); }
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationString(RefPtr<String> string)
      : LiteralItem(ItemType::String, std::move(string)) {}
  ~ADMEvaluationString() override = default;
};

}  // namespace commandfilter
