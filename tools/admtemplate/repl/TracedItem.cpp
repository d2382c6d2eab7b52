#include "repl/TracedItem.h"

#include "OneLine.h"
#include "expression/LiteralItem.h"
#include "runtime/Exception.h"
#include "runtime/StackGuard.h"

namespace commandfilter::tools {

constinit const Class TracedItem::kClass{.name = "TracedItem",
                                         .base = &ADMEvaluationItemBase::kClass};

ItemType TracedItem::typeFor(const ADMEvaluationItemBase& item) noexcept {
  return literalOf(item) != nullptr ? ItemType::Selector : item.type();
}

Value TracedItem::evaluate(ADMEvaluationContext& context) const {
  StackGuard::check();
  // Held, so that no new error can be taken for it.
  const RefPtr<ADMEvaluationError> before(context.recordedError());
  trace_->begin();
  try {
    Value value = item_->evaluate(context);
    std::string result = oneLine(value);
    const std::string error = trace_->newError(before.get(), context);
    if (!error.empty()) result.append(", ").append(error);
    trace_->end(*source_, extent_, result);
    return value;
  } catch (const Exception& exception) {
    trace_->breakOff(*source_, extent_, exception.what());
    throw;
  }
}

}  // namespace commandfilter::tools
