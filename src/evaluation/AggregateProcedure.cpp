// The procedures that evaluate an expression for each element of a list.
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "evaluation/ADMAggregateEvaluationContext.h"
#include "evaluation/AppendingStep.h"
#include "evaluation/PartialResult.h"
#include "evaluation/ProcedureArguments.h"
#include "evaluation/ProcedureGroups.h"
#include "evaluation/ProcedureSignatures.h"
#include "evaluation/SortedElements.h"
#include "expression/OperandValue.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

constexpr std::string_view kWrongSort = "Invalid args in Sort procedure";
// _Filter reports it as well; the text is part of the contract.
constexpr std::string_view kWrongAggregateIf = "Invalid args in AggregateIf procedure";
constexpr std::string_view kWrongAggregate = "Invalid args in Aggregate procedure";

// True for everything but nil, NO and the numbers that equal it.
bool holds(const Value& condition) {
  if (condition.isNumber()) return condition.number().boolValue();
  return !condition.isNil() && !equal(condition, Value::boolean(false));
}

// The accumulator of an aggregation, and the step that changes it.
class Accumulation {
 public:
  Accumulation(ADMAggregateEvaluationContext& context, const ADMEvaluationItemBase& step)
      : context_(context), step_(step) {
    auto* start = castTo<Array>(context.initialValue());
    if (start == nullptr) return;
    appendingStep_ = AppendingStep::ofItem(step);
    if (!appendingStep_) return;
    list_ = CollectedElements::create(Ref<Array>(*start));
    context.setPartialResult(Ref<PartialResult>(*list_));
  }

  // Takes the step for the current element; false when it failed, which changes nothing.
  bool advance() {
    if (list_) return appendToList();
    Value value = evaluateOperand(&step_, context_);
    if (context_.lastError() != nullptr) return false;
    context_.setInitialValue(std::move(value));
    return true;
  }

  [[nodiscard]] Value result() {
    return list_ ? Value(list_->elementsSoFar()) : context_.initialValue();
  }

 private:
  bool appendToList() {
    additions_.clear();
    appendingStep_->evaluate(context_, list_->count(), additions_);
    if (context_.lastError() != nullptr) return false;
    for (Value& addition : additions_) list_->append(std::move(addition));
    return true;
  }

  ADMAggregateEvaluationContext& context_;
  const ADMEvaluationItemBase& step_;
  std::optional<AppendingStep> appendingStep_;
  // The accumulator of an appending step.
  RefPtr<CollectedElements> list_;
  // Those of one step; kept for its memory.
  ValueVector additions_;
};

/// _Sort(list, key): the elements in the ascending order of their keys.
Value sort(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Sort").accepts(countOf(items))) return failWith(context, kWrongSort);
  const Value list = evaluateArgument(items, 0, context);
  auto* elements = castTo<Array>(list);
  if (elements == nullptr) return failWith(context, kWrongSort);
  if (elements->isEmpty()) return Array::create();
  const Ref<SortedElements> sorted = SortedElements::create(Ref<Array>(*elements));
  const Ref<ADMAggregateEvaluationContext> walk =
      ADMAggregateEvaluationContext::contextCalledFrom(context, list, Value());
  walk->setPartialResult(sorted);
  const ADMEvaluationItemBase& keyItem = itemOf((*items)[1]);
  for (; !walk->endOfIteration(); walk->iterateNext()) {
    walk->clearErrors();
    Value key = evaluateOperand(&keyItem, *walk);
    if (walk->lastError() != nullptr) break;
    sorted->insertNext(std::move(key));
  }
  return sorted->takeElements();
}

/// _Filter(list, condition): the elements for which the condition holds.
Value filter(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Filter").accepts(countOf(items))) return failWith(context, kWrongAggregateIf);
  const Value list = evaluateArgument(items, 0, context);
  if (list.isNil()) return {};
  const auto* elements = castTo<Array>(list);
  if (elements == nullptr) return failWith(context, kWrongAggregateIf);
  if (elements->isEmpty()) return Array::create();
  const Ref<CollectedElements> kept = CollectedElements::create();
  const Ref<ADMAggregateEvaluationContext> walk =
      ADMAggregateEvaluationContext::contextCalledFrom(context, list, Value());
  walk->setPartialResult(kept);
  const ADMEvaluationItemBase& condition = itemOf((*items)[1]);
  for (; !walk->endOfIteration(); walk->iterateNext()) {
    walk->clearErrors();
    // The condition's value is given up before the list grows: it may be the list so far.
    const bool isKept = holds(evaluateOperand(&condition, *walk));
    if (walk->lastError() != nullptr) break;
    if (isKept) kept->append(walk->element());
  }
  return kept->elementsSoFar();
}

/// _AggregateIf(list, condition, step, initial): the accumulator after the steps of the elements
/// for which the condition holds.
Value aggregateIf(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("AggregateIf").accepts(countOf(items)))
    return failWith(context, kWrongAggregateIf);
  const Value list = evaluateArgument(items, 0, context);
  if (list.isNil()) return {};
  const auto* elements = castTo<Array>(list);
  if (elements == nullptr) return failWith(context, kWrongAggregateIf);
  Value initialValue = evaluateArgument(items, 3, context);
  if (elements->isEmpty()) return initialValue;
  const Ref<ADMAggregateEvaluationContext> walk =
      ADMAggregateEvaluationContext::contextCalledFrom(context, list, std::move(initialValue));
  const ADMEvaluationItemBase& condition = itemOf((*items)[1]);
  Accumulation accumulation(*walk, itemOf((*items)[2]));
  for (; !walk->endOfIteration(); walk->iterateNext()) {
    walk->clearErrors();
    const bool isStep = holds(evaluateOperand(&condition, *walk));
    if (walk->lastError() != nullptr) break;
    if (isStep && !accumulation.advance()) break;
  }
  return accumulation.result();
}

/// _Aggregate(list, step [, initial]): the accumulator after the steps of all elements.
Value aggregate(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Aggregate").accepts(countOf(items))) return failWith(context, kWrongAggregate);
  const Value list = evaluateArgument(items, 0, context);
  if (list.isNil()) return {};
  const auto* elements = castTo<Array>(list);
  if (elements == nullptr) return failWith(context, kWrongAggregate);
  Value initialValue = countOf(items) > 2 ? evaluateArgument(items, 2, context) : Value();
  if (elements->isEmpty()) return initialValue;
  const Ref<ADMAggregateEvaluationContext> walk =
      ADMAggregateEvaluationContext::contextCalledFrom(context, list, std::move(initialValue));
  Accumulation accumulation(*walk, itemOf((*items)[1]));
  while (!walk->endOfIteration() && accumulation.advance()) walk->iterateNext();
  return accumulation.result();
}

constexpr std::array kMethods{
    method<&sort>("executeSortProcedure:"),
    method<&filter>("executeFilterProcedure:"),
    method<&aggregateIf>("executeAggregateIfProcedure:"),
    method<&aggregate>("executeAggregateProcedure:"),
};

}  // namespace

constinit const MethodGroup kAggregateProcedure{"AggregateProcedure", kMethods};

}  // namespace commandfilter
