#include "runtime/ClassRegistry.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include "TestObjects.h"
#include "TestValues.h"

namespace commandfilter {
namespace {

using testing::Greeter;
using testing::LoudGreeter;

constexpr std::array<const Class*, 2> kGreeters{&Greeter::kClass, &LoudGreeter::kClass};
constexpr Class kImpostor{.name = "Greeter", .base = &Object::kClass};
constexpr std::array<const Class*, 1> kImpostors{&kImpostor};

Value one(const Object& /*receiver*/) { return Number::integer(1); }
Value two(const Object& /*receiver*/) { return Number::integer(2); }

TEST(ClassRegistry, KnowsTheClassesOfTheRuntime) {
  EXPECT_EQ(runtimeClasses().size(), 8U);
  for (const Class* info : runtimeClasses()) EXPECT_EQ(classNamed(info->name), info);
  EXPECT_EQ(classNamed("Number"), &kNumberClass);
  EXPECT_EQ(classNamed("Null"), &kNullClass);
  EXPECT_EQ(classNamed("String"), &String::kClass);
}

TEST(ClassRegistry, KnowsNoOtherNames) {
  EXPECT_EQ(classNamed("Greeter"), nullptr);
  EXPECT_EQ(classNamed(""), nullptr);
  EXPECT_EQ(classNamed("string"), nullptr);
  EXPECT_EQ(classNamed("String "), nullptr);
}

TEST(ClassRegistry, KnowsClassesAsLongAsTheyAreRegistered) {
  {
    const auto registration = ClassRegistry::shared().add(kGreeters);
    EXPECT_EQ(classNamed("Greeter"), &Greeter::kClass);
    EXPECT_EQ(classNamed("LoudGreeter"), &LoudGreeter::kClass);
  }
  EXPECT_EQ(classNamed("Greeter"), nullptr);
  EXPECT_EQ(classNamed("LoudGreeter"), nullptr);
}

TEST(ClassRegistry, GivesTheClassThatWasRegisteredFirst) {
  auto first = ClassRegistry::shared().add(kGreeters);
  const auto second = ClassRegistry::shared().add(kImpostors);
  EXPECT_EQ(classNamed("Greeter"), &Greeter::kClass);
  first = {};
  EXPECT_EQ(classNamed("Greeter"), &kImpostor);
}

TEST(ClassRegistry, MovesRegistrations) {
  ClassRegistry::Registration outer;
  {
    auto inner = ClassRegistry::shared().add(kGreeters);
    const auto moved = std::move(inner);
    EXPECT_NE(classNamed("Greeter"), nullptr);
    outer = ClassRegistry::shared().add(kImpostors);
  }
  EXPECT_EQ(classNamed("Greeter"), &kImpostor);
  outer = ClassRegistry::Registration();
  EXPECT_EQ(classNamed("Greeter"), nullptr);
}

TEST(ClassRegistry, LeavesAKeptListRegistered) {
  // For the rest of the process, so the name is one that no other test asks for.
  static constexpr Class kKept{.name = "ClassThatIsKept", .base = &Object::kClass};
  static constexpr std::array<const Class*, 1> kList{&kKept};
  {
    auto registration = ClassRegistry::shared().add(kList);
    registration.keep();
  }
  EXPECT_EQ(classNamed("ClassThatIsKept"), &kKept);
}

TEST(ClassRegistry, TakesAnEmptyList) {
  const auto registration = ClassRegistry::shared().add({});
  EXPECT_EQ(classNamed(""), nullptr);
}

// The memory of a bundle's classes is used again when another bundle is loaded in its place.
TEST(ClassRegistry, ForgetsTheMethodsOfClassesThatAreGone) {
  static constexpr std::array kOnes{method<&one>("number")};
  static constexpr std::array kTwos{method<&two>("number"), method<&two>("more")};
  const Selector number("number");
  const Selector more("more");
  RememberedMethod remembered;
  alignas(Class) std::array<std::byte, sizeof(Class)> memory{};

  const auto* first =
      new (memory.data()) Class{.name = "First", .base = &Object::kClass, .methods = kOnes};
  {
    const auto registration = ClassRegistry::shared().add(std::span(&first, 1));
    EXPECT_EQ(first->instanceMethod(number), &kOnes[0]);
    EXPECT_EQ(first->instanceMethod(more), nullptr);
    EXPECT_EQ(remembered.instanceMethod(*first, number), &kOnes[0]);
    EXPECT_EQ(remembered.instanceMethod(Object::kClass, number), nullptr);
    EXPECT_EQ(remembered.instanceMethod(*first, number), &kOnes[0]);
  }
  const auto* second =
      new (memory.data()) Class{.name = "Second", .base = &Object::kClass, .methods = kTwos};
  const auto registration = ClassRegistry::shared().add(std::span(&second, 1));
  EXPECT_EQ(second->instanceMethod(number), &kTwos[0]);
  EXPECT_EQ(second->instanceMethod(more), &kTwos[1]);
  EXPECT_EQ(remembered.instanceMethod(*second, number), &kTwos[0]);
}

}  // namespace
}  // namespace commandfilter
