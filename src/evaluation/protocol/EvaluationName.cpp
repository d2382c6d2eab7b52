#include "evaluation/protocol/EvaluationName.h"

#include <string>

namespace commandfilter {

EvaluationName EvaluationName::ofSymbol(RefPtr<String> name) {
  std::optional<Selector> selector;
  if (name) selector = Selector::fromString(name->view());
  return {std::move(name), selector};
}

EvaluationName EvaluationName::ofProcedure(RefPtr<String> name) {
  std::optional<Selector> selector;
  if (name) {
    std::string text;
    text.reserve(name->view().size() + 18);
    text.append("execute").append(name->view()).append("Procedure:");
    selector = Selector::fromString(text);
  }
  return {std::move(name), selector};
}

}  // namespace commandfilter
