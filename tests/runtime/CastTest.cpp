#include "runtime/Cast.h"

#include <gtest/gtest.h>

#include "TestObjects.h"
#include "TestValues.h"
#include "runtime/Data.h"
#include "runtime/Date.h"

namespace commandfilter {
namespace {

using testing::Greeter;
using testing::greeterNamed;
using testing::IGreeter;
using testing::INamed;
using testing::IStranger;
using testing::LoudGreeter;
using testing::Proxy;

TEST(Cast, GivesObjectsOfTheFinalKinds) {
  const Value string = testing::stringOf("text");
  EXPECT_EQ(castTo<String>(string), string.object());
  EXPECT_EQ(castTo<Array>(string), nullptr);
  EXPECT_EQ(castTo<Dictionary>(string), nullptr);
  EXPECT_NE(castTo<Array>(testing::arrayOf({})), nullptr);
  EXPECT_NE(castTo<Dictionary>(testing::dictionaryOf({})), nullptr);
  EXPECT_NE(castTo<Data>(Value(Data::create(""))), nullptr);
  EXPECT_NE(castTo<Date>(Value(Date::create(0))), nullptr);
}

TEST(Cast, GivesObjectsOfAClassAndThoseBelowIt) {
  const Value greeter = greeterNamed("Anna");
  const Value loud = make<LoudGreeter>("Berta");
  EXPECT_EQ(castTo<Greeter>(greeter), greeter.object());
  EXPECT_EQ(castTo<Greeter>(loud), loud.object());
  EXPECT_EQ(castTo<LoudGreeter>(loud), loud.object());
  EXPECT_EQ(castTo<LoudGreeter>(greeter), nullptr);
  EXPECT_EQ(castTo<Proxy>(greeter), nullptr);
  EXPECT_EQ(castTo<Greeter>(testing::stringOf("text")), nullptr);
  EXPECT_EQ(castTo<String>(greeter), nullptr);
}

TEST(Cast, GivesTheInterfaceOfAProtocol) {
  const Value loud = make<LoudGreeter>("Berta");
  auto* named = castTo<INamed>(loud);
  auto* greeter = castTo<IGreeter>(loud);
  ASSERT_NE(named, nullptr);
  ASSERT_NE(greeter, nullptr);
  EXPECT_EQ(named->name(), "Berta");
  EXPECT_EQ(descriptionOf(greeter->greet(String::create("Anna").get())), "Berta greets Anna");
  EXPECT_EQ(&named->object(), loud.object());
  EXPECT_EQ(&greeter->object(), loud.object());
  EXPECT_EQ(castTo<IStranger>(loud), nullptr);
}

TEST(Cast, KnowsAProtocolByItsName) {
  // Another bundle has its own copy of the protocol's data.
  static constexpr Protocol kCopy{"INamed"};
  const Value greeter = greeterNamed("Anna");
  EXPECT_NE(detail::interfaceOf(*greeter.object(), kCopy), nullptr);
}

TEST(Cast, GivesNothingForWhatIsNoObject) {
  for (const Value& value :
       {Value(), Value::null(), Value(Number::integer(1)), Value::boolean(true)}) {
    EXPECT_EQ(castTo<Object>(value), nullptr);
    EXPECT_EQ(castTo<String>(value), nullptr);
    EXPECT_EQ(castTo<Greeter>(value), nullptr);
    EXPECT_EQ(castTo<INamed>(value), nullptr);
  }
  EXPECT_EQ(castTo<String>(static_cast<Object*>(nullptr)), nullptr);
}

TEST(Cast, AProxyIsNotWhatItStandsFor) {
  const Value proxy = make<Proxy>(greeterNamed("Anna"));
  EXPECT_EQ(castTo<Greeter>(proxy), nullptr);
  EXPECT_EQ(castTo<INamed>(proxy), nullptr);
  EXPECT_EQ(castTo<Object>(proxy), proxy.object());
}

TEST(Cast, BorrowsTheObject) {
  const Value greeter = greeterNamed("Anna");
  static_cast<void>(castTo<INamed>(greeter));
  EXPECT_EQ(greeter.object()->referenceCount(), 1U);
}

}  // namespace
}  // namespace commandfilter
