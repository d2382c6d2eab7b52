#include "evaluation/ADMMacrosEvaluationContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "evaluation/ADMArrayEvaluationContext.h"
#include "expression/Expressions.h"
#include "expression/TestService.h"
#include "runtime/Exception.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;

// The context of a macro that is called with the arguments of the list.
Ref<ADMMacrosEvaluationContext> contextWith(std::string_view list,
                                            const Ref<ADMEvaluationContext>& parent) {
  const Value items = compile(list)->execute();
  return ADMMacrosEvaluationContext::contextWithArguments_parentContext(
      castTo<ADMItemsList>(items)->items().get(), parent);
}

TEST(MacrosContext, HasItsArgumentsUnderTheirNames) {
  const Ref<ADMMacrosEvaluationContext> context =
      contextWith(R"("a", @nil, 3)", TestContext::create());
  EXPECT_EQ(shown(evaluate("@arg0", context)), R"("a")");
  EXPECT_EQ(shown(evaluate("@arg1", context)), "nil");
  EXPECT_EQ(shown(evaluate("@arg2", context)), "3q");
  EXPECT_EQ(shown(evaluate("@argc", context)), "3i");
  EXPECT_EQ(shown(evaluate("@argv", context)), R"(["a", <null>, 3q])");
  EXPECT_TRUE(evaluate("@argv", context).isIdenticalTo(evaluate("@argv", context)));
}

TEST(MacrosContext, MayHaveAnyNumberOfArguments) {
  const Ref<ADMMacrosEvaluationContext> context =
      contextWith(R"(1, @nil, 3, 4, "e", 6, 7)", TestContext::create());
  EXPECT_EQ(shown(evaluate("@arg0", context)), "1q");
  EXPECT_EQ(shown(evaluate("@arg1", context)), "nil");
  EXPECT_EQ(shown(evaluate("@arg6", context)), "7q");
  EXPECT_EQ(shown(evaluate("@arg7", context)), "nil");
  EXPECT_EQ(shown(evaluate("@argc", context)), "7i");
  EXPECT_EQ(shown(evaluate("@argv", context)), R"([1q, <null>, 3q, 4q, "e", 6q, 7q])");
}

TEST(MacrosContext, MayHaveNoArguments) {
  const Ref<ADMMacrosEvaluationContext> context =
      ADMMacrosEvaluationContext::contextWithArguments_parentContext(nullptr,
                                                                     TestContext::create());
  EXPECT_EQ(shown(evaluate("@argc", context)), "0i");
  EXPECT_EQ(shown(evaluate("@argv", context)), "[]");
  EXPECT_EQ(shown(evaluate("@arg0", context)), "nil");
}

TEST(MacrosContext, IsSilentAboutOtherNamesThatBeginWithArg) {
  const Ref<TestContext> parent = TestContext::create({{"arg", numberOf(1)},
                                                       {"argument", numberOf(2)},
                                                       {"arg7", numberOf(3)},
                                                       {"Arg0", numberOf(4)}});
  const Ref<ADMMacrosEvaluationContext> context = contextWith("5, 6", parent);
  for (const std::string_view name :
       {"@arg", "@argument", "@arg7", "@arg00", "@arg01", "@argc0", "@arg18446744073709551616"}) {
    EXPECT_EQ(shown(evaluate(name, context)), "nil") << name;
  }
  EXPECT_EQ(shown(evaluate("@Arg0", context)), "4q");
  EXPECT_EQ(parent->lastError(), nullptr);
}

TEST(MacrosContext, EvaluatesItsArgumentsOnceAndInOrder) {
  const Ref<TestContext> parent = TestContext::create();
  const Ref<ADMMacrosEvaluationContext> context =
      contextWith(R"(_Call("a", 1), _Call("b", 2), _Call("c", 3))", parent);
  EXPECT_THAT(parent->calls, ElementsAre("a", "b", "c"));
  EXPECT_EQ(shown(evaluate("@arg1 + @arg1", context)), R"("22")");
  EXPECT_EQ(parent->calls.size(), 3U);
}

TEST(MacrosContext, LeavesNamesPathsAndErrorsToItsParent) {
  const Ref<TestContext> parent =
      TestContext::create({{"true", stringOf("its truth")}}, TestService::create(), macrosOf({}));
  const Ref<ADMMacrosEvaluationContext> context = contextWith("1, 2", parent);
  EXPECT_EQ(shown(evaluate("@true", context)), R"("its truth")");
  EXPECT_EQ(shown(evaluate("{a}.b", context)), R"(["a", "b"])");
  EXPECT_TRUE(context->statusService().isIdenticalTo(parent->statusService()));
  EXPECT_EQ(context->globalConfiguration(), parent->globalConfiguration());
  EXPECT_EQ(shown(evaluate("1 lt @nil", context)), "nil");
  EXPECT_EQ(errorOf(*parent), "2: Incorrect types for comparison operation");
  EXPECT_EQ(context->lastError(), nullptr);
  EXPECT_EQ(context->recordedError(), parent->lastError());
}

