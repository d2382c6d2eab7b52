#include "runtime/Module.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "TestObjects.h"

namespace commandfilter {
namespace {

using testing::Greeter;
using testing::LoudGreeter;

constexpr const Class* kGreeterClasses[] = {&Greeter::kClass, &LoudGreeter::kClass};
constexpr Module kModule = moduleOf(kGreeterClasses);

static_assert(kModule.classCount == 2);

TEST(Module, ListsItsClasses) {
  ASSERT_EQ(kModule.classList().size(), 2U);
  EXPECT_EQ(kModule.classList()[0], &Greeter::kClass);
  EXPECT_EQ(kModule.classList()[1], &LoudGreeter::kClass);
}

TEST(Module, DoesNotMatchWhatWasBuiltOtherwise) {
  for (std::uint32_t Module::*const member :
       {&Module::magic, &Module::interfaceVersion, &Module::layout}) {
    Module module = kModule;
    EXPECT_TRUE(module.matches());
    ++(module.*member);
    EXPECT_FALSE(module.matches());
  }
}

TEST(Module, ToldByItsLayoutWhetherObjectsAreCounted) {
  EXPECT_EQ(Module::kLayout & 1U, LiveObjects::kCounting ? 1U : 0U);
}

}  // namespace
}  // namespace commandfilter
