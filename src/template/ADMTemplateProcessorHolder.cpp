#include "template/ADMTemplateProcessorHolder.h"

#include <array>

#include "template/ADMTemplateProcessor.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<ADMTemplateProcessorHolder, ADMNamedValues>();
constexpr std::array kMethods{method<&ADMTemplateProcessorHolder::valueForKey>("valueForKey:")};
constexpr std::array kInitializers{
    initializer<&ADMTemplateProcessorHolder::initWithTemplateProcessor>(
        "initWithTemplateProcessor:")};

}  // namespace

constinit const Class ADMTemplateProcessorHolder::kClass{.name = "ADMTemplateProcessorHolder",
                                                         .base = &Object::kClass,
                                                         .protocols = kProtocols,
                                                         .methods = kMethods,
                                                         .initializers = kInitializers};

Ref<ADMTemplateProcessorHolder> ADMTemplateProcessorHolder::initWithTemplateProcessor(
    ADMTemplateProcessor* processor) {
  return make<ADMTemplateProcessorHolder>(processor);
}

Value ADMTemplateProcessorHolder::valueForKey(const String* key) {
  return processor_ != nullptr ? processor_->valueForKey(key) : Value();
}

}  // namespace commandfilter
