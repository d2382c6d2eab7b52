#include "runtime/TextConcatenation.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "TestValues.h"
#include "runtime/Comparison.h"

namespace commandfilter {
namespace {

using testing::reasonOf;
using testing::stringOf;

TEST(TextConcatenation, JoinsDescriptions) {
  EXPECT_EQ(concatenateTexts(stringOf("a"), stringOf("b"))->view(), "ab");
  EXPECT_EQ(concatenateTexts(Number::integer(1), Number::real(0.5))->view(), "10.5");
  EXPECT_EQ(concatenateTexts(stringOf("a b"), testing::arrayOf({}))->view(), "a b(\n)");
  EXPECT_EQ(concatenateTexts(Value::null(), stringOf("\u00E4"))->view(), "<null>\u00E4");
}

TEST(TextConcatenation, TakesNilAsTheEmptyText) {
  EXPECT_EQ(concatenateTexts(Value(), Value())->view(), "");
  EXPECT_EQ(concatenateTexts(Value(), stringOf("b"))->view(), "b");
  EXPECT_EQ(concatenateTexts(stringOf("a"), Value())->view(), "a");
}

TEST(TextConcatenation, ExtendsATextThatNobodyElseHolds) {
  Value left = stringOf("a");
  const Object* object = left.object();
  const Ref<String> joined = concatenateTexts(std::move(left), stringOf("b"));
  EXPECT_EQ(joined.get(), object);
  EXPECT_EQ(joined->referenceCount(), 1U);
}

TEST(TextConcatenation, LeavesATextAloneThatSomebodyHolds) {
  const Value left = stringOf("a");
  const Value right = stringOf("b");
  const Ref<String> joined = concatenateTexts(left, right);
  EXPECT_EQ(joined->view(), "ab");
  EXPECT_EQ(descriptionOf(left), "a");
  EXPECT_EQ(descriptionOf(right), "b");
  EXPECT_EQ(concatenateTexts(left, left)->view(), "aa");
  EXPECT_EQ(descriptionOf(left), "a");
}

TEST(TextConcatenation, ForgetsTheHashOfATextThatItExtends) {
  Value left = stringOf("a");
  static_cast<void>(hashOf(left));
  const Value joined = concatenateTexts(std::move(left), stringOf("b"));
  EXPECT_EQ(hashOf(joined), hashOf(stringOf("ab")));
  EXPECT_TRUE(equal(joined, stringOf("ab")));
}

TEST(TextConcatenation, RaisesForWhatCannotBeDescribed) {
  const Value deep = testing::nestedArrays(5000, Value::null());
  EXPECT_EQ(reasonOf([&] { static_cast<void>(concatenateTexts(stringOf("a"), deep)); }),
            "nested too deeply");
  EXPECT_EQ(reasonOf([&] { static_cast<void>(concatenateTexts(deep, stringOf("a"))); }),
            "nested too deeply");
}

TEST(TextConcatenation, BuildsALongTextPieceByPiece) {
  Value text = stringOf("");
  const Value piece = stringOf("0123456789");
  for (int i = 0; i < 100'000; ++i) text = concatenateTexts(std::move(text), piece);
  EXPECT_EQ(descriptionOf(text).size(), 1'000'000U);
}

}  // namespace
}  // namespace commandfilter
