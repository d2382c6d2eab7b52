#include "repl/Trace.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/protocol/EvaluationName.h"
#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "expression/ADMEvaluationUnaryOperationBase.h"
#include "expression/LiteralItem.h"
#include "repl/SourceExtents.h"
#include "repl/TracedItem.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"

namespace commandfilter::tools {

namespace {

// More would not be read, and fill the memory of whoever keeps them.
constexpr std::size_t kMostSteps = 10000;

// Lists and empty arguments are not evaluated by themselves, and whoever gets them asks what they
// are. The values of texts and numbers are taken without evaluating them.
bool isStep(const ADMEvaluationItemBase& item) {
  return item.type() != ItemType::MakeList && item.type() != ItemType::EmptyArguments &&
         literalOf(item) == nullptr;
}

}  // namespace

std::shared_ptr<Trace> Trace::create(std::ostream& output) {
  return std::shared_ptr<Trace>(new Trace(output));  // NOLINT: the constructor is private
}

void Trace::watch(ADMEvaluationProcessor& processor) {
  const RefPtr<ADMEvaluationItemBase> root = processor.sharedRootItem();
  if (!root || !watched_.insert(&processor).second) return;
  const Ref<String>& expression = processor.expressionString();
  const SourceExtents extents(expression, *root);
  const auto source = std::make_shared<const SourceText>(expression);
  const auto traced = [&](ADMEvaluationItemBase* item) -> RefPtr<ADMEvaluationItemBase> {
    if (item == nullptr || !isStep(*item)) return RefPtr<ADMEvaluationItemBase>(item);
    return TracedItem::create(*item, source, extents.extentOf(*item), shared_from_this());
  };
  for (ADMEvaluationItemBase* item : extents.items()) {
    auto* object = static_cast<Object*>(item);
    if (item->classInfo().isKindOf(ADMEvaluationBinaryOperationBase::kClass)) {
      auto& operation = static_cast<ADMEvaluationBinaryOperationBase&>(*object);
      operation.setLeftOperand(traced(operation.leftOperand()));
      operation.setRightOperand(traced(operation.rightOperand()));
    } else if (item->classInfo().isKindOf(ADMEvaluationUnaryOperationBase::kClass)) {
      auto& operation = static_cast<ADMEvaluationUnaryOperationBase&>(*object);
      operation.setOperand(traced(operation.operand()));
    }
  }
  // The root is a step, whatever it is: its value is the expression's.
  processor.setRootItem(
      TracedItem::create(*root, source, extents.extentOf(*root), shared_from_this()));
}

void Trace::watchExpressions(const Value& described, ADMStatusValueRepresentation& representation) {
  if (const auto* expression = castTo<String>(described)) {
    if (const auto processor = representation.processorForExpression(expression)) {
      watch(*processor);
    }
  } else if (const auto* entries = castTo<Dictionary>(described)) {
    for (const DictionaryEntry& entry : *entries) watchExpressions(entry.value, representation);
  }
}

void Trace::watchMacros(const Dictionary& macros, ADMStatusValueRepresentation& representation) {
  auto* context = castTo<ADMEvaluationContextBase>(&representation.evaluationContext()->object());
  if (context == nullptr) return;
  for (const DictionaryEntry& entry : macros) {
    auto* name = castTo<String>(entry.key);
    if (name == nullptr || castTo<String>(entry.value) == nullptr) continue;
    const auto macro = context->compiledMacro(EvaluationName::ofProcedure(RefPtr<String>(name)));
    if (macro) watch(*macro);
  }
}

void Trace::watch(ADMTemplateProcessor& processor, ADMStatusValueRepresentation& representation,
                  const String& expression) {
  watchExpressions(Value::sharing(&expression), representation);
  const Ref<Dictionary> configuration = processor.globalConfiguration();
  const auto* macros = castTo<Dictionary>(configuration->objectForKey("TemplateMacroses"));
  if (macros != nullptr) watchMacros(*macros, representation);
  if (!processor.valuesTemplate()) return;
  for (const DictionaryEntry& entry : *processor.valuesTemplate()) {
    const auto* description = castTo<Dictionary>(entry.value);
    if (description == nullptr) continue;
    try {
      const auto other = processor.valueRepresentationForKey(castTo<String>(entry.key));
      if (!other) continue;
      for (const char* part : {"Range", "Filter", "Value"}) {
        watchExpressions(description->objectForKey(part), *other);
      }
      if (macros != nullptr) watchMacros(*macros, *other);
    } catch (const Exception&) {
      // A description that cannot be used shows when the value is asked for.
    }
  }
}

void Trace::end(const SourceText& source, const SourceRange& extent, const std::string& result) {
  constexpr std::size_t kMostIndentation = 40;
  --depth_;
  // The last one is the whole.
  if (++steps_ > kMostSteps && depth_ != 0) return;
  output_ << std::string(2 * std::min(depth_, kMostIndentation), ' ') << source.part(extent)
          << " = " << result << '\n';
}

void Trace::breakOff(const SourceText& source, const SourceRange& extent,
                     const std::string& reason) {
  if (isBrokenOff_) {
    --depth_;
    return;
  }
  isBrokenOff_ = true;
  end(source, extent, "broken off: " + reason);
}

std::string Trace::newError(const ADMEvaluationError* before, const ADMEvaluationContext& context) {
  ADMEvaluationError* error = context.recordedError();
  if (error == nullptr || error == before || error == shown_.get()) return {};
  shown_ = RefPtr<ADMEvaluationError>(error);
  return "Error " + std::to_string(error->errorCategory()) + ": " +
         error->errorDescription()->text();
}

void Trace::finish() {
  if (steps_ > kMostSteps) output_ << "and " << steps_ - kMostSteps - 1 << " steps are not shown\n";
}

}  // namespace commandfilter::tools
