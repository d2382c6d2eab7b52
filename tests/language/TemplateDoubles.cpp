#include "language/TemplateDoubles.h"

#include <array>

namespace commandfilter::testing {

namespace {

constexpr std::array kConstantsMethods{
    method<&ConstantsDouble::valueOfConstant>("valueOfConstant:")};
constexpr std::array kTemplateMethods{method<&TemplateDouble::valueForKey>("valueForKey:")};

}  // namespace

constinit const Class ConstantsDouble::kClass{
    .name = "ConstantsDouble", .base = &Object::kClass, .methods = kConstantsMethods};
constinit const Class TemplateDouble::kClass{
    .name = "TemplateDouble", .base = &Object::kClass, .methods = kTemplateMethods};

Value ConstantsDouble::valueOfConstant(const String* name) {
  log_.push_back("$" + std::string(textOf(name)));
  return values_->objectForKey(textOf(name));
}

Value TemplateDouble::valueForKey(const String* name) {
  log_.push_back("[" + std::string(textOf(name)) + "]");
  return values_->objectForKey(textOf(name));
}

}  // namespace commandfilter::testing
