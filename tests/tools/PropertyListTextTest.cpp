#include "PropertyListText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Comparison.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/PropertyList.h"
#include "runtime/String.h"

namespace commandfilter::testing {
namespace {

// The value as it is after it was written and read.
Value readBack(const Value& value) {
  Result<Value> list = parsePropertyList(tools::propertyListText(value));
  EXPECT_TRUE(list) << list.reason();
  return list ? *list : Value();
}

TEST(PropertyListText, IsReadAsWhatItWasWrittenFor) {
  DictionaryBuilder builder;
  builder.set("", Value::boolean(false));
  builder.set("a <&> \"b\"", String::create("<![CDATA[\u00E4]]>&amp;\r\n\t "));
  builder.set("numbers", Array::create({Number::integer(std::numeric_limits<std::int64_t>::min()),
                                        Number::integer(std::numeric_limits<std::uint64_t>::max()),
                                        Number::real(0.1), Number::real(-1e300),
                                        Number::real(std::numeric_limits<double>::quiet_NaN()),
                                        Number::real(-std::numeric_limits<double>::infinity())}));
  builder.set("dates", Array::create({Date::create(-62135596800), Date::create(1580472000.25)}));
  builder.set("data", Data::create(std::string("\0\x01\xFF\xFE", 4)));
  builder.set("nothing", Dictionary::create());
  const Value value = builder.build();
  EXPECT_TRUE(equal(readBack(value), value)) << tools::propertyListText(value);
}

TEST(PropertyListText, ReplacesWhatNoListCanHold) {
  EXPECT_EQ(descriptionOf(readBack(String::create("a\x01"
                                                  "b\uFFFE\uFFFF\uFFFD"))),
            "a\uFFFDb\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(descriptionOf(readBack(Date::create(1e15))), "1000000000000000");
}

}  // namespace
}  // namespace commandfilter::testing
