// The printed form of a compiled tree compiles to a tree that prints the same.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "expression/ADMEvaluationProcessor.h"
#include "expression/ADMEvaluationString.h"
#include "expression/ADMEvaluationUnaryOperationBase.h"
#include "expression/TreePrinter.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/String.h"

namespace {

using namespace commandfilter;

bool isLeftOut(const ADMEvaluationItemBase* item) {
  if (item == nullptr || item->type() != ItemType::String) return false;
  return !static_cast<const ADMEvaluationString&>(*item).string();
}

bool endsWithLeftOut(const ADMEvaluationItemBase* item) {
  if (item == nullptr || item->type() != ItemType::MakeList) return false;
  return isLeftOut(static_cast<const ADMEvaluationBinaryOperationBase&>(*item).rightOperand());
}

// True when the tree took what is no operand for one, so that no expression stands for it: a
// closing brace that nothing opened, or an element left out of a list anywhere but before another.
bool hasNoWrittenForm(const ADMEvaluationItemBase& root) {
  if (isLeftOut(&root) || endsWithLeftOut(&root)) return true;
  std::vector<const ADMEvaluationItemBase*> waiting{&root};
  while (!waiting.empty()) {
    const ADMEvaluationItemBase* item = waiting.back();
    waiting.pop_back();
    if (item == nullptr) continue;
    if (item->type() == ItemType::ClosingBrace) return true;
    const Value value = Value::sharing(item);
    if (const auto* binary = castTo<ADMEvaluationBinaryOperationBase>(value)) {
      const ADMEvaluationItemBase* left = binary->leftOperand();
      const ADMEvaluationItemBase* right = binary->rightOperand();
      const bool list = item->type() == ItemType::MakeList;
      if (!list && (isLeftOut(left) || isLeftOut(right) || endsWithLeftOut(left))) return true;
      if (endsWithLeftOut(right)) return true;
      waiting.push_back(left);
      waiting.push_back(right);
    } else if (const auto* unary = castTo<ADMEvaluationUnaryOperationBase>(value)) {
      if (isLeftOut(unary->operand()) || endsWithLeftOut(unary->operand())) return true;
      waiting.push_back(unary->operand());
    }
  }
  return false;
}

// The printed tree; none when the text does not compile to one that can be written.
std::optional<std::string> printed(std::string_view text) {
  const RefPtr<String> expression = String::fromUTF8(text);
  if (!expression) return std::nullopt;
  const Ref<ADMEvaluationProcessor> processor =
      ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
          Ref<String>(*expression),
          ADMEvaluationContextBase::initWithStatusService_globalConfiguration(Value(), nullptr));
  const ADMEvaluationItemBase* root = processor->rootItem();
  if (root == nullptr || hasNoWrittenForm(*root)) return std::nullopt;
  return printedTree(*root);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const std::optional<std::string> first = printed({reinterpret_cast<const char*>(data), size});
    if (!first) return 0;
    const std::optional<std::string> second = printed(*first);
    if (second == first) return 0;
    std::fprintf(stderr, "%s\nbecame\n%s\n", first->c_str(),
                 second ? second->c_str() : "nothing that compiles");
    std::abort();
  } catch (const Exception&) {
    // Deeper than the stack allows.
  }
  return 0;
}
