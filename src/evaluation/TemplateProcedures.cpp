// The procedure that reads other values of the same template.
#include <array>

#include "evaluation/ProcedureGroups.h"
#include "evaluation/ValuesByName.h"

namespace commandfilter {

namespace {

/// _TemplateValue(name): another value of the template.
Value templateValue(ADMEvaluationContextBase& context, const Array* items) {
  return valueByName(context, items, argumentsOf("TemplateValue"), "EntireTemplateProcessor",
                     "Incorrect number of arguments in _TemplateValue");
}

constexpr std::array kMethods{
    method<&templateValue>("executeTemplateValueProcedure:"),
};

}  // namespace

constinit const MethodGroup kTemplateProcedures{"TemplateProcedures", kMethods};

}  // namespace commandfilter
