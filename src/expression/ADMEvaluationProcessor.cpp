#include "expression/ADMEvaluationProcessor.h"

#include <optional>
#include <string_view>
#include <utility>

#include "expression/ADMEvaluationLexer.h"
#include "expression/ADMEvaluationNonExecutable.h"
#include "expression/ADMEvaluationStack.h"
#include "expression/ADMEvaluationString.h"

namespace commandfilter {

namespace {

using Item = RefPtr<ADMEvaluationItemBase>;

// Tells an error that is recorded from now on which expression it belongs to. Its items only know
// their places.
class ErrorWatch {
 public:
  explicit ErrorWatch(const ADMEvaluationContext& context)
      : context_(context), before_(context.recordedError()) {}

  void noteExpression(const Ref<String>& expression) const {
    ADMEvaluationError* error = context_.recordedError();
    if (error != nullptr && error != before_.get()) error->noteExpression(expression);
  }

 private:
  const ADMEvaluationContext& context_;
  // Held, so that no new error can be taken for it.
  RefPtr<ADMEvaluationError> before_;
};

// One compilation: an operand stack, and a stack of operators that wait for their right operand.
class Compilation {
 public:
  Compilation(const Ref<String>& expression, const Ref<ADMEvaluationContext>& context)
      : lexer_(ADMEvaluationLexer::initWithExpressionString_evaluationContext(expression, context)),
        context_(context) {}

  // The root of the tree; nil after an error.
  Item compile() {
    while (Item item = lexer_->nextItem()) {
      const ItemType type = item->type();
      if (!acceptItem(std::move(item), type)) return nullptr;
      previous_ = type;
    }
    if (!finishOperators()) return nullptr;
    Item root = operands_->take();
    if (root && operands_->empty()) return root;
    return fail("Incorrect Expression", std::nullopt);
  }

 private:
  bool acceptItem(Item item, ItemType type) {
    if (isOperand(type)) {
      operands_->push(std::move(item));
      return true;
    }
    if (operators_->empty() || type == ItemType::OpeningBrace) {
      operators_->push(std::move(item));
      return true;
    }
    if (type == ItemType::ClosingBrace) return closeBrace(*item);
    acceptOperator(std::move(item), type);
    return true;
  }

  bool closeBrace(const ADMEvaluationItemBase& brace) {
    if (previous_ == ItemType::OpeningBrace) {
      const Item opening = operators_->take();
      Item empty = ADMEvaluationNonExecutable::itemWithItemType(ItemType::EmptyArguments);
      empty->setSourceRange(opening->sourceRange().unitedWith(brace.sourceRange()));
      operands_->push(std::move(empty));
      return true;
    }
    while (const Item top = operators_->take()) {
      if (top->type() == ItemType::OpeningBrace) return true;
      operands_->pushWithSubtreeCreation(top);
    }
    return fail("Incorrect brace balance", brace.sourceRange()) != nullptr;
  }

  void acceptOperator(Item item, ItemType type) {
    const bool elementLeftOut =
        type == ItemType::MakeList &&
        (previous_ == ItemType::OpeningBrace || previous_ == ItemType::MakeList);
    if (elementLeftOut) operands_->push(ADMEvaluationString::itemWithString(nullptr));
    while (!operators_->empty() && operators_->topType() != ItemType::OpeningBrace &&
           codeOf(operators_->topType()) >= codeOf(type)) {
      // An operator without operands is dropped, and what it took is lost.
      operands_->pushWithSubtreeCreation(operators_->take());
    }
    operators_->push(std::move(item));
  }

  bool finishOperators() {
    while (const Item top = operators_->take()) {
      if (top->type() == ItemType::OpeningBrace) {
        return fail("Incorrect brace balance", top->sourceRange()) != nullptr;
      }
      operands_->pushWithSubtreeCreation(top);
    }
    return true;
  }

  std::nullptr_t fail(std::string_view message, const std::optional<SourceRange>& range) {
    Ref<ADMEvaluationError> error =
        ADMEvaluationError::errorWithCategory_descriptionFormat(ErrorCategory::Structural, message);
    if (range) error->noteSourceRange(*range);
    context_->setLastError(std::move(error));
    return nullptr;
  }

  Ref<ADMEvaluationLexer> lexer_;
  const Ref<ADMEvaluationContext>& context_;
  Ref<ADMEvaluationStack> operands_ = ADMEvaluationStack::create();
  Ref<ADMEvaluationStack> operators_ = ADMEvaluationStack::create();
  ItemType previous_ = ItemType::StartOfExpression;
};

}  // namespace

constinit const Class ADMEvaluationProcessor::kClass{.name = "ADMEvaluationProcessor",
                                                     .base = &Object::kClass};

ADMEvaluationProcessor::ADMEvaluationProcessor(Ref<String> expression,
                                               Ref<ADMEvaluationContext> context)
    : context_(std::move(context)), expressionString_(std::move(expression)) {
  compileExpression(expressionString_);
}

Ref<ADMEvaluationProcessor> ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
    Ref<String> expression, Ref<ADMEvaluationContext> context) {
  return make<ADMEvaluationProcessor>(std::move(expression), std::move(context));
}

void ADMEvaluationProcessor::compileExpression(const Ref<String>& expression) {
  if (rootItem_) return;
  expressionString_ = expression;
  const ErrorWatch watch(*context_);
  rootItem_ = Compilation(expression, context_).compile();
  watch.noteExpression(expression);
}

Value ADMEvaluationProcessor::executeWithContext(ADMEvaluationContext& context) const {
  if (!rootItem_) return {};
  const ErrorWatch watch(context);
  Value result = rootItem_->evaluate(context);
  watch.noteExpression(expressionString_);
  return result;
}

}  // namespace commandfilter
