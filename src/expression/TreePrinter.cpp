#include "expression/TreePrinter.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "expression/LexicalClasses.h"
#include "expression/Operators.h"
#include "runtime/Cast.h"
#include "runtime/StackGuard.h"
#include "runtime/String.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

bool isMakeList(const ADMEvaluationItemBase* item) {
  return item != nullptr && item->type() == ItemType::MakeList &&
         &item->classInfo() == &ADMEvaluationBinaryOperation::kClass;
}

// True for what may stand behind a full stop in a feature path, nothing included.
bool isDottedName(std::string_view text) noexcept {
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t c = nextCodePoint(text, offset);
    if (c > 0xFFFF || !isNameUnit(static_cast<char16_t>(c))) return false;
  }
  return true;
}

}  // namespace

TreePrinter& TreePrinter::append(std::string_view text) {
  text_.append(text);
  return *this;
}

TreePrinter& TreePrinter::appendItem(const ADMEvaluationItemBase* item) {
  if (item == nullptr) return *this;
  StackGuard::check();
  item->print(*this);
  return *this;
}

TreePrinter& TreePrinter::appendArguments(const ADMEvaluationItemBase* operand) {
  // Lists and empty arguments bring their own braces.
  if (isMakeList(operand) || (operand != nullptr && operand->type() == ItemType::EmptyArguments)) {
    return appendItem(operand);
  }
  return append("(").appendItem(operand).append(")");
}

// An element that was left out can only be written in a list without inner braces, so a list on
// the left side is continued.
void TreePrinter::appendList(const ADMEvaluationBinaryOperationBase& list) {
  std::vector<const ADMEvaluationItemBase*> elements;
  const ADMEvaluationItemBase* item = &list;
  while (isMakeList(item)) {
    const auto& node = static_cast<const ADMEvaluationBinaryOperationBase&>(*item);
    elements.push_back(node.rightOperand());
    item = node.leftOperand();
  }
  elements.push_back(item);
  std::ranges::reverse(elements);
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (i != 0) append(", ");
    appendItem(elements[i]);
  }
}

void TreePrinter::appendOperation(const ADMEvaluationBinaryOperationBase& operation) {
  append("(");
  if (isMakeList(&operation)) {
    appendList(operation);
  } else {
    const Operator* row = operatorOfType(operation.type());
    appendItem(operation.leftOperand()).append(" ");
    if (row != nullptr) append(row->words[0].empty() ? row->symbol : row->words[0]);
    append(" ").appendItem(operation.rightOperand());
  }
  append(")");
}

void TreePrinter::appendMemberCall(const ADMEvaluationBinaryOperationBase& call,
                                   std::string_view name) {
  append("(");
  appendItem(call.leftOperand()).append(" _").append(name);
  appendArguments(call.rightOperand());
  append(")");
}

void TreePrinter::appendFeaturePath(const Array& components) {
  const auto part = [&components](std::size_t index) {
    return textOf(castTo<String>(components[index]));
  };
  append("{");
  if (components.isEmpty()) {
    append("}");
    return;
  }
  append(part(0)).append("}");
  std::size_t dotted = components.count();
  // A single empty component behind a full stop would not be seen.
  const bool lonelyEmpty = dotted == 2 && part(1).empty();
  if (dotted > 1 && (lonelyEmpty || !isDottedName(part(dotted - 1)))) {
    append("[").append(part(--dotted)).append("]");
  }
  for (std::size_t i = 1; i < dotted; ++i) append(".").append(part(i));
}

std::string printedTree(const ADMEvaluationItemBase& item) {
  TreePrinter printer;
  printer.appendItem(&item);
  return printer.text();
}

}  // namespace commandfilter
