#include "runtime/Object.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Counts.h"
#include "TestObjects.h"
#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/Invocation.h"
#include "runtime/MethodSignature.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"
#include "runtime/ValueVector.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::Greeter;
using testing::greeterNamed;
using testing::kMillion;
using testing::nestedArrays;
using testing::nestedDictionaries;
using testing::reasonOf;
using testing::runOnStackOf;

// Runs a function when it is destroyed.
class Farewell final : public Object {
 public:
  explicit Farewell(std::function<void()> last) : last_(std::move(last)) {}
  ~Farewell() override { last_(); }

 private:
  std::function<void()> last_;
};

TEST(Object, IsEqualToItselfOnly) {
  const Value one = greeterNamed("Anna");
  const Value other = greeterNamed("Anna");
  EXPECT_TRUE(equal(one, one));
  EXPECT_FALSE(equal(one, other));
  EXPECT_FALSE(equal(one, Value()));
  EXPECT_FALSE(equal(one, Value::null()));
  EXPECT_EQ(hashOf(one), hashOf(one));
  EXPECT_NE(hashOf(one), hashOf(other));
}

// Stands for another value as a key, or is none.
class Key final : public Object {
 public:
  explicit Key(Value stored) : stored_(std::move(stored)) {}
  [[nodiscard]] Value dictionaryKey() const override {
    if (stored_.isNil()) throw Exception("no key");
    return stored_;
  }

 private:
  Value stored_;
};

TEST(Object, SaysWhatADictionaryKeepsAsItsKey) {
  const Value plain = greeterNamed("Anna");
  DictionaryBuilder builder;
  builder.set(plain, Number::integer(1));
  builder.set(Value(make<Key>(Number::integer(5))), Number::integer(2));
  EXPECT_EQ(reasonOf([&] { builder.set(Value(make<Key>(Value())), Number::integer(3)); }),
            "no key");
  EXPECT_EQ(builder.count(), 2U);
  EXPECT_TRUE(builder.objectForKey(plain).isIdenticalTo(Number::integer(1)));
  EXPECT_TRUE(builder.objectForKey(Number::integer(5)).isIdenticalTo(Number::integer(2)));
}

TEST(Object, DescribesItselfByClassAndAddress) {
  const Value object = greeterNamed("Anna");
  std::array<char, 64> expected{};
  std::snprintf(expected.data(), expected.size(), "<Greeter: %p>",
                static_cast<void*>(object.object()));
  EXPECT_EQ(descriptionOf(object), expected.data());
  EXPECT_EQ(descriptionOf(arrayOf({object})), "(\n    " + std::string(expected.data()) + "\n)");
}

TEST(Object, IsOfNoKindThatTheLanguageTests) {
  EXPECT_EQ(greeterNamed("Anna").object()->objectKind(), ObjectKind::Other);
}

TEST(Object, CountsItsReferences) {
  const Ref<Greeter> object = make<Greeter>("Anna");
  EXPECT_EQ(object->referenceCount(), 1U);
  object->ref();
  EXPECT_EQ(object->referenceCount(), 2U);
  object->deref();
  EXPECT_EQ(object->referenceCount(), 1U);
}

TEST(Object, IsDestroyedWithItsLastReference) {
  int destroyed = 0;
  {
    Value first = make<Farewell>([&destroyed] { ++destroyed; });
    {
      const Value second = first;
      first = Value();
      EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(Object, AnswersWhatEveryObjectAnswers) {
  const Value object = greeterNamed("Anna");
  EXPECT_EQ(descriptionOf(send(object, Selector("description"))), descriptionOf(object));
  const Selector isEqual("isEqual:");
  EXPECT_TRUE(send(object, isEqual, {object}).number().boolValue());
  EXPECT_FALSE(send(object, isEqual, {greeterNamed("Anna")}).number().boolValue());
  EXPECT_FALSE(send(object, isEqual, {Value()}).number().boolValue());
  EXPECT_EQ(send(object, isEqual, {object}).number().encoding(), 'c');
}

TEST(Object, SaysWhatItsClassSays) {
  const Value object = greeterNamed("Anna");
  EXPECT_TRUE(object.object()->respondsToSelector(Selector("lengthOfName")));
  EXPECT_FALSE(object.object()->respondsToSelector(Selector("nothing")));
  EXPECT_TRUE(object.object()->conformsToProtocol(testing::INamed::kProtocol));
  EXPECT_FALSE(object.object()->conformsToProtocol(testing::IStranger::kProtocol));
  EXPECT_EQ(object.object()->methodSignatureForSelector(Selector("countOf:and:")).operator bool(),
            false);
  EXPECT_TRUE(object.object()->methodSignatureForSelector(Selector("greet:")));
}

TEST(Object, RaisesForAnInvocationThatItDoesNotForward) {
  const Value object = greeterNamed("Anna");
  Invocation invocation(MethodSignature("v"), object, Selector("nothing"));
  EXPECT_EQ(reasonOf([&] { object.object()->forwardInvocation(invocation); }),
            "Greeter: unrecognized selector nothing");
}

TEST(Object, IsDestroyedInTheOrderOfReferences) {
  std::vector<int> order;
  {
    const Value outer = arrayOf({Value(make<Farewell>([&order] { order.push_back(1); })),
                                 Value(make<Farewell>([&order] { order.push_back(2); }))});
  }
  EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST(Object, DestroysWhatIsNestedAMillionDeep) {
  int destroyed = 0;
  for (const auto nested : {&nestedArrays, &nestedDictionaries}) {
    Value value = nested(kMillion, make<Farewell>([&destroyed] { ++destroyed; }));
    EXPECT_EQ(destroyed, 0);
    value = Value();
    EXPECT_EQ(destroyed, 1);
    destroyed = 0;
  }
}

// A stack that would not hold one frame for every hundred objects.
TEST(Object, DestroysWhatIsNestedAMillionDeepOnASmallStack) {
  Value value = nestedArrays(kMillion, Number::integer(1));
  runOnStackOf(std::size_t{128} * 1024, [&value] { value = Value(); });
  EXPECT_TRUE(value.isNil());
}

// Each array goes only when the one around it does, the wide way too.
TEST(Object, DestroysDeepValuesSideBySide) {
  int destroyed = 0;
  ValueVector elements;
  for (int i = 0; i < 100; ++i) {
    elements.push_back(nestedArrays(1000, make<Farewell>([&destroyed] { ++destroyed; })));
  }
  Value value = Array::create(std::move(elements));
  value = Value();
  EXPECT_EQ(destroyed, 100);
}

TEST(Object, MayDestroyOthersFromItsDestructor) {
  int destroyed = 0;
  Value innermost = nestedArrays(1000, make<Farewell>([&destroyed] { ++destroyed; }));
  Value value = nestedArrays(1000, make<Farewell>([&] {
                               innermost = Value();
                               ++destroyed;
                             }));
  value = Value();
  EXPECT_EQ(destroyed, 2);
}

}  // namespace
}  // namespace commandfilter
