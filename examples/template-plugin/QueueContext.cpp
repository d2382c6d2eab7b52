// An evaluation context with the name @queue and the procedure _Count(list, one, many).
#include <evaluation/ADMSingleValueEvaluationContext.h>
#include <expression/ADMEvaluationItemBase.h>
#include <runtime/Array.h>
#include <runtime/Cast.h>
#include <runtime/Format.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "TemplateParts.h"

using namespace commandfilter;

namespace {

class QueueContext final : public ADMSingleValueEvaluationContext {
 public:
  static RefPtr<QueueContext> initWithStatusService_globalConfiguration(
      Value service, RefPtr<Dictionary> configuration) {
    return make<QueueContext>(std::move(service), std::move(configuration));
  }

  QueueContext(Value service, RefPtr<Dictionary> configuration)
      : ADMSingleValueEvaluationContext(std::move(service), std::move(configuration)) {}

  const Class& classInfo() const noexcept override { return kQueueContext; }

  // Names that are not ours are those of every context.
  Value serviceSymbolForNameImpl(const EvaluationName& name) override {
    if (name.text() != "queue") {
      return ADMSingleValueEvaluationContext::serviceSymbolForNameImpl(name);
    }
    const char* queue = std::getenv("PRINTER");
    return String::create(queue != nullptr ? queue : "unknown");
  }

  // The arguments come as they stand in the expression.
  Value executeCountProcedure(const Array* items) {
    if (items == nullptr || items->count() != 3) {
      setRuntimeError("Count takes a list and two words");
      return {};
    }
    const Value list = evaluateItem((*items)[0], *this);
    const auto* elements = castTo<Array>(list);
    const std::size_t count = elements != nullptr ? elements->count() : 0;
    return format("%d %@", count, evaluateItem((*items)[count == 1 ? 1 : 2], *this));
  }
};

constexpr std::array kMethods{
    method<&QueueContext::executeCountProcedure>("executeCountProcedure:")};
constexpr std::array kInitializers{
    initializer<&QueueContext::initWithStatusService_globalConfiguration>(
        "initWithStatusService:globalConfiguration:")};

}  // namespace

constinit const Class kQueueContext{.name = "QueueContext",
                                    .base = &ADMSingleValueEvaluationContext::kClass,
                                    .methods = kMethods,
                                    .initializers = kInitializers};
