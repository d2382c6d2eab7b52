#include "repl/SourceExtents.h"

#include <algorithm>
#include <cstddef>

#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "expression/ADMEvaluationLexer.h"
#include "expression/ADMEvaluationUnaryOperationBase.h"
#include "runtime/Cast.h"

namespace commandfilter::tools {

std::vector<ADMEvaluationItemBase*> operandsOf(const ADMEvaluationItemBase& item) {
  std::vector<ADMEvaluationItemBase*> operands;
  const auto* object = static_cast<const Object*>(&item);
  if (item.classInfo().isKindOf(ADMEvaluationBinaryOperationBase::kClass)) {
    const auto& operation = static_cast<const ADMEvaluationBinaryOperationBase&>(*object);
    operands = {operation.leftOperand(), operation.rightOperand()};
  } else if (item.classInfo().isKindOf(ADMEvaluationUnaryOperationBase::kClass)) {
    operands = {static_cast<const ADMEvaluationUnaryOperationBase&>(*object).operand()};
  }
  std::erase(operands, nullptr);
  return operands;
}

SourceExtents::SourceExtents(const Ref<String>& expression, ADMEvaluationItemBase& root) {
  findBraces(expression);
  std::vector<ADMEvaluationItemBase*> waiting{&root};
  while (!waiting.empty()) {
    ADMEvaluationItemBase* item = waiting.back();
    waiting.pop_back();
    items_.push_back(item);
    for (ADMEvaluationItemBase* operand : operandsOf(*item)) waiting.push_back(operand);
  }
  for (auto item = items_.rbegin(); item != items_.rend(); ++item) {
    std::vector<SourceRange> parts{(*item)->sourceRange()};
    for (const ADMEvaluationItemBase* operand : operandsOf(**item)) {
      parts.push_back(extents_.at(operand));
    }
    extents_.emplace(*item, withBraces(parts));
  }
}

void SourceExtents::findBraces(const Ref<String>& expression) {
  const Ref<ADMSingleValueEvaluationContext> context =
      ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(Value(), nullptr);
  const Ref<ADMEvaluationLexer> lexer =
      ADMEvaluationLexer::initWithExpressionString_evaluationContext(expression, context);
  std::vector<std::size_t> open;
  while (const RefPtr<ADMEvaluationItemBase> item = lexer->nextItem()) {
    const std::size_t place = item->sourceRange().begin;
    if (item->type() == ItemType::OpeningBrace) {
      open.push_back(braces_.size());
      braces_.push_back({place, place});
    } else if (item->type() == ItemType::ClosingBrace && !open.empty()) {
      braces_.push_back({place, braces_[open.back()].place});
      braces_[open.back()].partner = place;
      open.pop_back();
    }
  }
}

// The smallest range that holds the parts and the partner of every brace in it. The parts have
// theirs already, so only what lies between them is looked at.
SourceRange SourceExtents::withBraces(const std::vector<SourceRange>& parts) const {
  std::vector<SourceRange> sorted = parts;
  // What the compiler has put in stands nowhere.
  std::erase_if(sorted, [](const SourceRange& range) { return range.isEmpty(); });
  if (sorted.empty()) return {};
  std::ranges::sort(sorted, {}, &SourceRange::begin);
  SourceRange whole = sorted.front();
  for (const SourceRange& part : sorted) {
    auto brace = std::ranges::lower_bound(braces_, whole.end, {}, &Brace::place);
    for (; brace != braces_.end() && brace->place < part.begin; ++brace) {
      whole.begin = std::min(whole.begin, brace->partner);
      whole.end = std::max(whole.end, brace->partner + 1);
    }
    whole = whole.unitedWith(part);
  }
  return whole;
}

}  // namespace commandfilter::tools
