#include "OneLine.h"

#include <gtest/gtest.h>

#include <string>

#include "runtime/Array.h"
#include "runtime/Dictionary.h"
#include "runtime/Number.h"
#include "runtime/String.h"

namespace commandfilter::tools {
namespace {

TEST(OneLine, TellsKindsOfValuesApart) {
  EXPECT_EQ(oneLine(Value()), "nil");
  EXPECT_EQ(oneLine(Value::null()), "null");
  EXPECT_EQ(oneLine(String::create("nil")), "\"nil\"");
  EXPECT_EQ(oneLine(String::create("5\n\"")), "\"5\\n\\\"\"");
  EXPECT_EQ(oneLine(Number::integer(5)), "5");
  EXPECT_EQ(oneLine(Value::boolean(true)), "true");
}

TEST(OneLine, ShowsCollections) {
  DictionaryBuilder builder;
  builder.set("a", Array::create({Number::integer(1), Value::null()}));
  builder.set(Value(Number::integer(5)), Array::create());
  EXPECT_EQ(oneLine(builder.build()), R"({"a":[1,null],"5":[]})");
}

TEST(OneLine, EndsWithThreeFullStopsWhenItIsLong) {
  const std::string line = oneLine(String::create(std::string(1000, 'x')));
  EXPECT_EQ(line, "\"" + std::string(239, 'x') + "...");
  std::string signs;
  for (int i = 0; i < 1000; ++i) signs.append("\xE2\x82\xAC");
  const std::string cut = oneLine(String::create(signs));
  EXPECT_EQ((cut.size() - 4) % 3, 0U);
}

TEST(OneLine, LooksNoFurtherThanItShows) {
  Value shared = Array::create({Number::integer(1)});
  for (int i = 0; i < 100; ++i) shared = Array::create({shared, shared});
  EXPECT_TRUE(oneLine(shared).ends_with("..."));
  Value deep;
  for (int i = 0; i < 1'000'000; ++i) deep = Array::create({deep});
  EXPECT_TRUE(oneLine(deep).ends_with("..."));
}

}  // namespace
}  // namespace commandfilter::tools
