#include "device_model/NullObjects.h"

#include <gtest/gtest.h>

#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Dictionary.h"
#include "runtime/Number.h"
#include "runtime/String.h"

namespace commandfilter {
namespace {

Value mark() {
  DictionaryBuilder builder;
  builder.set("$null", Value::boolean(true));
  return builder.build();
}

TEST(NullObjects, TakeThePlaceOfTheirMarks) {
  EXPECT_TRUE(withNullObjects(mark()).isNull());
  const Value list = Array::create({Number::integer(1), mark(), Array::create({mark()})});
  EXPECT_TRUE(equal(withNullObjects(list), Array::create({Number::integer(1), Value::null(),
                                                          Array::create({Value::null()})})));
}

TEST(NullObjects, KeepTheOrderOfKeys) {
  DictionaryBuilder builder;
  builder.set("a", mark());
  builder.set("b", Number::integer(1));
  const Value replaced = withNullObjects(builder.build());
  const auto& entries = *castTo<Dictionary>(replaced);
  EXPECT_TRUE(entries.begin()->value.isNull());
  EXPECT_TRUE(equal(entries.objectForKey("b"), Number::integer(1)));
}

TEST(NullObjects, LeaveEverythingElseAsItIs) {
  DictionaryBuilder builder;
  builder.set("$null", Value::boolean(true));
  builder.set("more", Value::boolean(true));
  const Value dictionary = builder.build();
  EXPECT_TRUE(withNullObjects(dictionary).isIdenticalTo(dictionary));
  const Value list = Array::create({dictionary, String::create("$null")});
  EXPECT_TRUE(withNullObjects(list).isIdenticalTo(list));
  EXPECT_TRUE(withNullObjects(Value()).isNil());
}

}  // namespace
}  // namespace commandfilter
