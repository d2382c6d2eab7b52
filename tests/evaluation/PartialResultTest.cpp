#include "evaluation/PartialResult.h"

#include <gtest/gtest.h>

#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

TEST(CollectedElements, ShowWhatDoesNotChange) {
  const Ref<CollectedElements> kept = CollectedElements::create();
  const Ref<Array> none = kept->elementsSoFar();
  kept->append(numberOf(1));
  kept->append(arrayOf({numberOf(2)}));
  const Ref<Array> seen = kept->elementsSoFar();
  kept->append(Value::null());
  EXPECT_EQ(shown(none), "[]");
  EXPECT_EQ(shown(seen), "[1q, [2q]]");
  EXPECT_EQ(shown(kept->elementsSoFar()), "[1q, [2q], <null>]");
}

TEST(CollectedElements, BeginWithAnArrayThatStaysAsItIs) {
  const Ref<Array> start = Array::create({numberOf(1)});
  const Ref<CollectedElements> kept = CollectedElements::create(start);
  EXPECT_EQ(kept->elementsSoFar().get(), start.get());
  kept->append(numberOf(2));
  EXPECT_EQ(shown(start), "[1q]");
  EXPECT_EQ(shown(kept->elementsSoFar()), "[1q, 2q]");
}

TEST(CollectedElements, AreNotCopiedToBeShown) {
  const Ref<CollectedElements> kept = CollectedElements::create();
  const Ref<String> text = String::create("element");
  kept->append(text);
  const auto references = text->referenceCount();
  const Ref<Array> seen = kept->elementsSoFar();
  EXPECT_EQ(text->referenceCount(), references);
}

}  // namespace
}  // namespace commandfilter::testing
