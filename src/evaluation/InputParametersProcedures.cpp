// The procedure that reads what the caller of a template has given.
#include <array>

#include "evaluation/ProcedureGroups.h"
#include "evaluation/ValuesByName.h"

namespace commandfilter {

namespace {

/// _InputValue(name): an input parameter.
Value inputValue(ADMEvaluationContextBase& context, const Array* items) {
  return valueByName(context, items, argumentsOf("InputValue"), "InputParameters",
                     "Incorrect number of arguments in _InputValue");
}

constexpr std::array kMethods{
    method<&inputValue>("executeInputValueProcedure:"),
};

}  // namespace

constinit const MethodGroup kInputParametersProcedures{"InputParametersProcedures", kMethods};

}  // namespace commandfilter
