#include "runtime/Method.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "TestObjects.h"
#include "TestValues.h"
#include "runtime/Array.h"
#include "runtime/Comparison.h"

namespace commandfilter {
namespace {

using testing::Greeter;

void nothing(Object& /*receiver*/) {}
std::int32_t plain(std::int32_t value) noexcept { return value; }
double mixed(const Value& /*receiver*/, bool /*b*/, std::int8_t /*c*/, std::uint8_t /*d*/,
             std::int16_t /*e*/, std::uint16_t /*f*/, std::int32_t /*g*/, std::uint32_t /*h*/,
             std::int64_t /*i*/, std::uint64_t /*j*/, float /*k*/, double /*l*/, const char* /*m*/,
             const Value& /*n*/, Object* /*o*/, const String* /*p*/, RefPtr<Array> /*q*/,
             testing::INamed* /*r*/) {
  return 0.5;
}

// The codes stand in the row when it is compiled.
static_assert(method<&mixed>("b:c:d:e:f:g:h:i:j:k:l:m:n:o:p:q:r:").types == "dccCsSiIqQfd*@@@@@");
static_assert(method<&nothing>("nothing").types == "v");
static_assert(method<&Greeter::echoBoolean>("echoBoolean:").types == "cc");
static_assert(method<&Greeter::echoSignedChar>("echoSignedChar:").types == "cc");
static_assert(method<&Greeter::echoUnsignedChar>("echoUnsignedChar:").types == "CC");
static_assert(method<&Greeter::echoShort>("echoShort:").types == "ss");
static_assert(method<&Greeter::echoText>("echoText:").types == "**");
static_assert(method<&Greeter::echoObject>("echoObject:").types == "@@");
static_assert(method<&Greeter::keep>("keep:").types == "v@");
static_assert(classMethod<&plain>("plain:").types == "ii");
static_assert(classMethod<&Greeter::motto>("motto").types == "@");
static_assert(initializer<&Greeter::initWithName>("initWithName:").types == "@@");
static_assert(method<&nothing>("nothing").selector == "nothing");

TEST(Method, CountsColons) {
  static_assert(detail::countColons("") == 0);
  static_assert(detail::countColons("count") == 0);
  static_assert(detail::countColons(":") == 1);
  EXPECT_EQ(detail::countColons("first:second:third:"), 3U);
}

TEST(Method, CallsAFunctionThatTakesTheReceiver) {
  constexpr Method kRow = method<&mixed>("b:c:d:e:f:g:h:i:j:k:l:m:n:o:p:q:r:");
  const std::array<Value, 17> arguments{};
  EXPECT_EQ(kRow.invoke(Number::integer(1), arguments).number().doubleValue(), 0.5);
}

TEST(Method, CallsAMemberFunction) {
  constexpr Method kRow = method<&Greeter::greet>("greet:");
  const Value guest = testing::stringOf("Berta");
  EXPECT_EQ(descriptionOf(kRow.invoke(testing::greeterNamed("Anna"), {&guest, 1})),
            "Anna greets Berta");
}

TEST(Method, CallsAFunctionWithoutReceiver) {
  constexpr Method kRow = classMethod<&plain>("plain:");
  const Value argument = Number::real(5.5);
  EXPECT_EQ(kRow.invoke(Value(), {&argument, 1}).number().longValue(), 5);
}

Value firstOf(Greeter& /*receiver*/, const Array* array) {
  return array != nullptr && array->count() != 0 ? (*array)[0] : Value::null();
}
Value anyOf(Greeter& /*receiver*/, const Object* /*object*/) { return {}; }

// Without values around what is passed, when it is one object whose kind tells its class.
TEST(Method, CallsAFunctionOfTwoObjectsDirectly) {
  constexpr Method kRow = method<&firstOf>("firstOf:");
  const Value greeter = testing::greeterNamed("Anna");
  const Value array = testing::arrayOf({Number::integer(7)});
  const Value text = testing::stringOf("a");
  Object& receiver = *greeter.object();
  EXPECT_TRUE(equal(kRow.invokeWithObject(receiver, array.object()), Number::integer(7)));
  EXPECT_TRUE(kRow.invokeWithObject(receiver, text.object()).isNull());
  EXPECT_TRUE(kRow.invokeWithObject(receiver, nullptr).isNull());
  EXPECT_TRUE(equal(kRow.invoke(greeter, {&array, 1}), Number::integer(7)));
  EXPECT_EQ(method<&anyOf>("anyOf:").invokeWithObject, nullptr);
  EXPECT_EQ(method<&Greeter::greet>("greet:").invokeWithObject, nullptr);
  EXPECT_EQ(method<&nothing>("nothing").invokeWithObject, nullptr);
}

TEST(Method, GivesNilForAFunctionWithoutResult) {
  constexpr Method kRow = method<&nothing>("nothing");
  EXPECT_TRUE(kRow.invoke(testing::greeterNamed("Anna"), {}).isNil());
}

}  // namespace
}  // namespace commandfilter
