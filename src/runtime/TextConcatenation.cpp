#include "runtime/TextConcatenation.h"

#include <string>
#include <utility>

#include "runtime/Cast.h"
#include "runtime/Description.h"

namespace commandfilter {

namespace {

void appendPart(std::string& text, const Value& part) {
  if (!part.isNil()) appendDescription(text, part);
}

}  // namespace

Ref<String> concatenateTexts(Value left, const Value& right) {
  auto* first = castTo<String>(left);
  const auto* second = castTo<String>(right);
  if (first != nullptr && first->referenceCount() == 1 && first != second) {
    Ref<String> extended(*first);
    std::string& text = extended->mutableText(String::OnlyReference{});
    if (second != nullptr) {
      text.append(second->view());
    } else {
      appendPart(text, right);
    }
    return extended;
  }
  std::string text;
  if (first != nullptr && second != nullptr)
    text.reserve(first->text().size() + second->text().size());
  appendPart(text, left);
  appendPart(text, right);
  return make<String>(std::move(text));
}

}  // namespace commandfilter
