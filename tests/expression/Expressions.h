// Expressions, values and a context for tests, written shortly.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/protocol/ADMEvaluationError.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/ADMEvaluationProcessor.h"
#include "expression/ADMItemsList.h"
#include "expression/TreePrinter.h"
#include "runtime/Cast.h"
#include "runtime/Class.h"
#include "runtime/Method.h"
#include "runtime/Number.h"
#include "runtime/Ref.h"
#include "runtime/TestValues.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {

inline Value numberOf(std::int64_t number) { return Number::integer(number); }
/// Numbers from 0 up.
inline Value rangeOf(std::int64_t count) {
  ValueVector elements;
  for (std::int64_t i = 0; i < count; ++i) elements.push_back(numberOf(i));
  return Array::create(std::move(elements));
}

/// A value with everything that tells it from others: numbers with their type code, strings in
/// quotes, [elements], {key: value}.
inline std::string shown(const Value& value) {
  if (value.isNil()) return "nil";
  if (value.isNumber()) return descriptionOf(value) + value.number().encoding();
  if (const auto* string = castTo<String>(value)) return '"' + string->text() + '"';
  std::string text;
  if (const auto* array = castTo<Array>(value)) {
    for (const Value& element : *array)
      text.append(text.empty() ? "" : ", ").append(shown(element));
    return '[' + text + ']';
  }
  if (const auto* dictionary = castTo<Dictionary>(value)) {
    for (const DictionaryEntry& entry : *dictionary) {
      text.append(text.empty() ? "" : ", ");
      text.append(shown(entry.key)).append(": ").append(shown(entry.value));
    }
    return '{' + text + '}';
  }
  return descriptionOf(value);
}

/// The context's error as "category: text"; empty when there is none.
inline std::string errorOf(const ADMEvaluationContext& context) {
  const ADMEvaluationError* error = context.lastError();
  if (error == nullptr) return {};
  return std::to_string(error->errorCategory()) + ": " + error->errorDescription()->text();
}

/// A context that knows the names that a test gives it, and two procedures more than its base:
/// _Call(label, ...) notes the label and gives the value of the second argument, _Run(label) calls
/// a function of the test.
class TestContext final : public ADMEvaluationContextBase {
 public:
  static const Class kClass;

  using Names = std::map<std::string, Value>;
  using Functions = std::map<std::string, std::function<Value(TestContext&, const Array*)>>;

  [[nodiscard]] static Ref<TestContext> create(Names names = {}, Value service = Value(),
                                               RefPtr<Dictionary> configuration = nullptr) {
    return make<TestContext>(std::move(names), std::move(service), std::move(configuration));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceSymbolForNameImpl(const EvaluationName& name) override {
    const auto found = names.find(std::string(name.text()));
    if (found == names.end()) return ADMEvaluationContextBase::serviceSymbolForNameImpl(name);
    return found->second.orNull();
  }
  Value executeCallProcedure(const Array* items) {
    if (items == nullptr || items->isEmpty()) return {};
    calls.push_back(descriptionOf(evaluateItem((*items)[0], *this)));
    return items->count() > 1 ? evaluateItem((*items)[1], *this) : Value();
  }
  Value executeRunProcedure(const Array* items) {
    const Value label = evaluateItem((*items)[0], *this);
    return functions.at(descriptionOf(label))(*this, items);
  }

  Names names;
  Functions functions;
  /// The labels of the calls so far.
  std::vector<std::string> calls;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  TestContext(Names known, Value service, RefPtr<Dictionary> configuration)
      : ADMEvaluationContextBase(std::move(service), std::move(configuration)),
        names(std::move(known)) {}
  ~TestContext() override = default;
};

inline constexpr std::array kTestProcedures{
    method<&TestContext::executeCallProcedure>("executeCallProcedure:"),
    method<&TestContext::executeRunProcedure>("executeRunProcedure:"),
};
inline constinit const Class TestContext::kClass{
    .name = "TestContext", .base = &ADMEvaluationContextBase::kClass, .methods = kTestProcedures};

/// A configuration with these macros.
inline RefPtr<Dictionary> macrosOf(
    std::initializer_list<std::pair<std::string_view, std::string_view>> macros) {
  DictionaryBuilder table;
  for (const auto& [name, expression] : macros) table.set(name, stringOf(expression));
  DictionaryBuilder configuration;
  configuration.set("TemplateMacroses", table.build());
  return configuration.build();
}

inline Ref<ADMEvaluationProcessor> compile(std::string_view expression,
                                           const Ref<ADMEvaluationContext>& context) {
  return ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
      String::create(std::string(expression)), context);
}
inline Ref<ADMEvaluationProcessor> compile(std::string_view expression) {
  return compile(expression, TestContext::create());
}

/// Compiles and evaluates the expression.
inline Value evaluate(std::string_view expression, const Ref<ADMEvaluationContext>& context) {
  return compile(expression, context)->execute();
}
/// The same, with the result as `shown` writes it.
inline std::string resultOf(std::string_view expression, const Ref<TestContext>& context) {
  return shown(evaluate(expression, context));
}
inline std::string resultOf(std::string_view expression) {
  return resultOf(expression, TestContext::create());
}

/// The expression with all braces written out; empty when it does not compile.
inline std::string treeOf(std::string_view expression) {
  const Ref<ADMEvaluationProcessor> processor = compile(expression);
  return processor->rootItem() != nullptr ? printedTree(*processor->rootItem()) : std::string();
}

/// The text `count` times.
inline std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) result.append(text);
  return result;
}

}  // namespace commandfilter::testing
