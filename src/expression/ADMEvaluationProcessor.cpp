#include "expression/ADMEvaluationProcessor.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "expression/ADMEvaluationStack.h"
#include "expression/ADMEvaluationString.h"
#include "expression/ItemReader.h"
#include "expression/Token.h"
#include "runtime/ObjectMemory.h"

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
// Operators are tokens until they have their operands, and braces never become more.
class Compilation {
 public:
  Compilation(const Ref<String>& expression, ADMEvaluationContext& context)
      : expression_(expression), context_(context), reader_(*expression) {
    constexpr std::size_t kUsual = 8;
    operators_.reserve(kUsual);
  }

  // The root of the tree; nil after an error.
  Item compile() {
    Item root = compileTokens();
    if (watch_) watch_->noteExpression(expression_);
    return root;
  }

 private:
  Item compileTokens() {
    Token token;
    for (ItemType previous = ItemType::StartOfExpression; reader_.next(token);
         previous = token.type) {
      if (!acceptToken(token, previous)) return nullptr;
    }
    // A lexical error ends the expression, and what was read before it stays.
    if (RefPtr<ADMEvaluationError> error = reader_.failure()) record(std::move(error));
    if (!finishOperators()) return nullptr;
    Item root = operands_->take();
    if (root && operands_->empty()) return root;
    return fail("Incorrect Expression", std::nullopt);
  }

  bool acceptToken(const Token& token, ItemType previous) {
    if (isOperand(token.type)) {
      operands_->push(reader_.itemOf(token));
      return true;
    }
    if (operators_.empty() || token.type == ItemType::OpeningBrace) {
      operators_.push_back(token);
      return true;
    }
    if (token.type == ItemType::ClosingBrace) return closeBrace(token, previous);
    acceptOperator(token, previous);
    return true;
  }

  bool closeBrace(const Token& brace, ItemType previous) {
    if (previous == ItemType::OpeningBrace) {
      Token empty = brace;
      empty.type = ItemType::EmptyArguments;
      empty.range = operators_.back().range.unitedWith(brace.range);
      operators_.pop_back();
      operands_->push(reader_.itemOf(empty));
      return true;
    }
    while (!operators_.empty()) {
      if (operators_.back().type == ItemType::OpeningBrace) {
        operators_.pop_back();
        return true;
      }
      applyOperator();
    }
    return fail("Incorrect brace balance", brace.range) != nullptr;
  }

  void acceptOperator(const Token& token, ItemType previous) {
    const bool elementLeftOut =
        token.type == ItemType::MakeList &&
        (previous == ItemType::OpeningBrace || previous == ItemType::MakeList);
    if (elementLeftOut) operands_->push(ADMEvaluationString::itemWithString(nullptr));
    while (!operators_.empty() && operators_.back().type != ItemType::OpeningBrace &&
           codeOf(operators_.back().type) >= codeOf(token.type)) {
      applyOperator();
    }
    operators_.push_back(token);
  }

  bool finishOperators() {
    while (!operators_.empty()) {
      const Token& top = operators_.back();
      if (top.type == ItemType::OpeningBrace) {
        return fail("Incorrect brace balance", top.range) != nullptr;
      }
      applyOperator();
    }
    return true;
  }

  // Has the operator on top take its operands. One without is dropped, and what it took is lost.
  void applyOperator() {
    const Ref<ADMEvaluationItemBase> item = reader_.itemOf(operators_.back());
    operators_.pop_back();
    item->pushToStack(*operands_);
  }

  std::nullptr_t fail(std::string_view message, const std::optional<SourceRange>& range) {
    Ref<ADMEvaluationError> error =
        ADMEvaluationError::errorWithCategory_descriptionFormat(ErrorCategory::Structural, message);
    if (range) error->noteSourceRange(*range);
    record(std::move(error));
    return nullptr;
  }

  void record(RefPtr<ADMEvaluationError> error) {
    if (!watch_) watch_.emplace(context_);
    context_.setLastError(std::move(error));
  }

  const Ref<String>& expression_;
  ADMEvaluationContext& context_;
  ItemReader reader_;
  Ref<ADMEvaluationStack> operands_ = ADMEvaluationStack::create();
  std::vector<Token, ObjectAllocator<Token>> operators_;
  // Since the first error; most compilations have none.
  std::optional<ErrorWatch> watch_;
};

}  // namespace

constinit const Class ADMEvaluationProcessor::kClass{.name = "ADMEvaluationProcessor",
                                                     .base = &Object::kClass};

ADMEvaluationProcessor::ADMEvaluationProcessor(Ref<String> expression,
                                               Ref<ADMEvaluationContext> context)
    : context_(std::move(context)), expressionString_(std::move(expression)) {
  compile();
}

Ref<ADMEvaluationProcessor> ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
    Ref<String> expression, Ref<ADMEvaluationContext> context) {
  return make<ADMEvaluationProcessor>(std::move(expression), std::move(context));
}

void ADMEvaluationProcessor::compileExpression(const Ref<String>& expression) {
  if (rootItem_) return;
  expressionString_ = expression;
  compile();
}

void ADMEvaluationProcessor::compile() {
  // Held, whatever becomes of the processor's own while an error is recorded.
  const Ref<String> expression = expressionString_;
  rootItem_ = Compilation(expression, *context_).compile();
}

Value ADMEvaluationProcessor::executeWithContext(ADMEvaluationContext& context) const {
  // Only beside an older error does a new one have to be told from it.
  if (!rootItem_ || context.recordedError() != nullptr) return executeBesideError(context);
  const auto noteExpression = [&] {
    if (ADMEvaluationError* error = context.recordedError()) [[unlikely]] {
      error->noteExpression(expressionString_);
    }
  };
  try {
    Value result = rootItem_->evaluate(context);
    noteExpression();
    return result;
  } catch (...) {
    noteExpression();
    throw;
  }
}

// Apart from the usual case, which would make room for it whenever it begins.
[[gnu::noinline]] Value ADMEvaluationProcessor::executeBesideError(
    ADMEvaluationContext& context) const {
  if (!rootItem_) return {};
  const ErrorWatch watch(context);
  try {
    Value result = rootItem_->evaluate(context);
    watch.noteExpression(expressionString_);
    return result;
  } catch (...) {
    watch.noteExpression(expressionString_);
    throw;
  }
}

}  // namespace commandfilter
