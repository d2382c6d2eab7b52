#include "ValueJSON.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/Number.h"
#include "runtime/String.h"

namespace commandfilter::tools {
namespace {

std::string textOf(const Value& value) { return toJSON(value).dump(); }

class Gadget final : public Object {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);
  Gadget() = default;
  ~Gadget() override = default;
};
constinit const Class Gadget::kClass{.name = "Gadget", .base = &Object::kClass};

TEST(ToJSON, TellsBooleansFromNumbers) {
  EXPECT_EQ(textOf(Value::boolean(true)), "true");
  EXPECT_EQ(textOf(Value::boolean(false)), "false");
  EXPECT_EQ(textOf(Number::integer(std::int8_t{1})), "true");
  EXPECT_EQ(textOf(Number::integer(std::int8_t{5})), "5");
  EXPECT_EQ(textOf(Number::integer(std::int8_t{-1})), "-1");
  EXPECT_EQ(textOf(Number::integer(1)), "1");
}

TEST(ToJSON, KeepsNumbersExact) {
  EXPECT_EQ(textOf(Number::integer(std::numeric_limits<std::int64_t>::min())),
            "-9223372036854775808");
  EXPECT_EQ(textOf(Number::integer(std::numeric_limits<std::uint64_t>::max())),
            "18446744073709551615");
  EXPECT_EQ(textOf(Number::real(0.1)), "0.1");
}

TEST(ToJSON, ShowsNilAndTheNullObjectAsNull) {
  EXPECT_EQ(textOf(Value()), "null");
  EXPECT_EQ(textOf(Value::null()), "null");
}

TEST(ToJSON, KeepsTheOrderOfKeysAndElements) {
  DictionaryBuilder builder;
  builder.set("z", Number::integer(1));
  builder.set("a", Array::create({String::create("x"), Value::null()}));
  EXPECT_EQ(textOf(builder.build()), R"({"z":1,"a":["x",null]})");
}

TEST(ToJSON, DescribesKeysThatAreNoStrings) {
  DictionaryBuilder builder;
  builder.set(Value(Number::integer(5)), String::create("five"));
  builder.set(Value::null(), String::create("none"));
  EXPECT_EQ(textOf(builder.build()), R"({"5":"five","<null>":"none"})");
}

TEST(ToJSON, HasOneEntryForKeysOfOneDescription) {
  DictionaryBuilder builder;
  builder.set(Value(Number::integer(5)), String::create("number"));
  builder.set("5", String::create("text"));
  EXPECT_EQ(textOf(builder.build()), R"({"5":"number"})");
}

TEST(ToJSON, TakesLargeDictionaries) {
  DictionaryBuilder builder;
  for (int i = 0; i < 100'000; ++i) builder.set(std::to_string(i), Number::integer(i));
  EXPECT_EQ(toJSON(builder.build()).size(), 100'000U);
}

TEST(ToJSON, NamesWhatJSONDoesNotHave) {
  EXPECT_EQ(textOf(Data::create("foo")), R"({"$data":"Zm9v"})");
  EXPECT_EQ(textOf(Date::create(0)), R"({"$date":"1970-01-01T00:00:00Z"})");
  EXPECT_EQ(textOf(make<Gadget>()), R"({"$object":"Gadget"})");
}

TEST(ToJSON, RaisesForWhatIsNestedTooDeep) {
  Value nested;
  for (int i = 0; i < 1'000'000; ++i) nested = Array::create({nested});
  EXPECT_THROW((void)toJSON(nested), Exception);
}

}  // namespace
}  // namespace commandfilter::tools
