#include "repl/TreeText.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "expression/ADMEvaluationOperatorProcedure.h"
#include "expression/ADMEvaluationProcedure.h"
#include "expression/Operators.h"
#include "expression/TreePrinter.h"
#include "repl/SourceExtents.h"
#include "runtime/String.h"

namespace commandfilter::tools {

namespace {

std::string labelOf(const ADMEvaluationItemBase& item) {
  const auto& object = static_cast<const Object&>(item);
  if (item.classInfo().isKindOf(ADMEvaluationProcedure::kClass)) {
    const auto& call = static_cast<const ADMEvaluationProcedure&>(object);
    return "_" + std::string(textOf(call.procedureName().get()));
  }
  if (item.classInfo().isKindOf(ADMEvaluationOperatorProcedure::kClass)) {
    const auto& call = static_cast<const ADMEvaluationOperatorProcedure&>(object);
    return "_" + std::string(textOf(call.procedureName().get()));
  }
  if (const Operator* row = operatorOfType(item.type()); row != nullptr) {
    return std::string(row->words[0].empty() ? row->symbol : row->words[0]);
  }
  std::string text = printedTree(item);
  return text.empty() ? "(left out)" : text;
}

}  // namespace

std::string treeText(const ADMEvaluationItemBase& root) {
  constexpr std::size_t kMostIndentation = 40;
  std::string text = printedTree(root) + "\n";
  std::vector<std::pair<const ADMEvaluationItemBase*, std::size_t>> waiting{{&root, 1}};
  while (!waiting.empty()) {
    const auto [item, level] = waiting.back();
    waiting.pop_back();
    text.append(2 * std::min(level, kMostIndentation), ' ').append(labelOf(*item)).append("\n");
    const std::vector<ADMEvaluationItemBase*> operands = operandsOf(*item);
    for (auto operand = operands.rbegin(); operand != operands.rend(); ++operand) {
      waiting.emplace_back(*operand, level + 1);
    }
  }
  return text;
}

}  // namespace commandfilter::tools
