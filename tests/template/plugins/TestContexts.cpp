// Evaluation contexts of a plug-in: good ones, and ones that cannot be used.
#include <array>
#include <string>
#include <utility>

#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

namespace {

// Adds the procedure _Shout and the name "greeting".
class ShoutingContext final : public ADMSingleValueEvaluationContext {
 public:
  static const Class kClass;

  static RefPtr<ShoutingContext> initWithStatusService_globalConfiguration(
      Value statusService, RefPtr<Dictionary> configuration) {
    return make<ShoutingContext>(std::move(statusService), std::move(configuration));
  }

  ShoutingContext(Value statusService, RefPtr<Dictionary> configuration)
      : ADMSingleValueEvaluationContext(std::move(statusService), std::move(configuration)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceSymbolForNameImpl(const EvaluationName& name) override {
    if (name.text() == "greeting") return String::create("hello");
    return ADMSingleValueEvaluationContext::serviceSymbolForNameImpl(name);
  }
  Value executeShoutProcedure(const Array* items) {
    if (items == nullptr || items->isEmpty()) {
      setRuntimeError("Nothing to shout");
      return {};
    }
    return String::create(descriptionOf(evaluateItem((*items)[0], *this)) + "!");
  }
};

// Knows the name "last" in lists.
class LastContext final : public ADMArrayEvaluationContext {
 public:
  static const Class kClass;

  static RefPtr<LastContext> initWithStatusService_globalConfiguration_elementsList(
      Value statusService, RefPtr<Dictionary> configuration, Value elementsList) {
    return make<LastContext>(std::move(statusService), std::move(configuration),
                             std::move(elementsList));
  }

  LastContext(Value statusService, RefPtr<Dictionary> configuration, Value elementsList)
      : ADMArrayEvaluationContext(std::move(statusService), std::move(configuration),
                                  std::move(elementsList)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceSymbolForNameImpl(const EvaluationName& name) override {
    if (name.text() == "place") return String::create("at " + descriptionOf(currentIndex()));
    return ADMArrayEvaluationContext::serviceSymbolForNameImpl(name);
  }
};

class RefusingContext final : public Object {
 public:
  static const Class kClass;
  static RefPtr<RefusingContext> refuse(const Value& /*service*/,
                                        const Dictionary* /*configuration*/) {
    return nullptr;
  }
};

class NoContext final : public Object {
 public:
  static const Class kClass;
  static RefPtr<NoContext> create(const Value& /*service*/, const Dictionary* /*configuration*/) {
    return make<NoContext>();
  }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};

class ThrowingContext final : public Object {
 public:
  static const Class kClass;
  static RefPtr<ThrowingContext> raise(const Value& /*service*/,
                                       const Dictionary* /*configuration*/) {
    throw Exception("no context today");
  }
};

constexpr std::string_view kSingle = "initWithStatusService:globalConfiguration:";
constexpr std::array kShoutingMethods{
    method<&ShoutingContext::executeShoutProcedure>("executeShoutProcedure:")};
constexpr std::array kShoutingInitializers{
    initializer<&ShoutingContext::initWithStatusService_globalConfiguration>(kSingle)};
constexpr std::array kLastInitializers{
    initializer<&LastContext::initWithStatusService_globalConfiguration_elementsList>(
        "initWithStatusService:globalConfiguration:elementsList:")};
constexpr std::array kRefusingInitializers{initializer<&RefusingContext::refuse>(kSingle)};
constexpr std::array kNoContextInitializers{initializer<&NoContext::create>(kSingle)};
constexpr std::array kThrowingInitializers{initializer<&ThrowingContext::raise>(kSingle)};

}  // namespace

constinit const Class ShoutingContext::kClass{.name = "ShoutingContext",
                                              .base = &ADMSingleValueEvaluationContext::kClass,
                                              .methods = kShoutingMethods,
                                              .initializers = kShoutingInitializers};
constinit const Class LastContext::kClass{.name = "LastContext",
                                          .base = &ADMArrayEvaluationContext::kClass,
                                          .initializers = kLastInitializers};
constinit const Class RefusingContext::kClass{
    .name = "RefusingContext", .base = &Object::kClass, .initializers = kRefusingInitializers};
constinit const Class NoContext::kClass{
    .name = "NoContext", .base = &Object::kClass, .initializers = kNoContextInitializers};
constinit const Class ThrowingContext::kClass{
    .name = "ThrowingContext", .base = &Object::kClass, .initializers = kThrowingInitializers};

namespace {

constexpr const Class* kClasses[] = {&ShoutingContext::kClass, &LastContext::kClass,
                                     &RefusingContext::kClass, &NoContext::kClass,
                                     &ThrowingContext::kClass};

}  // namespace

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
