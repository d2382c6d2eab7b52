#include "runtime/TextConcatenation.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/SizeLimits.h"

namespace commandfilter {
namespace {

using testing::stringOf;

// The texts of the strings as one.
Ref<String> joined(Ref<String> left, const std::vector<Ref<String>>& others) {
  std::vector<const String*> texts;
  for (const Ref<String>& other : others) texts.push_back(other.get());
  return concatenateTexts(std::move(left), texts);
}

TEST(TextConcatenation, JoinsAnyNumberOfTexts) {
  const Ref<String> left = String::create("a");
  EXPECT_EQ(joined(left, {})->view(), "a");
  EXPECT_EQ(joined(left, {String::create("\u00E4")})->view(), "a\u00E4");
  EXPECT_EQ(joined(left, {String::create(""), String::create("b c d e f g h i j"), left})->view(),
            "ab c d e f g h i ja");
}

TEST(TextConcatenation, ExtendsATextThatNobodyElseHolds) {
  Ref<String> left = String::create("a");
  const Object* object = left.get();
  const Ref<String> result = joined(std::move(left), {String::create("b"), String::create("c")});
  EXPECT_EQ(result->view(), "abc");
  EXPECT_EQ(result.get(), object);
  EXPECT_EQ(result->referenceCount(), 1U);
}

TEST(TextConcatenation, LeavesATextAloneThatSomebodyHolds) {
  const Ref<String> left = String::create("a");
  const Ref<String> right = String::create("b");
  EXPECT_EQ(joined(left, {right})->view(), "ab");
  EXPECT_EQ(left->view(), "a");
  EXPECT_EQ(right->view(), "b");
  EXPECT_EQ(joined(left, {left})->view(), "aa");
  EXPECT_EQ(left->view(), "a");
}

TEST(TextConcatenation, ForgetsTheHashOfATextThatItExtends) {
  Ref<String> left = String::create("a");
  static_cast<void>(left->hash());
  const Value result = joined(std::move(left), {String::create("b")});
  EXPECT_EQ(hashOf(result), hashOf(stringOf("ab")));
  EXPECT_TRUE(equal(result, stringOf("ab")));
}

TEST(TextConcatenation, RaisesForATextThatIsTooLarge) {
  const Ref<String> half = String::create(std::string(kLargestText / 2, 'a'));
  EXPECT_EQ(joined(half, {half})->view().size(), kLargestText);
  const Ref<String> one = String::create("b");
  EXPECT_EQ(testing::reasonOf([&] {
              static_cast<void>(joined(half, {half, one}));
            }),
            "a value is too large");
  EXPECT_EQ(half->view().size(), kLargestText / 2);
}

TEST(TextConcatenation, BuildsALongTextPieceByPiece) {
  Ref<String> text = String::create("");
  const Ref<String> piece = String::create("0123456789");
  for (int i = 0; i < 100'000; ++i) text = joined(std::move(text), {piece});
  EXPECT_EQ(text->view().size(), 1'000'000U);
}

}  // namespace
}  // namespace commandfilter
