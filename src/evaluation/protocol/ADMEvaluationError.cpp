#include "evaluation/protocol/ADMEvaluationError.h"

#include <array>
#include <string>

namespace commandfilter {

namespace {

constexpr std::array kErrorMethods{
    method<&ADMEvaluationError::errorCategory>("errorCategory"),
    method<&ADMEvaluationError::errorDescription>("errorDescription"),
};

}  // namespace

constinit const Class ADMEvaluationError::kClass{
    .name = "ADMEvaluationError", .base = &Object::kClass, .methods = kErrorMethods};

Ref<ADMEvaluationError> ADMEvaluationError::errorWithCategory_descriptionFormat_arguments(
    ErrorCategory category, std::string_view format, std::span<const FormatArgument> arguments) {
  RefPtr<String> description = formatWithArguments(format, arguments);
  if (!description) description = String::create(std::string(format));
  return make<ADMEvaluationError>(category, Ref<String>(*description));
}

void ADMEvaluationError::appendDescription(std::string& text, int /*level*/) const {
  text.append("Error ").append(std::to_string(errorCategory())).append(": ");
  text.append(description_->view());
}

}  // namespace commandfilter
