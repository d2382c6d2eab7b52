#include "check/References.h"

#include <utility>

#include "evaluation/ADMAggregateEvaluationContext.h"
#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ProcedureSignatures.h"
#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "expression/ADMEvaluationGlobalConstant.h"
#include "expression/ADMEvaluationGlobalValue.h"
#include "expression/ADMEvaluationOperatorProcedure.h"
#include "expression/ADMEvaluationProcedure.h"
#include "expression/ADMEvaluationSelector.h"
#include "expression/LiteralItem.h"
#include "runtime/Cast.h"

namespace commandfilter::tools {

namespace {

using Item = ADMEvaluationItemBase;
using Kind = Reference::Kind;

// An item that is still to be looked at.
struct Visit {
  const Item* item;
  const Class* context;
  bool isCertain;
  bool mayBeNil = false;
};

// Walks over a tree of any depth.
class TreeWalk {
 public:
  std::vector<Reference> walk(const Item& root, const Class& context) {
    visits_.push_back({&root, &context, true});
    while (!visits_.empty()) {
      const Visit visit = visits_.back();
      visits_.pop_back();
      look(visit);
    }
    return std::move(references_);
  }

 private:
  void look(const Visit& visit) {
    auto* object = const_cast<Item*>(visit.item);  // NOLINT: looked at, not changed
    switch (visit.item->type()) {
      case ItemType::String:
      case ItemType::Number:
        return;
      case ItemType::GlobalConstant:
        return note(Kind::Constant, visit,
                    static_cast<ADMEvaluationGlobalConstant*>(object)->name());
      case ItemType::GlobalValue:
        return note(Kind::Value, visit, static_cast<ADMEvaluationGlobalValue*>(object)->name());
      case ItemType::Selector:
        return note(Kind::Name, visit, static_cast<ADMEvaluationSelector*>(object)->selectorName());
      case ItemType::FeaturePath:
        return note(Kind::Path, visit, nullptr);
      case ItemType::Not:
        return push(static_cast<ADMEvaluationUnaryOperationBase*>(object)->operand(), visit, true,
                    true);
      case ItemType::ProcedureCall:
        return lookAtCall(visit, object);
      case ItemType::EmptyArguments:
      case ItemType::OpeningBrace:
      case ItemType::ClosingBrace:
      case ItemType::StartOfExpression:
        return note(Kind::NoValue, visit, nullptr);
      default:
        lookAtOperation(visit, *static_cast<ADMEvaluationBinaryOperationBase*>(object));
    }
  }

  void lookAtOperation(const Visit& visit, const ADMEvaluationBinaryOperationBase& operation) {
    const ItemType type = operation.type();
    const bool stopsAtLeft = type == ItemType::Or || type == ItemType::And;
    const bool comparesNil = type == ItemType::Equal || type == ItemType::NotEqual;
    const bool needsLeft = stopsAtLeft || type == ItemType::ConcatenateIfNotNil;
    push(operation.rightOperand(), visit, !needsLeft, comparesNil);
    push(operation.leftOperand(), visit, true, stopsAtLeft || comparesNil);
  }

  void lookAtCall(const Visit& visit, Object* object) {
    std::vector<const Item*> arguments;
    RefPtr<String> name;
    if (const auto* call = castTo<ADMEvaluationProcedure>(object)) {
      name = call->procedureName();
      collect(call->operand(), arguments);
    } else if (const auto* memberCall = castTo<ADMEvaluationOperatorProcedure>(object)) {
      name = memberCall->procedureName();
      const Item* receiver = memberCall->leftOperand();
      if (receiver->type() == ItemType::MakeList || receiver->type() == ItemType::EmptyArguments) {
        note(receiver->type() == ItemType::MakeList ? Kind::ListReceiver : Kind::EmptyReceiver,
             visit, name);
        if (receiver->type() == ItemType::EmptyArguments) receiver = nullptr;
      }
      if (receiver != nullptr) arguments.push_back(receiver);
      collect(memberCall->rightOperand(), arguments);
    }
    noteCall(visit, std::move(name), arguments);
  }

