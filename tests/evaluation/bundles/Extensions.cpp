// Two external procedures, and a context with a name and a procedure more than its base.
#include <array>
#include <string>

#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "evaluation/protocol/ADMExternalProcedure.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Description.h"
#include "runtime/Module.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

namespace commandfilter::testing {

namespace {

// The texts of the arguments with commas between them.
class Join final : public Implements<Object, ADMExternalProcedure> {
 public:
  static const Class kClass;
  static Ref<Join> init() { return make<Join>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool wantsEvaluateArguments() override { return false; }
  Value execute_context(const Array* arguments, ADMEvaluationContext* context) override {
    if (arguments == nullptr) {
      context->setRuntimeError("nothing to join");
      return {};
    }
    std::string text;
    for (const Value& argument : *arguments) {
      text.append(text.empty() ? "" : ", ").append(descriptionOf(argument));
    }
    return String::create(text);
  }
};

// The first argument that has a value; the others are not evaluated. It does not conform.
class FirstOf final : public Object {
 public:
  static const Class kClass;
  static Ref<FirstOf> init() { return make<FirstOf>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool wantsEvaluateArguments() { return true; }
  Value execute_context(const Array* arguments, ADMEvaluationContext* context) {
    if (arguments == nullptr) return {};
    for (const Value& item : *arguments) {
      Value value = evaluateItem(item, *context);
      if (!value.isNil()) return value;
    }
    return {};
  }
};

class ExtendedContext final : public ADMSingleValueEvaluationContext {
 public:
  static const Class kClass;

  static Ref<ExtendedContext> initWithStatusService_globalConfiguration(
      Value statusService, RefPtr<Dictionary> globalConfiguration) {
    return make<ExtendedContext>(std::move(statusService), std::move(globalConfiguration));
  }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceSymbolForNameImpl(const EvaluationName& name) override {
    if (name.text() == "answer") return Number::integer(42);
    return ADMSingleValueEvaluationContext::serviceSymbolForNameImpl(name);
  }
  Value executeTwiceProcedure(const Array* items) {
    if (items == nullptr) return {};
    const Value value = evaluateItem((*items)[0], *this);
    return Array::create({value, value});
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);
  using ADMSingleValueEvaluationContext::ADMSingleValueEvaluationContext;
  ~ExtendedContext() override = default;
};

constexpr auto kJoinProtocols = conformances<Join, ADMExternalProcedure>();
constexpr std::array kJoinInitializers{initializer<&Join::init>("init")};
constexpr std::array kFirstOfMethods{
    method<&FirstOf::wantsEvaluateArguments>("wantsEvaluateArguments"),
    method<&FirstOf::execute_context>("execute:context:"),
};
constexpr std::array kFirstOfInitializers{initializer<&FirstOf::init>("init")};
constexpr std::array kContextMethods{
    method<&ExtendedContext::executeTwiceProcedure>("executeTwiceProcedure:")};
constexpr std::array kContextInitializers{
    initializer<&ExtendedContext::initWithStatusService_globalConfiguration>(
        "initWithStatusService:globalConfiguration:")};

constinit const Class Join::kClass{.name = "AJoinExternalProcedure",
                                   .base = &Object::kClass,
                                   .protocols = kJoinProtocols,
                                   .initializers = kJoinInitializers};
constinit const Class FirstOf::kClass{.name = "AFirstOfExternalProcedure",
                                      .base = &Object::kClass,
                                      .methods = kFirstOfMethods,
                                      .initializers = kFirstOfInitializers};
constinit const Class ExtendedContext::kClass{.name = "ExtendedEvaluationContext",
                                              .base = &ADMSingleValueEvaluationContext::kClass,
                                              .methods = kContextMethods,
                                              .initializers = kContextInitializers};

constexpr const Class* kClasses[] = {&Join::kClass, &FirstOf::kClass, &ExtendedContext::kClass};

}  // namespace

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
