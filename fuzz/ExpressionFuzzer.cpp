// Compiles and evaluates any text, against a single value and against every element of a list.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "FuzzDevice.h"
#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/String.h"

namespace {

using namespace commandfilter;

void evaluate(const Ref<String>& expression, const Ref<ADMEvaluationContext>& context) {
  try {
    const Ref<ADMEvaluationProcessor> processor =
        ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(expression,
                                                                                context);
    const Value value = processor->execute();
    static_cast<void>(descriptionOf(value));
  } catch (const Exception&) {
    // What the platform raises is an answer, too.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const RefPtr<String> expression = String::fromUTF8(text);
  if (!expression) return 0;
  const Ref<fuzz::FuzzDevice> device = fuzz::FuzzDevice::create();
  const Ref<Dictionary> configuration = fuzz::fuzzConfiguration();
  evaluate(Ref<String>(*expression),
           ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(
               device, configuration));
  const Ref<ADMArrayEvaluationContext> elements =
      ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
          device, configuration, device->suppliesIdentifiers());
  for (; !elements->endOfIteration(); elements->iterateNext()) {
    evaluate(Ref<String>(*expression), elements);
  }
  return 0;
}
