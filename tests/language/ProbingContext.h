// Contexts with procedures that show how they were called.
#pragma once

#include <array>
#include <utility>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/ADMItemsList.h"
#include "language/CallLog.h"
#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Description.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {

/// A context with three procedures more than its base: _Probe(label, value) notes the label and
/// gives the value; _Items(...) gives the unevaluated arguments as an items list, nil when there
/// are none at all; _Values(...) gives the values of the arguments as an array.
template <typename Base>
class ProbingContext final : public Base {
 public:
  static const Class kClass;

  /// The log must outlive the context; the other arguments are the base's.
  template <typename... Arguments>
  [[nodiscard]] static Ref<ProbingContext> create(CallLog& log, Arguments&&... arguments) {
    return make<ProbingContext>(log, std::forward<Arguments>(arguments)...);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  Value executeProbeProcedure(const Array* items) {
    if (items == nullptr || items->isEmpty()) return {};
    log_.push_back(descriptionOf(evaluateItem((*items)[0], *this)));
    return items->count() > 1 ? evaluateItem((*items)[1], *this) : Value();
  }
  Value executeItemsProcedure(const Array* items) {
    if (items == nullptr) return {};
    Ref<ADMItemsList> list = ADMItemsList::create();
    for (const Value& item : *items) list->appendItem(item);
    return list;
  }
  Value executeValuesProcedure(const Array* items) {
    ValueVector values;
    if (items != nullptr) {
      for (const Value& item : *items) values.push_back(evaluateItem(item, *this));
    }
    return Array::create(std::move(values));
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  template <typename... Arguments>
  explicit ProbingContext(CallLog& log, Arguments&&... arguments)
      : Base(std::forward<Arguments>(arguments)...), log_(log) {}
  ~ProbingContext() override = default;

  CallLog& log_;
};

template <typename Base>
inline constexpr std::array kProbes{
    method<&ProbingContext<Base>::executeProbeProcedure>("executeProbeProcedure:"),
    method<&ProbingContext<Base>::executeItemsProcedure>("executeItemsProcedure:"),
    method<&ProbingContext<Base>::executeValuesProcedure>("executeValuesProcedure:"),
};

template <typename Base>
constinit const Class ProbingContext<Base>::kClass{
    .name = "ProbingContext", .base = &Base::kClass, .methods = kProbes<Base>};

}  // namespace commandfilter::testing
