#include "runtime/Invocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "TestObjects.h"
#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/ValueVector.h"

namespace commandfilter {
namespace {

using testing::greeterNamed;
using testing::Proxy;
using testing::reasonOf;
using testing::stringOf;

TEST(Invocation, KeepsWhatItWasMadeWith) {
  const Value target = greeterNamed("Anna");
  const Invocation invocation(MethodSignature("@@i"), target, Selector("name:and:"));
  EXPECT_EQ(invocation.target().object(), target.object());
  EXPECT_EQ(invocation.selector(), Selector("name:and:"));
  EXPECT_EQ(invocation.methodSignature().numberOfArguments(), 4U);
  EXPECT_TRUE(invocation.returnValue().isNil());
  EXPECT_TRUE(invocation.argumentAtIndex(2).isNil());
  EXPECT_TRUE(invocation.argumentAtIndex(3).isNil());
}

TEST(Invocation, KeepsArgumentsFromIndexTwo) {
  Invocation invocation(MethodSignature("@@i"), Value(), Selector("name:and:"));
  invocation.setArgumentAtIndex(stringOf("x"), 2);
  invocation.setArgumentAtIndex(Number::integer(5), 3);
  invocation.setArgumentAtIndex(stringOf("y"), 2);
  EXPECT_EQ(descriptionOf(invocation.argumentAtIndex(2)), "y");
  EXPECT_EQ(invocation.argumentAtIndex(3).number().longValue(), 5);
}

TEST(Invocation, KeepsAnyNumberOfArguments) {
  for (std::size_t count = 0; count <= 6; ++count) {
    const std::string types(count + 1, '@');
    Invocation invocation(MethodSignature(types), Value(), Selector("any"));
    for (std::size_t i = 0; i < count; ++i) {
      invocation.setArgumentAtIndex(Number::integer(static_cast<int>(i)), i + 2);
    }
    const Invocation copy = invocation;
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_EQ(copy.argumentAtIndex(i + 2).number().longValue(), static_cast<int>(i)) << count;
    }
    EXPECT_FALSE(reasonOf([&] { static_cast<void>(copy.argumentAtIndex(count + 2)); }).empty());
  }
}

TEST(Invocation, RaisesForArgumentsThatItDoesNotHave) {
  Invocation invocation(MethodSignature("@@"), Value(), Selector("greet:"));
  for (const std::size_t index : {std::size_t{0}, std::size_t{1}, std::size_t{3}, SIZE_MAX}) {
    const std::string reason = "invocation of greet: has no argument " + std::to_string(index);
    EXPECT_EQ(reasonOf([&] { static_cast<void>(invocation.argumentAtIndex(index)); }), reason);
    EXPECT_EQ(reasonOf([&] { invocation.setArgumentAtIndex(Value(), index); }), reason);
  }
}

TEST(Invocation, NeedsASignature) {
  EXPECT_EQ(reasonOf([] { Invocation(MethodSignature(), Value(), Selector("greet:")); }),
            "an invocation needs the signature of a method");
}

TEST(Invocation, CallsItsTarget) {
  const Value target = greeterNamed("Anna");
  const Selector greet("greet:");
  Invocation invocation(target.object()->methodSignatureForSelector(greet), target, greet);
  invocation.setArgumentAtIndex(stringOf("Berta"), 2);
  invocation.invoke();
  EXPECT_EQ(descriptionOf(invocation.returnValue()), "Anna greets Berta");
  invocation.setArgumentAtIndex(stringOf("Clara"), 2);
  invocation.invoke();
  EXPECT_EQ(descriptionOf(invocation.returnValue()), "Anna greets Clara");
}

TEST(Invocation, CallsAnotherTarget) {
  Invocation invocation(MethodSignature("@"), greeterNamed("Anna"), Selector("name"));
  invocation.invokeWithTarget(greeterNamed("Berta"));
  EXPECT_EQ(descriptionOf(invocation.returnValue()), "Berta");
  invocation.invokeWithTarget(make<Proxy>(greeterNamed("Clara")));
  EXPECT_EQ(descriptionOf(invocation.returnValue()), "Clara");
  invocation.invokeWithTarget(Value());
  EXPECT_TRUE(invocation.returnValue().isNil());
  EXPECT_FALSE(reasonOf([&] { invocation.invokeWithTarget(Number::integer(1)); }).empty());
}

TEST(Invocation, RaisesWhenItsTargetTakesOtherArguments) {
  Invocation invocation(MethodSignature("@"), greeterNamed("Anna"), Selector("greet:"));
  EXPECT_EQ(reasonOf([&] { invocation.invoke(); }), "greet: was sent with 0 arguments");
}

TEST(Invocation, TakesAResult) {
  Invocation invocation(MethodSignature("@"), Value(), Selector("name"));
  invocation.setReturnValue(stringOf("result"));
  EXPECT_EQ(descriptionOf(invocation.returnValue()), "result");
}

TEST(Invocation, HasAZeroForEveryTypeOfResult) {
  constexpr std::string_view kScalars = "cCsSiIqQfd";
  for (const char& code : kScalars) {
    Invocation invocation(MethodSignature(std::string_view(&code, 1)), Value(), Selector("x"));
    invocation.setReturnValue(stringOf("before"));
    invocation.setZeroReturnValue();
    ASSERT_TRUE(invocation.returnValue().isNumber()) << code;
    EXPECT_EQ(invocation.returnValue().number().encoding(), code);
    EXPECT_TRUE(equal(invocation.returnValue(), Number::integer(0))) << code;
  }
  for (const char* types : {"@", "*", "v"}) {
    Invocation invocation(MethodSignature(types), Value(), Selector("x"));
    invocation.setReturnValue(stringOf("before"));
    invocation.setZeroReturnValue();
    EXPECT_TRUE(invocation.returnValue().isNil()) << types;
  }
}

TEST(Invocation, KeepsItsTargetAndArgumentsAlive) {
  const Value target = greeterNamed("Anna");
  const Value argument = greeterNamed("Berta");
  {
    Invocation invocation(MethodSignature("@@"), target, Selector("echoValue:"));
    invocation.setArgumentAtIndex(argument, 2);
    EXPECT_EQ(target.object()->referenceCount(), 2U);
    EXPECT_EQ(argument.object()->referenceCount(), 2U);
  }
  EXPECT_EQ(target.object()->referenceCount(), 1U);
  EXPECT_EQ(argument.object()->referenceCount(), 1U);
}

TEST(Invocation, TakesAllItsArgumentsAtOnce) {
  for (std::size_t count = 0; count <= 6; ++count) {
    const std::string types(count + 1, '@');
    const MethodSignature signature(types);
    ValueVector arguments;
    for (std::size_t i = 0; i < count; ++i) arguments.push_back(Number::integer(i));
    const Invocation invocation(signature, Value(), Selector("any"), arguments);
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_EQ(invocation.argumentAtIndex(i + 2).number().longValue(), static_cast<int>(i));
    }
    arguments.emplace_back();
    EXPECT_EQ(reasonOf([&] { Invocation(signature, Value(), Selector("any"), arguments); }),
              "any was sent with " + std::to_string(count + 1) + " arguments");
  }
}

}  // namespace
}  // namespace commandfilter