  // The elements of a list, nested ones in their place; nothing for empty braces.
  static void collect(const Item* operand, std::vector<const Item*>& arguments) {
    if (operand->type() == ItemType::EmptyArguments) return;
    std::vector<const Item*> waiting{operand};
    while (!waiting.empty()) {
      const Item* item = waiting.back();
      waiting.pop_back();
      if (item->type() == ItemType::MakeList) {
        const auto& list = static_cast<const ADMEvaluationBinaryOperationBase&>(*item);
        waiting.push_back(list.rightOperand());
        waiting.push_back(list.leftOperand());
      } else {
        arguments.push_back(item);
      }
    }
  }

  void noteCall(const Visit& visit, RefPtr<String> name,
                const std::vector<const Item*>& arguments) {
    const EvaluationName procedure = EvaluationName::ofProcedure(name);
    const Method* method =
        procedure.selector() ? visit.context->instanceMethod(*procedure.selector()) : nullptr;
    const bool isBuiltIn =
        method != nullptr &&
        method == ADMEvaluationContextBase::kClass.instanceMethod(*procedure.selector());
    const ProcedureSignature* signature =
        isBuiltIn ? procedureSignature(procedure.text()) : nullptr;
    for (std::size_t i = arguments.size(); i > 0; --i) {
      const std::size_t place = i - 1;
      Visit argument{arguments[place], visit.context, visit.isCertain, method == nullptr};
      if (signature != nullptr) {
        argument.isCertain = visit.isCertain && place < signature->alwaysEvaluated;
        if (signature->isForEachElement(place)) {
          argument.context = &ADMAggregateEvaluationContext::kClass;
        }
      } else if (method != nullptr) {
        argument.isCertain = false;
      }
      visits_.push_back(argument);
    }
    Reference& call = add(Kind::Call, visit, std::move(name));
    call.argumentCount = arguments.size();
    if (!arguments.empty()) call.firstText = textLiteral(*arguments[0]);
    if (arguments.size() > 1) call.secondText = textLiteral(*arguments[1]);
  }

  static RefPtr<String> textLiteral(const Item& item) {
    const LiteralItem* literal = literalOf(item);
    return RefPtr<String>(literal != nullptr ? castTo<String>(literal->value()) : nullptr);
  }

  void push(const Item* item, const Visit& above, bool isCertain, bool mayBeNil) {
    visits_.push_back({item, above.context, above.isCertain && isCertain, mayBeNil});
  }

  void note(Kind kind, const Visit& visit, RefPtr<String> name) {
    add(kind, visit, std::move(name));
  }
  Reference& add(Kind kind, const Visit& visit, RefPtr<String> name) {
    references_.push_back({kind, visit.item->sourceRange(), std::move(name), visit.context,
                           visit.isCertain, visit.mayBeNil, std::nullopt, nullptr, nullptr});
    return references_.back();
  }

  std::vector<Visit> visits_;
  std::vector<Reference> references_;
};

std::optional<Kind> kindOf(const Token& token) {
  switch (token.type) {
    case ItemType::GlobalConstant:
      return Kind::Constant;
    case ItemType::GlobalValue:
      return Kind::Value;
    case ItemType::Selector:
      return Kind::Name;
    case ItemType::FeaturePath:
      return Kind::Path;
    case ItemType::ProcedureCall:
      return Kind::Call;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::vector<Reference> referencesOf(const ADMEvaluationItemBase& root, const Class& context) {
  return TreeWalk().walk(root, context);
}

std::vector<Reference> referencesOf(const Tokens& tokens) {
  std::vector<Reference> references;
  for (const Token& token : tokens.tokens) {
    const std::optional<Kind> kind = kindOf(token);
    if (!kind) continue;
    references.push_back(
        {*kind, token.range, token.name, nullptr, false, true, std::nullopt, nullptr, nullptr});
  }
  return references;
}

}  // namespace commandfilter::tools
