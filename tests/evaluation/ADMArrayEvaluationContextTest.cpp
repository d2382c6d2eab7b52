#include "evaluation/ADMArrayEvaluationContext.h"

#include <gtest/gtest.h>

#include "expression/Expressions.h"
#include "expression/TestService.h"
#include "runtime/Send.h"

namespace commandfilter::testing {
namespace {

Ref<ADMArrayEvaluationContext> arrayContextOver(Value list, Value service = Value()) {
  return ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
      std::move(service), nullptr, std::move(list));
}

std::string at(std::string_view expression, const Ref<ADMArrayEvaluationContext>& context) {
  return shown(evaluate(expression, context));
}

TEST(ArrayContext, WalksOverItsElements) {
  const Ref<ADMArrayEvaluationContext> context =
      arrayContextOver(arrayOf({stringOf("a"), Value::null(), stringOf("c")}));
  EXPECT_FALSE(context->endOfIteration());
  EXPECT_EQ(at("_Array(@element, @identifier, @index)", context), R"(["a", "a", 0Q])");
  EXPECT_TRUE(context->iterateNext());
  EXPECT_EQ(at("@element", context), "nil");
  EXPECT_TRUE(context->defaultServiceSymbolValue().isNull());
  EXPECT_TRUE(context->iterateNext());
  EXPECT_EQ(at("@index", context), "2Q");
  EXPECT_FALSE(context->endOfIteration());
  EXPECT_FALSE(context->iterateNext());
  EXPECT_TRUE(context->endOfIteration());
  EXPECT_FALSE(context->iterateNext());
}

TEST(ArrayContext, IsMadeByNameWithoutAList) {
  const Value service = TestService::create();
  const Value made =
      instantiate(ADMArrayEvaluationContext::kClass,
                  Selector("initWithStatusService:globalConfiguration:"), {service, Value()});
  auto* context = castTo<ADMArrayEvaluationContext>(made);
  ASSERT_NE(context, nullptr);
  EXPECT_TRUE(context->statusService().isIdenticalTo(service));
  EXPECT_TRUE(context->endOfIteration());
  context->resetIteration(arrayOf({numberOf(1)}));
  EXPECT_FALSE(context->endOfIteration());
}

TEST(ArrayContext, HasNoElementBehindTheLast) {
  const Ref<ADMArrayEvaluationContext> context = arrayContextOver(arrayOf({numberOf(1)}));
  EXPECT_FALSE(context->iterateNext());
  EXPECT_EQ(at("@element", context), "nil");
  EXPECT_EQ(at("@index", context), "1Q");
  EXPECT_TRUE(context->defaultServiceSymbolValue().isNil());
}

TEST(ArrayContext, IsAtItsEndWithoutElements) {
  for (const Value& list : {Value(), arrayOf({})}) {
    const Ref<ADMArrayEvaluationContext> context = arrayContextOver(list);
    EXPECT_TRUE(context->endOfIteration());
    EXPECT_EQ(at("@element", context), "nil");
    EXPECT_EQ(at("@index", context), "0Q");
  }
}

TEST(ArrayContext, StartsAgain) {
  const Ref<ADMArrayEvaluationContext> context =
      arrayContextOver(arrayOf({numberOf(1), numberOf(2)}));
  EXPECT_TRUE(context->iterateNext());
  context->resetIteration(Value());
  EXPECT_EQ(at("@element", context), "1q");
  EXPECT_EQ(at("@index", context), "0Q");
  EXPECT_TRUE(context->iterateNext());
  context->resetIteration(arrayOf({stringOf("x")}));
  EXPECT_EQ(at("@element", context), R"("x")");
  EXPECT_FALSE(context->iterateNext());
  context->resetIteration(Value());
  EXPECT_EQ(at("@element", context), R"("x")");
  context->resetIteration(arrayOf({}));
  EXPECT_TRUE(context->endOfIteration());
}

TEST(ArrayContext, StartsAgainOverTheListThatItHas) {
  const Value list = arrayOf({numberOf(1), numberOf(2)});
  const Ref<ADMArrayEvaluationContext> context = arrayContextOver(list);
  while (context->iterateNext()) {
  }
  context->resetIteration(list);
  EXPECT_FALSE(context->endOfIteration());
  EXPECT_EQ(at("_Array(@element, @index)", context), "[1q, 0Q]");
  EXPECT_TRUE(context->iterateNext());
  EXPECT_FALSE(context->iterateNext());
}

TEST(ArrayContext, GetsAListLater) {
  const Ref<ADMArrayEvaluationContext> context = arrayContextOver(Value());
  context->resetIteration(arrayOf({numberOf(5)}));
  EXPECT_FALSE(context->endOfIteration());
  EXPECT_EQ(at("@element", context), "5q");
}

TEST(ArrayContext, RaisesForAListThatIsNone) {
  EXPECT_EQ(reasonOf([] { arrayContextOver(stringOf("list")); }), "a range is no array");
  const Ref<ADMArrayEvaluationContext> context =
      arrayContextOver(dictionaryOf({{stringOf("a"), numberOf(1)}}));
  EXPECT_FALSE(context->endOfIteration());
  EXPECT_EQ(reasonOf([&context] { static_cast<void>(evaluate("@element", context)); }),
            "a dictionary has no element at an index");
  EXPECT_EQ(reasonOf([&context] { context->resetIteration(numberOf(1)); }), "a range is no array");
}

TEST(ArrayContext, AsksTheServiceAboutTheElement) {
  const Ref<ADMArrayEvaluationContext> context =
      arrayContextOver(arrayOf({stringOf("Black")}), TestService::create());
  EXPECT_EQ(at("@levelOf:", context), R"("level of Black")");
  EXPECT_EQ(at("@state", context), R"("ready")");
  EXPECT_EQ(at("@unknown", context), "nil");
  EXPECT_EQ(at("{Supplies}[@].Level", context), R"(["Supplies", "Level", "Black"])");
}

TEST(ArrayContext, IsMadeByName) {
  const Value made =
      instantiate(ADMArrayEvaluationContext::kClass,
                  Selector("initWithStatusService:globalConfiguration:elementsList:"),
                  {Value(), Value(), arrayOf({numberOf(1)})});
  ASSERT_NE(castTo<ADMArrayIteration>(made), nullptr);
  EXPECT_FALSE(castTo<ADMArrayIteration>(made)->endOfIteration());
  EXPECT_NE(castTo<ADMEvaluationContext>(made), nullptr);
}

}  // namespace
}  // namespace commandfilter::testing
