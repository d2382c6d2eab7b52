#include "runtime/Ref.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

#include "TestObjects.h"

namespace commandfilter {
namespace {

using testing::Greeter;
using testing::INamed;
using testing::LoudGreeter;

static_assert(!std::is_default_constructible_v<Ref<Greeter>>);
static_assert(!std::is_constructible_v<Ref<Greeter>, std::nullptr_t>);
static_assert(!std::is_constructible_v<Ref<Greeter>, RefPtr<Greeter>>);
static_assert(!std::is_convertible_v<Ref<Greeter>, Ref<LoudGreeter>>);
static_assert(std::is_convertible_v<Ref<LoudGreeter>, Ref<Greeter>>);
static_assert(std::is_convertible_v<Ref<LoudGreeter>, RefPtr<INamed>>);
static_assert(!std::is_convertible_v<RefPtr<Greeter>, RefPtr<LoudGreeter>>);
static_assert(!std::is_convertible_v<Greeter*, RefPtr<Greeter>>);

TEST(Ref, HoldsTheObjectThatIsMade) {
  const Ref<Greeter> ref = make<Greeter>("Anna");
  EXPECT_EQ(ref->name(), "Anna");
  EXPECT_EQ((*ref).name(), "Anna");
  EXPECT_EQ(ref.get(), &*ref);
  EXPECT_EQ(ref->referenceCount(), 1U);
}

TEST(Ref, Shares) {
  const Ref<Greeter> first = make<Greeter>("Anna");
  {
    const Ref<Greeter> second = first;
    const Ref<Greeter> third(*first);
    EXPECT_EQ(first->referenceCount(), 3U);
    EXPECT_EQ(second.get(), third.get());
  }
  EXPECT_EQ(first->referenceCount(), 1U);
}

TEST(Ref, Moves) {
  Ref<Greeter> first = make<Greeter>("Anna");
  const Ref<Greeter> second = std::move(first);
  EXPECT_EQ(first.get(), nullptr);  // NOLINT(bugprone-use-after-move): that is the question
  EXPECT_EQ(second->referenceCount(), 1U);
}

TEST(Ref, IsAssigned) {
  Ref<Greeter> first = make<Greeter>("Anna");
  const Ref<Greeter> second = make<Greeter>("Berta");
  first = second;
  EXPECT_EQ(first->name(), "Berta");
  EXPECT_EQ(second->referenceCount(), 2U);
  first = make<Greeter>("Clara");
  EXPECT_EQ(first->name(), "Clara");
  EXPECT_EQ(second->referenceCount(), 1U);
}

TEST(Ref, SurvivesAssignmentToItself) {
  Ref<Greeter> ref = make<Greeter>("Anna");
  Ref<Greeter>& same = ref;
  ref = same;
  EXPECT_EQ(ref->referenceCount(), 1U);
  ref = std::move(same);
  EXPECT_EQ(ref->referenceCount(), 1U);
}

TEST(Ref, BecomesOneToABaseOrAProtocol) {
  const Ref<LoudGreeter> loud = make<LoudGreeter>("Anna");
  {
    const Ref<Greeter> greeter = loud;
    const Ref<INamed> named = loud;
    const Ref<Object> object = greeter;
    EXPECT_EQ(named->name(), "Anna");
    EXPECT_EQ(&named->object(), object.get());
    EXPECT_EQ(loud->referenceCount(), 4U);
  }
  EXPECT_EQ(loud->referenceCount(), 1U);
  const Ref<INamed> taken = make<LoudGreeter>("Berta");
  EXPECT_EQ(taken->name(), "Berta");
  EXPECT_EQ(taken->object().referenceCount(), 1U);
}

TEST(Ref, GivesItsReferenceUp) {
  Ref<Greeter> first = make<Greeter>("Anna");
  const Ref<Greeter> second = Ref<Greeter>::adopt(*first.leak());
  EXPECT_EQ(first.get(), nullptr);
  EXPECT_EQ(second->referenceCount(), 1U);
}

TEST(RefPtr, IsNilUnlessItIsGivenAnObject) {
  const RefPtr<Greeter> pointer;
  EXPECT_FALSE(pointer);
  EXPECT_TRUE(pointer == nullptr);
  EXPECT_EQ(RefPtr<Greeter>(nullptr).get(), nullptr);
  EXPECT_FALSE(RefPtr<Greeter>(static_cast<Greeter*>(nullptr)));
}

TEST(RefPtr, SharesAndMoves) {
  RefPtr<Greeter> first = make<Greeter>("Anna");
  ASSERT_TRUE(first);
  EXPECT_FALSE(first == nullptr);
  EXPECT_EQ(first->name(), "Anna");
  EXPECT_EQ((*first).referenceCount(), 1U);
  {
    const RefPtr<Greeter> second = first;
    const RefPtr<Greeter> third(first.get());
    EXPECT_EQ(first->referenceCount(), 3U);
  }
  const RefPtr<Greeter> moved = std::move(first);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): that is the question
  EXPECT_EQ(moved->referenceCount(), 1U);
}

TEST(RefPtr, IsAssigned) {
  RefPtr<Greeter> pointer = make<Greeter>("Anna");
  const RefPtr<Greeter> other = make<Greeter>("Berta");
  pointer = other;
  EXPECT_EQ(other->referenceCount(), 2U);
  RefPtr<Greeter>& same = pointer;
  pointer = same;
  EXPECT_EQ(other->referenceCount(), 2U);
  pointer = nullptr;
  EXPECT_EQ(other->referenceCount(), 1U);
  EXPECT_FALSE(pointer);
}

TEST(RefPtr, BecomesOneToABaseOrAProtocol) {
  RefPtr<LoudGreeter> loud = make<LoudGreeter>("Anna");
  const Ref<LoudGreeter> other = make<LoudGreeter>("Berta");
  {
    const RefPtr<INamed> named = loud;
    const RefPtr<Greeter> fromRef = other;
    EXPECT_EQ(named->name(), "Anna");
    EXPECT_EQ(loud->referenceCount(), 2U);
    EXPECT_EQ(other->referenceCount(), 2U);
  }
  const RefPtr<Object> taken = std::move(loud);
  EXPECT_EQ(taken->referenceCount(), 1U);
  const RefPtr<INamed> none = RefPtr<LoudGreeter>();
  EXPECT_FALSE(none);
}

TEST(RefPtr, GivesItsReferenceUp) {
  RefPtr<Greeter> pointer = make<Greeter>("Anna");
  const Ref<Greeter> ref = Ref<Greeter>::adopt(*pointer.leak());
  EXPECT_FALSE(pointer);
  EXPECT_EQ(ref->referenceCount(), 1U);
  EXPECT_EQ(pointer.leak(), nullptr);
}

}  // namespace
}  // namespace commandfilter
