// Two classes whose objects answer a number.
#include <array>
#include <cstdint>

#include "runtime/Class.h"
#include "runtime/Module.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

#ifndef ANSWER
#define ANSWER 1
#endif

namespace commandfilter::testing {

namespace {

// The classes differ in what they add to the answer.
template <std::int32_t Added>
class Answerer final : public Object {
 public:
  static const Class kClass;
  static Ref<Answerer> init() { return make<Answerer>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  std::int32_t answer() { return ANSWER + Added; }
};
using First = Answerer<0>;
using Second = Answerer<10>;

constexpr std::array kFirstMethods{method<&First::answer>("answer")};
constexpr std::array kFirstInitializers{initializer<&First::init>("init")};
constexpr std::array kSecondMethods{method<&Second::answer>("answer")};
constexpr std::array kSecondInitializers{initializer<&Second::init>("init")};

}  // namespace

template <>
constinit const Class First::kClass{.name = "FirstAnswerer",
                                    .base = &Object::kClass,
                                    .methods = kFirstMethods,
                                    .initializers = kFirstInitializers};
template <>
constinit const Class Second::kClass{.name = "SecondAnswerer",
                                     .base = &Object::kClass,
                                     .methods = kSecondMethods,
                                     .initializers = kSecondInitializers};

constexpr const Class* kClasses[] = {&First::kClass, &Second::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
