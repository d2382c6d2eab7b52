#include "expression/ADMEvaluationLexer.h"

#include <utility>

namespace commandfilter {

constinit const Class ADMEvaluationLexer::kClass{.name = "ADMEvaluationLexer",
                                                 .base = &Object::kClass};

ADMEvaluationLexer::ADMEvaluationLexer(Ref<String> expression, Ref<ADMEvaluationContext> context)
    : expressionString_(std::move(expression)),
      reader_(*expressionString_),
      context_(std::move(context)) {}

Ref<ADMEvaluationLexer> ADMEvaluationLexer::initWithExpressionString_evaluationContext(
    Ref<String> expression, Ref<ADMEvaluationContext> context) {
  return make<ADMEvaluationLexer>(std::move(expression), std::move(context));
}

bool ADMEvaluationLexer::nextToken(Token& token) {
  if (reader_.next(token)) return true;
  if (RefPtr<ADMEvaluationError> error = reader_.failure()) {
    context_->setLastError(std::move(error));
  }
  return false;
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationLexer::nextItem() {
  Token token;
  if (!nextToken(token)) return nullptr;
  return itemOf(token);
}

}  // namespace commandfilter
