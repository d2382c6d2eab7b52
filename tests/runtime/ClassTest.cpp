#include "runtime/Class.h"

#include <gtest/gtest.h>

#include <array>

#include "TestObjects.h"
#include "TestValues.h"
#include "runtime/Send.h"

namespace commandfilter {
namespace {

using testing::Greeter;
using testing::greeterNamed;
using testing::IGreeter;
using testing::INamed;
using testing::IStranger;
using testing::LoudGreeter;
using testing::Proxy;

TEST(Class, IsOfItsOwnKindAndThoseThatItExtends) {
  EXPECT_TRUE(Greeter::kClass.isKindOf(Greeter::kClass));
  EXPECT_TRUE(Greeter::kClass.isKindOf(Object::kClass));
  EXPECT_TRUE(LoudGreeter::kClass.isKindOf(Greeter::kClass));
  EXPECT_TRUE(LoudGreeter::kClass.isKindOf(Object::kClass));
  EXPECT_FALSE(Greeter::kClass.isKindOf(LoudGreeter::kClass));
  EXPECT_FALSE(Proxy::kClass.isKindOf(Greeter::kClass));
  EXPECT_FALSE(Object::kClass.isKindOf(Greeter::kClass));
}

TEST(Class, FindsInstanceMethods) {
  const Method* method = Greeter::kClass.instanceMethod(Selector("greet:"));
  ASSERT_NE(method, nullptr);
  EXPECT_EQ(method->selector, "greet:");
  EXPECT_EQ(method->types, "@@");
  EXPECT_EQ(Greeter::kClass.instanceMethod(Selector("greet")), nullptr);
  EXPECT_EQ(Greeter::kClass.instanceMethod(Selector("motto")), nullptr);
  EXPECT_EQ(Greeter::kClass.instanceMethod(Selector("initWithName:")), nullptr);
}

TEST(Class, FindsMethodsOfAGroup) {
  EXPECT_NE(Greeter::kClass.instanceMethod(Selector("name")), nullptr);
}

TEST(Class, InheritsInstanceMethodsAndReplacesThem) {
  EXPECT_EQ(LoudGreeter::kClass.instanceMethod(Selector("greet:")),
            Greeter::kClass.instanceMethod(Selector("greet:")));
  EXPECT_NE(LoudGreeter::kClass.instanceMethod(Selector("name")),
            Greeter::kClass.instanceMethod(Selector("name")));
  EXPECT_NE(LoudGreeter::kClass.instanceMethod(Selector("description")), nullptr);
  EXPECT_EQ(Greeter::kClass.instanceMethod(Selector("shout")), nullptr);
  EXPECT_NE(LoudGreeter::kClass.instanceMethod(Selector("shout")), nullptr);
}

TEST(Class, InheritsClassMethods) {
  EXPECT_NE(Greeter::kClass.classMethod(Selector("motto")), nullptr);
  EXPECT_NE(LoudGreeter::kClass.classMethod(Selector("motto")), nullptr);
  EXPECT_EQ(Greeter::kClass.classMethod(Selector("greet:")), nullptr);
  EXPECT_EQ(Object::kClass.classMethod(Selector("motto")), nullptr);
}

TEST(Class, DoesNotInheritInitializers) {
  EXPECT_NE(Greeter::kClass.initializer(Selector("initWithName:")), nullptr);
  EXPECT_EQ(LoudGreeter::kClass.initializer(Selector("initWithName:")), nullptr);
  EXPECT_EQ(Greeter::kClass.initializer(Selector("motto")), nullptr);
}

TEST(Class, KnowsWhatItsInstancesAnswer) {
  EXPECT_TRUE(Greeter::kClass.instancesRespondToSelector(Selector("greet:")));
  EXPECT_TRUE(Greeter::kClass.instancesRespondToSelector(Selector("initWithName:")));
  EXPECT_TRUE(LoudGreeter::kClass.instancesRespondToSelector(Selector("greet:")));
  EXPECT_FALSE(LoudGreeter::kClass.instancesRespondToSelector(Selector("initWithName:")));
  EXPECT_FALSE(Greeter::kClass.instancesRespondToSelector(Selector("motto")));
}

TEST(Class, ConformsToDeclaredInheritedAndAdoptedProtocols) {
  EXPECT_TRUE(Greeter::kClass.conformsToProtocol(IGreeter::kProtocol));
  EXPECT_TRUE(LoudGreeter::kClass.conformsToProtocol(IGreeter::kProtocol));
  EXPECT_TRUE(LoudGreeter::kClass.conformsToProtocol(INamed::kProtocol));
  EXPECT_FALSE(Greeter::kClass.conformsToProtocol(IStranger::kProtocol));
  EXPECT_FALSE(Object::kClass.conformsToProtocol(INamed::kProtocol));

  // IGreeter alone brings the protocol that it refines.
  static constexpr auto kProtocols = conformances<Greeter, IGreeter>();
  static constexpr Class kClass{.name = "Other", .base = &Object::kClass, .protocols = kProtocols};
  EXPECT_TRUE(kClass.conformsToProtocol(INamed::kProtocol));
}

TEST(Class, OfEveryValueIsKnown) {
  EXPECT_EQ(classOf(Value()), nullptr);
  EXPECT_EQ(classOf(Value::null()), &kNullClass);
  EXPECT_EQ(classOf(Value::boolean(true)), &kNumberClass);
  EXPECT_EQ(classOf(Number::real(1.5)), &kNumberClass);
  EXPECT_EQ(classOf(testing::stringOf("")), &String::kClass);
  EXPECT_EQ(classOf(greeterNamed("Anna")), &Greeter::kClass);
}

TEST(Class, GivesNumbersTheirConversionsAsMethods) {
  const Value number = Number::real(-300.75);
  const auto ask = [&number](const char* selector) { return send(number, Selector(selector)); };
  EXPECT_EQ(ask("charValue").number().encoding(), 'c');
  EXPECT_EQ(ask("charValue").number().longValue(), -44);
  EXPECT_EQ(ask("shortValue").number().encoding(), 's');
  EXPECT_EQ(ask("shortValue").number().longValue(), -300);
  EXPECT_EQ(ask("intValue").number().encoding(), 'i');
  EXPECT_EQ(ask("longValue").number().encoding(), 'q');
  EXPECT_EQ(ask("integerValue").number().longValue(), -300);
  EXPECT_EQ(ask("floatValue").number().encoding(), 'f');
  EXPECT_EQ(ask("doubleValue").number().encoding(), 'd');
  EXPECT_EQ(ask("doubleValue").number().doubleValue(), -300.75);
  EXPECT_EQ(descriptionOf(ask("description")), "-300.75");
  EXPECT_TRUE(send(number, Selector("isEqual:"), {Number::real(-300.75)}).number().boolValue());
}

TEST(Class, GivesTheNullObjectWhatEveryObjectHas) {
  EXPECT_EQ(descriptionOf(send(Value::null(), Selector("description"))), "<null>");
  EXPECT_TRUE(send(Value::null(), Selector("isEqual:"), {Value::null()}).number().boolValue());
}

// The answers of many searches fall on the same places of the cache.
TEST(Class, FindsMethodsAlsoAfterManyOthers) {
  const Selector greet("greet:");
  const Method* method = Greeter::kClass.instanceMethod(greet);
  for (int i = 0; i < 5000; ++i) {
    const Selector other("unknown" + std::to_string(i));
    EXPECT_EQ(Greeter::kClass.instanceMethod(other), nullptr);
  }
  EXPECT_EQ(Greeter::kClass.instanceMethod(greet), method);
  EXPECT_EQ(LoudGreeter::kClass.instanceMethod(greet), method);
}

}  // namespace
}  // namespace commandfilter
