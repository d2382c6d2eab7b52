#include "runtime/KeyValueLookup.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "TestObjects.h"
#include "TestValues.h"

namespace commandfilter {
namespace {

using namespace std::string_view_literals;
using testing::greeterNamed;
using testing::Proxy;
using testing::reasonOf;
using testing::stringOf;

Value lookUp(const Value& value, std::string_view key) {
  return valueForKey(value, *String::create(std::string(key)));
}

// Answers "valueForKey:" itself.
class Store final : public Object {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};
Value storedValue(const Store& /*receiver*/, const String* key) {
  return String::create("stored " + key->text());
}
constexpr std::array kStoreMethods{method<&storedValue>("valueForKey:")};
constinit const Class Store::kClass{
    .name = "Store", .base = &Object::kClass, .methods = kStoreMethods};

TEST(KeyValueLookup, GivesTheEntryOfADictionary) {
  const Value dictionary = testing::dictionaryOf({{stringOf("a"), stringOf("x")},
                                                  {stringOf("count"), stringOf("y")},
                                                  {stringOf(""), Value::null()}});
  EXPECT_EQ(descriptionOf(lookUp(dictionary, "a")), "x");
  EXPECT_EQ(descriptionOf(lookUp(dictionary, "count")), "y");
  EXPECT_TRUE(lookUp(dictionary, "").isNull());
  EXPECT_TRUE(lookUp(dictionary, "b").isNil());
  EXPECT_TRUE(lookUp(testing::dictionaryOf({}), "count").isNil());
}

TEST(KeyValueLookup, AsksTheObjectThatAnswersForKeys) {
  EXPECT_EQ(descriptionOf(lookUp(make<Store>(), "a")), "stored a");
  EXPECT_EQ(descriptionOf(lookUp(make<Store>(), "description")), "stored description");
}

TEST(KeyValueLookup, SendsTheKeyAsAMessage) {
  EXPECT_EQ(descriptionOf(lookUp(greeterNamed("Anna"), "name")), "Anna");
  EXPECT_EQ(lookUp(greeterNamed("Anna"), "lengthOfName").number().longValue(), 4);
  EXPECT_EQ(lookUp(stringOf("four"), "length").number().longValue(), 4);
  EXPECT_EQ(lookUp(testing::arrayOf({Value()}), "count").number().longValue(), 1);
  EXPECT_EQ(lookUp(Number::real(2.5), "intValue").number().longValue(), 2);
  EXPECT_EQ(descriptionOf(lookUp(Value::null(), "description")), "<null>");
}

TEST(KeyValueLookup, GivesNilForNil) { EXPECT_TRUE(lookUp(Value(), "a").isNil()); }

TEST(KeyValueLookup, RaisesWhenTheValueCannotBeAsked) {
  EXPECT_EQ(reasonOf([] { lookUp(greeterNamed("Anna"), "nothing"); }),
            "Greeter has no value for key nothing");
  EXPECT_EQ(reasonOf([] { lookUp(Number::integer(1), ""); }), "Number has no value for key ");
  EXPECT_EQ(reasonOf([] { lookUp(Value::null(), "count"); }), "Null has no value for key count");
  // A message that takes arguments, and a key that no message can have.
  EXPECT_FALSE(reasonOf([] { lookUp(greeterNamed("Anna"), "greet:"); }).empty());
  EXPECT_FALSE(reasonOf([] { lookUp(greeterNamed("Anna"), "name\0"sv); }).empty());
}

TEST(KeyValueLookup, IsAnsweredByAProxyItself) {
  const Ref<Proxy> proxy = make<Proxy>(greeterNamed("Anna"));
  EXPECT_TRUE(descriptionOf(lookUp(proxy, "description")).starts_with("<Proxy: "));
  EXPECT_EQ(reasonOf([&] { lookUp(proxy, "name"); }), "Proxy has no value for key name");
  EXPECT_TRUE(proxy->forwarded().empty());
}

}  // namespace
}  // namespace commandfilter
