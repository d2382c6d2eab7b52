// The procedure that calls procedures of other libraries.
#include <array>
#include <cstddef>
#include <utility>

#include "evaluation/ProcedureArguments.h"
#include "evaluation/ProcedureGroups.h"
#include "evaluation/ProcedureSignatures.h"
#include "evaluation/protocol/ADMExternalProcedure.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Format.h"
#include "runtime/Send.h"
#include "runtime/String.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

Value fail(ADMEvaluationContextBase& context) {
  return failWith(context, "Invalid args in External procedure");
}

// An external procedure, of a class that conforms to the protocol or merely has its methods.
class Procedure {
 public:
  explicit Procedure(Value instance)
      : instance_(std::move(instance)), conforming_(castTo<ADMExternalProcedure>(instance_)) {}

  [[nodiscard]] bool isUsable() const {
    return conforming_ != nullptr ||
           conformsToProtocol(instance_, ADMExternalProcedure::kProtocol) ||
           (respondsToSelector(instance_, wantsEvaluateArgumentsSelector()) &&
            respondsToSelector(instance_, executeSelector()));
  }
  [[nodiscard]] bool wantsEvaluateArguments() const {
    if (conforming_ != nullptr) return conforming_->wantsEvaluateArguments();
    const Value answer = send(instance_, wantsEvaluateArgumentsSelector());
    return answer.isNumber() ? answer.number().boolValue() : !answer.isNil();
  }
  [[nodiscard]] Value execute(const Array* arguments, ADMEvaluationContextBase& context) const {
    if (conforming_ != nullptr) return conforming_->execute_context(arguments, &context);
    return send(instance_, executeSelector(),
                {Value::sharing(arguments), Value::sharing(&context)});
  }

 private:
  static const Selector& wantsEvaluateArgumentsSelector() {
    static const Selector selector("wantsEvaluateArguments");
    return selector;
  }
  static const Selector& executeSelector() {
    static const Selector selector("execute:context:");
    return selector;
  }

  Value instance_;
  /// nullptr when it only has the methods.
  ADMExternalProcedure* conforming_;
};

// A new instance of the class that a name stands for; nil when there is none.
Value newInstance(const String& name) {
  const RefPtr<String> className = format("A%@ExternalProcedure", name);
  const Class* info = className ? classNamed(className->view()) : nullptr;
  static const Selector kInit("init");
  return info != nullptr ? instantiate(*info, kInit) : Value();
}

/// _External(name, argument, ...): the result of a procedure that somebody else has written.
Value external(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("External").accepts(countOf(items))) return fail(context);
  const Value value = evaluateArgument(items, 0, context);
  const auto* name = castTo<String>(value);
  if (name == nullptr || name->isEmpty()) return fail(context);
  Value instance = newInstance(*name);
  if (instance.isNil()) return fail(context);
  const Procedure procedure(std::move(instance));
  if (!procedure.isUsable()) return fail(context);
  if (items->count() == 1) return procedure.execute(nullptr, context);
  const bool evaluates = !procedure.wantsEvaluateArguments();
  ValueVector arguments;
  arguments.reserve(items->count() - 1);
  for (std::size_t i = 1; i < items->count(); ++i) {
    arguments.push_back(evaluates ? evaluateArgument(items, i, context).orNull() : (*items)[i]);
  }
  return procedure.execute(Array::create(std::move(arguments)).get(), context);
}

constexpr std::array kMethods{
    method<&external>("executeExternalProcedure:"),
};

}  // namespace

constinit const MethodGroup kExternalProcedures{"ExternalProcedures", kMethods};

}  // namespace commandfilter
