// The procedure that calls any method of any object.
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "evaluation/ProcedureArguments.h"
#include "evaluation/ProcedureGroups.h"
#include "evaluation/ProcedureSignatures.h"
#include "runtime/Cast.h"
#include "runtime/Invocation.h"
#include "runtime/Send.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

/// What a value must answer to be an argument of a type, and how results of that type come out.
/// The unsigned types go through the signed ones, of which they have the bits.
struct Kind {
  std::string_view types;
  std::string_view accessor;
  /// A number as one of the type.
  Value (*box)(const Number& number);
};

constexpr std::array kNumberKinds{
    Kind{"cC", "charValue",
         [](const Number& number) -> Value { return Number::integer(number.charValue()); }},
    Kind{"sS", "shortValue",
         [](const Number& number) -> Value { return Number::integer(number.shortValue()); }},
    Kind{"iI", "intValue",
         [](const Number& number) -> Value { return Number::integer(number.intValue()); }},
    Kind{"qQ", "longValue",
         [](const Number& number) -> Value { return Number::integer(number.longValue()); }},
    Kind{"f", "floatValue",
         [](const Number& number) -> Value { return Number::real(number.floatValue()); }},
    Kind{"d", "doubleValue",
         [](const Number& number) -> Value { return Number::real(number.doubleValue()); }},
};
constexpr std::string_view kObject = "@";
constexpr std::string_view kText = "r*";

// nullptr for what is no number.
const Kind* numberKind(std::string_view type) noexcept {
  if (type.size() != 1) return nullptr;
  const auto* const found = std::ranges::find_if(kNumberKinds, [type](const Kind& kind) {
    return kind.types.find(type.front()) != std::string_view::npos;
  });
  return found != kNumberKinds.end() ? found : nullptr;
}

const Selector& accessorOf(const Kind& kind) {
  static const auto accessors = [] {
    std::vector<Selector> selectors;
    selectors.reserve(kNumberKinds.size());
    for (const Kind& each : kNumberKinds) selectors.emplace_back(each.accessor);
    return selectors;
  }();
  return accessors[static_cast<std::size_t>(&kind - kNumberKinds.data())];
}
const Selector& textAccessor() {
  static const Selector accessor("UTF8String");
  return accessor;
}

Value boxNumber(const Kind& kind, const Value& value) {
  // What is no number has left the place of the result as it was.
  return kind.box(value.isNumber() ? value.number() : Number::integer(0));
}

// The value as an argument of the type; none when it cannot be one.
std::optional<Value> argumentOf(std::string_view type, const Value& value) {
  if (type == kObject) return value;
  const Kind* kind = numberKind(type);
  if (kind == nullptr && type != kText) return std::nullopt;
  const Selector& accessor = kind != nullptr ? accessorOf(*kind) : textAccessor();
  if (!respondsToSelector(value, accessor)) return std::nullopt;
  Value converted = send(value, accessor);
  return kind != nullptr ? boxNumber(*kind, converted) : converted;
}

Value resultOf(const Invocation& invocation) {
  const std::string_view type = invocation.methodSignature().methodReturnType();
  const Value& result = invocation.returnValue();
  if (type == kObject || type == kText) return result;
  const Kind* kind = numberKind(type);
  return kind != nullptr ? boxNumber(*kind, result) : Value();
}

Value fail(ADMEvaluationContextBase& context) {
  return failWith(context, "Invalid args in CallMethod procedure");
}

/// _CallMethod(target, selectorName, argument, ...): the result of a message.
Value callMethod(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("CallMethod").accepts(countOf(items))) return fail(context);
  const Value target = evaluateArgument(items, 0, context);
  if (target.isNil()) return fail(context);
  const Value selectorName = evaluateArgument(items, 1, context);
  const auto* name = castTo<String>(selectorName);
  if (name == nullptr) return fail(context);
  const std::optional<Selector> selector = Selector::fromString(name->view());
  if (!selector || !respondsToSelector(target, *selector)) return fail(context);
  const MethodSignature signature = methodSignatureForSelector(target, *selector);
  if (!signature || signature.numberOfArguments() != items->count()) return fail(context);
  Invocation invocation(signature, target, *selector);
  for (std::size_t i = 2; i < items->count(); ++i) {
    const std::string_view type = signature.argumentTypeAtIndex(i);
    std::optional<Value> argument = argumentOf(type, evaluateArgument(items, i, context));
    if (!argument) return fail(context);
    invocation.setArgumentAtIndex(*std::move(argument), i);
  }
  invocation.invoke();
  return resultOf(invocation);
}

constexpr std::array kMethods{
    method<&callMethod>("executeCallMethodProcedure:"),
};

}  // namespace

constinit const MethodGroup kCallMethodProcedure{"CallMethodProcedure", kMethods};

}  // namespace commandfilter