TEST(MacrosContext, HasItsParentsCurrentElement) {
  const Ref<ADMArrayEvaluationContext> array =
      ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
          TestService::create(), nullptr, arrayOf({stringOf("Black")}));
  const Ref<ADMMacrosEvaluationContext> context = contextWith("1, 2", array);
  EXPECT_EQ(shown(context->defaultServiceSymbolValue()), R"("Black")");
  EXPECT_EQ(shown(evaluate("{@}.b", context)), R"(["Black", "b"])");
}

TEST(MacrosContext, ClearsErrorsOfItsOwnOnly) {
  const Ref<TestContext> parent = TestContext::create();
  const Ref<ADMMacrosEvaluationContext> context = contextWith("1, 2", parent);
  context->setRuntimeError("of the body");
  context->clearErrors();
  EXPECT_EQ(errorOf(*parent), "2: of the body");
  context->setLastError(nullptr);
  EXPECT_EQ(parent->lastError(), nullptr);
}

// A context that is not built on the base of the others: it has no current element and no procedure
// but one.
class ForeignContext final : public Implements<Object, ADMEvaluationContext> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ForeignContext> create(RefPtr<Dictionary> configuration = nullptr) {
    return make<ForeignContext>(std::move(configuration));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const Dictionary* globalConfiguration() const override {
    return configuration_.get();
  }
  [[nodiscard]] Value statusService() const override { return service_; }
  void resetEvaluations() override {}
  Value processSelector(const EvaluationName& name) override {
    return stringOf("name " + std::string(name.text()));
  }
  Value executeProcedure_withArguments(const EvaluationName& name,
                                       const Array* /*arguments*/) override {
    return stringOf("procedure " + std::string(name.text()));
  }
  Value valueForFeaturePathComponents(const Array* components) override {
    return Value::sharing(components);
  }
  [[nodiscard]] ADMEvaluationError* lastError() const override { return error_.get(); }
  void setLastError(RefPtr<ADMEvaluationError> error) override { error_ = std::move(error); }
  void setRuntimeErrorWithArguments(std::string_view /*format*/,
                                    std::span<const FormatArgument> /*arguments*/) override {}
  void clearErrors() override { error_ = nullptr; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  explicit ForeignContext(RefPtr<Dictionary> configuration)
      : configuration_(std::move(configuration)) {}
  ~ForeignContext() override = default;

  RefPtr<Dictionary> configuration_;
  Value service_ = stringOf("service");
  RefPtr<ADMEvaluationError> error_;
};
constexpr auto kForeignProtocols = conformances<ForeignContext, ADMEvaluationContext>();
constinit const Class ForeignContext::kClass{
    .name = "ForeignContext", .base = &Object::kClass, .protocols = kForeignProtocols};

TEST(MacrosContext, MayHaveAParentOfAnyKind) {
  const Ref<ForeignContext> parent = ForeignContext::create(macrosOf({{"Twice", "@arg0 + @arg0"}}));
  const Ref<ADMMacrosEvaluationContext> context = contextWith("@a, 2", parent);
  EXPECT_TRUE(context->statusService().isIdenticalTo(parent->statusService()));
  EXPECT_TRUE(context->defaultServiceSymbolValue().isNil());
  EXPECT_EQ(shown(evaluate("@arg0", context)), R"("name a")");
  EXPECT_EQ(shown(evaluate("@nil", context)), R"("name nil")");
  EXPECT_EQ(shown(evaluate("{a}[@]", context)), R"(["a", "@"])");
  // The procedures are the macro's, not its parent's.
  EXPECT_EQ(shown(evaluate("_Array(@arg1)", context)), "[2q]");
  EXPECT_EQ(shown(evaluate("_Twice(@arg1)", context)), R"("22")");
  EXPECT_EQ(shown(evaluate("_Nothing()", context)), "nil");
  EXPECT_EQ(errorOf(*parent), "2: Can not find procedure Nothing");
}

TEST(Macros, SeeTheirCallersNames) {
  const Ref<TestContext> context = TestContext::create(
      {{"n", numberOf(7)}}, Value(),
      macrosOf({{"Outer", "_Inner(@arg0 + @n) + @argc"}, {"Inner", "@arg0 + @arg1 + @n"}}));
  EXPECT_EQ(resultOf("_Outer(1, 2)", context), R"("1772")");
  EXPECT_EQ(resultOf("1 _Outer()", context), R"("1771")");
}

TEST(Macros, AreVisibleInsideAnAggregation) {
  const Ref<TestContext> context =
      TestContext::create({}, Value(), macrosOf({{"Twice", "@element + @arg0"}}));
  EXPECT_EQ(resultOf("_Aggregate(_Array(1, 2), @initial + _Twice(@index))", context), R"("1021")");
}

TEST(Macros, KeepTheErrorsOfAnAggregationInside) {
  const Ref<TestContext> context =
      TestContext::create({}, Value(), macrosOf({{"Fails", "1 lt @nil"}}));
  EXPECT_EQ(resultOf("_Filter(_Array(1), _Fails())", context), "[]");
  EXPECT_EQ(context->lastError(), nullptr);
}

TEST(Macros, AreCompiledOnce) {
  const Ref<TestContext> context = TestContext::create(
      {}, Value(),
      macrosOf({{"Literal", R"("the object of the compiled tree")"}, {"Outer", "_Literal()"}}));
  const Value first = evaluate("_Literal()", context);
  for (const std::string_view expression :
       {"_Literal()", "_Outer()", "_Aggregate(_Array(1), _Outer())",
        "_GetItem(_Sort(_Array(_Literal(), 2), @nil), 0)"}) {
    EXPECT_TRUE(evaluate(expression, context).isIdenticalTo(first)) << expression;
  }
}

TEST(Macros, MayBeAsManyAsTheirTableHasToGrowFor) {
  constexpr int kMacros = 200;
  DictionaryBuilder table;
  for (int i = 0; i < kMacros; ++i) {
    table.set("M" + std::to_string(i), stringOf(std::to_string(i)));
  }
  DictionaryBuilder configuration;
  configuration.set("TemplateMacroses", table.build());
  const Ref<TestContext> context = TestContext::create({}, Value(), configuration.build());
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < kMacros; ++i) {
      const std::string number = std::to_string(i);
      EXPECT_EQ(resultOf("_M" + number + "()", context), number + "q");
    }
  }
}

