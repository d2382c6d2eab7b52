// _External("Join", list, text): the elements of the list with the text between them.
#include <evaluation/protocol/ADMExternalProcedure.h>
#include <runtime/Array.h>
#include <runtime/Cast.h>
#include <runtime/Description.h>

#include <array>
#include <string>

#include "TemplateParts.h"

using namespace commandfilter;

namespace {

class JoinProcedure final : public Implements<Object, ADMExternalProcedure> {
 public:
  static Ref<JoinProcedure> init() { return make<JoinProcedure>(); }
  const Class& classInfo() const noexcept override { return kJoinProcedure; }

  bool wantsEvaluateArguments() override { return false; }

  Value execute_context(const Array* arguments, ADMEvaluationContext* context) override {
    const auto* list = arguments != nullptr ? castTo<Array>((*arguments)[0]) : nullptr;
    if (list == nullptr || arguments->count() != 2) {
      context->setRuntimeError("Join takes a list and a text");
      return {};
    }
    std::string text;
    for (const Value& element : *list) {
      if (!text.empty()) text += descriptionOf((*arguments)[1]);
      text += descriptionOf(element);
    }
    return String::create(text);
  }
};

constexpr auto kProtocols = conformances<JoinProcedure, ADMExternalProcedure>();
constexpr std::array kInitializers{initializer<&JoinProcedure::init>("init")};

}  // namespace

constinit const Class kJoinProcedure{.name = "AJoinExternalProcedure",
                                     .base = &Object::kClass,
                                     .protocols = kProtocols,
                                     .initializers = kInitializers};