TEST(Macros, ForgetTheArgumentsBeforeOneThatRaises) {
  for (const std::string_view call :
       {R"(_Twice("a" + "b", _Run("raise")))", R"(_Twice("a" + "b", "c" + "d", _Run("raise")))"}) {
    const Ref<TestContext> context =
        TestContext::create({}, Value(), macrosOf({{"Twice", "@arg0 + @arg0"}}));
    context->functions["raise"] = [](TestContext&, const Array*) -> Value {
      throw Exception("raised");
    };
    EXPECT_THROW(static_cast<void>(evaluate(call, context)), Exception) << call;
    EXPECT_EQ(resultOf(R"(_Twice("a"))", context), R"("aa")");
  }
}

TEST(Macros, OfTheSameNameInOtherConfigurationsAreOthers) {
  EXPECT_EQ(resultOf("_M()", TestContext::create({}, Value(), macrosOf({{"M", "1"}}))), "1q");
  EXPECT_EQ(resultOf("_M()", TestContext::create({}, Value(), macrosOf({{"M", "2"}}))), "2q");
}

TEST(Macros, RecordTheErrorOfTheirCompilationAtEveryCall) {
  const Ref<TestContext> context = TestContext::create(
      {}, Value(), macrosOf({{"Broken", "(1"}, {"Half", "1 #"}, {"Empty", ""}}));
  for (int call = 0; call < 3; ++call) {
    EXPECT_EQ(resultOf("_Broken(1)", context), "nil");
    EXPECT_EQ(errorOf(*context), "1: Incorrect brace balance");
    // What was read before the error is used.
    EXPECT_EQ(resultOf("_Half()", context), "1q");
    EXPECT_EQ(errorOf(*context), "0: Incorrect token # at 3");
    EXPECT_EQ(resultOf("_Empty()", context), "nil");
    EXPECT_EQ(errorOf(*context), "1: Incorrect Expression");
    context->clearErrors();
  }
}

TEST(Macros, EvaluateTheirArgumentsBeforeTheyAreCompiled) {
  const Ref<TestContext> context = TestContext::create({}, Value(), macrosOf({{"Broken", "(1"}}));
  EXPECT_EQ(resultOf(R"(_Broken(_Call("a"), 1 lt "a"))", context), "nil");
  EXPECT_THAT(context->calls, ElementsAre("a"));
  EXPECT_EQ(errorOf(*context), "1: Incorrect brace balance");
}

TEST(Macros, RaiseWhenTheyCallThemselvesWithoutEnd) {
  const Ref<TestContext> context =
      TestContext::create({}, Value(),
                          macrosOf({{"Self", "_Self(@arg0)"},
                                    {"Ping", "1 + _Pong()"},
                                    {"Pong", "_Filter(_Array(1), _Ping())"}}));
  runOnStackOf(std::size_t{8} * 1024 * 1024, [&context] {
    for (const std::string_view call : {"_Self(1)", "_Ping()", "_Self(_Self(1))"}) {
      EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate(call, context)); }), "nested too deeply");
      EXPECT_EQ(resultOf("1 + 1", context), R"("11")");
    }
  });
}

}  // namespace
}  // namespace commandfilter::testing
